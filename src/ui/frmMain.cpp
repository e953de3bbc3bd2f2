// SPDX-License-Identifier: Apache-2.0
// frmMain: building the window (fields, buttons, menus, tool bar, status bar), the start of the form
// and the four display toggles that are stored at once in zvbSys.

#include "frmMain.h"

#include "ExportQueue.h"
#include "FieldNavigator.h"
#include "KeyRules.h"
#include "ScanActions.h"
#include "StatusBarProgress.h"
#include "ViewerLink.h"
#include "WindowPositions.h"
#include "app/Settings.h"
#include "app/mdlBackup.h"
#include "app/mdlDB.h"
#include "app/mdlMessages.h"
#include "lang/TranslateForm.h"

#include <QAction>
#include <QApplication>
#include <QFormLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QKeySequence>
#include <QLabel>
#include <QLineEdit>
#include <QMenuBar>
#include <QPainter>
#include <QProgressBar>
#include <QPushButton>
#include <QStatusBar>
#include <QStyle>
#include <QToolBar>
#include <QVBoxLayout>

namespace {

struct FieldCaption {
    const char* name;
    const char* caption; // UTF-8
};

// The ten fields with their design captions (German; TranslateForm replaces them per language).
const FieldCaption fieldCaptions[] = {
    {"FORM_ID", "Formular:"},
    {"SCANDAT", "Scandatum:"},
    {"STATE", "Staat:"},
    {"NACHNAME", "Nachname:"},
    {"VORNAME", "Vorname:"},
    {"GEBDAT", "Geburtsdatum:"},
    {"PERSONAL_ID", "Persönliche Kennnummer:"},
    {"INSTITUT_ID", "Kennnummer des Trägers:"},
    {"CARD_ID", "Kennnummer der Karte:"},
    {"CARD_EXPIRY", "Ablaufdatum:"},
};

QString utf8(const char* text) {
    return QString::fromUtf8(text);
}

// A tool-bar icon drawn from a short glyph, for the actions the style has no picture for.
QIcon glyphIcon(const QString& glyph) {
    QPixmap pixmap(24, 24);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    painter.setRenderHint(QPainter::Antialiasing);
    QFont font = painter.font();
    font.setBold(true);
    font.setPixelSize(glyph.size() > 3 ? 9 : glyph.size() > 1 ? 11 : 18);
    painter.setFont(font);
    painter.setPen(QColor(0x30, 0x30, 0x30));
    painter.drawText(pixmap.rect(), Qt::AlignCenter, glyph);
    return QIcon(pixmap);
}

QAction* makeAction(QObject* parent, const char* name, const char* text, bool checkable = false) {
    auto* action = new QAction(utf8(text), parent);
    action->setObjectName(QLatin1String(name));
    action->setCheckable(checkable);
    return action;
}

} // namespace

const QStringList& frmMain::fieldNames() {
    static const QStringList names = [] {
        QStringList list;
        for (const FieldCaption& f : fieldCaptions)
            list << QLatin1String(f.name);
        return list;
    }();
    return names;
}

