// SPDX-License-Identifier: Apache-2.0
// The two program-wide form-model objects: the field definitions, filled at start, and the values
// of the record in hand. They live for the program's life.
#pragma once

#include "ZVBFelderArray.h"
#include "ZVBWerteArray.h"

ZVBFelderArray& FelderArray();
ZVBWerteArray& WerteArray();
