// SPDX-License-Identifier: Apache-2.0
#include "frmTestNotiz.h"

#include "admin/mdlTestCopy.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>

frmTestNotiz::frmTestNotiz(QWidget* parent) : FormDialog(QStringLiteral("frmTestNotiz"), parent) {
    setWindowTitle(QStringLiteral("Beleg zum Test"));

    auto* imageLabel = new QLabel(QStringLiteral("&Bilddatei:"), this);
    imageLabel->setObjectName(QStringLiteral("lblBildname"));
    image_ = new QLineEdit(this);
    auto* image = image_;
    image->setObjectName(QStringLiteral("txtBildname"));
    image->setToolTip(QStringLiteral("Name der Bilddatei des Belegs"));
    imageLabel->setBuddy(image);

    auto* noteLabel = new QLabel(QStringLiteral("&Notiz:"), this);
    noteLabel->setObjectName(QStringLiteral("lblNotiz"));
    note_ = new QPlainTextEdit(this);
    auto* note = note_;
    note->setObjectName(QStringLiteral("txtNotiz"));
    note->setTabChangesFocus(true);
    note->setToolTip(QStringLiteral("Was bei diesem Beleg auffällt"));
    noteLabel->setBuddy(note);

    auto* ok = new QPushButton(QStringLiteral("OK"), this);
    ok->setObjectName(QStringLiteral("cmdOK"));
    ok->setDefault(true);
    auto* cancel = new QPushButton(QStringLiteral("Abbrechen"), this);
    cancel->setObjectName(QStringLiteral("cmdAbbrechen"));
    connect(ok, &QPushButton::clicked, this, &frmTestNotiz::accept);
    connect(cancel, &QPushButton::clicked, this, &frmTestNotiz::reject);

    auto* grid = new QGridLayout(this);
    grid->addWidget(imageLabel, 0, 0);
    grid->addWidget(image, 0, 1);
    grid->addWidget(noteLabel, 1, 0, Qt::AlignTop);
    grid->addWidget(note, 1, 1);
    auto* buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(ok);
    buttons->addWidget(cancel);
    grid->addLayout(buttons, 2, 0, 1, 2);
    resize(460, 260);
    note->setFocus();
    formLoaded();
}

void frmTestNotiz::setImageName(const QString& imageName) {
    image_->setText(imageName);
}

QString frmTestNotiz::imageName() const {
    return image_->text();
}

void frmTestNotiz::setNote(const QString& note) {
    note_->setPlainText(note);
}

QString frmTestNotiz::note() const {
    return note_->toPlainText();
}

int frmTestNotiz::showFor(QWidget* parent, const QString& imageName) {
    frmTestNotiz dialog(parent);
    dialog.setImageName(imageName);
    return dialog.exec();
}

void frmTestNotiz::accept() {
    const TestCopyResult result = BelegZumTest(imageName(), note());
    if (result == TestCopyResult::Done)
        FormDialog::accept();
    else
        FormDialog::reject();
}
