// SPDX-License-Identifier: Apache-2.0
#include "WaitShell.h"

#include "app/Home.h"

#include <QEventLoop>
#include <QProcess>
#include <QProcessEnvironment>

bool WaitShell(const QString& program, const QStringList& arguments, const QString& waitText, WaitView* view) {
    QProcess process;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("VERIDON_HOME"), homeDir());
    process.setProcessEnvironment(environment);
    process.setStandardOutputFile(QProcess::nullDevice());
    process.setProcessChannelMode(QProcess::ForwardedErrorChannel);

    QEventLoop loop;
    bool failed = false;
    QObject::connect(&process, &QProcess::finished, &loop, &QEventLoop::quit);
    QObject::connect(&process, &QProcess::errorOccurred, &loop, [&](QProcess::ProcessError error) {
        if (error == QProcess::FailedToStart) {
            failed = true;
            loop.quit();
        }
    });
    if (view)
        view->begin(waitText);
    process.start(program, arguments);
    // A start that fails at once has already said so; otherwise the end or the failure arrives in
    // the loop.
    if (!failed && process.state() != QProcess::NotRunning)
        loop.exec();
    if (view)
        view->end();
    return failed;
}
