#pragma once

#include <functional>
#include <memory>

#include <QDialog>
#include <QStringList>

class Form;
class FormView;
class Protocol;
class QTabWidget;

// The record: page one, page two and the whole record in three read-only views of a
// fixed-pitch font, and the buttons to save, print, save and print, write a PDF and close.
class frmProtocolWindow : public QDialog {
    Q_OBJECT

public:
    // `text` gives string n of the table in the current language.
    frmProtocolWindow(Form& form, Protocol& logic, std::function<QString(int)> text,
                      QWidget* parent = nullptr);
    ~frmProtocolWindow() override;

    FormView& view() { return *m_view; }
    // Each page a print job of its own on a printer the user chooses; empty when printed or
    // cancelled, else what went wrong.
    QString print(const QStringList& pages);

private:
    void applyTexts();

    std::function<QString(int)> m_text;
    QTabWidget* m_views = nullptr;
    std::unique_ptr<FormView> m_view;
};

// The two comment lines at the head of the record.
class frmProtocolCommentWindow : public QDialog {
    Q_OBJECT

public:
    explicit frmProtocolCommentWindow(Form& form, QWidget* parent = nullptr);
    ~frmProtocolCommentWindow() override;

    FormView& view() { return *m_view; }

private:
    std::unique_ptr<FormView> m_view;
};
