// SPDX-License-Identifier: Apache-2.0
// Report choice and printing: which report a record gets (by the workstation's state, the card's
// state and the report type) and printing its pages, each a bitmap template with the record's
// values at fixed millimetre positions, through the ReportPrinter seam.
#pragma once

#include "ReportChoice.h"

#include <QSqlRecord>
#include <QString>

// The report type due for a card of cardState (the record's STATE): ReportType::None when the
// state is unknown or the settings say no report; ::Ambrix for a state with State_XmlType "4" when
// Report_Ambrix_Country is not 0; else by Report_Other_Country (0 none, 1 ::Stationaer,
// 2 ::Ambulant, anything else: ::Ask when dontAsk, otherwise the operator's answer through
// reportChoice()). Failures are reported as "GetReport()" and answer ::None.
int GetReport(const QString& cardState, bool dontAsk);

// Prints the report of the record (a zvbWerte row with all columns); may ask the operator for the
// report type. Reports "Msg_PrinterInitErr" without a printer and "Msg_ReportStatesErr" when no
// report rows fit the workstation's and the card's state; prints nothing then. Each page is a job
// of its own, in Page order. Other failures are reported as "PrintRecord()".
void PrintRecord(const QSqlRecord& record);

// Prints page reportId of sysReports for the record. Reports "Msg_ReportBmpErr" when the page's
// bitmap is missing; other failures (a Field naming no column, a bitmap that cannot be loaded) as
// "PrintReportPage()".
void PrintReportPage(const QSqlRecord& record, qint32 reportId);

// Makes the configured printer the current one: the system default when Report_PrinterUseDefault
// is true or null, else the installed printer named exactly Report_PrinterName (falling back to the
// default, with a log line, when it is gone). False, with a log line, when there is no printer.
bool SelectPrinter();

// The print command for the record in hand: WerteArray() holds the row whose LfdNr is lfdNr (the
// record on screen). All fields are checked first; while a field fails (an error; warnings do not
// stop it), "Msg_PrintDataUnchecked" is shown and nothing is printed. Otherwise the record is
// stored and its report printed (PrintRecord); its workflow state stays. Returns false when the
// print was refused or a failure was reported ("PrintCommand()").
bool PrintCommand(qint32 lfdNr);
