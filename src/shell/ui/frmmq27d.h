#pragma once

#include <functional>
#include <memory>

#include <QMainWindow>
#include <QString>

class Form;
class FormView;

// The start window: link status, the LED pair and the menus of the program's first form.
// Its hexadecimal monitor frames exist for the logic but stay hidden.
class frmMQ27DWindow : public QMainWindow {
    Q_OBJECT

public:
    // `text` gives string n of the table in the current language, for the LEDs' states.
    explicit frmMQ27DWindow(Form& form, std::function<QString(int)> text = {},
                            QWidget* parent = nullptr);
    ~frmMQ27DWindow() override;

    FormView& view() { return *m_view; }

private:
    void buildMenus();
    QWidget* buildLinkPanel();
    QWidget* buildMonitorFrame(const QString& frame, const QString& text, const QString& title);
    void describeLeds();

    std::unique_ptr<FormView> m_view;
    std::function<QString(int)> m_text;
};
