// SPDX-License-Identifier: Apache-2.0
// The drawing positions of the demo form against the field definitions a new home loads: each of
// the ten form fields has the region where the form generator draws its value, in both layouts,
// and the two layouts are told apart at a glance.
#include "FormLayout.h"
#include "HomeTest.h"
#include "model/ZVBFelderArray.h"

#include <QRect>
#include <QSet>

namespace {

using formlayout::Layout;

QRect rectOf(const formlayout::Box& b) {
    return QRect(b.x, b.y, b.dx, b.dy);
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
    for (const Layout* layout : {&formlayout::layout4, &formlayout::layout5}) {
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

// Regions lie on the page apart from each other, with a caption line of 30 px above each; layout 4
// and layout 5 put the card and every field elsewhere, so an image shown with the wrong layout's
// regions is obvious.
TEST(FormLayout, regions_lie_on_the_page_apart_from_each_other_and_the_two_layouts_differ_everywhere) {
    const QRect page(0, 0, formlayout::pageWidth, formlayout::pageHeight);
    for (const Layout* layout : {&formlayout::layout4, &formlayout::layout5}) {
        const QRect card = rectOf(layout->card);
        EXPECT_TRUE(page.contains(card));
        const Layout* other = layout == &formlayout::layout4 ? &formlayout::layout5 : &formlayout::layout4;
        for (size_t i = 0; i < layout->fields.size(); ++i) {
            const auto& f = layout->fields[i];
            const QRect r = rectOf(f.box);
            SCOPED_TRACE(std::string(f.field) + " layout " + std::to_string(layout->typ));
            EXPECT_TRUE(page.contains(r));
            EXPECT_EQ(card.contains(r), f.field != "FORM_ID" && f.field != "SCANDAT");
            ASSERT_EQ(other->fields[i].field, f.field);
            EXPECT_FALSE(r.intersects(rectOf(other->fields[i].box)));
            for (size_t j = 0; j < layout->fields.size(); ++j)
                EXPECT_TRUE(j == i || !r.adjusted(0, -30, 0, 0).intersects(rectOf(layout->fields[j].box)))
                    << "overlaps " << layout->fields[j].field;
        }
    }
    const QPoint cardShift = rectOf(formlayout::layout4.card).center() - rectOf(formlayout::layout5.card).center();
    EXPECT_GT(cardShift.manhattanLength(), 300);
}

} // namespace
