#pragma once

#include <memory>

#include <QDialog>

class Form;
class FormView;

// The language dialog: five options, the four languages with their flags.
class frmLanguageWindow : public QDialog {
    Q_OBJECT

public:
    explicit frmLanguageWindow(Form& form, QWidget* parent = nullptr);
    ~frmLanguageWindow() override;

    FormView& view() { return *m_view; }

private:
    std::unique_ptr<FormView> m_view;
};
