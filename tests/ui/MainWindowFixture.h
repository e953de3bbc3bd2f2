// SPDX-License-Identifier: Apache-2.0
// The main window on a temporary home with the demo forms waiting in the pool, driven by real key
// events on its window as an operator's keyboard would send them.
#pragma once

#include "../workflow/DemoRecords.h"
#include "HomeTest.h"
#include "ui/frmMain.h"

#include <QAction>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>
#include <memory>

class MainWindowTest : public HomeTest {
protected:
    MainWindowTest();
    ~MainWindowTest() override;

    // Writes a setting of zvbSys (before the window opens, or while it is open).
    void setting(const QString& column, const QVariant& value);
    // Opens the window (it takes the first waiting record) and waits until it has the keyboard.
    void open();
    // A click of key on the window: it goes to the control with the focus.
    void key(Qt::Key k, Qt::KeyboardModifiers modifiers = Qt::NoModifier);
    // Types text into the control with the focus, key by key.
    void type(const QString& text);
    // Presses Tab until the field name has the focus; fails the test when it never gets it.
    void tabTo(const QString& name);

    QLineEdit* field(const QString& name) const;
    QPushButton* button(const QString& name) const;
    QAction* action(const QString& name) const;
    QWidget* focused() const;
    QString focusedName() const;
    // The background colour a field shows.
    QColor background(const QString& name) const;

    // A small image file named name in the home's image folder; returns its path.
    QString writeImage(const QString& name);
    // True once the record of the image has been exported.
    bool exported(const QString& image) const;
    // Reports are the export's own business; here none is due and nothing asks for one.
    void noReports();

    // The image viewer's window while it is shown (found by its caption, as the window finds it),
    // and its status line.
    static QWidget* viewer();
    static QString viewerStatus();
    // The error list while it is shown.
    static QWidget* errorList();

    std::unique_ptr<frmMain> window;
};

// The colour a colour reference 0x00BBGGRR stands for.
QColor colourFromReference(qint32 reference);
