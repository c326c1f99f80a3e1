#pragma once

#include <functional>
#include <memory>

#include <QList>
#include <QMainWindow>

class AccessibleNames;
class Form;
class FormView;
class QTabWidget;

// The main view: its menus and the eight pages of tabDisplay, each with the device's serial
// number and receive lamp in a header above the page's content. A page taller than the
// screen scrolls.
class frmDisplayWindow : public QMainWindow {
    Q_OBJECT

public:
    static constexpr int kPageCount = 8;

    // `text` gives string n of the table in the current language, for what screen readers
    // hear of the lamps.
    frmDisplayWindow(Form& form, std::function<QString(int)> text, QWidget* parent = nullptr);
    ~frmDisplayWindow() override;

    FormView& view() { return *m_view; }
    QTabWidget* tabs() const { return m_tabs; }

private:
    void buildMenus();
    QWidget* buildPage(int page, QWidget* content);

    QTabWidget* m_tabs = nullptr;
    QList<QWidget*> m_contents;
    std::unique_ptr<AccessibleNames> m_names;
    std::unique_ptr<FormView> m_view;
};
