// SPDX-License-Identifier: Apache-2.0
// The start-up window. It stands on the screen while the program checks that the central program
// database named in APP_ServerDB can be reached, and lets the operator pick the file when it cannot.
#pragma once

#include <QWidget>

class QFileDialog;

class frmInit : public QWidget {
    Q_OBJECT

public:
    explicit frmInit(QWidget* parent = nullptr);

    // The database check: APP_ServerDB must name an existing file. When it does not, the operator is
    // told ("Msg_NoDBChange") and offered a file dialog for data.mdb; the choice is stored in
    // APP_ServerDB. Cancelling the dialog shows "Msg_NoDBExit". Returns false only then, and the
    // program must end at once. The window closes itself in every other case.
    bool checkDatabase();

signals:
    // The file dialog is about to be shown (lets tests and scripts drive it).
    void fileDialogOpened(QFileDialog* dialog);
};
