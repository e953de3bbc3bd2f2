// The options dialog on a real home: what it shows, what OK writes into zvbSys, the hot-key rule,
// the colour and folder pickers, the /admin switch and the language switch.

#include "ui/frmOptionen.h"
#include "WindowTexts.h"
#include "admin/mdlOptionen.h"
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
};

TEST_F(Optionen, shows_the_stored_settings) {
    frmOptionen dialog(nullptr, {});
    EXPECT_TRUE(control<QRadioButton>(&dialog, "optCursor", 0)->isChecked());
    EXPECT_FALSE(control<QRadioButton>(&dialog, "optCursor", 2)->isChecked());
    EXPECT_TRUE(control<QCheckBox>(&dialog, "chkCursorF2")->isChecked());
    EXPECT_EQ(control<QComboBox>(&dialog, "cboF2WasSuchen")->currentText(), QStringLiteral("nur Fragezeichen"));
    EXPECT_TRUE(control<QRadioButton>(&dialog, "optF2WieWeit", 1)->isChecked());
    EXPECT_EQ(control<QComboBox>(&dialog, "cboFocusField")->currentText(), QStringLiteral("FORM_ID"));
    EXPECT_TRUE(control<QCheckBox>(&dialog, "chkEnterLikeTab")->isChecked());
    EXPECT_FALSE(control<QCheckBox>(&dialog, "chkNumKomma")->isChecked());
    EXPECT_EQ(control<QComboBox>(&dialog, "cboKey", 0)->currentText(), QStringLiteral("+ (Ziffernblock)"));
    EXPECT_EQ(control<QComboBox>(&dialog, "cboKey", 1)->currentText(), QStringLiteral("(keinen)"));
    EXPECT_EQ(control<QComboBox>(&dialog, "cboSprache")->currentText(), QStringLiteral("Deutsch"));
    EXPECT_EQ(control<QComboBox>(&dialog, "cboState")->currentData().toString(), QStringLiteral("DE"));
    EXPECT_EQ(control<QSpinBox>(&dialog, "spnKorrID")->value(), 1);
    EXPECT_EQ(control<QComboBox>(&dialog, "cboReportOther")->currentText(), QStringLiteral("jedes Mal nachfragen"));
    EXPECT_TRUE(control<QCheckBox>(&dialog, "chkBackup")->isChecked());
    EXPECT_EQ(control<QSpinBox>(&dialog, "spnHistoryDays")->value(), 30);
    EXPECT_EQ(control<QLineEdit>(&dialog, "txtPfad", 2)->text(), home.path(QStringLiteral("test")));
    // Color_Fehler "&HA0A0FF": red FF, green A0, blue A0.
    EXPECT_EQ(control<QFrame>(&dialog, "picFarbe", 3)->palette().color(QPalette::Window), QColor(0xFF, 0xA0, 0xA0));
    EXPECT_EQ(dialog.colour(0), 0x00FF00);
}

TEST_F(Optionen, ok_without_changes_writes_the_row_as_it_was) {
    const QVariantMap before = ReadSettingsRow();
    frmOptionen dialog(nullptr, admin);
    dialog.show();
    pressOK(dialog);
    EXPECT_EQ(dialog.result(), QDialog::Accepted);
    EXPECT_FALSE(dialog.isVisible());
    EXPECT_EQ(ReadSettingsRow(), before);
    EXPECT_TRUE(messages.messages().isEmpty());
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
    choose(control<QComboBox>(&dialog, "cboFocusField"), QStringLiteral("NACHNAME"));
    pressOK(dialog);
    EXPECT_EQ(dialog.result(), QDialog::Accepted);
    EXPECT_EQ(GetSysValue(QStringLiteral("Cursor_allg")).toInt(), 2);
    EXPECT_EQ(GetSysValue(QStringLiteral("F2_WieWeitSuchen")).toInt(), 2);
    EXPECT_FALSE(GetSysFlag(QStringLiteral("Key_EnterLikeTab"), true));
    EXPECT_TRUE(GetSysFlag(QStringLiteral("Key_NUMKommaGleichEntf"), false));
    EXPECT_EQ(GetSysValue(QStringLiteral("F2_WasSuchen")).toInt(), 3) << "red fields only";
    EXPECT_EQ(GetSysValue(QStringLiteral("Key_F2")).toInt(), 1);
    EXPECT_EQ(GetSysValue(QStringLiteral("Key_F3")).toInt(), 3);
    EXPECT_EQ(GetSysValue(QStringLiteral("Key_F4")).toInt(), 0);
    EXPECT_EQ(GetSysText(QStringLiteral("GUI_FocusField")), QStringLiteral("NACHNAME"));
}

