// SPDX-License-Identifier: Apache-2.0
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
// colours); OK without a change writes the row back exactly as it was.
TEST_F(Optionen, shows_the_stored_settings_and_ok_without_changes_writes_the_row_as_it_was) {
    const QVariantMap before = ReadSettingsRow();
    frmOptionen dialog(nullptr, admin);
    EXPECT_EQ(control<QComboBox>(&dialog, "cboF2WasSuchen")->currentText(), "nur Fragezeichen");
    EXPECT_EQ(control<QComboBox>(&dialog, "cboKey", 0)->currentText(), "+ (Ziffernblock)");
    EXPECT_EQ(control<QComboBox>(&dialog, "cboKey", 1)->currentText(), "(keinen)");
    EXPECT_EQ(control<QComboBox>(&dialog, "cboSprache")->currentText(), "Deutsch");
    EXPECT_EQ(control<QComboBox>(&dialog, "cboReportOther")->currentText(), "jedes Mal nachfragen");
    EXPECT_EQ(control<QLineEdit>(&dialog, "txtPfad", 2)->text(), home.path("test"));
    // Color_Fehler "&HA0A0FF": red FF, green A0, blue A0.
    EXPECT_EQ(control<QFrame>(&dialog, "picFarbe", 3)->palette().color(QPalette::Window), QColor(0xFF, 0xA0, 0xA0));
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
    const auto* tabs = control<QTabWidget>(&reopened, "tabOptionen");
    EXPECT_EQ(tabs->tabText(2), "Colours");
    EXPECT_EQ(control<QComboBox>(&reopened, "cboKey", 1)->currentText(), "(none)")
        << "list entries filled after translation follow too";
}

} // namespace
