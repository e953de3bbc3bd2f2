// SPDX-License-Identifier: Apache-2.0
#include "frmInit.h"

#include "app/PoolConnection.h"
#include "app/Settings.h"
#include "app/mdlDB.h"
#include "app/mdlMessages.h"

#include <QApplication>
#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QLabel>
#include <QLineEdit>
#include <QVBoxLayout>
#include <algorithm>

namespace {

// The file dialog of the database check, which also takes the address of a pool server typed into
// its name field ("postgresql://user@host:port/dbname") instead of a file.
class ServerDbDialog : public QFileDialog {
public:
    using QFileDialog::QFileDialog;
    QString typedUri;

protected:
    void accept() override {
        const auto* name = findChild<QLineEdit*>(QStringLiteral("fileNameEdit"));
        if (name && isPoolUri(name->text())) {
            typedUri = name->text().trimmed();
            QDialog::accept();
            return;
        }
        QFileDialog::accept();
    }
};

} // namespace

frmInit::frmInit(QWidget* parent) : QWidget(parent, Qt::SplashScreen) {
    setObjectName(QStringLiteral("frmInit"));
    setWindowTitle(productName());
    auto* layout = new QVBoxLayout(this);
    auto* title = new QLabel(QStringLiteral("<b>Veridon</b>"), this);
    title->setObjectName(QStringLiteral("lblTitle"));
    auto* text = new QLabel(QString::fromUtf8("Die Anwendung wird gestartet …"), this);
    text->setObjectName(QStringLiteral("lblStatus"));
    layout->addWidget(title);
    layout->addWidget(text);
    resize(320, 90);
}

bool frmInit::checkDatabase() {
    QApplication::processEvents();
    repaint();
    QApplication::processEvents();
    const QString path = Nz(storedSetting(Setting::APP_ServerDB), QString()).toString();
    // A pool is good when its server answers; a file path when the file exists.
    const bool good = isPoolUri(path) ? serverAnswers(path) : !path.isEmpty() && QFileInfo(path).isFile();
    if (good) {
        close();
        return true;
    }
    ShowMessage(Msg::NoDBChange, MsgBox::Critical, {path});

    // The folder part of the bad path: everything before its last separator.
    const qsizetype cut = std::max(path.lastIndexOf(QLatin1Char('/')), path.lastIndexOf(QLatin1Char('\\')));
    ServerDbDialog dialog(this, productName(), cut < 0 || isPoolUri(path) ? QString() : path.left(cut));
    dialog.setObjectName(QStringLiteral("dlgServerDB"));
    dialog.setOption(QFileDialog::DontUseNativeDialog);
    dialog.setNameFilter(QStringLiteral("zentrale Programmdatenbank (data.mdb)"));
    dialog.setDefaultSuffix(QStringLiteral("mdb"));
    dialog.setFileMode(QFileDialog::ExistingFile);
    dialog.selectFile(QStringLiteral("data.mdb"));
    emit fileDialogOpened(&dialog);
    if (dialog.exec() != QDialog::Accepted || (dialog.typedUri.isEmpty() && dialog.selectedFiles().isEmpty())) {
        ShowMessage(Msg::NoDBExit, MsgBox::Critical);
        return false;
    }
    const QString chosen =
        dialog.typedUri.isEmpty() ? QDir::toNativeSeparators(dialog.selectedFiles().first()) : dialog.typedUri;
    RunReported(QStringLiteral("frmInit.Form_Activate"), [&] {
        setSetting<Setting::APP_ServerDB>(chosen);
        closePool(); // the next statement on the pool connects to the new address
    });
    close();
    return true;
}
