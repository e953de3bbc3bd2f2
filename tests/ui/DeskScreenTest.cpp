// SPDX-License-Identifier: Apache-2.0
// What the operator sees on a real monitor on the first start: the main window and the viewer side
// by side in the screen's work area with every value readable, the small windows beside the fields,
// and the places kept for the next start, in one walk as the first day goes. These tests run once per monitor size,
// which ctest sets through VERIDON_TEST_SCREEN (1280x800 and 1920x1080); without it they are skipped.

#include "MainWindowFixture.h"

#include "app/Database.h"
#include "ui/frmAskForReport.h"

#include <QDialog>
#include <QScreen>
#include <QTimer>

namespace {

class DeskScreen : public MainWindowTest {
protected:
    void SetUp() override {
        if (qEnvironmentVariableIsEmpty("VERIDON_TEST_SCREEN"))
            GTEST_SKIP() << "runs at the monitor sizes ctest gives in VERIDON_TEST_SCREEN";
        SetSysValue("GUI_BildanzeigeEnabled", true);
        for (const FormValues& form : demoForms())
            writeImage(form["BMPName"]);
    }
    static QRect workArea() { return QGuiApplication::primaryScreen()->availableGeometry(); }
    // A small window's place: on the screen, off the fields, not thrown into the corner.
    void expectBesideTheFields(const QWidget* small, const char* what) const {
        const QRect outer = small->frameGeometry();
        const QWidget* fields = window->findChild<QWidget*>("Datensatz");
        EXPECT_TRUE(workArea().contains(outer)) << what;
        EXPECT_FALSE(outer.intersects(QRect(fields->mapToGlobal(QPoint(0, 0)), fields->size()))) << what;
        EXPECT_NE(outer.topLeft(), QPoint(0, 0)) << what;
    }
};

TEST_F(DeskScreen, the_first_start_puts_every_window_where_each_value_is_readable_and_keeps_the_places) {
    insertDemoRecords(8);
    open();
    QWidget* page = viewer();
    ASSERT_NE(page, nullptr);
    const QRect area = workArea();
    // The frames are known only once both windows are shown; the tiles are laid again then.
    ASSERT_TRUE(QTest::qWaitFor(
        [&] { return area.contains(window->frameGeometry()) && area.contains(page->frameGeometry()); }));
    EXPECT_FALSE(window->frameGeometry().intersects(page->frameGeometry()));
    EXPECT_GE(window->frameGeometry().width() + page->frameGeometry().width(), area.width() - 2);
    EXPECT_GT(page->width(), window->width()) << "the larger part is the page's";

    // Every value of the batch is seen whole: its text fits its field, and the field is on screen.
    for (int record = 0; record < 8; ++record) {
        for (const QString& name : frmMain::fieldNames()) {
            const QLineEdit* edit = field(name);
            const QRect onScreen(edit->mapToGlobal(QPoint(0, 0)), edit->size());
            EXPECT_TRUE(area.contains(onScreen)) << name.toStdString();
            EXPECT_LE(edit->fontMetrics().horizontalAdvance(edit->text()) + 10, edit->width())
                << name.toStdString() << ": " << edit->text().toStdString();
        }
        messages.queueAnswer(MsgBox::Yes);
        key(Qt::Key_F8);
    }
    ASSERT_EQ(window->currentRecord(), -1);

    // The small windows open beside the fields; the error list goes with its record.
    insertDemoRecords(2);
    key(Qt::Key_F5);
    field("CARD_ID")->setText("8004A"); // not a card number
    key(Qt::Key_F10);
    auto* errors = window->findChild<QDialog*>("frmFehler");
    ASSERT_NE(errors, nullptr);
    ASSERT_TRUE(errors->isVisible());
    expectBesideTheFields(errors, "error list");
    field("CARD_ID")->setText("80040001234567890123");
    key(Qt::Key_F10);
    EXPECT_EQ(field("NACHNAME")->text(), demoForms().at(1)["NACHNAME"]);
    EXPECT_FALSE(errors->isVisible()) << "the error list of the record handed over";
    bool optionsSeen = false;
    QTimer::singleShot(100, [&] {
        if (auto* options = qobject_cast<QDialog*>(QApplication::activeModalWidget())) {
            optionsSeen = true;
            expectBesideTheFields(options, "options");
            options->reject();
        }
    });
    window->findChild<QAction*>("mpOptionen")->trigger();
    EXPECT_TRUE(optionsSeen);
    {
        frmAskForReport question(window.get());
        question.show();
        expectBesideTheFields(&question, "report question");
    }

    // Moved by the operator, both come back there on the next start.
    ASSERT_NE(viewer(), nullptr);
    window->move(area.left() + 40, area.top() + 30);
    viewer()->move(area.left() + 300, area.top() + 60);
    viewer()->resize(500, 400);
    const QRect viewerPlace = viewer()->geometry();
    messages.queueAnswer(MsgBox::Yes);
    window->close();
    window.reset();
    insertDemoRecords(1);
    open();
    ASSERT_NE(viewer(), nullptr);
    EXPECT_EQ(window->pos(), QPoint(area.left() + 40, area.top() + 30));
    EXPECT_EQ(viewer()->geometry(), viewerPlace);
}

} // namespace
