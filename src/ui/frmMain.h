// SPDX-License-Identifier: Apache-2.0
// The operator's workspace: one record of zvbWerte at a time in the ten fields of the container
// "Datensatz", beside its scanned image. The window takes the next waiting record, lets the operator
// correct it almost entirely from the keyboard, and ends each record with "OK" (checked, saved as
// handed over, exported) or "Verwerfen" (deleted with its image).
//
// The window hands the work around the record to collaborators: FieldNavigator moves between the
// fields (focus, cursor, the F2 search for faulty fields), KeyRules is the keyboard (an event filter
// that sees every key first), ViewerLink shows the record's page beside the form, RecordLookout
// looks for waiting records while the form is empty, ExportQueue runs the export pass after a
// hand-over, and ScanActions the scan button and the scanner menu. Of the window's own files,
// frmMain.cpp builds the window and its menus and runs the start of the form, frmMainWorkflow.cpp
// shows records and runs the record actions, frmMainCheck.cpp the checks, colours and hand-over,
// frmMainLayout.cpp the window's place on the screen and frmMainWindows.cpp the small windows it
// opens.
#pragma once

#include "RecordLookout.h"

#include <QMainWindow>
#include <QPointer>
#include <QStringList>

class ExportQueue;
class FieldNavigator;
class KeyRules;
class QAction;
class QGroupBox;
class QLabel;
class QLineEdit;
class QProgressBar;
class QPushButton;
class QTimer;
class QToolBar;
class ScanActions;
class StatusBarProgress;
class ViewerLink;
class frmFehler;

class frmMain : public QMainWindow {
    Q_OBJECT

public:
    // Builds the window and runs the start of the form: settings of the display, the field table
    // and field lengths, then takes and shows the next record.
    explicit frmMain(QWidget* parent = nullptr);
    ~frmMain() override;

    // The ten data fields, in their tab order.
    static const QStringList& fieldNames();

    // LfdNr of the record on screen; -1 when the form is empty.
    qint32 currentRecord() const { return current_; }

    // Takes the next waiting record for this workstation and shows it (or the empty form).
    void takeAndShowNext();

    // actionOK: checks the record; errors keep it on screen (result false), warnings ask first.
    // Without errors it is saved as handed over and the export pass is queued for the next turn of
    // the event loop; result true. The caller takes the next record.
    bool actionOK();
    // actionVerwerfen: deletes the record on screen and its bare-named image after asking (unless
    // silent), then takes the next record. With no record it only beeps. True when deleted.
    bool actionVerwerfen(bool silent);
    // actionBeenden: closes the window; the questions are asked while closing.
    void actionBeenden();

    // While the form is empty it looks for waiting records every pollIntervalMs (and at once on
    // F5) and takes the first that arrives.
    static constexpr int pollIntervalMs = RecordLookout::pollIntervalMs;
    // Looks at the pool now: shows how many records wait in the status bar and, when the form is
    // empty and one waits, takes and shows it.
    void lookForRecords();

protected:
    void closeEvent(QCloseEvent* event) override;
    void showEvent(QShowEvent* event) override;

private:
    // frmMain.cpp: construction and the start of the form.
    void buildFields();
    void buildButtons();
    void buildMenus();
    void buildToolBar();
    void buildStatusBar();
    void connectActions();
    void connectKeys();
    void loadForm();
    void applyStoredToggle(QAction* item, bool on);
    void toggleStatusBar(bool on);
    void toggleToolBar(bool on);
    void toggleImageDisplay(bool on);
    void toggleFullScreen(bool on);
    void showKeysInMenus();
    void translateWindow();

    // frmMainLayout.cpp: first start side by side with the viewer.
    void tileFirstStart();

    // frmMainWorkflow.cpp: showing records and the record actions.
    void showRecord();
    void showEmpty();
    void controlsToValues();
    void valuesToControls();
    void updateCaption();
    void onOK();
    void onVerwerfen();

    // frmMainCheck.cpp: the checks, the fields' colours and the export after a hand-over.
    void checkAll();
    void checkField(const QString& name);
    void fieldLeft(QLineEdit* edit);
    void colourFields(const QString& which);
    void refreshAfterCheck();

    // frmMainWindows.cpp: the small windows and the printing.
    void showErrorList(const QString& errorText);
    bool handOverToErrorList();
    void actionBelegZumTest();
    void showOptions();
    void actionDrucken();
    void showAbout();

    // State of the form.
    qint32 current_ = -1;
    QString focusFieldName_;

    // Controls (named as the stored captions and the tests expect).
    QGroupBox* datensatz_ = nullptr;
    QLineEdit* lfdNr_ = nullptr;
    QLineEdit* bmpName_ = nullptr;
    QLineEdit* korrigiert_ = nullptr;
    QPushButton* buttonOK_ = nullptr;
    QPushButton* buttonVerwerfen_ = nullptr;
    QPushButton* buttonBeenden_ = nullptr;
    QPushButton* buttonScannen_ = nullptr;
    QToolBar* toolbar_ = nullptr;
    QLabel* statusText_ = nullptr;
    QLabel* waitingText_ = nullptr;
    QLabel* todaysWork_ = nullptr;
    bool firstStart_ = false; // no stored place: the window and the viewer are tiled
    QProgressBar* progressBar_ = nullptr;
    StatusBarProgress* progress_ = nullptr;
    QPointer<frmFehler> errorList_;
    FieldNavigator* fields_ = nullptr;
    ViewerLink* viewer_ = nullptr;
    KeyRules* keys_ = nullptr;
    RecordLookout* lookout_ = nullptr;
    ExportQueue* exports_ = nullptr;
    ScanActions* scan_ = nullptr;

    QAction* mpOKWeiter_ = nullptr;
    QAction* mpBelegLoeschen_ = nullptr;
    QAction* mpEnde_ = nullptr;
    QAction* mpDrucken_ = nullptr;
    QAction* mpBelegZumTest_ = nullptr;
    QAction* mpOptionen_ = nullptr;
    QAction* mpInfo_ = nullptr;
    QAction* mpStatusBar_ = nullptr;
    QAction* mpToolbar_ = nullptr;
    QAction* mpToggleBildanzeige_ = nullptr;
    QAction* mpVollbild_ = nullptr;
    QAction* mpAktualisieren_ = nullptr;

    bool closing_ = false;
};
