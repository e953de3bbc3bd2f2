// SPDX-License-Identifier: Apache-2.0
// The main of every test program that needs windows, fonts or painting: a QApplication on Qt's
// offscreen platform around GoogleTest.

#include <QApplication>
#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace {

// The offscreen platform says so for every window it cannot give a frame or raise; that is no news.
void quietHandler(QtMsgType type, const QMessageLogContext& context, const QString& message) {
    if (type == QtWarningMsg && message.startsWith(QLatin1String("This plugin does not support")))
        return;
    qt_message_output(type, context, message);
}

} // namespace

int main(int argc, char** argv) {
    qInstallMessageHandler(quietHandler);
    // Also when CTest lists the tests at build time, where no platform is set.
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    // A private runtime folder (made 0700), so Qt does not complain about a shared one.
    QTemporaryDir runtime;
    if (qEnvironmentVariableIsEmpty("XDG_RUNTIME_DIR") && runtime.isValid()) {
        QFile::setPermissions(runtime.path(), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        qputenv("XDG_RUNTIME_DIR", QFile::encodeName(runtime.path()));
    }
    QApplication app(argc, argv);
    ::testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
