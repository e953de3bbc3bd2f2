// SPDX-License-Identifier: Apache-2.0
// The report-choice question ("frmAskForReport"): when the settings leave the report type open,
// the operator answers "Ambulant", "Stationär" or "Kein Druck". The windows ask with a dialog, the
// command line answers from --report, tests script the answer; the core only asks through here.
#pragma once

// Report types as stored in sysReportsForStates.Report_Type and returned by GetReport.
namespace ReportType {
inline constexpr int None = 0;       // no report
inline constexpr int Ambrix = 1;     // the card's own report (state with State_XmlType "4")
inline constexpr int Stationaer = 2; // inpatient ("Stationär")
inline constexpr int Ambulant = 3;   // outpatient ("Ambulant")
inline constexpr int Ask = 4;        // due, but the type is still to be asked
} // namespace ReportType

class ReportChoice {
public:
    virtual ~ReportChoice() = default;
    // Asks which report to print; answers ReportType::Ambulant, ::Stationaer or ::None. Closing
    // the question without a button answers ::None.
    virtual int DoShow() = 0;
};

// Answers every question with the same report type and counts the questions.
class FixedReportChoice : public ReportChoice {
public:
    explicit FixedReportChoice(int answer = ReportType::None) : answer_(answer) {}
    int DoShow() override {
        ++asked_;
        return answer_;
    }
    void setAnswer(int answer) { answer_ = answer; }
    int asked() const { return asked_; }

private:
    int answer_;
    int asked_ = 0;
};

// The question in use. Never null: until another is installed every question is answered with
// "Kein Druck", as if the dialog had been closed.
ReportChoice& reportChoice();
// Installs a question (not owned); nullptr restores the default.
void setReportChoice(ReportChoice* choice);