frmMain::frmMain(QWidget* parent) : QMainWindow(parent) {
    setObjectName(QStringLiteral("frmMain"));
    auto* central = new QWidget(this);
    central->setObjectName(QStringLiteral("centralWidget"));
    setCentralWidget(central);
    buildFields();
    buildButtons();
    fields_ = new FieldNavigator(this, datensatz_, fieldNames(), buttonOK_);
    viewer_ = new ViewerLink(this, *fields_);
    // A hand-over's export pass runs before a scan empties the local pool; a click while the pass
    // is running (it processes events) starts no scan.
    scan_ = new ScanActions(
        this, buttonScannen_, [this] { takeAndShowNext(); },
        [this] {
            if (exports_->running())
                return false;
            exports_->runNow();
            return true;
        });
    auto* left = new QVBoxLayout;
    left->addWidget(datensatz_);
    auto* info = new QHBoxLayout;
    for (QLineEdit* edit : {lfdNr_, bmpName_, korrigiert_}) {
        auto* label = new QLabel(edit->property("designCaption").toString(), central);
        // "lblKorrigiert" keeps the capital of the record's column, as the stored captions name it.
        label->setObjectName(edit == korrigiert_ ? QStringLiteral("lblKorrigiert")
                                                 : QStringLiteral("lbl") + edit->objectName());
        label->setBuddy(edit);
        info->addWidget(label);
        info->addWidget(edit, edit == bmpName_ ? 3 : 1);
    }
    left->addLayout(info);
    left->addStretch(1);
    auto* right = new QVBoxLayout;
    for (QPushButton* button : {buttonOK_, buttonVerwerfen_, buttonScannen_})
        right->addWidget(button);
    right->addStretch(1);
    right->addWidget(buttonBeenden_);
    auto* columns = new QHBoxLayout(central);
    columns->addLayout(left, 1);
    columns->addLayout(right);

    buildMenus();
    buildToolBar();
    buildStatusBar();
    connectActions();

    // Tab order: the fields in their order, then the buttons; the field table takes its numbers
    // from this chain.
    QList<QWidget*> chain;
    for (QLineEdit* edit : fields_->fields())
        chain << edit;
    chain << buttonOK_ << buttonVerwerfen_ << buttonScannen_ << buttonBeenden_;
    QWidget* previous = nullptr;
    for (QWidget* w : std::as_const(chain)) {
        if (previous)
            setTabOrder(previous, w);
        previous = w;
    }
    connectKeys();

    // While the scan sequence runs the look-out (its timer and F5) takes nothing: the sequence
    // empties a workstation's own pool before it imports, and on a shared pool the first new
    // record would replace a record taken meanwhile on screen while it stayed held.
    lookout_ = new RecordLookout(
        this, waitingText_, todaysWork_, [this] { return current_ >= 0 || scan_->running(); },
        [this] { takeAndShowNext(); });
    exports_ = new ExportQueue(this);

    resize(760, 520);
    setWindowTitle(GetText(QStringLiteral("Caption_frmMain"), QStringLiteral("Veridon %1"), {QString()}));
    RunReported(QStringLiteral("frmMain.Form_Load"), [this] { loadForm(); });
}

frmMain::~frmMain() {
    // The keys and the watch on the fields end before the controls go. The viewer belongs to the
    // workspace and goes with it (its place was stored when leaving).
    delete keys_;
    delete viewer_;
    delete fields_;
    delete progress_;
}

// The window's captions in the current language, with the keys of the menu items after a tab (the
// stored captions carry none: the keys belong to the form's key handling and its settings).
void frmMain::translateWindow() {
    TranslateForm(this);
    showKeysInMenus();
    // The image display's button shows a word, not a picture: it follows the language too.
    mpToggleBildanzeige_->setIcon(glyphIcon(GetText(QStringLiteral("Txt_ToolbarBild"), QStringLiteral("Bild"))));
}

void frmMain::showKeysInMenus() {
    const auto keyText = [](const QString& portable) {
        return QKeySequence::fromString(portable, QKeySequence::PortableText).toString(QKeySequence::NativeText);
    };
    const struct {
        QAction* item;
        QString key;
    } keys[] = {
        {mpOKWeiter_, setting<Setting::Key_OK>()},   {mpBelegLoeschen_, setting<Setting::Key_Verwerfen>()},
        {mpAktualisieren_, QStringLiteral("F5")},    {mpVollbild_, QStringLiteral("F12")},
        {viewer_->zoomIn, QStringLiteral("Ctrl++")}, {viewer_->zoomOut, QStringLiteral("Ctrl+-")},
        {viewer_->left, QStringLiteral("Alt+Left")}, {viewer_->right, QStringLiteral("Alt+Right")},
        {viewer_->up, QStringLiteral("Alt+Up")},     {viewer_->down, QStringLiteral("Alt+Down")},
    };
    for (const auto& k : keys) {
        const QString caption = k.item->text().section(QLatin1Char('\t'), 0, 0);
        k.item->setText(k.key.isEmpty() ? caption : caption + QLatin1Char('\t') + keyText(k.key));
    }
}

void frmMain::lookForRecords() {
    lookout_->lookNow();
}

