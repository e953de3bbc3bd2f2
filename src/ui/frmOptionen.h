// SPDX-License-Identifier: Apache-2.0
// The options dialog: four tabs that edit the settings row zvbSys. "Bedienung" holds what the
// operator tunes for himself (language, cursor placement, the F2 search, keys and hot keys);
// "System" the workstation's identity, reports and backup; "Farben" the six field colours; "Pfade"
// the database, image, scan, import, export, backup and report folders.
//
// The "System" and "Pfade" tabs change how the workstation works together with others (workstation
// numbers, shared folders, the central database), so they are shown read-only unless the program
// was started with the switch "/admin" (or "--admin"). OK writes all editable settings at once and
// reloads the language; doubly assigned hot keys are refused with "Msg_DoubleHotkey" and nothing is
// written.
#pragma once

#include "FormDialog.h"
#include "admin/mdlOptionen.h"

#include <QCoreApplication>
#include <QStringList>
#include <QVariantMap>
#include <functional>

class QCheckBox;
class QComboBox;
class QFrame;
class QLabel;
class QLineEdit;
class QRadioButton;
class QSpinBox;
class QTabWidget;

class frmOptionen : public FormDialog {
    Q_OBJECT
public:
    // The tabs, in their order.
    enum Page { Bedienung = 0, System = 1, Farben = 2, Pfade = 3 };

    // Builds the dialog and loads the settings. arguments are the program's command line; the switch
    // "/admin" or "--admin" among them unlocks the System and Pfade tabs.
    explicit frmOptionen(QWidget* parent = nullptr, const QStringList& arguments = QCoreApplication::arguments());

    // True when arguments hold "/admin" or "--admin" (in any case).
    static bool hasAdminSwitch(const QStringList& arguments);
    bool isAdmin() const { return admin_; }

    // The settings OK would write: every column of the editable tabs with the value its control
    // shows. A control that shows no choice (a value no list entry stands for) keeps the stored
    // value, and so does a control whose meaning did not change.
    SettingValues editedValues() const;

    // The colour of entry i of colourSettings (0 Color_OK ... 5 Color_Warnung) as a colour reference.
    qint32 colour(int index) const { return colours_[index]; }
    // Sets colour i and its swatch, as the colour picker does.
    void setColour(int index, qint32 ref);

public slots:
    // Saves (see above); closes only when the settings were written.
    void accept() override;

private slots:
    void pickColour(int index);
    void pickPath(int index);
    void resetColours();

private:
    // A setting of the table and how its control shows and edits it.
    struct Binding {
        Setting setting;
        Page page;
        std::function<void(const QVariant&)> load;
        std::function<QVariant(const QVariant& stored)> value;
    };

    QWidget* buildBedienung();
    QWidget* buildSystem();
    QWidget* buildFarben();
    QWidget* buildPfade();
    void fillChoices();
    void loadValues();
    bool editable(Page page) const { return admin_ || (page != System && page != Pfade); }

    void bindCheck(Setting setting, Page page, QCheckBox* box);
    void bindRadios(Setting setting, Page page, const QList<QRadioButton*>& buttons);
    void bindCombo(Setting setting, Page page, QComboBox* combo);
    void bindText(Setting setting, Page page, QLineEdit* edit);
    void bindSpin(Setting setting, Page page, QSpinBox* spin);
    void bindRecordKey(Setting setting, QComboBox* combo);

    bool admin_;
    QVariantMap stored_;
    QList<Binding> bindings_;
    QTabWidget* tabs_ = nullptr;
    QList<QComboBox*> hotkeys_;
    QList<QComboBox*> recordKeys_; // the keys for hand-over and discard
    QComboBox* language_ = nullptr;
    QComboBox* state_ = nullptr;
    QComboBox* focusField_ = nullptr;
    QList<QFrame*> swatches_;
    qint32 colours_[6] = {};
    QList<QLineEdit*> paths_;
    QList<bool> pathIsFile_;
    QList<QLabel*> pathLabels_;
};
