#pragma once

#include <functional>
#include <memory>

#include <QDialog>
#include <QString>

class AccessibleNames;
class Form;
class FormView;
class PipeDrawing;

// Learning and testing the localisation: the pipe with its holes, the transport time of
// each hole (learn layout) or its seat-of-fire lamp (test layout), the parameters written
// with the windows, one measurement at a time, the lamps of learn mode and of a running
// measurement, and the live smoke levels. The logic chooses the layout by the elements'
// visibility; both share one window.
class frmLocalizeLearnWindow : public QDialog {
    Q_OBJECT

public:
    // `text` gives string n of the table in the current language.
    frmLocalizeLearnWindow(Form& form, std::function<QString(int)> text, QWidget* parent = nullptr);
    ~frmLocalizeLearnWindow() override;

    FormView& view() { return *m_view; }
    PipeDrawing& pipe() { return *m_pipe; }

private:
    std::unique_ptr<AccessibleNames> m_names;
    std::unique_ptr<FormView> m_view;
    PipeDrawing* m_pipe = nullptr;
};
