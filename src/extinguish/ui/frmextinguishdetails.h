#pragma once

#include <functional>
#include <memory>

#include <QDialog>

class AccessibleNames;
class Form;
class FormView;

// One bus module in detail: the choice of module, its online lamp, its fault rows with
// their boxes and the key to them, and its numbers.
class frmExtinguishDetailsWindow : public QDialog {
    Q_OBJECT

public:
    // `text` gives string n of the table in the current language, for what screen readers
    // hear of the lamps.
    frmExtinguishDetailsWindow(Form& form, std::function<QString(int)> text,
                               QWidget* parent = nullptr);
    ~frmExtinguishDetailsWindow() override;

    FormView& view() { return *m_view; }

private:
    std::unique_ptr<AccessibleNames> m_names;
    std::unique_ptr<FormView> m_view;
};
