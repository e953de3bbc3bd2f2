// SPDX-License-Identifier: Apache-2.0
// The options dialog on a real home: what it shows, each setting it edits bound to its column of
// zvbSys (an unset one showing the table's default), what OK writes, the hot-key rule, the colour
// and folder pickers, the /admin switch and the language switch.

#include "ui/frmOptionen.h"
#include "WindowTexts.h"
#include "admin/mdlOptionen.h"
#include "app/Settings.h"
#include "app/mdlDB.h"
#include "app/mdlMessages.h"

#include <QApplication>
#include <QCheckBox>
#include <QColorDialog>
#include <QComboBox>
#include <QFileDialog>
#include <QFrame>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QSpinBox>
#include <QTabWidget>
#include <QTest>
#include <QTimer>
#include <functional>

namespace {

template <class W> W* control(const QWidget* window, const char* name, int index = -1) {
    for (W* c : window->findChildren<W*>(QLatin1String(name)))
        if (index < 0 || c->property("index").toInt() == index)
            return c;
    ADD_FAILURE() << "no control " << name << '(' << index << ')';
    return nullptr;
}

// Runs handle on the next modal dialog of type D once it is open (inside its exec()).
template <class D> void whenDialogOpens(std::function<void(D*)> handle) {
    QTimer::singleShot(0, [handle] {
        if (auto* dialog = qobject_cast<D*>(QApplication::activeModalWidget()))
            handle(dialog);
        else
            whenDialogOpens<D>(handle);
    });
}

void choose(QComboBox* combo, const QVariant& value) {
    const int index = combo->findData(value);
    ASSERT_GE(index, 0) << value.toString().toStdString();
    combo->setCurrentIndex(index);
}

class Optionen : public WindowTest {
protected:
    const QStringList admin{"veridon", "/admin"};

