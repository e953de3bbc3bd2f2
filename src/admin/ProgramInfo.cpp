#include "ProgramInfo.h"

QString programVersion() {
    return QStringLiteral(VERIDON_VERSION);
}
