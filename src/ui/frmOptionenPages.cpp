// SPDX-License-Identifier: Apache-2.0
// The four tabs of the options dialog: their controls with the German design texts, and which
// setting of the settings table each control edits (the table's default is what an unset one
// shows). Control arrays carry their number in the property "index", so their captions are
// translated as control(index).

#include "frmOptionen.h"

#include "app/FieldColours.h"
#include "app/mdlDB.h"

#include <QCheckBox>
#include <QComboBox>
#include <QFormLayout>
#include <QFrame>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QSpinBox>
#include <QToolButton>
#include <QVBoxLayout>

namespace {

template <class W> W* named(W* widget, const QString& name, int index = -1) {
    widget->setObjectName(name);
    if (index >= 0)
        widget->setProperty("index", index);
    return widget;
}

QLabel* label(const QString& name, const QString& text, QWidget* parent, int index = -1) {
    return named(new QLabel(text, parent), name, index);
}

QCheckBox* check(const QString& name, const QString& text, QWidget* parent) {
    return named(new QCheckBox(text, parent), name);
}

QSpinBox* spin(const QString& name, int maximum, QWidget* parent) {
    auto* box = named(new QSpinBox(parent), name);
    box->setRange(0, maximum);
    return box;
}

// The numbers F2_WasSuchen stores for the three choices: "?" only is 0, the colour rule alone needs
// the bit of value 2 without 0 or 2 themselves, so "rote Felder" only is 3, and both is 2.
constexpr int WasSuchenValues[] = {0, 3, 2};

} // namespace

