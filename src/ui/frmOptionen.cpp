// SPDX-License-Identifier: Apache-2.0
#include "frmOptionen.h"

#include "app/FieldColours.h"
#include "app/mdlDB.h"
#include "app/mdlMessages.h"

#include <QCheckBox>
#include <QColorDialog>
#include <QComboBox>
#include <QDir>
#include <QFileDialog>
#include <QFrame>
#include <QHBoxLayout>
#include <QKeySequence>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QSpinBox>
#include <QTabWidget>
#include <QVBoxLayout>

namespace {

// The file dialogs' filter from the message text in the classic notation "Alle Dateien (*.*)|*.*"
// (description and pattern alternating): "*.*" would miss files without a dot here, so it becomes "*".
QString fileDialogFilter() {
    const QStringList parts = GetText(Msg::Txt_ComDlgFilter).split(QLatin1Char('|'));
    QStringList filters;
    for (qsizetype i = 0; i + 1 < parts.size(); i += 2) {
        QString description = parts[i];
        const qsizetype bracket = description.indexOf(QLatin1Char('('));
        if (bracket > 0)
            description = description.left(bracket);
        QString patterns = parts[i + 1];
        patterns.replace(QLatin1Char(';'), QLatin1Char(' ')).replace(QLatin1String("*.*"), QLatin1String("*"));
        filters << description.trimmed() + QStringLiteral(" (") + patterns.trimmed() + QLatin1Char(')');
    }
    return filters.join(QStringLiteral(";;"));
}

// A caption as a dialog title: without the mnemonic and the closing colon.
QString titleOf(const QLabel* label) {
    QString text = label->text();
    text.remove(QLatin1Char('&'));
    if (text.endsWith(QLatin1Char(':')))
        text.chop(1);
    return text;
}

QColor colorOf(qint32 ref) {
    return QColor(colourRed(ref), colourGreen(ref), colourBlue(ref));
}

qint32 refOf(const QColor& colour) {
    return colour.red() | (colour.green() << 8) | (colour.blue() << 16);
}

// Entry of combo whose data stands for value (texts compare without regard to case, as the database
// does), or -1.
int findValue(const QComboBox* combo, const QVariant& value) {
    for (int i = 0; i < combo->count(); ++i) {
        const QVariant data = combo->itemData(i);
        if (data.toString().compare(value.toString(), Qt::CaseInsensitive) == 0)
            return i;
    }
    return -1;
}

} // namespace

frmOptionen::frmOptionen(QWidget* parent, const QStringList& arguments)
    : FormDialog(QStringLiteral("frmOptionen"), parent), admin_(hasAdminSwitch(arguments)) {
    setWindowTitle(QStringLiteral("Optionen"));
    tabs_ = new QTabWidget(this);
    tabs_->setObjectName(QStringLiteral("tabOptionen"));
    tabs_->addTab(buildBedienung(), QStringLiteral("Bedienung"));
    tabs_->addTab(buildSystem(), QStringLiteral("System"));
    tabs_->addTab(buildFarben(), QStringLiteral("Farben"));
    tabs_->addTab(buildPfade(), QStringLiteral("Pfade"));
    tabs_->setTabToolTip(Bedienung, QStringLiteral("Tastatur, Cursor und Suche mit F2"));
    tabs_->setTabToolTip(System, QStringLiteral("Arbeitsplatz, Berichte und Datensicherung"));
    tabs_->setTabToolTip(Farben, QStringLiteral("Farben der Felder nach ihrem Prüfergebnis"));
    tabs_->setTabToolTip(Pfade, QStringLiteral("Ordner und Dateien des Arbeitsplatzes"));

    auto* locked = new QLabel(
        QStringLiteral("\"System\" und \"Pfade\" lassen sich nur nach einem Start mit dem Schalter /admin ändern."),
        this);
    locked->setObjectName(QStringLiteral("lblAdmin"));
    locked->setWordWrap(true);
    locked->setVisible(!admin_);
    for (Page page : {System, Pfade})
        tabs_->widget(page)->setEnabled(admin_);

    auto* ok = new QPushButton(QStringLiteral("&OK"), this);
    ok->setObjectName(QStringLiteral("cmdOK"));
    ok->setDefault(true);
    auto* cancel = new QPushButton(QStringLiteral("&Abbrechen"), this);
    cancel->setObjectName(QStringLiteral("cmdAbbrechen"));
    connect(ok, &QPushButton::clicked, this, &frmOptionen::accept);
    connect(cancel, &QPushButton::clicked, this, &frmOptionen::reject);
    auto* buttons = new QHBoxLayout;
    buttons->addWidget(locked, 1);
    buttons->addStretch(); // keeps the buttons at the right when the hint is hidden
    buttons->addWidget(ok);
    buttons->addWidget(cancel);

    auto* layout = new QVBoxLayout(this);
    layout->addWidget(tabs_);
    layout->addLayout(buttons);

    // Fixed captions and list entries are translated first; the lists filled from master data and
    // the settings come after, so a translation never stands in for a stored value.
    formLoaded();
    fillChoices();
    loadValues();
}

