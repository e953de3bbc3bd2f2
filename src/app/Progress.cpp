#include "Progress.h"

namespace {
class SilentProgress : public Progress {
public:
    void status(const QString&) override {}
    void progress(qint64, qint64) override {}
};
SilentProgress silent;
Progress* installed = nullptr;
} // namespace

Progress& appProgress() {
    return installed ? *installed : silent;
}

void setAppProgress(Progress* progress) {
    installed = progress;
}
