#include "Clock.h"

namespace {
const SystemClock systemClock;
const Clock* installed = nullptr;
} // namespace

const Clock& appClock() {
    return installed ? *installed : systemClock;
}

void setAppClock(const Clock* clock) {
    installed = clock;
}
