// SPDX-License-Identifier: Apache-2.0
// The options dialog's bindings come from the settings table: each setting it edits comes back from
// the row exactly as stored, and an unset one shows the table's default.

#include "WindowTexts.h"
#include "admin/mdlOptionen.h"
#include "app/Settings.h"
#include "app/mdlDB.h"
#include "ui/frmOptionen.h"

#include <QCheckBox>
#include <QComboBox>
#include <QPushButton>

namespace {

class OptionsBindings : public WindowTest {};

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

TEST_F(OptionsBindings, every_edited_setting_comes_back_as_stored_and_ok_keeps_the_row) {
    for (const auto& [s, value] : storedValues)
        SetSysValue(settingName(s), value);
    const QVariantMap before = ReadSettingsRow();
    frmOptionen dialog(nullptr, {"veridon", "/admin"});
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

    dialog.findChild<QPushButton*>("cmdOK")->click();
    EXPECT_EQ(dialog.result(), QDialog::Accepted);
    EXPECT_EQ(ReadSettingsRow(), before);
}

// Unset, a setting shows what the program takes for it, and OK leaves the key settings unset.
TEST_F(OptionsBindings, an_unset_setting_shows_the_tables_default) {
    for (Setting s : {Setting::Report_PrinterUseDefault, Setting::Cursor_F2, Setting::Key_OK, Setting::Key_Verwerfen})
        SetSysValue(settingName(s), QVariant());
    frmOptionen dialog(nullptr, {"veridon", "/admin"});
    EXPECT_TRUE(dialog.findChild<QCheckBox*>("chkPrinterDefault")->isChecked());
    EXPECT_FALSE(dialog.findChild<QCheckBox*>("chkCursorF2")->isChecked());
    EXPECT_EQ(dialog.findChild<QComboBox*>("cboKeyOK")->currentData().toString(), "F10");
    EXPECT_EQ(dialog.findChild<QComboBox*>("cboKeyVerwerfen")->currentData().toString(), "F8");
    dialog.show();
    dialog.findChild<QPushButton*>("cmdOK")->click();
    EXPECT_TRUE(GetSysValue("Key_OK").isNull());
    EXPECT_TRUE(GetSysValue("Key_Verwerfen").isNull());
}

} // namespace
