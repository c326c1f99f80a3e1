#pragma once

#include <memory>

#include <QDialog>

class Form;
class FormView;
class QButtonGroup;

// The language dialog: five options, the four languages with their flags.
class frmLanguageWindow : public QDialog {
    Q_OBJECT

public:
    explicit frmLanguageWindow(Form& form, QWidget* parent = nullptr);
    ~frmLanguageWindow() override;

    FormView& view() { return *m_view; }

protected:
    // The arrow keys choose the next or previous language, as in any group of options.
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QButtonGroup* m_options = nullptr;
    std::unique_ptr<FormView> m_view;
};
