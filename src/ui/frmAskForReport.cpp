// SPDX-License-Identifier: Apache-2.0
#include "frmAskForReport.h"

#include <QApplication>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

frmAskForReport::frmAskForReport(QWidget* parent) : FormDialog(QStringLiteral("frmAskForReport"), parent) {
    setWindowTitle(QString::fromUtf8("Bericht drucken"));
    auto* question = new QLabel(QString::fromUtf8("Welcher Bericht soll zu diesem Beleg gedruckt werden?"), this);
    question->setObjectName(QStringLiteral("lblFrage"));
    auto* buttons = new QHBoxLayout;
    const struct {
        const char* name;
        const char* caption;
        int answer;
    } choices[] = {{"cmdAmbulant", "&Ambulant", ReportType::Ambulant},
                   {"cmdStationaer", "&Stationär", ReportType::Stationaer},
                   {"cmdKeinDruck", "&Kein Druck", ReportType::None}};
    for (const auto& c : choices) {
        auto* button = new QPushButton(QString::fromUtf8(c.caption), this);
        button->setObjectName(QLatin1String(c.name));
        const int answer = c.answer;
        connect(button, &QPushButton::clicked, this, [this, answer] {
            answer_ = answer;
            accept();
        });
        buttons->addWidget(button);
    }
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(question);
    layout->addLayout(buttons);
    formLoaded();
}

int frmAskForReport::DoShow() {
    answer_ = ReportType::None;
    exec();
    return answer_;
}

WindowsReportChoice::WindowsReportChoice() {
    setReportChoice(this);
}

WindowsReportChoice::~WindowsReportChoice() {
    if (&reportChoice() == this)
        setReportChoice(nullptr);
}

int WindowsReportChoice::DoShow() {
    frmAskForReport dialog(QApplication::activeWindow());
    return dialog.DoShow();
}