    static void pressOK(frmOptionen& dialog) { control<QPushButton>(&dialog, "cmdOK")->click(); }
    // Clicks colour button index and answers its colour picker with colour, accepting or cancelling.
    static void pickColour(frmOptionen& dialog, int index, const QColor& colour, bool accept = true) {
        whenDialogOpens<QColorDialog>([colour, accept](QColorDialog* picker) {
            picker->setCurrentColor(colour);
            accept ? picker->accept() : picker->reject();
        });
        control<QPushButton>(&dialog, "cmdFarbe", index)->click();
    }
};

// What the dialog shows of the stored row where a value is more than a number (list texts, paths,
// colours).
TEST_F(Optionen, shows_the_stored_settings_as_an_operator_reads_them) {
    frmOptionen dialog(nullptr, admin);
    EXPECT_EQ(control<QComboBox>(&dialog, "cboF2WasSuchen")->currentText(), "nur Fragezeichen");
    EXPECT_EQ(control<QComboBox>(&dialog, "cboKey", 0)->currentText(), "+ (Ziffernblock)");
    EXPECT_EQ(control<QComboBox>(&dialog, "cboKey", 1)->currentText(), "(keinen)");
    EXPECT_EQ(control<QComboBox>(&dialog, "cboSprache")->currentText(), "Deutsch");
    EXPECT_EQ(control<QComboBox>(&dialog, "cboReportOther")->currentText(), "jedes Mal nachfragen");
    EXPECT_EQ(control<QLineEdit>(&dialog, "txtPfad", 2)->text(), home.path("test"));
    // Color_Fehler "&HA0A0FF": red FF, green A0, blue A0.
    EXPECT_EQ(control<QFrame>(&dialog, "picFarbe", 3)->palette().color(QPalette::Window), QColor(0xFF, 0xA0, 0xA0));
}

// Values a workstation might hold, each unlike the demo's and unlike the table's default.
const std::pair<Setting, QVariant> storedValues[] = {
    {Setting::APP_ServerDB, "/srv/veridon/zentrale.mdb"},
    {Setting::APP_Language, "EN"},
    {Setting::APP_State, "AT"},
    {Setting::APP_KorrID, 7},
    {Setting::APP_Bildpfad, "/srv/veridon/bilder"},
    {Setting::APP_TestBildpfad, "/srv/veridon/testablage"},
    {Setting::Color_OK, "&H80FF80"},
    {Setting::Color_NoCheck, "&HF0F0F0"},
    {Setting::Color_Syntaxok, "&HD0FFD0"},
    {Setting::Color_Fehler, "&H8080FF"},
    {Setting::Color_Ausgegraut, "&HA0A0A0"},
    {Setting::Color_Warnung, "&H40FFFF"},
    {Setting::Cursor_allg, 2},
    {Setting::Cursor_F2, false},
    {Setting::F2_WasSuchen, 3},
    {Setting::F2_WieWeitSuchen, 2},
    {Setting::GUI_FocusField, "NACHNAME"},
    {Setting::Key_EnterLikeTab, false},
    {Setting::Key_NUMKommaGleichEntf, true},
    {Setting::Key_F2, 2},
    {Setting::Key_F3, 3},
    {Setting::Key_F4, 0},
    {Setting::Key_OK, "F9"},
    {Setting::Key_Verwerfen, "F6"},
    {Setting::Key_Alternative, "F7"},
    {Setting::Scan_Pfad, "/srv/veridon/scan"},
    {Setting::Scan_RechnerId, "07"},
    {Setting::Import_Datei, "/srv/veridon/import/zvscan.txt"},
    {Setting::Export_Pfad, "/srv/veridon/export"},
    {Setting::Backup_Enabled, "0"},
    {Setting::Backup_Bilder, false},
    {Setting::Backup_Pfad, "/srv/veridon/sicherung"},
    {Setting::Backup_HistoryDays, 14},
    {Setting::Report_Ambrix_Country, 0},
    {Setting::Report_Other_Country, 2},
    {Setting::Report_Pfad, "/srv/veridon/berichte"},
    {Setting::Report_FontName, "DejaVu Sans Mono"},
    {Setting::Report_PrinterUseDefault, false},
    {Setting::Report_PrinterName, "Buero-Laser"},
};

TEST_F(Optionen, every_edited_setting_comes_back_as_stored_and_ok_keeps_the_row) {
    for (const auto& [s, value] : storedValues)
        SetSysValue(settingName(s), value);
    const QVariantMap before = ReadSettingsRow();
    frmOptionen dialog(nullptr, admin);
    dialog.show();

    QStringList edited;
    for (const auto& [column, value] : dialog.editedValues()) {
        edited << column;
        EXPECT_EQ(value, before.value(column)) << column.toStdString();
    }
    QStringList expected;
    for (const auto& entry : storedValues)
        expected << settingName(entry.first);
    edited.sort();
    expected.sort();
    EXPECT_EQ(edited, expected) << "each setting bound once, and only these";

    pressOK(dialog);
    EXPECT_EQ(dialog.result(), QDialog::Accepted);
    EXPECT_EQ(ReadSettingsRow(), before);
}

// Unset, a setting shows what the program takes for it, and OK leaves the key settings unset.
TEST_F(Optionen, an_unset_setting_shows_the_tables_default) {
    for (Setting s : {Setting::Report_PrinterUseDefault, Setting::Cursor_F2, Setting::Key_OK, Setting::Key_Verwerfen})
        SetSysValue(settingName(s), QVariant());
    frmOptionen dialog(nullptr, admin);
    EXPECT_TRUE(control<QCheckBox>(&dialog, "chkPrinterDefault")->isChecked());
    EXPECT_FALSE(control<QCheckBox>(&dialog, "chkCursorF2")->isChecked());
    EXPECT_EQ(control<QComboBox>(&dialog, "cboKeyOK")->currentData().toString(), "F10");
    EXPECT_EQ(control<QComboBox>(&dialog, "cboKeyVerwerfen")->currentData().toString(), "F8");
    dialog.show();
    pressOK(dialog);
    EXPECT_TRUE(GetSysValue("Key_OK").isNull());
    EXPECT_TRUE(GetSysValue("Key_Verwerfen").isNull());
}

TEST_F(Optionen, ok_writes_the_changed_settings) {
    frmOptionen dialog(nullptr, {});
    dialog.show();
    control<QRadioButton>(&dialog, "optCursor", 2)->click();
    control<QRadioButton>(&dialog, "optF2WieWeit", 2)->click();
    control<QCheckBox>(&dialog, "chkEnterLikeTab")->click();
    control<QCheckBox>(&dialog, "chkNumKomma")->click();
    control<QComboBox>(&dialog, "cboF2WasSuchen")->setCurrentIndex(1);
    choose(control<QComboBox>(&dialog, "cboKey", 1), 3);
    choose(control<QComboBox>(&dialog, "cboFocusField"), "NACHNAME");
    pressOK(dialog);
    EXPECT_EQ(dialog.result(), QDialog::Accepted);
    EXPECT_EQ(GetSysValue("Cursor_allg").toInt(), 2);
    EXPECT_EQ(GetSysValue("F2_WieWeitSuchen").toInt(), 2);
    EXPECT_FALSE(GetSysFlag("Key_EnterLikeTab", true));
    EXPECT_TRUE(GetSysFlag("Key_NUMKommaGleichEntf", false));
    EXPECT_EQ(GetSysValue("F2_WasSuchen").toInt(), 3) << "red fields only";
    EXPECT_EQ(GetSysValue("Key_F2").toInt(), 1);
    EXPECT_EQ(GetSysValue("Key_F3").toInt(), 3);
    EXPECT_EQ(GetSysValue("Key_F4").toInt(), 0);
    EXPECT_EQ(GetSysText("GUI_FocusField"), "NACHNAME");
}

TEST_F(Optionen, a_hot_key_assigned_twice_is_refused_and_the_dialog_stays_open) {
    frmOptionen dialog(nullptr, {});
    dialog.show();
    control<QRadioButton>(&dialog, "optCursor", 1)->click();
    choose(control<QComboBox>(&dialog, "cboKey", 2), 1); // the key F2 already has
    pressOK(dialog);
    EXPECT_EQ(messages.prompts(),
              QStringList{"HotKeys doppelt vergeben, Einstellungen können nicht gespeichert werden!"});
    EXPECT_TRUE(dialog.isVisible());
    EXPECT_EQ(GetSysValue("Cursor_allg").toInt(), 0) << "nothing at all was written";
    // Two keys left without a hot key are fine.
    choose(control<QComboBox>(&dialog, "cboKey", 2), 0);
    pressOK(dialog);
    EXPECT_FALSE(dialog.isVisible());
    EXPECT_EQ(GetSysValue("Cursor_allg").toInt(), 1);
}

// Colours are stored as "&H" and blue-green-red hex; an unreadable one shows the default, the
// default button resets all, a cancelled picker changes nothing.
TEST_F(Optionen, colours_are_stored_as_blue_green_red_text) {
    SetSysValue("Color_OK", "&H123456");
    SetSysValue("Color_Ausgegraut", "grau");
    frmOptionen dialog(nullptr, {});
    dialog.show();
    EXPECT_EQ(dialog.colour(0), 0x123456);
    EXPECT_EQ(dialog.colour(4), 0xC0C0C0);
    control<QPushButton>(&dialog, "cmdStandardfarben")->click();
    pickColour(dialog, 3, QColor(0xFF, 0x00, 0x00));
    EXPECT_EQ(control<QFrame>(&dialog, "picFarbe", 3)->palette().color(QPalette::Window), QColor(0xFF, 0, 0));
    pickColour(dialog, 5, QColor(0x12, 0x34, 0x56));
    pickColour(dialog, 0, QColor(0, 0, 0), false);
    pressOK(dialog);
    EXPECT_EQ(GetSysText("Color_Fehler"), "&HFF");
    EXPECT_EQ(GetSysText("Color_Warnung"), "&H563412");
    EXPECT_EQ(GetSysText("Color_OK"), "&HFF00");
    EXPECT_EQ(GetSysText("Color_Ausgegraut"), "&HC0C0C0");
}

// Without the /admin switch the pages "System" and "Pfade" are locked and OK writes nothing of
// them, whatever their controls show; with it they are written, an emptied path as unset.
TEST_F(Optionen, system_and_paths_are_written_only_with_the_admin_switch) {
    for (const auto& [arguments, isAdmin] : {std::pair{QStringList{"veridon", "admin", "/adminx"}, false},
                                             {QStringList{"veridon", "--home", "/x", "/ADMIN"}, true},
                                             {QStringList{"veridon", "--admin"}, true}})
        EXPECT_EQ(frmOptionen::hasAdminSwitch(arguments), isAdmin) << arguments.join(' ').toStdString();
    {
        frmOptionen dialog(nullptr, {"veridon"});
        const auto* tabs = control<QTabWidget>(&dialog, "tabOptionen");
        EXPECT_TRUE(tabs->widget(frmOptionen::Bedienung)->isEnabled());
        EXPECT_FALSE(tabs->widget(frmOptionen::System)->isEnabled());
        EXPECT_TRUE(tabs->widget(frmOptionen::Farben)->isEnabled());
        EXPECT_FALSE(tabs->widget(frmOptionen::Pfade)->isEnabled());
        EXPECT_TRUE(control<QLabel>(&dialog, "lblAdmin")->isVisibleTo(&dialog));
        dialog.show();
        control<QSpinBox>(&dialog, "spnKorrID")->setValue(4);
        control<QLineEdit>(&dialog, "txtPfad", 5)->clear();
        control<QRadioButton>(&dialog, "optCursor", 2)->click();
        pressOK(dialog);
        EXPECT_EQ(GetKorrID(), 1);
        EXPECT_FALSE(GetSysValue("Export_Pfad").isNull());
        EXPECT_EQ(GetSysValue("Cursor_allg").toInt(), 2);
    }
    QDir().mkpath(home.path("neue-bilder"));
    frmOptionen dialog(nullptr, admin);
    dialog.show();
    EXPECT_TRUE(control<QTabWidget>(&dialog, "tabOptionen")->widget(frmOptionen::System)->isEnabled());
    EXPECT_FALSE(control<QLabel>(&dialog, "lblAdmin")->isVisibleTo(&dialog));
    control<QSpinBox>(&dialog, "spnKorrID")->setValue(4);
    control<QLineEdit>(&dialog, "txtRechnerId")->setText("07");
    control<QLineEdit>(&dialog, "txtPfad", 2)->setText(home.path("ablage"));
    control<QLineEdit>(&dialog, "txtPfad", 5)->clear();
    control<QCheckBox>(&dialog, "chkBackup")->click();
    control<QComboBox>(&dialog, "cboReportOther")->setCurrentIndex(2);
    // A folder picked in the folder dialog goes into its box.
    const QString target = home.path("neue-bilder");
    whenDialogOpens<QFileDialog>([target](QFileDialog* picker) {
        EXPECT_EQ(picker->windowTitle(), "Bilder");
        picker->setDirectory(target);
        picker->selectFile(target);
        QMetaObject::invokeMethod(picker, "accept"); // as the "Choose" button does
    });
    control<QAbstractButton>(&dialog, "cmdPfad", 1)->click();
    EXPECT_EQ(control<QLineEdit>(&dialog, "txtPfad", 1)->text(), target);
    pressOK(dialog);
    EXPECT_EQ(GetKorrID(), 4);
    EXPECT_EQ(GetSysText("Scan_RechnerId"), "07");
    EXPECT_EQ(GetSysText("APP_TestBildpfad"), home.path("ablage"));
    EXPECT_EQ(GetSysText("APP_Bildpfad"), target);
    EXPECT_TRUE(GetSysValue("Export_Pfad").isNull()) << "an emptied path is unset";
    EXPECT_EQ(GetSysText("Backup_Enabled"), "0");
    EXPECT_EQ(GetSysValue("Report_Other_Country").toInt(), 2);
}

TEST_F(Optionen, a_new_language_applies_to_windows_opened_afterwards) {
    {
        frmOptionen dialog(nullptr, {});
        dialog.show();
        choose(control<QComboBox>(&dialog, "cboSprache"), "EN");
        pressOK(dialog);
        EXPECT_EQ(dialog.windowTitle(), "Optionen") << "the open window stays as it is";
    }
    EXPECT_EQ(GetSysText("APP_Language"), "EN");
    frmOptionen reopened(nullptr, {});
    EXPECT_EQ(reopened.windowTitle(), "Options");
    EXPECT_EQ(control<QComboBox>(&reopened, "cboKey", 1)->currentText(), "(none)")
        << "list entries filled after translation follow too";
}

} // namespace
