// SPDX-License-Identifier: Apache-2.0
#include "frmAbout.h"

#include "admin/ProgramInfo.h"
#include "app/Home.h"
#include "app/mdlDB.h"
#include "app/mdlMessages.h"

#include <QDir>
#include <QFormLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace {

QLabel* namedLabel(const QString& name, const QString& text, QWidget* parent) {
    auto* label = new QLabel(text, parent);
    label->setObjectName(name);
    return label;
}

// A value the operator may want to copy into a support request.
QLabel* valueLabel(const QString& name, QWidget* parent) {
    QLabel* label = namedLabel(name, QString(), parent);
    label->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    return label;
}

} // namespace

frmAbout::frmAbout(QWidget* parent) : FormDialog(QStringLiteral("frmAbout"), parent) {
    setWindowTitle(QStringLiteral("Info"));

    QLabel* product = namedLabel(QStringLiteral("lblProdukt"), QString(), this);
    QFont big = product->font();
    big.setPointSizeF(big.pointSizeF() * 1.6);
    big.setBold(true);
    product->setFont(big);
    QLabel* purpose = namedLabel(QStringLiteral("lblBeschreibung"), QStringLiteral("Erfassung von EHIC-Belegen"), this);

    auto* form = new QFormLayout;
    QLabel* version = valueLabel(QStringLiteral("lblVersion"), this);
    QLabel* home = valueLabel(QStringLiteral("lblHome"), this);
    QLabel* database = valueLabel(QStringLiteral("lblDatenbank"), this);
    form->addRow(namedLabel(QStringLiteral("lblVersionText"), QStringLiteral("Version:"), this), version);
    form->addRow(namedLabel(QStringLiteral("lblHomeText"), QStringLiteral("Programmordner:"), this), home);
    form->addRow(namedLabel(QStringLiteral("lblDatenbankText"), QStringLiteral("Datenbank:"), this), database);

    auto* ok = new QPushButton(QStringLiteral("OK"), this);
    ok->setObjectName(QStringLiteral("cmdOK"));
    ok->setDefault(true);
    connect(ok, &QPushButton::clicked, this, &frmAbout::accept);

    auto* layout = new QVBoxLayout(this);
    layout->addWidget(product);
    layout->addWidget(purpose);
    layout->addSpacing(8);
    layout->addLayout(form);
    layout->addStretch();
    layout->addWidget(ok, 0, Qt::AlignRight);
    formLoaded();

    // Filled after the translation: these are facts, not captions.
    product->setText(productName());
    version->setText(programVersion());
    home->setText(QDir::toNativeSeparators(homeDir()));
    database->setText(QDir::toNativeSeparators(GetDBPath()));
}