bool frmOptionen::hasAdminSwitch(const QStringList& arguments) {
    for (const QString& argument : arguments)
        if (argument.compare(QLatin1String("/admin"), Qt::CaseInsensitive) == 0 ||
            argument.compare(QLatin1String("--admin"), Qt::CaseInsensitive) == 0)
            return true;
    return false;
}

void frmOptionen::fillChoices() {
    RunReported(QStringLiteral("frmOptionen.FillChoices"), [&] {
        const QList<OptionChoice> keys = HotkeyChoices();
        const QString none = GetText(Msg::Txt_ComboEntryNone);
        for (QComboBox* combo : std::as_const(hotkeys_)) {
            combo->addItem(none, 0);
            for (const OptionChoice& key : keys)
                combo->addItem(key.text, key.value);
        }
        for (const OptionChoice& language : LanguageChoices())
            language_->addItem(language.text, language.value);
        for (const OptionChoice& state : StateChoices())
            state_->addItem(state.text, state.value);
        for (const QString& field : FormFieldNames())
            focusField_->addItem(field, field);
    });
}

void frmOptionen::loadValues() {
    RunReported(QStringLiteral("frmOptionen.LoadSettings"), [&] { stored_ = ReadSettingsRow(); });
    for (const Binding& binding : std::as_const(bindings_))
        binding.load(stored_.value(settingName(binding.setting)));
}

SettingValues frmOptionen::editedValues() const {
    SettingValues values;
    // A setting the home's table does not have yet (a home made by an older version) is not
    // written; the program uses its default for it.
    for (const Binding& binding : bindings_) {
        const QString column = settingName(binding.setting);
        if (editable(binding.page) && stored_.contains(column))
            values.append({column, binding.value(stored_.value(column))});
    }
    return values;
}

void frmOptionen::accept() {
    // One key cannot both hand over and discard.
    const QString okKey = recordKeys_[0]->currentData().toString();
    if (!okKey.isEmpty() && okKey == recordKeys_[1]->currentData().toString()) {
        ShowMessage(Msg::DoubleHotkey, MsgBox::Exclamation);
        tabs_->setCurrentIndex(Bedienung);
        return;
    }
    if (!SaveOptions(editedValues())) {
        tabs_->setCurrentIndex(Bedienung);
        return;
    }
    FormDialog::accept();
}

void frmOptionen::setColour(int index, qint32 ref) {
    colours_[index] = ref;
    QPalette palette = swatches_[index]->palette();
    palette.setColor(QPalette::Window, colorOf(ref));
    swatches_[index]->setPalette(palette);
}

void frmOptionen::pickColour(int index) {
    QColorDialog dialog(colorOf(colours_[index]), this);
    dialog.setObjectName(QStringLiteral("dlgFarbe"));
    if (dialog.exec() == QDialog::Accepted && dialog.selectedColor().isValid())
        setColour(index, refOf(dialog.selectedColor()));
}

void frmOptionen::resetColours() {
    for (int i = 0; i < 6; ++i)
        setColour(i, parseColourText(QLatin1String(colourSettings[i].defaultText)));
}

void frmOptionen::pickPath(int index) {
    QLineEdit* edit = paths_[index];
    QFileDialog dialog(this, titleOf(pathLabels_[index]), edit->text());
    dialog.setObjectName(QStringLiteral("dlgPfad"));
    if (pathIsFile_[index]) {
        // The file need not exist yet (an import file the evaluation writes later).
        dialog.setFileMode(QFileDialog::AnyFile);
        dialog.setNameFilter(fileDialogFilter());
        if (!edit->text().isEmpty())
            dialog.selectFile(edit->text());
    } else {
        dialog.setFileMode(QFileDialog::Directory);
        dialog.setOption(QFileDialog::ShowDirsOnly);
    }
    if (dialog.exec() == QDialog::Accepted && !dialog.selectedFiles().isEmpty())
        edit->setText(QDir::toNativeSeparators(dialog.selectedFiles().constFirst()));
}