TEST_F(Optionen, a_hot_key_assigned_twice_is_refused_and_the_dialog_stays_open) {
    frmOptionen dialog(nullptr, {});
    dialog.show();
    control<QRadioButton>(&dialog, "optCursor", 1)->click();
    choose(control<QComboBox>(&dialog, "cboKey", 2), 1); // the key F2 already has
    pressOK(dialog);
    EXPECT_EQ(messages.prompts(), QStringList{QString::fromUtf8(
                                      "HotKeys doppelt vergeben, Einstellungen können nicht gespeichert werden!")});
    EXPECT_TRUE(dialog.isVisible());
    EXPECT_EQ(GetSysValue(QStringLiteral("Key_F4")).toInt(), 0);
    EXPECT_EQ(GetSysValue(QStringLiteral("Cursor_allg")).toInt(), 0) << "nothing at all was written";
    // Two keys left without a hot key are fine.
    choose(control<QComboBox>(&dialog, "cboKey", 2), 0);
    pressOK(dialog);
    EXPECT_FALSE(dialog.isVisible());
    EXPECT_EQ(GetSysValue(QStringLiteral("Cursor_allg")).toInt(), 1);
}

TEST_F(Optionen, a_picked_colour_is_stored_as_blue_green_red_text) {
    frmOptionen dialog(nullptr, {});
    dialog.show();
    whenDialogOpens<QColorDialog>([](QColorDialog* picker) {
        picker->setCurrentColor(QColor(0xFF, 0x00, 0x00));
        picker->accept();
    });
    control<QPushButton>(&dialog, "cmdFarbe", 3)->click();
    EXPECT_EQ(control<QFrame>(&dialog, "picFarbe", 3)->palette().color(QPalette::Window), QColor(0xFF, 0, 0));
    whenDialogOpens<QColorDialog>([](QColorDialog* picker) {
        picker->setCurrentColor(QColor(0x12, 0x34, 0x56));
        picker->accept();
    });
    control<QPushButton>(&dialog, "cmdFarbe", 5)->click();
    // A cancelled picker changes nothing.
    whenDialogOpens<QColorDialog>([](QColorDialog* picker) {
        picker->setCurrentColor(QColor(0, 0, 0));
        picker->reject();
    });
    control<QPushButton>(&dialog, "cmdFarbe", 0)->click();
    pressOK(dialog);
    EXPECT_EQ(GetSysText(QStringLiteral("Color_Fehler")), QStringLiteral("&HFF"));
    EXPECT_EQ(GetSysText(QStringLiteral("Color_Warnung")), QStringLiteral("&H563412"));
    EXPECT_EQ(GetSysText(QStringLiteral("Color_OK")), QStringLiteral("&HFF00"));
}

TEST_F(Optionen, default_colours_replace_the_stored_ones) {
    SetSysValue(QStringLiteral("Color_OK"), QStringLiteral("&H123456"));
    SetSysValue(QStringLiteral("Color_Ausgegraut"), QStringLiteral("grau")); // unreadable: shown as default
    frmOptionen dialog(nullptr, {});
    EXPECT_EQ(dialog.colour(0), 0x123456);
    EXPECT_EQ(dialog.colour(4), 0xC0C0C0);
    control<QPushButton>(&dialog, "cmdStandardfarben")->click();
    pressOK(dialog);
    EXPECT_EQ(GetSysText(QStringLiteral("Color_OK")), QStringLiteral("&HFF00"));
    EXPECT_EQ(GetSysText(QStringLiteral("Color_Ausgegraut")), QStringLiteral("&HC0C0C0"));
}

TEST_F(Optionen, system_and_paths_are_read_only_without_the_admin_switch) {
    frmOptionen dialog(nullptr, {"veridon"});
    EXPECT_FALSE(dialog.isAdmin());
    const auto* tabs = control<QTabWidget>(&dialog, "tabOptionen");
    EXPECT_TRUE(tabs->widget(frmOptionen::Bedienung)->isEnabled());
    EXPECT_FALSE(tabs->widget(frmOptionen::System)->isEnabled());
    EXPECT_TRUE(tabs->widget(frmOptionen::Farben)->isEnabled());
    EXPECT_FALSE(tabs->widget(frmOptionen::Pfade)->isEnabled());
    EXPECT_TRUE(control<QLabel>(&dialog, "lblAdmin")->isVisibleTo(&dialog));
    QStringList columns;
    for (const auto& [column, value] : dialog.editedValues())
        columns << column;
    EXPECT_TRUE(columns.contains(QStringLiteral("Cursor_allg")));
    EXPECT_TRUE(columns.contains(QStringLiteral("Color_Fehler")));
    EXPECT_FALSE(columns.contains(QStringLiteral("APP_KorrID")));
    EXPECT_FALSE(columns.contains(QStringLiteral("Export_Pfad")));
}

