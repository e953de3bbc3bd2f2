// SPDX-License-Identifier: Apache-2.0
#include "FormModel.h"

ZVBFelderArray& FelderArray() {
    static ZVBFelderArray felder;
    return felder;
}

ZVBWerteArray& WerteArray() {
    static ZVBWerteArray werte;
    return werte;
}
