#pragma once

#include "common/preferences.h"

#include <memory>

#include <QObject>
#include <QString>
#include <QStringList>

class DeviceSession;
class Form;
class Texts;
class UserDialogs;
class DeviceValues;
class Form;
class ValueStore;

// The device record frmProtocol: two pages of plain text read off the main view's labels
// and tick boxes as they stand (plus a few values of the store), shown, saved as a .txt
// file, printed one page per job, or written as one PDF. The comment window
// frmProtocolComment asks for the two lines at its head first.
class Protocol : public QObject {
    Q_OBJECT

public:
    // The record's own two windows, and those whose elements it prints.
    struct Windows {
        Form& record;
        Form& comment;
        Form& display;
        Form& deviceSettings;
        Form& extinguishDetails;
        Form& extinguishSettings;
    };

    Protocol(const Windows& windows, const Preferences& preferences, const Texts& texts,
             UserDialogs* dialogs, const DeviceSession& session, DeviceValues& values);
    ~Protocol() override;

    // The comment window, shown modally; its OK builds the pages and shows the record.
    void Protocol_Create();
    // The pages with these comment lines, into rtxtProtocol(1), (2) and (0).
    void Build(const QString& comment1, const QString& comment2);
    QString Page_One(const QString& comment1, const QString& comment2);
    QString Page_Two();

    void cmdSave_Click();
    void cmdPrint_Click();
    void cmdSavePrint_Click();
    void cmdPdf_Click();
    void cmdCancel_Click();

    // The texts of both windows in `language`.
    void ApplyTexts(Language language);

    // Both pages as the views hold them.
    QStringList Pages() const;

    // The window's answers: empty when done, else the reason in the platform's words.
    void Printed(const QString& failure);
    void PdfWritten(const QString& path, const QString& failure);

Q_SIGNALS:
    // The main view's record entry: the language is refreshed, then Protocol_Create runs.
    void CreateRequested();
    // The user asked to print the pages, each as a job of its own.
    void PrintRequested(const QStringList& pages);
    // The user asked for both pages as one PDF at `path`.
    void PdfRequested(const QString& path, const QStringList& pages);

private:
    Form& Window() const;
    Form& CommentWindow() const;
    ValueStore& Store();
    void OnClicked(const QString& element);
    void cmdOK_Click();
    QString SuggestedName(const QString& suffix) const;
    void TellFailure(const QString& path, const QString& failure);

    Windows m_windows;
    const Preferences& m_preferences;
    const Texts& m_texts;
    UserDialogs* m_dialogs;
    const DeviceSession& m_session;
    DeviceValues& m_values;
    std::unique_ptr<ValueStore> m_empty; // the record of no device: labels only
};
