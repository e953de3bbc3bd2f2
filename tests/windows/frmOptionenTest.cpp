// SPDX-License-Identifier: Apache-2.0
// The options dialog on a real home: what it shows, each setting it edits bound to its column of
// zvbSys (an unset one showing the table's default), what OK writes, the hot-key rule, the colour
// and folder pickers, the /admin switch and the language switch.

#include "ui/frmOptionen.h"
#include "WindowTexts.h"
#include "admin/mdlOptionen.h"
#include "app/Settings.h"
#include "app/mdlDB.h"

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
        auto* dialog = qobject_cast<D*>(QApplication::activeModalWidget());
        ASSERT_NE(dialog, nullptr);
        handle(dialog);
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

    // Clicks colour button index and answers its colour picker with colour, accepting or cancelling.
    static void pickColour(frmOptionen& dialog, int index, const QColor& colour, bool accept = true) {
        whenDialogOpens<QColorDialog>([colour, accept](QColorDialog* picker) {
            picker->setCurrentColor(colour);
            accept ? picker->accept() : picker->reject();
        });
        control<QPushButton>(&dialog, "cmdFarbe", index)->click();
    }
};

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

// One operator session: the dialog shows the stored row as an operator reads it (an unset setting
// as the program takes it), refuses a hot key assigned twice without writing anything (two keys
// without one are fine), and OK writes the changes. Colours are stored as "&H" and blue-green-red
// hex; an unreadable one shows the default, the default button resets all, a cancelled picker
// changes nothing. A new language applies to windows opened afterwards. Without the /admin switch
// the pages "System" and "Pfade" are locked and OK writes nothing of them, whatever they show.
TEST_F(Optionen, ok_writes_what_the_operator_changed) {
    for (Setting s : {Setting::Report_PrinterUseDefault, Setting::Cursor_F2, Setting::Key_OK, Setting::Key_Verwerfen})
        SetSysValue(settingName(s), QVariant());
    SetSysValue("Color_Ausgegraut", "grau");
    {
        frmOptionen dialog(nullptr, {});
        EXPECT_EQ(control<QComboBox>(&dialog, "cboF2WasSuchen")->currentText(), "nur Fragezeichen");
        EXPECT_EQ(control<QComboBox>(&dialog, "cboKey", 0)->currentText(), "+ (Ziffernblock)");
        EXPECT_EQ(control<QComboBox>(&dialog, "cboSprache")->currentText(), "Deutsch");
        EXPECT_EQ(control<QComboBox>(&dialog, "cboReportOther")->currentText(), "jedes Mal nachfragen");
        EXPECT_TRUE(control<QCheckBox>(&dialog, "chkPrinterDefault")->isChecked());
        EXPECT_FALSE(control<QCheckBox>(&dialog, "chkCursorF2")->isChecked());
        EXPECT_EQ(control<QComboBox>(&dialog, "cboKeyOK")->currentData().toString(), "F10");
        EXPECT_EQ(control<QComboBox>(&dialog, "cboKeyVerwerfen")->currentData().toString(), "F8");
        // Color_Fehler "&HA0A0FF": red FF, green A0, blue A0.
        EXPECT_EQ(control<QFrame>(&dialog, "picFarbe", 3)->palette().color(QPalette::Window), QColor(0xFF, 0xA0, 0xA0));
        EXPECT_EQ(dialog.colour(4), 0xC0C0C0);
        const auto* tabs = control<QTabWidget>(&dialog, "tabOptionen");
        for (int page = 0; page < tabs->count(); ++page)
            EXPECT_EQ(tabs->widget(page)->isEnabled(), page != frmOptionen::System && page != frmOptionen::Pfade);
        EXPECT_TRUE(control<QLabel>(&dialog, "lblAdmin")->isVisibleTo(&dialog));
        dialog.show();
        control<QSpinBox>(&dialog, "spnKorrID")->setValue(4);
        control<QLineEdit>(&dialog, "txtPfad", 5)->clear();
        control<QRadioButton>(&dialog, "optCursor", 2)->click();
        control<QRadioButton>(&dialog, "optF2WieWeit", 2)->click();
        control<QCheckBox>(&dialog, "chkEnterLikeTab")->click();
        control<QCheckBox>(&dialog, "chkNumKomma")->click();
        control<QComboBox>(&dialog, "cboF2WasSuchen")->setCurrentIndex(1);
        choose(control<QComboBox>(&dialog, "cboKey", 0), 3);
        choose(control<QComboBox>(&dialog, "cboKey", 2), 3); // the key F2 now has
        choose(control<QComboBox>(&dialog, "cboFocusField"), "NACHNAME");
        choose(control<QComboBox>(&dialog, "cboSprache"), "EN");
        control<QPushButton>(&dialog, "cmdOK")->click();
        EXPECT_EQ(messages.prompts(),
                  QStringList{"HotKeys doppelt vergeben, Einstellungen können nicht gespeichert werden!"});
        EXPECT_TRUE(dialog.isVisible());
        EXPECT_EQ(GetSysValue("Cursor_allg").toInt(), 0) << "nothing at all was written";
        choose(control<QComboBox>(&dialog, "cboKey", 2), 0);
        control<QPushButton>(&dialog, "cmdStandardfarben")->click();
        pickColour(dialog, 3, QColor(0xFF, 0x00, 0x00));
        EXPECT_EQ(control<QFrame>(&dialog, "picFarbe", 3)->palette().color(QPalette::Window), QColor(0xFF, 0, 0));
        pickColour(dialog, 5, QColor(0x12, 0x34, 0x56));
        pickColour(dialog, 0, QColor(0, 0, 0), false);
        control<QPushButton>(&dialog, "cmdOK")->click();
        EXPECT_FALSE(dialog.isVisible());
        EXPECT_EQ(dialog.windowTitle(), "Optionen") << "the open window stays as it is";
    }
    QStringList written;
    for (const char* column :
         {"Cursor_allg", "F2_WieWeitSuchen", "Key_EnterLikeTab", "Key_NUMKommaGleichEntf", "F2_WasSuchen", "Key_F2",
          "Key_F3", "Key_F4", "GUI_FocusField", "APP_Language", "Key_OK", "Key_Verwerfen", "Color_Fehler",
          "Color_Warnung", "Color_OK", "Color_Ausgegraut", "APP_KorrID", "Export_Pfad"})
        written << GetSysText(QLatin1String(column), "(leer)");
    // F2_WasSuchen 3: red fields only; the two record keys stay unset.
    EXPECT_EQ(written, (QStringList{"2", "2", "0", "1", "3", "3", "0", "0", "NACHNAME", "EN", "(leer)", "(leer)",
                                    "&HFF", "&H563412", "&HFF00", "&HC0C0C0", "1", home.path("export")}));
    frmOptionen reopened(nullptr, {});
    EXPECT_EQ(reopened.windowTitle(), "Options");
    EXPECT_EQ(control<QComboBox>(&reopened, "cboKey", 1)->currentText(), "(none)")
        << "list entries filled after translation follow too";
}

