#pragma once

#include <initializer_list>

#include <QString>

class QAction;
class QBoxLayout;
class QFrame;
class QHBoxLayout;
class QLabel;
class QMenu;
class QMenuBar;
class QPushButton;
class QWidget;

// Pieces that the windows share, each named after its element.
namespace windowparts {

QMenu* namedMenu(QMenuBar* bar, const QString& name);
QAction* namedEntry(QMenu* menu, const QString& name, bool checkable = false);
QAction* namedSeparator(QMenu* menu, const QString& name = {});

QPushButton* button(const QString& name, bool isDefault = false);
// Buttons at the right end of a row, the dialog's usual place for them.
QHBoxLayout* buttonRow(std::initializer_list<QWidget*> buttons);

QLabel* label(const QString& name, QWidget* parent = nullptr);
// A thin line that separates the parts of a window.
QFrame* divider();

// The window's standard spacing, from its style.
int spacing(const QWidget* window);

} // namespace windowparts
