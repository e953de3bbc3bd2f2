// SPDX-License-Identifier: Apache-2.0
// Report choice and printing. The decisions (which pages, which values where, which printer) are
// made here from the settings and the report tables; the painting is the back end's.
#include "mdlPrint.h"

#include "ReportPrinter.h"
#include "app/Database.h"
#include "app/Home.h"
#include "app/Settings.h"
#include "app/mdlDB.h"
#include "app/mdlMessages.h"

#include <QFileInfo>

namespace {

QString textOf(const QSqlRecord& record, const QString& column) {
    const QVariant v = record.value(column);
    return v.isNull() ? QString() : v.toString();
}

// The part of a file name after its last "/" or "\" and before its last ".".
QString baseName(const QString& path) {
    QString name = path.mid(std::max(path.lastIndexOf(QLatin1Char('/')), path.lastIndexOf(QLatin1Char('\\'))) + 1);
    const qsizetype dot = name.lastIndexOf(QLatin1Char('.'));
    return dot >= 0 ? name.left(dot) : name;
}

// Keeps the back end's busy indication on while a report is being printed.
class BusyIndication {
public:
    explicit BusyIndication(ReportPrinter& printer) : printer_(printer) { printer_.setBusy(true); }
    ~BusyIndication() { release(); }
    BusyIndication(const BusyIndication&) = delete;
    BusyIndication& operator=(const BusyIndication&) = delete;
    void release() {
        if (on_)
            printer_.setBusy(false);
        on_ = false;
    }

private:
    ReportPrinter& printer_;
    bool on_ = true;
};

// The condition of the report rows for the workstation's and the card's state: the card's own rows
// when there are any, else the workstation state's default report; empty when neither exists.
QString reportRowsCondition(const QString& appState, const QString& cardState, int type) {
    const QString table = QStringLiteral("sysReportsForStates");
    const QString own = QStringLiteral("AppState=%1 AND CardState=%2 AND Report_Type=%3")
                            .arg(sqlQuote(appState), sqlQuote(cardState))
                            .arg(type);
    if (CountRows(QStringLiteral("*"), table, own) > 0)
        return own;
    const QString fallback = QStringLiteral("AppState=%1 AND IsDefaultForAppState=True AND Report_Type=%2")
                                 .arg(sqlQuote(appState))
                                 .arg(type);
    if (CountRows(QStringLiteral("*"), table, fallback) > 0)
        return fallback;
    return QString();
}

} // namespace

int GetReport(const QString& cardState, bool dontAsk) {
    int result = ReportType::None;
    RunReported(QStringLiteral("GetReport"), [&] {
        // One look-up answers both questions: is the state known, and which card type it has.
        QSqlQuery state = execSql(QStringLiteral("SELECT State_XmlType FROM sysStates WHERE State_ID=?"), {cardState});
        if (!state.next())
            return;
        const QString xmlType = Nz(state.value(0), QString()).toString();
        if (xmlType == QLatin1String("4")) {
            result = setting<Setting::Report_Ambrix_Country>() == 0 ? ReportType::None : ReportType::Ambrix;
            return;
        }
        switch (setting<Setting::Report_Other_Country>()) {
        case 0:
            result = ReportType::None;
            break;
        case 1:
            result = ReportType::Stationaer;
            break;
        case 2:
            result = ReportType::Ambulant;
            break;
        default:
            result = dontAsk ? ReportType::Ask : reportChoice().DoShow();
        }
    });
    return result;
}

void PrintRecord(const QSqlRecord& record) {
    RunReported(QStringLiteral("PrintRecord"), [&] {
        const QString cardState = textOf(record, QStringLiteral("STATE"));
        const int type = GetReport(cardState, false);
        if (type == ReportType::None)
            return;
        BusyIndication busy(reportPrinter());
        if (!SelectPrinter()) {
            busy.release();
            ShowMessage(Msg::PrinterInitErr, MsgBox::Critical);
            return;
        }
        const QString appState = setting<Setting::APP_State>();
        const QString condition = reportRowsCondition(appState, cardState, type);
        if (condition.isEmpty()) {
            busy.release();
            ShowMessage(Msg::ReportStatesErr, MsgBox::Critical, {appState, cardState});
            return;
        }
        QVector<qint32> pages;
        {
            QSqlQuery q = execSql(QStringLiteral("SELECT Report_ID FROM sysReportsForStates WHERE ") + condition +
                                  QStringLiteral(" ORDER BY Page"));
            while (q.next())
                pages << ToLong(q.value(0));
        }
        for (const qint32 reportId : std::as_const(pages))
            PrintReportPage(record, reportId);
    });
}

void PrintReportPage(const QSqlRecord& record, qint32 reportId) {
    ReportPrinter& printer = reportPrinter();
    bool waiting = false;
    RunReported(QStringLiteral("PrintReportPage"), [&] {
        // Templates lie in the program folder unless a folder is set; an empty setting would name
        // the working directory, which is no place the operator would look.
        const QString folderSetting = setting<Setting::Report_Pfad>().trimmed();
        const QString folder = folderSetting.isEmpty() ? homeDir() : withTrailingSlash(folderSetting);
        const QString id = QString::number(reportId);
        const QString file =
            Nz(GetValue(QStringLiteral("Report_File"), QStringLiteral("sysReports"), QStringLiteral("Report_ID=") + id),
               QStringLiteral("bericht.bmp"))
                .toString();
        const QString path = folder + file;
        if (!QFileInfo(path).isFile()) {
            printer.setBusy(false);
            ShowMessage(Msg::ReportBmpErr, MsgBox::Critical, {path});
            return;
        }
        printer.showWaitWindow(true);
        waiting = true;

        ReportPage page;
        page.bitmapPath = path;
        page.fontName = setting<Setting::Report_FontName>();
        page.jobName = baseName(textOf(record, QStringLiteral("BMPName"))) + QLatin1Char('_') + baseName(file);
        QSqlQuery q = execSql(QStringLiteral("SELECT x, y, Field FROM sysReportFields WHERE Report_ID=") + id);
        while (q.next()) {
            const QString field = q.value(2).toString();
            if (!field.isEmpty())
                requireColumn(GetValuesTable(), field);
            page.texts.push_back({q.value(0).toDouble(), q.value(1).toDouble(), textOf(record, field)});
        }
        QString error;
        if (!printer.printPage(page, error))
            throw VeridonError(ErrorNumber::InvalidArgument, error);
    });
    if (waiting)
        printer.showWaitWindow(false);
}

bool SelectPrinter() {
    bool selected = false;
    RunReported(QStringLiteral("SelectPrinter"), [&] {
        ReportPrinter& printer = reportPrinter();
        const QStringList names = printer.printerNames();
        if (names.isEmpty()) {
            WriteLog(QStringLiteral("SelectPrinter()"), QStringLiteral("No Printers available!"));
            return;
        }
        selected = true;
        if (setting<Setting::Report_PrinterUseDefault>()) {
            printer.useDefaultPrinter();
            return;
        }
        const QString wanted = setting<Setting::Report_PrinterName>();
        for (const QString& name : names) {
            if (name == wanted) {
                printer.usePrinter(name);
                return;
            }
        }
        WriteLog(QStringLiteral("SelectPrinter()"),
                 QStringLiteral("Choosen Printer not available, switching to default"));
        printer.useDefaultPrinter();
    });
    return selected;
}