void frmOptionen::bindCheck(Setting setting, Page page, QCheckBox* box) {
    const bool defaultValue = settingDefault(setting).toBool();
    bindings_.append({setting, page,
                      [box, defaultValue](const QVariant& v) { box->setChecked(ToFlag(v, defaultValue)); },
                      [box, defaultValue](const QVariant& stored) -> QVariant {
                          if (!stored.isNull() && ToFlag(stored, defaultValue) == box->isChecked())
                              return stored;
                          return box->isChecked();
                      }});
}

void frmOptionen::bindRadios(Setting setting, Page page, const QList<QRadioButton*>& buttons) {
    bindings_.append({setting, page,
                      [buttons](const QVariant& v) {
                          for (qsizetype i = 0; i < buttons.size(); ++i)
                              buttons[i]->setChecked(!v.isNull() && v.toInt() == i);
                      },
                      [buttons](const QVariant& stored) -> QVariant {
                          for (qsizetype i = 0; i < buttons.size(); ++i)
                              if (buttons[i]->isChecked())
                                  return int(i);
                          return stored;
                      }});
}

void frmOptionen::bindCombo(Setting setting, Page page, QComboBox* combo) {
    bindings_.append({setting, page,
                      [combo](const QVariant& v) {
                          int index = v.isNull() ? -1 : findValue(combo, v);
                          if (index < 0 && !v.isNull() && !v.toString().isEmpty()) {
                              // A stored value no entry stands for is shown as it is, and kept.
                              combo->addItem(v.toString(), v);
                              index = combo->count() - 1;
                          }
                          combo->setCurrentIndex(index);
                      },
                      [combo](const QVariant& stored) -> QVariant {
                          if (combo->currentIndex() < 0)
                              return stored;
                          const QVariant chosen = combo->currentData();
                          if (!stored.isNull() &&
                              chosen.toString().compare(stored.toString(), Qt::CaseInsensitive) == 0)
                              return stored;
                          return chosen;
                      }});
}

// A key for hand-over or discard, stored as its portable name ("F10"); "" is no key, and an unset
// setting shows (and keeps) the key the form uses then.
void frmOptionen::bindRecordKey(Setting setting, QComboBox* combo) {
    const QString defaultKey = settingDefault(setting).toString();
    static const char* const offered[] = {"F6", "F7", "F8", "F9", "F10", "F11", "Ctrl+Return"};
    combo->addItem(GetText(Msg::Txt_ComboEntryNone), QString());
    for (const char* key : offered)
        combo->addItem(QKeySequence::fromString(QLatin1String(key)).toString(QKeySequence::NativeText),
                       QLatin1String(key));
    bindings_.append({setting, Bedienung,
                      [combo, defaultKey](const QVariant& v) {
                          const QString key = v.isNull() ? defaultKey : v.toString();
                          int index = findValue(combo, key);
                          if (index < 0) {
                              combo->addItem(key, key);
                              index = combo->count() - 1;
                          }
                          combo->setCurrentIndex(index);
                      },
                      [combo, defaultKey](const QVariant& stored) -> QVariant {
                          const QString chosen = combo->currentData().toString();
                          return stored.isNull() && chosen == defaultKey ? stored : QVariant(chosen);
                      }});
}

void frmOptionen::bindText(Setting setting, Page page, QLineEdit* edit) {
    bindings_.append({setting, page, [edit](const QVariant& v) { edit->setText(v.toString()); },
                      [edit](const QVariant& stored) -> QVariant {
                          const QString text = edit->text().trimmed();
                          if (text == stored.toString())
                              return stored;
                          // An emptied box means "not set", as a setting that never was.
                          return text.isEmpty() ? QVariant() : QVariant(text);
                      }});
}

void frmOptionen::bindSpin(Setting setting, Page page, QSpinBox* spin) {
    bindings_.append({setting, page, [spin](const QVariant& v) { spin->setValue(v.toInt()); },
                      [spin](const QVariant& stored) -> QVariant {
                          if (stored.isNull() && spin->value() == 0)
                              return stored;
                          return spin->value();
                      }});
}
