// SPDX-License-Identifier: Apache-2.0
#include "frmScannerSelect.h"

#include "scan/ScanSettings.h"

#include <QDialogButtonBox>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QVBoxLayout>

frmScannerSelect::frmScannerSelect(const QList<ScanDevice>& devices, QWidget* parent)
    : FormDialog(QStringLiteral("frmScannerSelect"), parent), devices_(devices) {
    setWindowTitle(QStringLiteral("Scanner auswählen"));
    auto* caption = new QLabel(QStringLiteral("Scanner dieses Arbeitsplatzes:"), this);
    caption->setObjectName(QStringLiteral("lblGeraete"));
    list_ = new QListWidget(this);
    list_->setObjectName(QStringLiteral("lstGeraete"));
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    buttons->button(QDialogButtonBox::Ok)->setObjectName(QStringLiteral("cmdOK"));
    buttons->button(QDialogButtonBox::Cancel)->setObjectName(QStringLiteral("cmdAbbrechen"));
    buttons->button(QDialogButtonBox::Cancel)->setText(QStringLiteral("Abbrechen"));
    connect(buttons, &QDialogButtonBox::accepted, this, &frmScannerSelect::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &frmScannerSelect::reject);
    connect(list_, &QListWidget::itemDoubleClicked, this, &frmScannerSelect::accept);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(caption);
    layout->addWidget(list_);
    layout->addWidget(buttons);
    formLoaded();

    const QString current = scanDeviceToUse(devices_);
    for (const ScanDevice& d : devices_) {
        list_->addItem(d.name + QStringLiteral("  –  ") + d.label);
        if (d.name == current)
            list_->setCurrentRow(list_->count() - 1);
    }
    list_->setFocus();
}

QString frmScannerSelect::selectedDevice() const {
    const int row = list_->currentRow();
    return row >= 0 && row < devices_.size() ? devices_[row].name : QString();
}
