// SPDX-License-Identifier: Apache-2.0
// The way through the ten data fields of the main window: their order (stored in the field table
// at every start), which field takes the focus, where the cursor stands when a field is entered,
// and the F2 search for the next faulty field. It watches the fields' focus and tells the window
// when the operator enters a field and when he leaves one.
//
// A field is faulty for the F2 search by F2_WasSuchen: 0 a "?" in its text, 1 nothing, 2 a "?" or
// the error colour, 3 the error colour. It must be enabled and visible to be found.
#pragma once

#include <QLineEdit>
#include <QObject>
#include <QPointer>
#include <QString>
#include <QStringList>
#include <functional>

class QColor;
class QGroupBox;
class QPushButton;
class QWidget;

class FieldNavigator : public QObject {
    Q_OBJECT

public:
    // window: the main window, whose tab chain gives the order; group: the container whose direct
    // QLineEdit children are the fields, named by names in their order; okButton: where a search
    // with nothing left may end (F2_WieWeitSuchen 1). Watches each field's focus.
    FieldNavigator(QWidget* window, QGroupBox* group, const QStringList& names, QPushButton* okButton);

    // The field named name (nullptr when the form has none by that name).
    QLineEdit* field(const QString& name) const;
    // The fields in their order.
    QList<QLineEdit*> fields() const;
    // True when widget is one of the fields.
    bool isDataField(const QWidget* widget) const;
    // The field with the window's focus, nullptr when the focus is elsewhere.
    QLineEdit* activeField() const;
    // The field's caption as the operator reads it ("Nachname"), without accelerator and colon.
    QString caption(const QLineEdit* edit) const;

    // Writes the field table from the window's tab order (StoreFieldOrder).
    void storeFieldOrder();
    // Each field takes the length of its definition; one without a length takes any text.
    void setFieldLengths();

    // Focuses widget; a field that has the focus already is entered again, so the cursor placement
    // and the image follow a new record even when the focus stays in the same field.
    void focusField(QWidget* widget);
    // The first enabled field gets the focus.
    void focusFirstField();
    // The field named name gets the focus when the form has it enabled, else the first field.
    void focusFieldNamed(const QString& name);
    // The first field showing the error colour gets the focus; without one the focus stays.
    void focusFirstFaultyField();

    // `SucheFehlerhaftesFeld`: the F2 search from the field after the active one (backwards:
    // before it). Focuses the first faulty field and returns 0; with none left returns 1 or 2, or
    // focuses the OK button and returns 0, as F2_WieWeitSuchen says.
    int SucheFehlerhaftesFeld(bool backwards);

    // F2 (Shift+F2 backwards) on a record: jump to the next faulty field. With none left the record
    // may be handed over by handOverAndShowNext (true when a next record is on screen then); with
    // F2_WieWeitSuchen 2 the search goes on in that record from its first field, so the operator
    // walks through a whole batch with F2 alone. Outside the fields the search covers every field,
    // from the first (backwards: the last); F2 on the OK button with nothing left to correct hands
    // the record over, as Enter there would.
    void jump(bool backwards, const std::function<bool()>& handOverAndShowNext);

    // The field entered last (nullptr after forgetEnteredField).
    QLineEdit* enteredField() const { return enteredField_; }
    // Escape in edit: the text it had when it was entered comes back. True when edit was entered.
    bool restoreEnteredText(QLineEdit* edit);
    // A new record or the empty form: no field counts as entered.
    void forgetEnteredField();

signals:
    // The operator entered edit (after the window took note of its text, before the cursor is
    // placed).
    void fieldEntered(QLineEdit* edit);
    // The operator left edit.
    void fieldLeft(QLineEdit* edit);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    int tabIndexOf(const QWidget* widget) const;
    int searchFaultyFrom(int start, bool backwards);
    bool isFaulty(const QLineEdit* edit, int what, const QColor& errorColour) const;
    void enter(QLineEdit* edit);
    void placeCursor(QLineEdit* edit);

    QWidget* window_;
    QGroupBox* group_;
    QStringList names_;
    QPushButton* okButton_;
    QPointer<QLineEdit> enteredField_;
    QString enteredText_;
    // Set by the F2 jump, read and cleared by the next cursor placement.
    bool enteredByF2_ = false;
};
