// SPDX-License-Identifier: Apache-2.0
// The main window on a temporary home with the demo forms waiting in the pool, driven by real key
// events on its window as an operator's keyboard would send them.
#pragma once

#include "../workflow/DemoRecords.h"
#include "HomeTest.h"
#include "app/Home.h"
#include "app/mdlDB.h"
#include "model/FormModel.h"
#include "ui/frmMain.h"

#include <QAction>
#include <QApplication>
#include <QFile>
#include <QFileInfo>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>
#include <memory>

// The field colours of the demo settings: light red for an error, green for a field that passed.
inline const QColor errorColour(0xFF, 0xA0, 0xA0), okColour(0x00, 0xFF, 0x00);

class MainWindowTest : public HomeTest {
protected:
    MainWindowTest() {
        FelderArray().Fill();
        WerteArray().Clear();
    }
    ~MainWindowTest() override {
        window.reset();
        WerteArray().Clear();
        FelderArray().EmptyArray();
    }

    // Opens the window (it takes the first waiting record) and waits until it has the keyboard.
    void open() {
        window = std::make_unique<frmMain>();
        window->show();
        window->activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(window.get()));
    }
    // A click of key on the window: it goes to the control with the focus.
    void key(Qt::Key k, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
        QTest::keyClick(window->windowHandle(), k, modifiers);
    }
    // Types text into the control with the focus, key by key.
    void type(const QString& text) {
        for (const QChar c : text)
            QTest::keyClick(window->windowHandle(), c.toLatin1());
    }
    // Presses Tab until the field name has the focus; fails the test when it never gets it.
    void tabTo(const QString& name) {
        for (int i = 0; i < 12 && focusedName() != name; ++i)
            key(Qt::Key_Tab);
        ASSERT_EQ(focusedName(), name);
    }

    QLineEdit* field(const QString& name) const { return window->findChild<QLineEdit*>(name); }
    QPushButton* button(const QString& name) const { return window->findChild<QPushButton*>(name); }
    QAction* action(const QString& name) const { return window->findChild<QAction*>(name); }
    static QString focusedName() {
        return QApplication::focusWidget() ? QApplication::focusWidget()->objectName() : QString();
    }
    // The field with the keyboard as the operator sees it: "name text [selected] position", the
    // position being where the selection starts, or the cursor when nothing is selected.
    static QString caret() {
        const auto* edit = qobject_cast<QLineEdit*>(QApplication::focusWidget());
        if (!edit)
            return focusedName();
        return QString("%1 %2 [%3] %4")
            .arg(edit->objectName(), edit->text(), edit->selectedText())
            .arg(edit->hasSelectedText() ? edit->selectionStart() : edit->cursorPosition());
    }
    // The background colour a field shows.
    QColor background(const QString& name) const {
        return field(name)->palette().color(QPalette::Active, QPalette::Base);
    }

    // The demo scan named name (else Mrs Huber's card) in the home's image folder; returns its path.
    QString writeImage(const QString& name) {
        const QString demo = masterDataDir() + "demo/home/images/", path = home.path("images/" + name);
        QFile::remove(path);
        EXPECT_TRUE(QFile::copy(QFile::exists(demo + name) ? demo + name : demo + "31901001.tif", path))
            << path.toStdString();
        return path;
    }
    // True once the record of the image has been exported.
    bool exported(const QString& image) const {
        return QFileInfo::exists(home.path("export/" + QFileInfo(image).completeBaseName() + ".xml"));
    }
    // Reports are the export's own business; here none is due and nothing asks for one.
    static void noReports() {
        SetSysValue("Report_Ambrix_Country", 0);
        SetSysValue("Report_Other_Country", 0);
    }

    // A window of the program by its object name while it is shown: the image viewer
    // ("zvbkorViewer"), the error list ("frmFehler"), the wait window ("frmWaitShell").
    static QWidget* shown(const QString& name) {
        for (QWidget* w : QApplication::topLevelWidgets())
            if (w->isVisible() && w->objectName() == name)
                return w;
        return nullptr;
    }
    static QWidget* viewer() { return shown("zvbkorViewer"); }
    // The viewer's status line; empty while it is closed.
    static QString viewerStatus() {
        return viewer() ? viewer()->findChild<QLabel*>("zvbkorStatus")->text() : QString();
    }

    std::unique_ptr<frmMain> window;
};
