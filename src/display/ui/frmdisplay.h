#pragma once

#include <memory>

#include <QList>
#include <QMainWindow>

class Form;
class FormView;
class QTabWidget;
class QVBoxLayout;

// The main view: its menus and the eight pages of tabDisplay, each with the device's
// serial number and receive lamp in a header above an area for the page's content.
class frmDisplayWindow : public QMainWindow {
    Q_OBJECT

public:
    static constexpr int kPageCount = 8;

    explicit frmDisplayWindow(Form& form, QWidget* parent = nullptr);
    ~frmDisplayWindow() override;

    FormView& view() { return *m_view; }
    QTabWidget* tabs() const { return m_tabs; }
    // The content area of page `page` under its header, with an empty vertical layout.
    QWidget* pageBody(int page) const;

private:
    void buildMenus();
    QWidget* buildPage(int page);

    QTabWidget* m_tabs = nullptr;
    QList<QWidget*> m_bodies;
    std::unique_ptr<FormView> m_view;
};
