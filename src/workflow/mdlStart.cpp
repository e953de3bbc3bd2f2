// SPDX-License-Identifier: Apache-2.0
#include "mdlStart.h"

#include "app/Clock.h"
#include "app/Database.h"
#include "app/mdlDB.h"
#include "app/mdlMessages.h"

#include "app/Settings.h"
#include "app/mdlBackup.h"
#include "export/mdlExport.h"
#include "model/FormModel.h"
#include "workflow/mdlAutoImport.h"

namespace {

// The start routine's own failures are shown directly, without a log line, as the log may be the
// very thing that cannot be reached yet.
void reportStartFailure(const std::exception& error) {
    int number = ErrorNumber::InvalidArgument;
    QString description = QString::fromLocal8Bit(error.what());
    if (const auto* v = dynamic_cast<const VeridonError*>(&error)) {
        number = v->number();
        description = RuntimeErrorDetail(*v);
    }
    messagePresenter().show(GetText(Msg::RuntimeErr, {QStringLiteral("MAIN()"), number, description}), MsgBox::Critical,
                            productName());
}

template <class Step> void runStartStep(Step&& step) {
    try {
        step();
    } catch (const std::exception& e) {
        reportStartFailure(e);
    }
}

} // namespace

FieldColours& ProgramColours() {
    static FieldColours colours;
    return colours;
}

void LoadColours() {
    FieldColours loaded;
    try {
        for (const ColourSetting& setting : colourSettings) {
            const QVariant stored = GetValue(settingName(setting.setting), QStringLiteral("zvbSys"), QString());
            const QString text = stored.isNull() ? QLatin1String(setting.defaultText) : stored.toString();
            loaded.*setting.member = parseColourText(text);
        }
    } catch (const std::exception& e) {
        int number = ErrorNumber::InvalidArgument;
        QString description = QString::fromLocal8Bit(e.what());
        if (const auto* v = dynamic_cast<const VeridonError*>(&e)) {
            number = v->number();
            description = RuntimeErrorDetail(*v);
        }
        ShowMessage(Msg::ColorDefaults, MsgBox::Information, {number, description});
        loaded = FieldColours();
    }
    ProgramColours() = loaded;
}

void DBAufraeumen() {
    RunReported(QStringLiteral("DBAufraeumen"), [] {
        const QVariant stored = GetValue(settingName(Setting::APP_LastOpened), QStringLiteral("zvbSys"), QString());
        const QDateTime lastOpened = ToDateTime(stored);
        const QDate today = appClock().today();
        if (stored.isNull() || stored.toString().isEmpty() || !lastOpened.isValid() || lastOpened.date() < today)
            BackupCleanup();
        else if (lastOpened.date() > today)
            ShowMessage(Msg::WarningLastOpened, MsgBox::Critical);
        SetSysExpression(settingName(Setting::APP_LastOpened), QStringLiteral("Now()"));
    });
}

void RunStartupSteps() {
    runStartStep([] { FelderArray().Fill(); });
    runStartStep([] { WerteArray().Clear(); });
    LoadColours();
    runStartStep([] { DBAufraeumen(); });
    runStartStep([] { FinishInterruptedExports(); });
    runStartStep([] { ZVBAutoImport(); });
}