TEST_F(Optionen, the_admin_switch_unlocks_system_and_paths) {
    EXPECT_TRUE(frmOptionen::hasAdminSwitch({"veridon", "--home", "/x", "/ADMIN"}));
    EXPECT_TRUE(frmOptionen::hasAdminSwitch({"veridon", "--admin"}));
    EXPECT_FALSE(frmOptionen::hasAdminSwitch({"veridon", "admin", "/adminx"}));
    frmOptionen dialog(nullptr, admin);
    dialog.show();
    EXPECT_TRUE(control<QTabWidget>(&dialog, "tabOptionen")->widget(frmOptionen::System)->isEnabled());
    EXPECT_FALSE(control<QLabel>(&dialog, "lblAdmin")->isVisibleTo(&dialog));
    control<QSpinBox>(&dialog, "spnKorrID")->setValue(4);
    control<QLineEdit>(&dialog, "txtRechnerId")->setText(QStringLiteral("07"));
    control<QLineEdit>(&dialog, "txtPfad", 2)->setText(home.path(QStringLiteral("ablage")));
    control<QLineEdit>(&dialog, "txtPfad", 5)->clear();
    control<QCheckBox>(&dialog, "chkBackup")->click();
    control<QComboBox>(&dialog, "cboReportOther")->setCurrentIndex(2);
    pressOK(dialog);
    EXPECT_EQ(GetKorrID(), 4);
    EXPECT_EQ(GetSysText(QStringLiteral("Scan_RechnerId")), QStringLiteral("07"));
    EXPECT_EQ(GetSysText(QStringLiteral("APP_TestBildpfad")), home.path(QStringLiteral("ablage")));
    EXPECT_TRUE(GetSysValue(QStringLiteral("Export_Pfad")).isNull()) << "an emptied path is unset";
    EXPECT_EQ(GetSysText(QStringLiteral("Backup_Enabled")), QStringLiteral("0"));
    EXPECT_EQ(GetSysValue(QStringLiteral("Report_Other_Country")).toInt(), 2);
}

TEST_F(Optionen, a_folder_picked_in_the_folder_dialog_goes_into_its_box) {
    QDir().mkpath(home.path(QStringLiteral("neue-bilder")));
    frmOptionen dialog(nullptr, admin);
    dialog.show();
    const QString target = home.path(QStringLiteral("neue-bilder"));
    whenDialogOpens<QFileDialog>([target](QFileDialog* picker) {
        EXPECT_EQ(picker->windowTitle(), QStringLiteral("Bilder"));
        picker->setDirectory(target);
        picker->selectFile(target);
        QMetaObject::invokeMethod(picker, "accept"); // as the "Choose" button does
    });
    control<QAbstractButton>(&dialog, "cmdPfad", 1)->click();
    EXPECT_EQ(control<QLineEdit>(&dialog, "txtPfad", 1)->text(), target);
    pressOK(dialog);
    EXPECT_EQ(GetSysText(QStringLiteral("APP_Bildpfad")), target);
}

TEST_F(Optionen, a_new_language_applies_to_windows_opened_afterwards) {
    {
        frmOptionen dialog(nullptr, {});
        dialog.show();
        choose(control<QComboBox>(&dialog, "cboSprache"), QStringLiteral("EN"));
        pressOK(dialog);
        EXPECT_EQ(dialog.windowTitle(), QStringLiteral("Optionen")) << "the open window stays as it is";
    }
    EXPECT_EQ(GetSysText(QStringLiteral("APP_Language")), QStringLiteral("EN"));
    frmOptionen reopened(nullptr, {});
    EXPECT_EQ(reopened.windowTitle(), QStringLiteral("Options"));
    const auto* tabs = control<QTabWidget>(&reopened, "tabOptionen");
    EXPECT_EQ(tabs->tabText(2), QStringLiteral("Colours"));
    EXPECT_EQ(control<QComboBox>(&reopened, "cboKey", 1)->currentText(), QStringLiteral("(none)"))
        << "list entries filled after translation follow too";
}

} // namespace
