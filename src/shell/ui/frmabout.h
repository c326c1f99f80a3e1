#pragma once

#include <memory>

#include <QDialog>

class Form;
class FormView;

// The About box.
class frmAboutWindow : public QDialog {
    Q_OBJECT

public:
    explicit frmAboutWindow(Form& form, QWidget* parent = nullptr);
    ~frmAboutWindow() override;

    FormView& view() { return *m_view; }

private:
    std::unique_ptr<FormView> m_view;
};
