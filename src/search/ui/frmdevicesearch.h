#pragma once

#include <memory>

#include <QDialog>

class Form;
class FormView;

// The devices heard on the line, by serial number, to choose one.
class frmDeviceSearchWindow : public QDialog {
    Q_OBJECT

public:
    explicit frmDeviceSearchWindow(Form& form, QWidget* parent = nullptr);
    ~frmDeviceSearchWindow() override;

    FormView& view() { return *m_view; }

private:
    std::unique_ptr<FormView> m_view;
};
