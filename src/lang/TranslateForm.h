// SPDX-License-Identifier: Apache-2.0
// Translation of a loaded window into the current language. Every window hands itself over when it
// loads; captions, texts of text boxes, tool tips, tab pages and list entries are replaced by the
// sysTexts entries of the current language, and keep their (German) design text where there is none.
//
// Keys, all parts joined without blanks (form = the window's objectName, control = the widget's or
// action's objectName, index = the dynamic property "index" of a control array member):
//   form_Caption                         the window's title
//   form_control_Property                Property is Text, Caption or ToolTipText
//   form_control(index)_Property         a member of a control array
//   form_control(n)_Caption/ToolTipText  tab n of a tab widget, counted from 1
//   <control prefix>List(i)              entry i of a list or combo box, counted from 0
#pragma once

class QWidget;

// Translates form and every named control in it (widgets, menus and the actions of menus and tool
// bars) with one query for the whole window. Controls without an objectName, Qt's internal parts
// and child windows (which translate themselves) are left alone. A failure to read the texts is
// reported as run-time error "TranslateForm()" and leaves the design texts.
void TranslateForm(QWidget* form);