QWidget* frmOptionen::buildBedienung() {
    auto* page = named(new QWidget, QStringLiteral("pageBedienung"));

    auto* languageLabel = label(QStringLiteral("lblSprache"), QStringLiteral("&Sprache:"), page);
    language_ = named(new QComboBox(page), QStringLiteral("cboSprache"));
    languageLabel->setBuddy(language_);
    bindCombo(Setting::APP_Language, Bedienung, language_);

    auto* cursor =
        named(new QGroupBox(QStringLiteral("Cursor beim Betreten eines Feldes"), page), QStringLiteral("fraCursor"));
    QList<QRadioButton*> cursorButtons;
    const QString cursorTexts[] = {QStringLiteral("ganzen Inhalt markieren"), QStringLiteral("an den Anfang"),
                                   QStringLiteral("an das Ende")};
    auto* cursorLayout = new QVBoxLayout(cursor);
    for (int i = 0; i < 3; ++i) {
        cursorButtons << named(new QRadioButton(cursorTexts[i], cursor), QStringLiteral("optCursor"), i);
        cursorLayout->addWidget(cursorButtons.last());
    }
    bindRadios(Setting::Cursor_allg, Bedienung, cursorButtons);
    auto* cursorF2 = check(QStringLiteral("chkCursorF2"), QStringLiteral("nach F2 das erste \"?\" markieren"), cursor);
    cursorLayout->addWidget(cursorF2);
    bindCheck(Setting::Cursor_F2, Bedienung, cursorF2);

    auto* search = named(new QGroupBox(QStringLiteral("Suche mit F2"), page), QStringLiteral("fraF2"));
    auto* searchLayout = new QGridLayout(search);
    auto* whatLabel = label(QStringLiteral("lblF2WasSuchen"), QStringLiteral("Suchen &nach:"), search);
    auto* what = named(new QComboBox(search), QStringLiteral("cboF2WasSuchen"));
    what->addItem(QStringLiteral("nur Fragezeichen"), WasSuchenValues[0]);
    what->addItem(QStringLiteral("nur 'rote Felder'"), WasSuchenValues[1]);
    what->addItem(QStringLiteral("beides!"), WasSuchenValues[2]);
    whatLabel->setBuddy(what);
    bindCombo(Setting::F2_WasSuchen, Bedienung, what);
    searchLayout->addWidget(whatLabel, 0, 0);
    searchLayout->addWidget(what, 0, 1);
    const QString howFarTexts[] = {QStringLiteral("am Ende den Beleg übergeben"),
                                   QStringLiteral("am Ende auf \"OK / übergeben\" springen"),
                                   QStringLiteral("übergeben und im nächsten Beleg weitersuchen")};
    QList<QRadioButton*> howFar;
    for (int i = 0; i < 3; ++i) {
        howFar << named(new QRadioButton(howFarTexts[i], search), QStringLiteral("optF2WieWeit"), i);
        searchLayout->addWidget(howFar.last(), i + 1, 0, 1, 2);
    }
    bindRadios(Setting::F2_WieWeitSuchen, Bedienung, howFar);

    auto* keys = named(new QGroupBox(QStringLiteral("Tastatur"), page), QStringLiteral("fraTastatur"));
    auto* keyLayout = new QGridLayout(keys);
    auto* enterLikeTab = check(QStringLiteral("chkEnterLikeTab"), QStringLiteral("Enter wirkt wie Tab"), keys);
    auto* numComma = check(QStringLiteral("chkNumKomma"), QStringLiteral("Komma im Ziffernblock wirkt wie Entf"), keys);
    bindCheck(Setting::Key_EnterLikeTab, Bedienung, enterLikeTab);
    bindCheck(Setting::Key_NUMKommaGleichEntf, Bedienung, numComma);
    keyLayout->addWidget(enterLikeTab, 0, 0, 1, 2);
    keyLayout->addWidget(numComma, 1, 0, 1, 2);
    for (int i = 0; i < 3; ++i) {
        auto* keyLabel = label(QStringLiteral("lblKey"), QStringLiteral("Ersatztaste für F&%1:").arg(i + 2), keys, i);
        auto* key = named(new QComboBox(keys), QStringLiteral("cboKey"), i);
        key->setToolTip(QStringLiteral("Taste, die wie F%1 wirkt").arg(i + 2));
        keyLabel->setBuddy(key);
        hotkeys_ << key;
        bindCombo(HotkeySettings[i], Bedienung, key);
        keyLayout->addWidget(keyLabel, i + 2, 0);
        keyLayout->addWidget(key, i + 2, 1);
    }
    // The keys that end a record from wherever the focus is: function keys the form does not use
    // otherwise, or Ctrl+Enter.
    const struct {
        const char* label;
        const char* caption;
        const char* combo;
        const char* tip;
        Setting setting;
    } recordKeys[] = {{"lblKeyOK", "Ü&bergeben mit:", "cboKeyOK",
                       "Taste, die den Beleg prüft und übergibt, wo auch immer der Cursor steht", Setting::Key_OK},
                      {"lblKeyVerwerfen", "Ver&werfen mit:", "cboKeyVerwerfen",
                       "Taste, die nach Rückfrage den Beleg verwirft", Setting::Key_Verwerfen}};
    for (const auto& k : recordKeys) {
        auto* keyLabel = label(QLatin1String(k.label), QString::fromUtf8(k.caption), keys);
        auto* key = named(new QComboBox(keys), QLatin1String(k.combo));
        key->setToolTip(QString::fromUtf8(k.tip));
        keyLabel->setBuddy(key);
        recordKeys_ << key;
        bindRecordKey(k.setting, key);
        keyLayout->addWidget(keyLabel, keyLayout->rowCount(), 0);
        keyLayout->addWidget(key, keyLayout->rowCount() - 1, 1);
    }

    auto* focusLabel = label(QStringLiteral("lblFocusField"), QStringLiteral("&Erstes Feld eines Belegs:"), page);
    focusField_ = named(new QComboBox(page), QStringLiteral("cboFocusField"));
    focusLabel->setBuddy(focusField_);
    bindCombo(Setting::GUI_FocusField, Bedienung, focusField_);

    auto* top = new QFormLayout;
    top->addRow(languageLabel, language_);
    top->addRow(focusLabel, focusField_);
    auto* layout = new QVBoxLayout(page);
    layout->addLayout(top);
    layout->addWidget(cursor);
    layout->addWidget(search);
    layout->addWidget(keys);
    layout->addStretch();
    return page;
}

