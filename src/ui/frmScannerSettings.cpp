// SPDX-License-Identifier: Apache-2.0
#include "frmScannerSettings.h"

#include "scan/ScanSettings.h"

#include <QComboBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QLabel>
#include <QPushButton>
#include <QSpinBox>
#include <QVBoxLayout>

namespace {

// German captions for the options this dialog knows; others keep the device's own title.
QString captionOf(const ScanOption& option) {
    static const QHash<QString, QString> captions{{QStringLiteral("source"), QStringLiteral("Vorlage:")},
                                                  {QStringLiteral("mode"), QStringLiteral("Modus:")},
                                                  {QStringLiteral("depth"), QStringLiteral("Farbtiefe (Bit):")},
                                                  {QStringLiteral("resolution"), QStringLiteral("Auflösung (dpi):")},
                                                  {QStringLiteral("page-size"), QStringLiteral("Papierformat:")}};
    return captions.value(option.name, option.title + QLatin1Char(':'));
}

} // namespace

frmScannerSettings::frmScannerSettings(Scanner& scanner, const QString& device, QWidget* parent)
    : FormDialog(QStringLiteral("frmScannerSettings"), parent), scanner_(scanner), device_(device),
      options_(scanner.options()) {
    setWindowTitle(QStringLiteral("Scannereinstellungen"));
    auto* deviceLabel = new QLabel(this);
    deviceLabel->setObjectName(QStringLiteral("lblGeraet"));
    auto* form = new QFormLayout;
    for (const ScanOption& o : options_) {
        QWidget* editor = nullptr;
        if (!o.choices.isEmpty()) {
            auto* combo = new QComboBox(this);
            combo->addItems(o.choices);
            combo->setCurrentIndex(qMax(0, o.choices.indexOf(o.value)));
            editor = combo;
        } else {
            auto* spin = new QSpinBox(this);
            spin->setRange(o.minimum, o.maximum);
            spin->setValue(qRound(o.value.toDouble()));
            editor = spin;
        }
        editor->setObjectName(o.name);
        auto* caption = new QLabel(captionOf(o), this);
        caption->setObjectName(QStringLiteral("lbl_") + o.name);
        caption->setBuddy(editor);
        form->addRow(caption, editor);
    }
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    buttons->button(QDialogButtonBox::Ok)->setObjectName(QStringLiteral("cmdOK"));
    buttons->button(QDialogButtonBox::Cancel)->setObjectName(QStringLiteral("cmdAbbrechen"));
    buttons->button(QDialogButtonBox::Cancel)->setText(QStringLiteral("Abbrechen"));
    connect(buttons, &QDialogButtonBox::accepted, this, &frmScannerSettings::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &frmScannerSettings::reject);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(deviceLabel);
    layout->addLayout(form);
    layout->addWidget(buttons);
    formLoaded();
    deviceLabel->setText(device_);
}

QStringList frmScannerSettings::apply() {
    QStringList refused;
    QList<QPair<QString, QString>> kept;
    for (const ScanOption& o : options_) {
        QString value;
        if (auto* combo = findChild<QComboBox*>(o.name))
            value = combo->currentText();
        else if (auto* spin = findChild<QSpinBox*>(o.name))
            value = QString::number(spin->value());
        QString error;
        if (scanner_.setOption(o.name, value, error))
            kept.append({o.name, value});
        else
            refused.append(error);
    }
    storeScanOptions(device_, kept);
    return refused;
}
