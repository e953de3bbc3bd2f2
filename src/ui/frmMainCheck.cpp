// frmMain: the checks on screen. A record is checked as a whole when it is shown and before it is
// handed over, a field when it is left; the fields take the colours of their status codes.

#include "frmMain.h"

#include "check/mdlCheck.h"

void frmMain::checkAll() {
    QString errorText;
    Check(QStringLiteral("all"), errorText);
}

void frmMain::checkField(const QString& name) {
    QString errorText;
    Check(name, errorText);
}
