// SPDX-License-Identifier: Apache-2.0
#include "Progress.h"

#include "Seam.h"

namespace {
class SilentProgress : public Progress {
public:
    void status(const QString&) override {}
    void progress(qint64, qint64) override {}
};
SilentProgress silent;
Seam<Progress> seam(silent);
} // namespace

Progress& appProgress() {
    return seam.get();
}

void setAppProgress(Progress* progress) {
    seam.install(progress);
}
