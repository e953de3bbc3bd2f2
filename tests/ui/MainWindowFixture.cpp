// SPDX-License-Identifier: Apache-2.0
#include "MainWindowFixture.h"

#include "app/mdlDB.h"
#include "model/FormModel.h"

#include <QApplication>
#include <QDir>
#include <QFileInfo>
#include <QImage>
#include <QLabel>
#include <QPalette>

MainWindowTest::MainWindowTest() {
    FelderArray().Fill();
    WerteArray().Clear();
}

MainWindowTest::~MainWindowTest() {
    window.reset();
    WerteArray().Clear();
    FelderArray().EmptyArray();
}

void MainWindowTest::setting(const QString& column, const QVariant& value) {
    SetSysValue(column, value);
}

void MainWindowTest::open() {
    window = std::make_unique<frmMain>();
    window->show();
    window->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(window.get()));
}

void MainWindowTest::key(Qt::Key k, Qt::KeyboardModifiers modifiers) {
    QTest::keyClick(window->windowHandle(), k, modifiers);
}

void MainWindowTest::type(const QString& text) {
    for (const QChar c : text)
        QTest::keyClick(window->windowHandle(), c.toLatin1());
}

void MainWindowTest::tabTo(const QString& name) {
    for (int i = 0; i < 12 && focusedName() != name; ++i)
        key(Qt::Key_Tab);
    ASSERT_EQ(focusedName(), name);
}

QLineEdit* MainWindowTest::field(const QString& name) const {
    return window->findChild<QLineEdit*>(name);
}

QPushButton* MainWindowTest::button(const QString& name) const {
    return window->findChild<QPushButton*>(name);
}

QAction* MainWindowTest::action(const QString& name) const {
    return window->findChild<QAction*>(name);
}

QWidget* MainWindowTest::focused() const {
    return QApplication::focusWidget();
}

QString MainWindowTest::focusedName() const {
    return focused() ? focused()->objectName() : QString();
}

QColor MainWindowTest::background(const QString& name) const {
    return field(name)->palette().color(QPalette::Active, QPalette::Base);
}

QString MainWindowTest::writeImage(const QString& name) {
    QImage page(850, 540, QImage::Format_Grayscale8);
    page.fill(Qt::white);
    const QString path = home.path("images/" + name);
    QDir().mkpath(QFileInfo(path).absolutePath());
    EXPECT_TRUE(page.save(path, "TIFF")) << path.toStdString();
    return path;
}

bool MainWindowTest::exported(const QString& image) const {
    return QFileInfo::exists(home.path("export/" + QFileInfo(image).completeBaseName() + ".xml"));
}

void MainWindowTest::noReports() {
    setting("Report_Ambrix_Country", 0);
    setting("Report_Other_Country", 0);
}

QWidget* MainWindowTest::viewer() {
    for (QWidget* w : QApplication::topLevelWidgets())
        if (w->isVisible() && w->windowTitle() == "ZV-Beleg Image Viewer")
            return w;
    return nullptr;
}

QString MainWindowTest::viewerStatus() {
    QWidget* v = viewer();
    auto* status = v ? v->findChild<QLabel*>("zvbkorStatus") : nullptr;
    return status ? status->text() : QString();
}

QWidget* MainWindowTest::errorList() {
    for (QWidget* w : QApplication::topLevelWidgets())
        if (w->objectName() == "frmFehler" && w->isVisible())
            return w;
    return nullptr;
}

QColor colourFromReference(qint32 reference) {
    return QColor(reference & 0xFF, (reference >> 8) & 0xFF, (reference >> 16) & 0xFF);
}
