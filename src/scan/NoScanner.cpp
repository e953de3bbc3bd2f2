// SPDX-License-Identifier: Apache-2.0
// The scanner of a build without SANE: no devices, so the scan button says so and evaluates what
// is already in the scan folder.
#include "Scanner.h"

namespace {

class NoScanner final : public Scanner {
public:
    QList<ScanDevice> devices() override { return {}; }
    bool open(const QString&, QString& error) override {
        error = QStringLiteral("Diese Programmversion ist ohne Scanner-Unterstützung gebaut.");
        return false;
    }
    void close() override {}
    QList<ScanOption> options() override { return {}; }
    bool setOption(const QString&, const QString&, QString& error) override {
        error = QStringLiteral("Kein Scanner geöffnet.");
        return false;
    }
    ScanEnd acquire(const std::function<void(const ScanPage&)>&, const std::function<void()>&) override {
        return ScanEnd::DeviceGone;
    }
    void cancel() override {}
};

} // namespace

std::unique_ptr<Scanner> makeScanner() {
    return std::make_unique<NoScanner>();
}
