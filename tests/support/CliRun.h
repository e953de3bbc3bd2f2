// SPDX-License-Identifier: Apache-2.0
// Runs the built veridon-cli as a separate process and collects what it printed.
#pragma once

#include <QProcess>
#include <QString>
#include <QStringList>

struct CliRun {
    int exitCode = -1;
    QString out;
    QString err;
};

#ifdef VERIDON_CLI
inline CliRun runCli(const QStringList& args, const QByteArray& input = {}) {
    QProcess process;
    process.start(QStringLiteral(VERIDON_CLI), args);
    process.waitForStarted();
    if (!input.isEmpty())
        process.write(input);
    process.closeWriteChannel();
    process.waitForFinished(120000);
    return {process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1,
            QString::fromLocal8Bit(process.readAllStandardOutput()),
            QString::fromLocal8Bit(process.readAllStandardError())};
}
#endif
