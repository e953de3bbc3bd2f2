// SPDX-License-Identifier: Apache-2.0
// The scan button on the main window with SANE's virtual feeder and a slow stand-in evaluation:
// the scan controls are off while pages come in and Escape stops them, the wait window stays up
// (and cannot be closed) while the evaluation runs, and the first scanned record is on screen
// afterwards.

#include "../scan/ScanFixture.h"
#include "MainWindowFixture.h"

#include "scan/ScanSettings.h"

#include <QDir>
#include <QTimer>

namespace {

class ScanWindow : public MainWindowTest {
protected:
    ScanWindow() {
        useTestSane();
        chooseScanDevice(QStringLiteral("test:0"));
        // Slow reads make the acquisition last long enough to be watched.
        storeScanOptions(QStringLiteral("test:0"), {{QStringLiteral("read-return-value"), QStringLiteral("Default")},
                                                    {QStringLiteral("read-delay"), QStringLiteral("yes")},
                                                    {QStringLiteral("read-delay-duration"), QStringLiteral("4000")}});
    }
    QPushButton* scanButton() const { return window->findChild<QPushButton*>("buttonScannen"); }
    QString status() const { return window->findChild<QLabel*>("statusText")->text(); }
};

// Escape stops the feeder after the third page; the pages scanned are evaluated.
TEST_F(ScanWindow, controls_are_off_while_scanning_escape_stops_the_wait_window_stays_and_the_first_record_follows) {
    writeStandInEvaluation(home, 1);
    open();
    EXPECT_EQ(window->currentRecord(), -1);

    // What an operator would see at moments during the scan.
    bool controlsOffWhilePagesCame = false, controlsOnWhilePagesCame = false;
    bool waitWindowClosable = false, focusTaken = false, focusTakenBack = false;
    QString waitText; // stays empty unless the wait window was seen
    QTimer watch;
    watch.setInterval(5);
    QObject::connect(&watch, &QTimer::timeout, [&] {
        if (QWidget* wait = shown("frmWaitShell")) {
            waitText = wait->findChild<QLabel*>("lblInfo")->text();
            wait->close();
            waitWindowClosable |= !wait->isVisible();
            // The operator clicks the main window; the wait window takes the focus back.
            if (!focusTaken) {
                focusTaken = true;
                window->activateWindow();
            } else if (QApplication::activeWindow() == wait) {
                focusTakenBack = true;
            }
        } else if (status().startsWith("Gescannte Seiten")) {
            const bool off =
                !scanButton()->isEnabled() && !window->findChild<QAction*>("mpScannerSettings")->isEnabled();
            (off ? controlsOffWhilePagesCame : controlsOnWhilePagesCame) = true;
            if (status() == "Gescannte Seiten: 3")
                QTest::keyClick(window->windowHandle(), Qt::Key_Escape);
        }
    });
    watch.start();
    QTest::mouseClick(scanButton(), Qt::LeftButton);
    watch.stop();

    EXPECT_TRUE(controlsOffWhilePagesCame);
    EXPECT_FALSE(controlsOnWhilePagesCame);
    EXPECT_FALSE(waitWindowClosable);
    EXPECT_TRUE(focusTakenBack);
    EXPECT_EQ(waitText, "Bitte warten bis die Auswertung beendet ist...");
    EXPECT_EQ(shown("frmWaitShell"), nullptr);
    EXPECT_TRUE(scanButton()->isEnabled());
    EXPECT_TRUE(status().startsWith("Scannen abgebrochen, 3 Seite(n) gespeichert")) << status().toStdString();
    EXPECT_EQ(QDir(home.path("images")).entryList({"*.tif"}).size(), 3);
    EXPECT_EQ(window->findChild<QLineEdit*>("BMPName")->text(), "319010001.tif");
    EXPECT_EQ(field("NACHNAME")->text(), "Huber");
    EXPECT_TRUE(messages.prompts().isEmpty()) << messages.prompts().join('|').toStdString();
}

} // namespace
