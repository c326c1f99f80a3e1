#pragma once

#include <QString>

class QWidget;

// What keyboard users and assistive tools need beyond the captions of the window models.
namespace accessibility {

// Strings of the table that say an indicator's state.
inline constexpr int kOnText = 511;
inline constexpr int kOffText = 512;

// `caption` as a button or label text that shows every '&' as it is.
QString literal(const QString& caption);

// Gives every push button of a dialog, and every label that leads to a field, a mnemonic on
// the first letter of its caption that no other one has taken; a caption whose letters are
// all taken goes without. Decided afresh from all captions, so that a dialog gets the same
// mnemonics whatever order its captions change in. In a window of tab pages the tabs come
// first, then each page's buttons, tick boxes and labels of fields, page by page.
void assignMnemonics(QWidget* window);

// Assistive tools see the tool's drawn pictures (the logo) as images.
void presentDrawnWidgetsAsImages();

// Assistive tools see `widget` (a lamp, an LED, a fault box, a relay contact) as an indicator
// named "<accessible name>: <state>", the state being the widget's accessible description in
// words ("Störung: an"). Its tool tip is what assistive tools read as its longer explanation.
void presentAsIndicator(QWidget* widget);
// The application's style, as the desktop gives it, with one addition: a default button and
// a list that have the keyboard focus show it. Some styles draw a focused button with the
// very frame of the default one, and show a list's focus only on its current row, so that
// Tab seems to stop nowhere on them.
void showFocusOnDefaultButtons();

// `widget` is pure decoration, beside a text that says the same: assistive tools pass over it.
void hideDecoration(QWidget* widget);

// The state of an indicator changed: its name did too.
void indicatorStateChanged(QWidget* widget);

} // namespace accessibility
