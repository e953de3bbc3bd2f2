// SPDX-License-Identifier: Apache-2.0
// The demo form pages: each form field is drawn in the region its definition in a new home gives,
// every value lies inside its region, the TIFF writer stores a page as a group 4 scan at 200 dpi
// that reads back pixel for pixel, and the committed images that `init --demo` installs are the
// generator's current output.
#include "DemoForms.h"
#include "FormRenderer.h"
#include "HomeTest.h"
#include "TiffWriter.h"
#include "model/ZVBFelderArray.h"

#include <QFile>
#include <QFileInfo>
#include <QImageReader>

#include <gtest/gtest.h>
#include <tiffio.h>

namespace {

const QString formsFile = QStringLiteral(VERIDON_DATA_DIR "/demo/forms.tsv");

QRect rectOf(const formlayout::Box& b) {
    return QRect(b.x, b.y, b.dx, b.dy);
}

int inkIn(const QImage& grey, const QRect& r) {
    int n = 0;
    for (int y = r.top(); y <= r.bottom(); ++y)
        for (int x = r.left(); x <= r.right(); ++x)
            n += qGray(grey.pixel(x, y)) < 128;
    return n;
}

// Ink on the region's outermost two pixels: a value running over the edge leaves some.
int inkOnEdge(const QImage& grey, const QRect& r) {
    return inkIn(grey, r) - inkIn(grey, r.adjusted(2, 2, -2, -2));
}

QList<DemoForm> demoForms() {
    QString error;
    const QList<DemoForm> forms = readDemoForms(formsFile, &error);
    EXPECT_TRUE(error.isEmpty()) << error.toStdString();
    return forms;
}

using FormLayoutDefinitions = HomeTest;

// The form fields are the definitions with a place in the record's status string; each is drawn in
// both layouts in the region its definition gives for that layout.
TEST_F(FormLayoutDefinitions, every_form_field_is_drawn_in_its_defined_region_in_both_layouts) {
    ZVBFelderArray felder;
    felder.Fill();
    QSet<QString> formFields;
    for (const FieldDefinition& d : felder.definitions())
        if (d.satznummer > 0)
            formFields.insert(d.name);
    for (const formlayout::Layout* layout : {&formlayout::layout4, &formlayout::layout5}) {
        const qint16 typ = qint16(layout->typ);
        QSet<QString> drawn;
        for (const auto& f : layout->fields) {
            const QString name = QString::fromUtf8(f.field.data(), qsizetype(f.field.size()));
            SCOPED_TRACE(name.toStdString() + " layout " + std::to_string(typ));
            drawn.insert(name);
            EXPECT_EQ(
                QRect(felder.GetX(name, typ), felder.GetY(name, typ), felder.GetDX(name, typ), felder.GetDY(name, typ)),
                rectOf(f.box));
        }
        EXPECT_EQ(drawn, formFields) << "layout " << typ;
    }
    EXPECT_TRUE(messages.messages().isEmpty());
}

// Every value lies inside its field's region on a bitonal A4 page at 200 dpi, which the TIFF writer
// stores with group 4 and reads back unchanged; a missing value leaves its region blank (a form the
// card was not copied onto completely).
TEST(DemoFormPages, every_value_lies_inside_its_region_and_a_missing_one_leaves_it_blank) {
    const QList<DemoForm> forms = demoForms();
    ASSERT_EQ(forms.size(), 8);
    QTemporaryDir dir;
    for (const DemoForm& form : forms) {
        SCOPED_TRACE(form.bmpName.toStdString());
        const auto& layout = formlayout::layoutFor(form.typ);
        const QImage page = renderForm(layout, form.values);
        ASSERT_EQ(page.size(), QSize(1654, 2339));
        ASSERT_EQ(page.format(), QImage::Format_Mono);
        for (const auto& f : layout.fields) {
            SCOPED_TRACE(f.field);
            EXPECT_GT(inkIn(page, rectOf(f.box)), 150) << "no value drawn";
            EXPECT_EQ(inkOnEdge(page, rectOf(f.box)), 0) << "value runs over the region's edge";
        }

        const QString path = dir.filePath(form.bmpName);
        ASSERT_TRUE(writeTiffPages(path, {page}));
        const QImage stored = QImageReader(path).read();
        EXPECT_EQ(stored.convertToFormat(QImage::Format_RGB32), page.convertToFormat(QImage::Format_RGB32));
        EXPECT_EQ(qRound(stored.dotsPerMeterX() / 39.3700787), 200);
        TIFF* tif = TIFFOpen(QFile::encodeName(path).constData(), "r");
        ASSERT_NE(tif, nullptr);
        uint16_t compression = 0;
        TIFFGetField(tif, TIFFTAG_COMPRESSION, &compression);
        TIFFClose(tif);
        EXPECT_EQ(compression, COMPRESSION_CCITTFAX4);
    }
    const QImage page = renderForm(formlayout::layout4, {{QStringLiteral("NACHNAME"), QStringLiteral("Huber")}});
    for (const auto& f : formlayout::layout4.fields)
        EXPECT_EQ(inkIn(page, rectOf(f.box)) > 150, f.field == "NACHNAME") << f.field;
}

// What `init --demo` puts into images/: one small image per demo form, pixel for pixel what the
// generator draws now in every field's region.
TEST(DemoFormImages, demo_home_holds_the_current_generated_images) {
    const TempHome home(TempHome::Content::Demo);
    const QList<DemoForm> forms = demoForms();
    ASSERT_FALSE(forms.isEmpty());
    for (const DemoForm& form : forms) {
        SCOPED_TRACE(form.bmpName.toStdString());
        const QString path = home.path(QStringLiteral("images/") + form.bmpName);
        EXPECT_LT(QFileInfo(path).size(), 60 * 1024);

        const QImage stored = QImageReader(path).read();
        ASSERT_EQ(stored.size(), QSize(1654, 2339));
        const auto& layout = formlayout::layoutFor(form.typ);
        const QImage drawn = renderForm(layout, form.values);
        for (const auto& f : layout.fields) {
            const QRect region = rectOf(f.box);
            int differing = 0;
            for (int y = region.top(); y <= region.bottom(); ++y)
                for (int x = region.left(); x <= region.right(); ++x)
                    differing += (qGray(stored.pixel(x, y)) < 128) != (qGray(drawn.pixel(x, y)) < 128);
            EXPECT_LE(differing, region.width() * region.height() / 100)
                << f.field << ": the committed image is out of date, run formgen";
        }
    }
}

TEST(DemoFormList, broken_lists_are_refused_with_a_message) {
    QString error;
    EXPECT_TRUE(readDemoForms(QStringLiteral("/nirgends/forms.tsv"), &error).isEmpty());
    EXPECT_EQ(error, QStringLiteral("Die Formularliste '/nirgends/forms.tsv' kann nicht gelesen werden."));

    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("forms.tsv"));
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("BMPName\tTYP\tNACHNAME\n31901001.tif\t4\tHuber\n31901002.tif\t5\n");
    file.close();
    error.clear();
    EXPECT_TRUE(readDemoForms(path, &error).isEmpty());
    EXPECT_EQ(error, QStringLiteral("Zeile 3 der Formularliste '%1' hat 2 statt 3 Spalten.").arg(path));

    ASSERT_TRUE(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
    file.write("BMPName\tNACHNAME\r\n31901001.tif\tHuber\r\n");
    file.close();
    EXPECT_TRUE(readDemoForms(path, &error).isEmpty());
    EXPECT_EQ(error, QStringLiteral("Der Formularliste '%1' fehlt die Spalte TYP.").arg(path));
}

} // namespace
