#pragma once

#include "common/formtimer.h"
#include "logger/trendstore.h"

#include <memory>
#include <vector>

#include <QDateTime>
#include <QObject>
#include <QString>
#include <QStringList>

class DeviceValues;
class Preferences;
class Texts;
struct Services;
class Form;
class ValueStore;
struct DataObject;

// The data logger frmLogdataDev: every value of the store as a row the engineer can tick,
// the ticked rows with their present values, their recording into the .log and .dat files
// after every complete read-out of the device, and a trend of the ticked numbers.
class DataLogger : public QObject {
    Q_OBJECT

public:
    // `window` is its own; `mainView` opens it.
    DataLogger(Form& window, Form& mainView, const Texts& texts, const Preferences& preferences,
               const Services& services, DeviceValues& values);
    ~DataLogger() override;

    // One pass over all data objects, then the record step.
    void DataToShow();
    void AddDataObject(const DataObject& row);
    void CheckLoggerReady();
    // A chosen file of this extension; empty when none was chosen or it cannot be opened.
    QString AskLogFile(const QString& Extension);
    void cmdStart_Click();
    void cmdStop_Click();
    void WriteLogRecord();
    void tmrBlink_Timer();

    // The device has been read out once more: the lists, a record, a point of the trend.
    void ReadOutComplete();
    // The menu entry and the start switch: the window, shown.
    void ShowLogger();
    // The texts that are the tool's own rather than the window's, in the current language.
    void ApplyTexts();

    TrendStore& Trend() { return m_trend; }
    FormTimer& tmrBlink() { return m_tmrBlink; }
    // Records each file holds, earlier recordings included.
    qint64 ExcelRecords() const { return m_records[0]; }
    qint64 MathCadRecords() const { return m_records[1]; }

    bool ListResetPending = false;
    int ListRow = 0;
    int LoggedRow = 0;
    bool LoggerRunning = false;
    bool AnyObjectTicked = false;
    bool ExcelFileReady = false;
    bool MathCadFileReady = false;
    int RecordDivider = 0;
    bool LogInfoWritten = false;
    bool DatInfoWritten = false;

Q_SIGNALS:
    // The user asked for the visible trend as a picture at `path`.
    void TrendExportRequested(const QString& path);

public:
    // The window's answer to that request: empty when saved, else the reason.
    void TrendExported(const QString& path, const QString& failure);

private:
    void Form_Load();
    void OnClicked(const QString& element);
    void OnEdited(const QString& element);
    void ChooseFile(int which);
    void ShowRecords(int which);
    // Appends one line; on a failure the recording stops and the user is told.
    bool Append(const QString& path, const QString& line);
    void RecordTo(int which, const QDateTime& now);
    void ExportTrend();
    Form& Window() const;

    Form& m_window;
    Form& m_mainView;
    const Texts& m_texts;
    const Preferences& m_preferences;
    const Services& m_services;
    DeviceValues& m_values;
    std::unique_ptr<ValueStore> m_empty; // names the rows before any device is read
    FormTimer m_tmrBlink{200};
    TrendStore m_trend;
    // The pass under way: the rows of lstDisplay(0), the names and values of the ticked
    // ones, and the trend's share of them.
    QStringList m_rows;
    QList<bool> m_ticks; // of the list's rows, as they stood when the pass began
    QStringList m_names;
    QStringList m_valueTexts;
    std::vector<TrendStore::Key> m_trendKeys;
    std::vector<double> m_trendValues;
    bool m_haveValues = false;
    qint64 m_records[2] = {0, 0};
};