void frmMain::buildFields() {
    datensatz_ = new QGroupBox(utf8("Datensatz"), centralWidget());
    datensatz_->setObjectName(QStringLiteral("Datensatz"));
    auto* form = new QFormLayout(datensatz_);
    form->setFieldGrowthPolicy(QFormLayout::AllNonFixedFieldsGrow);
    for (const FieldCaption& f : fieldCaptions) {
        auto* edit = new QLineEdit(datensatz_);
        edit->setObjectName(QLatin1String(f.name));
        auto* label = new QLabel(utf8(f.caption), datensatz_);
        label->setObjectName(QStringLiteral("lbl") + QLatin1String(f.name));
        label->setBuddy(edit);
        form->addRow(label, edit);
    }
    auto readOnly = [this](const char* name, const char* caption) {
        auto* edit = new QLineEdit(centralWidget());
        edit->setObjectName(QLatin1String(name));
        edit->setReadOnly(true);
        edit->setFocusPolicy(Qt::NoFocus);
        edit->setProperty("designCaption", utf8(caption));
        return edit;
    };
    lfdNr_ = readOnly("LfdNr", "Nr.:");
    bmpName_ = readOnly("BMPName", "Bild:");
    korrigiert_ = readOnly("korrigiert", "korrigiert:");
    korrigiert_->setMaximumWidth(40);
    lfdNr_->setMaximumWidth(80);
}

void frmMain::buildButtons() {
    auto button = [this](const char* name, const char* text) {
        auto* b = new QPushButton(utf8(text), centralWidget());
        b->setObjectName(QLatin1String(name));
        b->setAutoDefault(false);
        b->setMinimumWidth(130);
        return b;
    };
    buttonOK_ = button("buttonOK", "&OK / übergeben");
    buttonVerwerfen_ = button("buttonVerwerfen", "&Verwerfen");
    buttonScannen_ = button("buttonScannen", "&Scannen");
    buttonBeenden_ = button("buttonBeenden", "B&eenden");
}

void frmMain::buildMenus() {
    // Shortcut texts follow a tab in the caption only: the keys themselves belong to the form's key
    // handling, which a real menu shortcut would pre-empt.
    mpDrucken_ = makeAction(this, "mpDrucken", "&Drucken");
    mpEnde_ = makeAction(this, "mpEnde", "&Beenden");
    mpOKWeiter_ = makeAction(this, "mpOKWeiter", "&OK / übergeben");
    mpBelegLoeschen_ = makeAction(this, "mpBelegLoeschen", "&Verwerfen");
    mpBelegZumTest_ = makeAction(this, "mpBelegZumTest", "Beleg zum &Test...");
    mpStatusBar_ = makeAction(this, "mpStatusBar", "&Statusleiste", true);
    mpToolbar_ = makeAction(this, "mpToolbar", "S&ymbolleiste", true);
    mpToggleBildanzeige_ = makeAction(this, "mpToggleBildanzeige", "Bild&anzeige", true);
    mpVollbild_ = makeAction(this, "mpVollbild", "&Vollbild", true);
    mpOptionen_ = makeAction(this, "mpOptionen", "&Optionen...");
    mpInfo_ = makeAction(this, "mpInfo", "&Info über Veridon...");
    mpAktualisieren_ = makeAction(this, "mpAktualisieren", "&Neue Belege suchen");

    QMenuBar* bar = menuBar();
    auto menu = [bar](const char* name, const char* title) {
        QMenu* m = bar->addMenu(utf8(title));
        m->setObjectName(QLatin1String(name));
        return m;
    };
    QMenu* datei = menu("mnuDatei", "&Datei");
    datei->addActions({scan_->scan, scan_->select, scan_->settings});
    datei->addSeparator();
    datei->addAction(mpDrucken_);
    datei->addSeparator();
    datei->addAction(mpEnde_);
    QMenu* beleg = menu("mnuBeleg", "&Beleg");
    beleg->addActions({mpOKWeiter_, mpBelegLoeschen_});
    beleg->addSeparator();
    beleg->addAction(mpAktualisieren_);
    beleg->addSeparator();
    beleg->addAction(mpBelegZumTest_);
    QMenu* ansicht = menu("mnuAnsicht", "&Ansicht");
    ansicht->addActions({mpStatusBar_, mpToolbar_});
    QMenu* bild = menu("mnuBild", "B&ild");
    bild->addActions({mpToggleBildanzeige_, mpVollbild_});
    bild->addSeparator();
    bild->addActions({viewer_->zoomIn, viewer_->zoomOut});
    bild->addSeparator();
    bild->addActions({viewer_->left, viewer_->right, viewer_->up, viewer_->down});
    QMenu* extras = menu("mnuExtras", "E&xtras");
    extras->addAction(mpOptionen_);
    QMenu* hilfe = menu("mnuHilfe", "&Hilfe");
    hilfe->addAction(mpInfo_);
}

