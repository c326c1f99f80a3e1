#pragma once

#include <QString>

class QWidget;

// What keyboard users and assistive tools need beyond the captions of the window models.
namespace accessibility {

// `caption` as a button or label text that shows every '&' as it is.
QString literal(const QString& caption);

// Gives every push button of a dialog, and every label that leads to a field, a mnemonic on
// the first letter of its caption that no other one has taken; a caption whose letters are
// all taken goes without. Decided afresh from all captions, so that a dialog gets the same
// mnemonics whatever order its captions change in. In a window of tab pages the tabs come
// first, then each page's buttons, tick boxes and labels of fields, page by page.
void assignMnemonics(QWidget* window);

// Assistive tools see the tool's drawn pictures (the logo, lamps, the LED pair) as images.
void presentDrawnWidgetsAsImages();

} // namespace accessibility
