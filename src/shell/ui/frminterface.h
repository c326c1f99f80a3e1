#pragma once

#include <memory>

#include <QDialog>

class Form;
class FormView;

// The choice of the serial port.
class frmInterfaceWindow : public QDialog {
    Q_OBJECT

public:
    explicit frmInterfaceWindow(Form& form, QWidget* parent = nullptr);
    ~frmInterfaceWindow() override;

    FormView& view() { return *m_view; }

private:
    std::unique_ptr<FormView> m_view;
};