void frmMain::buildToolBar() {
    toolbar_ = addToolBar(utf8("Symbolleiste"));
    toolbar_->setObjectName(QStringLiteral("Toolbar1"));
    toolbar_->setMovable(false);
    toolbar_->setFocusPolicy(Qt::NoFocus);
    QStyle* s = style();
    mpOKWeiter_->setIcon(s->standardIcon(QStyle::SP_DialogApplyButton));
    mpBelegLoeschen_->setIcon(s->standardIcon(QStyle::SP_TrashIcon));
    scan_->scan->setIcon(glyphIcon(QStringLiteral("Scan")));
    viewer_->zoomIn->setIcon(glyphIcon(QStringLiteral("+")));
    viewer_->zoomOut->setIcon(glyphIcon(QString(QChar(0x2212))));
    viewer_->left->setIcon(s->standardIcon(QStyle::SP_ArrowLeft));
    viewer_->right->setIcon(s->standardIcon(QStyle::SP_ArrowRight));
    viewer_->up->setIcon(s->standardIcon(QStyle::SP_ArrowUp));
    viewer_->down->setIcon(s->standardIcon(QStyle::SP_ArrowDown));
    mpVollbild_->setIcon(s->standardIcon(QStyle::SP_TitleBarMaxButton));
    toolbar_->addActions({mpOKWeiter_, mpBelegLoeschen_});
    toolbar_->addSeparator();
    toolbar_->addAction(scan_->scan);
    toolbar_->addSeparator();
    toolbar_->addActions({mpToggleBildanzeige_, viewer_->zoomIn, viewer_->zoomOut, viewer_->left, viewer_->right,
                          viewer_->up, viewer_->down});
    toolbar_->addSeparator();
    toolbar_->addAction(mpVollbild_);
    // The full-screen button is the one with the key "full"; it shares the check mark of mpVollbild.
    if (QWidget* full = toolbar_->widgetForAction(mpVollbild_))
        full->setObjectName(QStringLiteral("full"));
    for (QAction* a : toolbar_->actions())
        if (QWidget* w = toolbar_->widgetForAction(a))
            w->setFocusPolicy(Qt::NoFocus);
}

void frmMain::buildStatusBar() {
    statusText_ = new QLabel(statusBar());
    statusText_->setObjectName(QStringLiteral("statusText"));
    progressBar_ = new QProgressBar(statusBar());
    progressBar_->setObjectName(QStringLiteral("statusProgress"));
    progressBar_->setMaximumWidth(200);
    progressBar_->hide();
    // How many records wait stays in view beside whatever the status line says meanwhile.
    waitingText_ = new QLabel(statusBar());
    waitingText_->setObjectName(QStringLiteral("lblWarteschlange"));
    waitingText_->setToolTip(QStringLiteral("Belege, die auf Korrektur warten"));
    todaysWork_ = new QLabel(statusBar());
    todaysWork_->setObjectName(QStringLiteral("lblStatistik"));
    // The day's figures give way to the fields: they never widen the window, a narrow one cuts them.
    todaysWork_->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    statusBar()->addWidget(statusText_, 1);
    statusBar()->addWidget(todaysWork_, 2);
    statusBar()->addPermanentWidget(progressBar_);
    statusBar()->addPermanentWidget(waitingText_);
    progress_ = new StatusBarProgress(statusText_, progressBar_);
}

void frmMain::connectActions() {
    connect(buttonOK_, &QPushButton::clicked, this, &frmMain::onOK);
    connect(mpOKWeiter_, &QAction::triggered, this, &frmMain::onOK);
    connect(buttonVerwerfen_, &QPushButton::clicked, this, &frmMain::onVerwerfen);
    connect(mpBelegLoeschen_, &QAction::triggered, this, &frmMain::onVerwerfen);
    connect(buttonBeenden_, &QPushButton::clicked, this, &frmMain::actionBeenden);
    connect(mpEnde_, &QAction::triggered, this, &frmMain::actionBeenden);

    connect(mpStatusBar_, &QAction::triggered, this, &frmMain::toggleStatusBar);
    connect(mpToolbar_, &QAction::triggered, this, &frmMain::toggleToolBar);
    connect(mpToggleBildanzeige_, &QAction::triggered, this, &frmMain::toggleImageDisplay);
    connect(mpVollbild_, &QAction::triggered, this, &frmMain::toggleFullScreen);
    connect(mpBelegZumTest_, &QAction::triggered, this, &frmMain::actionBelegZumTest);
    connect(mpOptionen_, &QAction::triggered, this, &frmMain::showOptions);
    connect(mpDrucken_, &QAction::triggered, this, &frmMain::actionDrucken);
    connect(mpInfo_, &QAction::triggered, this, &frmMain::showAbout);
    connect(mpAktualisieren_, &QAction::triggered, this, &frmMain::lookForRecords);
    // Entering a field shows its region of the page; leaving it checks the field.
    connect(fields_, &FieldNavigator::fieldEntered, this, [this] { viewer_->showPage(current_); });
    connect(fields_, &FieldNavigator::fieldLeft, this, &frmMain::fieldLeft);
}

