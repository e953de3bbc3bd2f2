// SPDX-License-Identifier: Apache-2.0
// The operator's workspace: one record of zvbWerte at a time in the ten fields of the container
// "Datensatz", beside its scanned image. The window takes the next waiting record, lets the operator
// correct it almost entirely from the keyboard, and ends each record with "OK" (checked, saved as
// handed over, exported) or "Verwerfen" (deleted with its image).
//
// The class is split by responsibility: frmMain.cpp builds the window and its menus and runs the
// start of the form, frmMainWorkflow.cpp the record actions, frmMainFields.cpp the field table, the
// F2 search, cursor placement, validation and colours, frmMainKeys.cpp the keyboard,
// frmMainImage.cpp the calls to the image viewer, frmMainLayout.cpp the places of the window and the
// viewer on the screen, and frmMainQueue.cpp the look-out for records while the form is empty.
#pragma once

#include <QMainWindow>
#include <QPointer>
#include <QStringList>

class QAction;
class QGroupBox;
class QLabel;
class QLineEdit;
class QProgressBar;
class QPushButton;
class QTimer;
class QToolBar;
class StatusBarProgress;
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

    // SucheFehlerhaftesFeld: the F2 search from the field after the active one (backwards: before
    // it). Focuses the first faulty field and returns 0; with none left returns 1 or 2, or focuses
    // buttonOK and returns 0, as F2_WieWeitSuchen says.
    int SucheFehlerhaftesFeld(bool backwards);

    // While the form is empty it looks for waiting records every pollIntervalMs (and at once on
    // F5) and takes the first that arrives.
    static constexpr int pollIntervalMs = 3000;
    // Looks at the pool now: shows how many records wait in the status bar and, when the form is
    // empty and one waits, takes and shows it.
    void lookForRecords();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
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
    void loadForm();
    void applyStoredToggle(QAction* item, const char* setting);
    void toggleStatusBar(bool on);
    void toggleToolBar(bool on);
    void toggleImageDisplay(bool on);
    void toggleFullScreen(bool on);
    void showKeysInMenus();
    void translateWindow();

    // frmMainLayout.cpp: first start side by side with the viewer, the viewer's remembered place.
    void tileFirstStart();
    void placeViewer();
    void saveViewerPosition();

    // frmMainQueue.cpp: the count of waiting records and the look-out while the form is empty.
    void showWaitingCount(int waiting);
    void showTodaysWork();
    void followQueue();

    // frmMainScan.cpp: the scan button and the scanner menu.
    void actionScannen();
    void actionScannerSelect();
    void actionScanner_Settings();
    void setScanControlsEnabled(bool on);

    // frmMainWorkflow.cpp: showing records and the record actions.
    void showRecord();
    void showEmpty();
    void controlsToValues();
    void valuesToControls();
    void updateCaption();
    void refreshAfterCheck();
    void showErrorList(const QString& errorText);
    bool handOverToErrorList();
    // Runs an export pass one turn of the event loop later (once for any number of hand-overs
    // made until then); runQueuedExport runs it at once, as leaving does.
    void queueExport();
    void runQueuedExport();
    void checkAll();
    void checkField(const QString& name);
    void actionBelegZumTest();
    void showOptions();
    void actionDrucken();
    void showAbout();
    void focusFirstFaultyField();
    void onOK();
    void onVerwerfen();

    // frmMainFields.cpp: field table, lengths, focus, cursor, validation and colours.
    QLineEdit* field(const QString& name) const;
    QList<QLineEdit*> fields() const;
    bool isDataField(const QWidget* widget) const;
    int tabIndexOf(const QWidget* widget) const;
    void buildFieldTable();
    void setFieldLengths();
    void colourFields(const QString& which);
    void placeCursor(QLineEdit* edit);
    void fieldEntered(QLineEdit* edit);
    void fieldLeft(QLineEdit* edit);
    void focusFirstField();
    void focusField(QWidget* widget);
    int searchFaultyFrom(int start, bool backwards);
    void f2Jump(bool backwards);

    // frmMainImage.cpp: the viewer beside the form.
    QString recordImageFile() const;
    void showFieldImage();
    void closeImage();
    void fullScreenImage();
    void raiseViewer();
    void connectImageActions();

    // frmMainKeys.cpp: the form sees keys before the controls.
    bool keyDown(QKeyEvent* key);
    bool keyPress(QKeyEvent* key);
    bool hotKeyMatches(const char* setting, int typed) const;
    bool configuredKeyMatches(const char* setting, const char* defaultKey, const QKeyEvent* key) const;
    bool viewerKey(const QKeyEvent* key);
    void noteFullField(QLineEdit* edit);
    void sendKey(int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier);

    // State of the form.
    qint32 current_ = -1;
    QString focusFieldName_;
    bool overwrite_ = false;
    int lastKeyCode_ = 0;
    QString enteredText_;
    QPointer<QLineEdit> enteredField_;

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
    QTimer* poll_ = nullptr;
    QTimer* exportTimer_ = nullptr;
    bool exportQueued_ = false; // a hand-over waits for its export pass
    bool exporting_ = false;
    bool scanning_ = false;     // the scan sequence runs: the look-out waits for its end
    bool firstStart_ = false;   // no stored place: the window and the viewer are tiled
    bool viewerPlaced_ = false; // the viewer took its place in this session
    QProgressBar* progressBar_ = nullptr;
    StatusBarProgress* progress_ = nullptr;
    QPointer<frmFehler> errorList_;

    QAction* mpOKWeiter_ = nullptr;
    QAction* mpBelegLoeschen_ = nullptr;
    QAction* mpEnde_ = nullptr;
    QAction* mpScannen_ = nullptr;
    QAction* mpScannerSelect_ = nullptr;
    QAction* mpScannerSettings_ = nullptr;
    QAction* mpDrucken_ = nullptr;
    QAction* mpBelegZumTest_ = nullptr;
    QAction* mpOptionen_ = nullptr;
    QAction* mpInfo_ = nullptr;
    QAction* mpStatusBar_ = nullptr;
    QAction* mpToolbar_ = nullptr;
    QAction* mpToggleBildanzeige_ = nullptr;
    QAction* mpVollbild_ = nullptr;
    QAction* mpZoomIn_ = nullptr;
    QAction* mpZoomOut_ = nullptr;
    QAction* mpLeft_ = nullptr;
    QAction* mpRight_ = nullptr;
    QAction* mpUp_ = nullptr;
    QAction* mpDown_ = nullptr;
    QAction* mpAktualisieren_ = nullptr;

    bool closing_ = false;
};

// The entered-by-F2 flag: set by the F2 jump, read and cleared by the next cursor placement. It is
// application-wide because the jump and the placement run in different handlers.
bool enteredByF2();
void setEnteredByF2(bool on);
