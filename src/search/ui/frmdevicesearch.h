#pragma once

#include <functional>
#include <memory>

#include <QDialog>
#include <QString>

class Form;
class FormView;

// The devices heard on the line, by serial number, to choose one.
class frmDeviceSearchWindow : public QDialog {
    Q_OBJECT

public:
    // `text` gives string n of the table in the current language, for the lamp's state.
    explicit frmDeviceSearchWindow(Form& form, std::function<QString(int)> text = {},
                                   QWidget* parent = nullptr);
    ~frmDeviceSearchWindow() override;

    FormView& view() { return *m_view; }

private:
    std::unique_ptr<FormView> m_view;
};