// The form sees keys before its controls; these are the window's actions the keys stand for.
void frmMain::connectKeys() {
    DeskActions actions;
    actions.handOver = [this] {
        onOK();
    };
    actions.discard = [this] {
        onVerwerfen();
    };
    actions.jumpToFaulty = [this](bool backwards) {
        if (current_ < 0) {
            QApplication::beep();
            return;
        }
        fields_->jump(backwards, [this] {
            if (!actionOK())
                return false;
            buttonOK_->setFocus(Qt::OtherFocusReason);
            takeAndShowNext();
            return current_ >= 0;
        });
    };
    actions.lookForRecords = [this] {
        lookForRecords();
    };
    actions.focusErrorList = [this] {
        return handOverToErrorList();
    };
    actions.fullScreen = [this] {
        mpVollbild_->trigger();
    };
    actions.nextControl = [this] {
        focusNextChild();
    };
    keys_ = new KeyRules(this, *fields_, *viewer_, std::move(actions));
}

void frmMain::loadForm() {
    focusFieldName_ = setting<Setting::GUI_FocusField>();
    mpBelegZumTest_->setVisible(IsBackupEnabled());
    fields_->storeFieldOrder();
    fields_->setFieldLengths();
    translateWindow();
    firstStart_ = !RestoreWindowPosition(this);
    if (firstStart_)
        tileFirstStart();
    applyStoredToggle(mpToggleBildanzeige_, setting<Setting::GUI_BildanzeigeEnabled>());
    applyStoredToggle(mpStatusBar_, setting<Setting::GUI_StatusBarEnabled>());
    applyStoredToggle(mpToolbar_, setting<Setting::GUI_ToolBarEnabled>());
    applyStoredToggle(mpVollbild_, setting<Setting::GUI_VollbildEnabled>());
    takeAndShowNext();
}

// Sets the item's check mark from the stored setting and runs its handler, so the screen matches
// what was stored when the program last ran.
void frmMain::applyStoredToggle(QAction* item, bool on) {
    item->setChecked(on);
    if (item == mpToggleBildanzeige_)
        toggleImageDisplay(on);
    else if (item == mpStatusBar_)
        toggleStatusBar(on);
    else if (item == mpToolbar_)
        toggleToolBar(on);
    else if (item == mpVollbild_)
        toggleFullScreen(on);
}

void frmMain::toggleStatusBar(bool on) {
    mpStatusBar_->setChecked(on);
    statusBar()->setVisible(on);
    RunReported(QStringLiteral("mpStatusBar_Click"), [on] { setSetting<Setting::GUI_StatusBarEnabled>(on); });
}

void frmMain::toggleToolBar(bool on) {
    mpToolbar_->setChecked(on);
    toolbar_->setVisible(on);
    RunReported(QStringLiteral("mpToolbar_Click"), [on] { setSetting<Setting::GUI_ToolBarEnabled>(on); });
}

void frmMain::toggleImageDisplay(bool on) {
    mpToggleBildanzeige_->setChecked(on);
    viewer_->setActionsEnabled(on);
    RunReported(QStringLiteral("mpToggleBildanzeige_Click"), [on] { setSetting<Setting::GUI_BildanzeigeEnabled>(on); });
    if (on)
        viewer_->showPage(current_);
    else
        viewer_->close();
}

// Full screen is on while the page is shown full screen: the viewer returns when the operator ends
// it, and the item (and the tool bar's "full" button) goes back to off, stored as such.
void frmMain::toggleFullScreen(bool on) {
    auto store = [this](bool state) {
        mpVollbild_->setChecked(state);
        RunReported(QStringLiteral("mpVollbild_Click"), [state] { setSetting<Setting::GUI_VollbildEnabled>(state); });
    };
    store(on);
    if (!on)
        return;
    viewer_->fullScreen(current_);
    store(false);
}
