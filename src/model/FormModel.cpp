#include "FormModel.h"

ZVBFelderArray& FelderArray() {
    static ZVBFelderArray felder;
    return felder;
}

ZVBWerteArray& WerteArray() {
    static ZVBWerteArray werte;
    return werte;
}
