// SPDX-License-Identifier: Apache-2.0
#include "ProgramInfo.h"

QString programVersion() {
    return QStringLiteral(VERIDON_VERSION);
}
