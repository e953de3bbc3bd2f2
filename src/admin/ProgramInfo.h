// SPDX-License-Identifier: Apache-2.0
// What the about window tells: the program's version as the build stamped it into the core.
#pragma once

#include <QString>

// The version of this build, such as "0.1.0".
QString programVersion();
