// SPDX-License-Identifier: Apache-2.0
// scanshots: pictures of the scanning windows for the README - the wait window while the
// evaluation runs, and the settings dialog of SANE's virtual feeder as the workstation prepares it
// for a scan. Run under a display (scripts/screenshot uses Xvfb) with SANE_CONFIG_DIR pointing at
// the demo's SANE configuration.
#include "app/Home.h"
#include "app/mdlMessages.h"
#include "scan/ScanSettings.h"
#include "ui/frmScannerSettings.h"
#include "ui/frmWaitShell.h"

#include <QApplication>
#include <QDir>
#include <QTest>

#include <cstdio>

namespace {

bool shoot(QWidget& window, const QString& file) {
    window.show();
    window.activateWindow();
    QTest::qWait(500);
    const bool saved = window.grab().save(file);
    std::printf("%s\n", qUtf8Printable(file));
    return saved;
}

} // namespace

int main(int argc, char** argv) {
    QApplication app(argc, argv);
    const QStringList args = app.arguments();
    if (args.size() != 3) {
        std::fprintf(stderr, "Aufruf: scanshots HOME ZIELORDNER\n");
        return 2;
    }
    setHome(args[1]);
    const QDir out(args[2]);

    frmWaitShell wait(nullptr);
    wait.begin(GetText(Msg::Txt_RunAusw));
    bool ok = shoot(wait, out.filePath(QStringLiteral("veridon-scan-wait.png")));
    wait.end();

    std::unique_ptr<Scanner> scanner = makeScanner();
    const QString device = QStringLiteral("test:0");
    QString error;
    if (!scanner->open(device, error)) {
        std::fprintf(stderr, "scanshots: %s: %s\n", qUtf8Printable(device), qUtf8Printable(error));
        return 1;
    }
    applyScanDefaults(*scanner, device);
    frmScannerSettings settings(*scanner, device, nullptr);
    ok = shoot(settings, out.filePath(QStringLiteral("veridon-scan-settings.png"))) && ok;
    return ok ? 0 : 1;
}
