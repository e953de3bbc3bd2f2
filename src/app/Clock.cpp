// SPDX-License-Identifier: Apache-2.0
#include "Clock.h"

#include "Seam.h"

namespace {
const SystemClock systemClock;
Seam<const Clock> seam(systemClock);
} // namespace

const Clock& appClock() {
    return seam.get();
}

void setAppClock(const Clock* clock) {
    seam.install(clock);
}
