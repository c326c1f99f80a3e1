#pragma once

#include <memory>

#include <QDialog>

class Form;
class FormView;

// Shown while the chosen or a new device is being read out.
class frmConnectWindow : public QDialog {
    Q_OBJECT

public:
    explicit frmConnectWindow(Form& form, QWidget* parent = nullptr);
    ~frmConnectWindow() override;

    FormView& view() { return *m_view; }

private:
    std::unique_ptr<FormView> m_view;
};