QWidget* frmOptionen::buildSystem() {
    auto* page = named(new QWidget, QStringLiteral("pageSystem"));

    auto* form = new QFormLayout;
    state_ = named(new QComboBox(page), QStringLiteral("cboState"));
    bindCombo(Setting::APP_State, System, state_);
    form->addRow(label(QStringLiteral("lblState"), QStringLiteral("Land des Arbeitsplatzes:"), page), state_);
    auto* korrId = spin(QStringLiteral("spnKorrID"), 32767, page);
    bindSpin(Setting::APP_KorrID, System, korrId);
    form->addRow(label(QStringLiteral("lblKorrID"), QStringLiteral("Nummer des Korrekturplatzes:"), page), korrId);
    auto* scanId = named(new QLineEdit(page), QStringLiteral("txtRechnerId"));
    scanId->setMaxLength(10);
    bindText(Setting::Scan_RechnerId, System, scanId);
    form->addRow(label(QStringLiteral("lblRechnerId"), QStringLiteral("Nummer des Scanplatzes:"), page), scanId);

    auto* reports = named(new QGroupBox(QStringLiteral("Berichte"), page), QStringLiteral("fraBericht"));
    auto* reportForm = new QFormLayout(reports);
    auto* own =
        check(QStringLiteral("chkReportAmbrix"), QStringLiteral("Bericht für Karten des eigenen Landes"), reports);
    reportForm->addRow(own);
    // A card of the own country gets its report whenever the number is not 0; the number itself is
    // kept when the box stays ticked.
    bindings_.append({Setting::Report_Ambrix_Country, System,
                      [own](const QVariant& v) { own->setChecked(v.toInt() != 0); },
                      [own](const QVariant& stored) -> QVariant {
                          if (own->isChecked() == (stored.toInt() != 0) && !stored.isNull())
                              return stored;
                          return own->isChecked() ? 1 : 0;
                      }});
    auto* other = named(new QComboBox(reports), QStringLiteral("cboReportOther"));
    other->addItem(QStringLiteral("kein Bericht"), 0);
    other->addItem(QStringLiteral("stationär"), 1);
    other->addItem(QStringLiteral("ambulant"), 2);
    other->addItem(QStringLiteral("jedes Mal nachfragen"), 3);
    // Every number above 2 means "ask"; one that already means it is kept as it is.
    bindings_.append({Setting::Report_Other_Country, System,
                      [other](const QVariant& v) { other->setCurrentIndex(qBound(0, v.toInt(), 3)); },
                      [other](const QVariant& stored) -> QVariant {
                          if (!stored.isNull() && qBound(0, stored.toInt(), 3) == other->currentIndex())
                              return stored;
                          return other->currentIndex();
                      }});
    reportForm->addRow(label(QStringLiteral("lblReportOther"), QStringLiteral("Bericht für andere Länder:"), reports),
                       other);
    auto* useDefault =
        check(QStringLiteral("chkPrinterDefault"), QStringLiteral("auf dem Standarddrucker drucken"), reports);
    bindCheck(Setting::Report_PrinterUseDefault, System, useDefault);
    reportForm->addRow(useDefault);
    auto* printer = named(new QLineEdit(reports), QStringLiteral("txtPrinter"));
    bindText(Setting::Report_PrinterName, System, printer);
    connect(useDefault, &QCheckBox::toggled, printer, &QLineEdit::setDisabled);
    reportForm->addRow(label(QStringLiteral("lblPrinter"), QStringLiteral("Drucker:"), reports), printer);
    auto* font = named(new QLineEdit(reports), QStringLiteral("txtFont"));
    bindText(Setting::Report_FontName, System, font);
    reportForm->addRow(label(QStringLiteral("lblFont"), QStringLiteral("Schrift:"), reports), font);

    auto* backup = named(new QGroupBox(QStringLiteral("Datensicherung"), page), QStringLiteral("fraBackup"));
    auto* backupForm = new QFormLayout(backup);
    auto* enabled = check(QStringLiteral("chkBackup"), QStringLiteral("täglich sichern"), backup);
    // Stored as the text "1" or "0": only "1" switches the backup on.
    bindings_.append({Setting::Backup_Enabled, System,
                      [enabled](const QVariant& v) { enabled->setChecked(v.toString() == QLatin1String("1")); },
                      [enabled](const QVariant& stored) -> QVariant {
                          if (!stored.isNull() && (stored.toString() == QLatin1String("1")) == enabled->isChecked())
                              return stored;
                          return enabled->isChecked() ? QStringLiteral("1") : QStringLiteral("0");
                      }});
    auto* images = check(QStringLiteral("chkBackupBilder"), QStringLiteral("Bilder mitsichern"), backup);
    bindCheck(Setting::Backup_Bilder, System, images);
    auto* days = spin(QStringLiteral("spnHistoryDays"), 32767, backup);
    bindSpin(Setting::Backup_HistoryDays, System, days);
    backupForm->addRow(enabled);
    backupForm->addRow(images);
    backupForm->addRow(label(QStringLiteral("lblHistoryDays"), QStringLiteral("Tage aufbewahren (0 = immer):"), backup),
                       days);

    auto* layout = new QVBoxLayout(page);
    layout->addLayout(form);
    layout->addWidget(reports);
    layout->addWidget(backup);
    layout->addStretch();
    return page;
}

