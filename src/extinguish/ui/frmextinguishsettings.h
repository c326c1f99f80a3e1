#pragma once

#include <functional>
#include <memory>

#include <QDialog>

class AccessibleNames;
class Form;
class FormView;

// The manual-release settings of one bus module: the choice of module, its online lamp, the
// three settings each as a value and a field on one spot, the buttons that edit and send
// them (or the note that the module has no such line), and what the window waits for.
class frmExtinguishSettingsWindow : public QDialog {
    Q_OBJECT

public:
    // `text` gives string n of the table in the current language, for what screen readers
    // hear of the lamps.
    frmExtinguishSettingsWindow(Form& form, std::function<QString(int)> text,
                                QWidget* parent = nullptr);
    ~frmExtinguishSettingsWindow() override;

    FormView& view() { return *m_view; }

private:
    std::unique_ptr<AccessibleNames> m_names;
    std::unique_ptr<FormView> m_view;
};