// With the /admin switch every setting the dialog edits comes back as stored, and OK writes the row
// back as it was but for what the operator changed, the pages "System" and "Pfade" included: an
// emptied path as unset, a folder picked in the folder dialog into its box.
TEST_F(Optionen, with_the_admin_switch_every_setting_comes_back_and_ok_writes_the_changes) {
    for (const auto& [arguments, isAdmin] : {std::pair{QStringList{"veridon", "admin", "/adminx"}, false},
                                             {QStringList{"veridon", "--home", "/x", "/ADMIN"}, true},
                                             {QStringList{"veridon", "--admin"}, true}})
        EXPECT_EQ(frmOptionen::hasAdminSwitch(arguments), isAdmin) << arguments.join(' ').toStdString();
    for (const auto& [s, value] : storedValues)
        SetSysValue(settingName(s), value);
    const QVariantMap before = ReadSettingsRow();
    QDir().mkpath(home.path("neue-bilder"));
    frmOptionen dialog(nullptr, admin);
    dialog.show();
    // Each setting bound once, and only these.
    QVariantMap edited;
    for (const auto& [column, value] : dialog.editedValues())
        edited.insert(column, value);
    QVariantMap expected;
    for (const auto& entry : storedValues)
        expected.insert(settingName(entry.first), before.value(settingName(entry.first)));
    EXPECT_EQ(dialog.editedValues().size(), std::size(storedValues));
    EXPECT_EQ(edited, expected);

    EXPECT_FALSE(control<QLabel>(&dialog, "lblAdmin")->isVisibleTo(&dialog));
    control<QSpinBox>(&dialog, "spnKorrID")->setValue(4);
    control<QLineEdit>(&dialog, "txtRechnerId")->setText("08");
    control<QLineEdit>(&dialog, "txtPfad", 2)->setText(home.path("ablage"));
    control<QLineEdit>(&dialog, "txtPfad", 5)->clear();
    control<QCheckBox>(&dialog, "chkBackup")->click();
    control<QComboBox>(&dialog, "cboReportOther")->setCurrentIndex(1);
    const QString target = home.path("neue-bilder");
    whenDialogOpens<QFileDialog>([target](QFileDialog* picker) {
        EXPECT_EQ(picker->windowTitle(), "Bilder");
        picker->setDirectory(target);
        picker->selectFile(target);
        QMetaObject::invokeMethod(picker, "accept"); // as the "Choose" button does
    });
    control<QAbstractButton>(&dialog, "cmdPfad", 1)->click();
    EXPECT_EQ(control<QLineEdit>(&dialog, "txtPfad", 1)->text(), target);
    control<QPushButton>(&dialog, "cmdOK")->click();
    EXPECT_FALSE(dialog.isVisible());
    QVariantMap after = before;
    for (const auto& [column, value] : {std::pair<QString, QVariant>{"APP_KorrID", 4},
                                        {"Scan_RechnerId", "08"},
                                        {"APP_TestBildpfad", home.path("ablage")},
                                        {"APP_Bildpfad", target},
                                        {"Export_Pfad", QVariant(before.value("Export_Pfad").metaType())},
                                        {"Backup_Enabled", "1"},
                                        {"Report_Other_Country", 1}})
        after.insert(column, value);
    EXPECT_EQ(ReadSettingsRow(), after);
}

} // namespace