QWidget* frmOptionen::buildFarben() {
    auto* page = named(new QWidget, QStringLiteral("pageFarben"));
    auto* grid = new QGridLayout(page);
    const QString names[] = {QStringLiteral("Prüfung bestanden:"), QStringLiteral("ohne Prüfung:"),
                             QStringLiteral("Syntax korrekt:"),    QStringLiteral("fehlerhaft:"),
                             QStringLiteral("ausgegraut:"),        QStringLiteral("Warnung:")};
    for (int i = 0; i < 6; ++i) {
        auto* swatch = named(new QFrame(page), QStringLiteral("picFarbe"), i);
        swatch->setFrameShape(QFrame::Box);
        swatch->setMinimumSize(64, 22);
        swatch->setAutoFillBackground(true);
        swatches_ << swatch;
        auto* change = named(new QPushButton(QStringLiteral("Ä&ndern..."), page), QStringLiteral("cmdFarbe"), i);
        connect(change, &QPushButton::clicked, this, [this, i] { pickColour(i); });
        grid->addWidget(label(QStringLiteral("lblFarbe"), names[i], page, i), i, 0);
        grid->addWidget(swatch, i, 1);
        grid->addWidget(change, i, 2);
        const ColourSetting& setting = colourSettings[i];
        bindings_.append({setting.setting, Farben,
                          [this, i, setting](const QVariant& v) {
                              qint32 ref = parseColourText(QLatin1String(setting.defaultText));
                              try {
                                  if (!v.isNull())
                                      ref = parseColourText(v.toString());
                              } catch (const std::exception&) {
                                  // An unreadable colour shows (and is saved as) its default.
                              }
                              setColour(i, ref);
                          },
                          [this, i](const QVariant& stored) -> QVariant {
                              try {
                                  if (!stored.isNull() && parseColourText(stored.toString()) == colours_[i])
                                      return stored;
                              } catch (const std::exception&) {
                              }
                              return colourText(colours_[i]);
                          }});
    }
    auto* defaults =
        named(new QPushButton(QStringLiteral("&Standardfarben"), page), QStringLiteral("cmdStandardfarben"));
    connect(defaults, &QPushButton::clicked, this, &frmOptionen::resetColours);
    grid->addWidget(defaults, 6, 2);
    grid->setColumnStretch(3, 1);
    grid->setRowStretch(7, 1);
    return page;
}

QWidget* frmOptionen::buildPfade() {
    auto* page = named(new QWidget, QStringLiteral("pagePfade"));
    auto* grid = new QGridLayout(page);
    struct PathSetting {
        Setting setting;
        QString caption;
        bool file;
    };
    const PathSetting settings[] = {
        {Setting::APP_ServerDB, QStringLiteral("Zentrale Datenbank:"), true},
        {Setting::APP_Bildpfad, QStringLiteral("Bilder:"), false},
        {Setting::APP_TestBildpfad, QStringLiteral("Testablage:"), false},
        {Setting::Scan_Pfad, QStringLiteral("Scanordner:"), false},
        {Setting::Import_Datei, QStringLiteral("Importdatei:"), true},
        {Setting::Export_Pfad, QStringLiteral("Export:"), false},
        {Setting::Backup_Pfad, QStringLiteral("Datensicherung:"), false},
        {Setting::Report_Pfad, QStringLiteral("Berichtsvorlagen:"), false},
    };
    int i = 0;
    for (const PathSetting& s : settings) {
        QLabel* caption = label(QStringLiteral("lblPfad"), s.caption, page, i);
        auto* edit = named(new QLineEdit(page), QStringLiteral("txtPfad"), i);
        edit->setMinimumWidth(320);
        caption->setBuddy(edit);
        auto* pick = named(new QToolButton(page), QStringLiteral("cmdPfad"), i);
        pick->setText(QStringLiteral("..."));
        pick->setToolTip(s.file ? QStringLiteral("Datei auswählen") : QStringLiteral("Ordner auswählen"));
        connect(pick, &QToolButton::clicked, this, [this, i] { pickPath(i); });
        bindText(s.setting, Pfade, edit);
        paths_ << edit;
        pathIsFile_ << s.file;
        pathLabels_ << caption;
        grid->addWidget(caption, i, 0);
        grid->addWidget(edit, i, 1);
        grid->addWidget(pick, i, 2);
        ++i;
    }
    grid->setColumnStretch(1, 1);
    grid->setRowStretch(i, 1);
    return page;
}
