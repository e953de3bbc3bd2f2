#include "frmInit.h"

#include "app/mdlDB.h"
#include "app/mdlMessages.h"

#include <QApplication>
#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QLabel>
#include <QVBoxLayout>
#include <algorithm>

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
    const QString path = Nz(GetSysValue(QStringLiteral("APP_ServerDB")), QString()).toString();
    if (!path.isEmpty() && QFileInfo(path).isFile()) {
        close();
        return true;
    }
    ShowMessage(Msg::NoDBChange, MsgBox::Critical, {path});

    // The folder part of the bad path: everything before its last separator.
    const qsizetype cut = std::max(path.lastIndexOf(QLatin1Char('/')), path.lastIndexOf(QLatin1Char('\\')));
    QFileDialog dialog(this, productName(), cut < 0 ? QString() : path.left(cut));
    dialog.setObjectName(QStringLiteral("dlgServerDB"));
    dialog.setOption(QFileDialog::DontUseNativeDialog);
    dialog.setNameFilter(QStringLiteral("zentrale Programmdatenbank (data.mdb)"));
    dialog.setDefaultSuffix(QStringLiteral("mdb"));
    dialog.setFileMode(QFileDialog::ExistingFile);
    dialog.selectFile(QStringLiteral("data.mdb"));
    emit fileDialogOpened(&dialog);
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty()) {
        ShowMessage(Msg::NoDBExit, MsgBox::Critical);
        return false;
    }
    const QString chosen = dialog.selectedFiles().first();
    RunReported(QStringLiteral("frmInit.Form_Activate"),
                [&] { SetSysValue(QStringLiteral("APP_ServerDB"), QDir::toNativeSeparators(chosen)); });
    close();
    return true;
}
