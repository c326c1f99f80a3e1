#include "logger/datalogger.h"

#include "common/colors.h"
#include "common/formmodel.h"
#include "common/numberformat.h"
#include "common/preferences.h"
#include "common/services.h"
#include "common/texts.h"
#include "display/mainview_elements.h"
#include "logger/dataobjects.h"
#include "logger/logfiles.h"
#include "logger/logger_elements.h"
#include "values/devicevalues.h"

#include <QDir>
#include <QFileInfo>

namespace lg = frmLogdataDev;

namespace {

constexpr int kStringTrend = 700;
constexpr int kStringSpan = 701;
constexpr int kStringSpans = 702; // four: 1 min, 10 min, 1 h, all
constexpr int kStringPause = 706;
constexpr int kStringExport = 707;
constexpr int kStringRecords = 708;
constexpr int kStringWriteFailed = 709;
constexpr int kStringOpenFailed = 710;
constexpr int kStringPicture = 711;
constexpr int kStringExportFailed = 713;
constexpr int kStringClose = 76;
constexpr int kDefaultSpan = 1; // 10 min

const QString kTitle = QStringLiteral("KOMPA");

enum Which { Excel, MathCad };

struct FileElements {
    QString tick, chooser, path, records;
};

const FileElements& elementsOf(int which) {
    static const FileElements excel{lg::chkSaveAsExcel, lg::cmdSaveAsExcel, lg::lblSaveAsExcelFile,
                                    lg::lblSaveAsExcelRecords};
    static const FileElements mathCad{lg::chkSaveAsMathCad, lg::cmdSaveAsMathCad,
                                      lg::lblSaveAsMathCadFile, lg::lblSaveAsMathCadRecords};
    return which == Excel ? excel : mathCad;
}

// The unit of a row's text "description [unit]"; empty where it has none.
QString unitOf(const QString& rowText) {
    if (!rowText.endsWith(u']')) return {};
    const qsizetype open = rowText.lastIndexOf(QStringLiteral(" ["));
    return open < 0 ? QString() : rowText.mid(open + 2, rowText.size() - open - 3);
}

// The value as the trend plots it; texts are no numbers.
std::optional<double> numberOf(const DataObject& row) {
    struct Number {
        std::optional<double> operator()(float v) const { return double(v); }
        std::optional<double> operator()(std::int16_t v) const { return double(v); }
        std::optional<double> operator()(double v) const { return v; }
        std::optional<double> operator()(const QString&) const { return std::nullopt; }
    };
    return std::visit(Number{}, row.value);
}

// The default text of the value's own type, with the locale's decimal mark.
QString textOf(const DataObject& row, const QLocale& locale) {
    struct Text {
        const QLocale& locale;
        QString operator()(float v) const { return numberformat::plain(v, locale); }
        QString operator()(std::int16_t v) const { return QString::number(v); }
        QString operator()(double v) const { return numberformat::plain(v, locale); }
        QString operator()(const QString& v) const { return v; }
    };
    return std::visit(Text{locale}, row.value);
}

} // namespace

DataLogger::DataLogger(Form& window, Form& mainView, const Texts& texts,
                       const Preferences& preferences, const Services& services,
                       DeviceValues& values)
    : QObject()
    , m_window(window)
    , m_mainView(mainView)
    , m_texts(texts)
    , m_preferences(preferences)
    , m_services(services)
    , m_values(values) {
    Form& form = m_window;
    connect(&form, &Form::loaded, this, &DataLogger::Form_Load);
    connect(&form, &Form::clicked, this, &DataLogger::OnClicked);
    connect(&form, &Form::edited, this, &DataLogger::OnEdited);
    connect(&form, &Form::windowChanged, this, [this](Form::WindowChange change) {
        if (change != Form::WindowChange::Unloaded) return;
        LoggerRunning = false;
        m_tmrBlink.disable();
    });
    // The window is unloaded with the program only: closing it hides it, and a recording
    // goes on, as do the ticks.
    form.setCloseHandler([this] {
        m_window.hide();
        return false;
    });
    connect(&m_mainView, &Form::clicked, this, [this](const QString& element) {
        if (element == frmDisplay::mnuLogDataDev) ShowLogger();
    });
    connect(&m_tmrBlink, &FormTimer::timeout, this, &DataLogger::tmrBlink_Timer);
    m_tmrBlink.disable();
}

DataLogger::~DataLogger() = default;

Form& DataLogger::Window() const {
    return m_window;
}

void DataLogger::Form_Load() {
    Form& form = Window();
    form.setTitle(QStringLiteral("Datenlogger"));
    form.setCaption(lg::fraDataObjectsAvailable,
                    QStringLiteral("Verfügbare Datenobjekte (Zum Auswählen Kontrollkästchen "
                                   "aktivieren !)"));
    form.setCaption(lg::fraDataObjectsToLog,
                    QStringLiteral("Ausgewählte Datenobjekte für die Aufzeichnung"));
    form.setCaption(lg::chkSaveAsExcel,
                    QStringLiteral("im EXCEL-Format (Schreibintervall: Jedes fünfte komplette "
                                   "Gerätetelegramm. Dezimaltrennzeichen: Komma. Ausgewählte "
                                   "Datenobjekte: Siehe Info-Datei.)"));
    form.setCaption(lg::chkSaveAsMathCad,
                    QStringLiteral("im MATHCAD-Format (Schreibintervall: Jedes komplette "
                                   "Gerätetelegramm. Dezimaltrennzeichen: Punkt. Ausgewählte "
                                   "Datenobjekte: Siehe Info-Datei.)"));
    form.setCaption(lg::cmdSaveAsExcel, QStringLiteral("Speichern unter..."));
    form.setCaption(lg::cmdSaveAsMathCad, QStringLiteral("Speichern unter..."));
    form.setCaption(lg::cmdStart, QStringLiteral("START"));
    form.setCaption(lg::cmdStop, QStringLiteral("STOPP"));
    form.setCaption(lg::lblRunning, QStringLiteral("Aufzeichnung läuft !"));
    for (int which : {Excel, MathCad}) {
        const FileElements& e = elementsOf(which);
        form.setChecked(e.tick, false);
        form.setEnabled(e.chooser, false);
        form.setCaption(e.path, QString());
        m_records[which] = 0;
        ShowRecords(which);
    }
    form.setEnabled(lg::cmdStart, false);
    form.setEnabled(lg::cmdStop, false);
    form.setVisible(lg::lblRunning, false);
    m_tmrBlink.disable();
    form.setValue(lg::cboTrendSpan, kDefaultSpan);
    form.setChecked(lg::chkTrendPause, false);
    ApplyTexts();
    // The rows are there from the start, so that they can be ticked before a device is read.
    DataToShow();
    CheckLoggerReady();
}

void DataLogger::ApplyTexts() {
    Form& form = Window();
    form.setCaption(lg::fraTrend, m_texts.str(kStringTrend));
    form.setCaption(lg::lblTrendSpan, m_texts.str(kStringSpan));
    const double span = form.value(lg::cboTrendSpan);
    QStringList spans;
    for (int i = 0; i < 4; ++i)
        spans << m_texts.str(kStringSpans + i);
    form.setItems(lg::cboTrendSpan, spans);
    form.setValue(lg::cboTrendSpan, span);
    form.setCaption(lg::chkTrendPause, m_texts.str(kStringPause));
    form.setCaption(lg::cmdTrendExport, m_texts.str(kStringExport));
    form.setCaption(lg::cmdClose, m_texts.str(kStringClose));
    for (int which : {Excel, MathCad})
        ShowRecords(which);
}

void DataLogger::ShowLogger() {
    Form& form = Window();
    form.show();
    form.bringToFront();
}

void DataLogger::ReadOutComplete() {
    DataToShow();
    m_trend.append(m_services.clock->now().toMSecsSinceEpoch(), m_trendValues);
}

void DataLogger::DataToShow() {
    ListResetPending = true;
    ValueStore* values = m_values.get();
    m_haveValues = values != nullptr;
    if (!values) {
        if (!m_empty) m_empty = std::make_unique<ValueStore>();
        values = m_empty.get();
    }
    Form& form = Window();
    m_rows = form.items(lg::lstDisplay[0]);
    m_ticks = form.element(lg::lstDisplay[0]).ticks;
    VisitDataObjects(*values, [this](const DataObject& row) { AddDataObject(row); });
    form.setItems(lg::lstDisplay[0], m_rows);
    form.setItems(lg::lstDisplay[1], m_names);
    form.setItems(lg::lstDisplay[2], m_valueTexts);
    m_trend.setSeries(m_trendKeys);
    if (m_haveValues)
        form.setTitle(
            QStringLiteral("Datenlogger - Komplettes Gerätetelegramm empfangen um ") +
            m_preferences.locale().toString(m_services.clock->now().time(), QLocale::LongFormat));
    WriteLogRecord();
}

void DataLogger::AddDataObject(const DataObject& row) {
    if (ListResetPending) {
        ListRow = 0;
        LoggedRow = 0;
        m_names.clear();
        m_valueTexts.clear();
        m_trendKeys.clear();
        m_trendValues.clear();
        ListResetPending = false;
    }
    if (ListRow >= m_rows.size())
        m_rows.append(row.text);
    else if (m_rows[ListRow] != row.text)
        m_rows[ListRow] = row.text;
    if (ListRow < m_ticks.size() && m_ticks[ListRow]) {
        m_names.append(row.text);
        m_valueTexts.append(m_haveValues ? textOf(row, m_preferences.locale()) : QString());
        if (const auto number = numberOf(row)) {
            m_trendKeys.push_back({ListRow, row.text, unitOf(row.text)});
            m_trendValues.push_back(*number);
        }
        ++LoggedRow;
    }
    ++ListRow;
}

void DataLogger::CheckLoggerReady() {
    Form& form = Window();
    AnyObjectTicked = form.element(lg::lstDisplay[0]).ticks.contains(true);
    ExcelFileReady =
        form.isChecked(lg::chkSaveAsExcel) && !form.caption(lg::lblSaveAsExcelFile).isEmpty();
    MathCadFileReady =
        form.isChecked(lg::chkSaveAsMathCad) && !form.caption(lg::lblSaveAsMathCadFile).isEmpty();
    const bool excelTicked = form.isChecked(lg::chkSaveAsExcel);
    const bool mathCadTicked = form.isChecked(lg::chkSaveAsMathCad);
    form.setEnabled(lg::cmdStart, (((!excelTicked || ExcelFileReady) && MathCadFileReady) ||
                                   (!mathCadTicked && ExcelFileReady)) &&
                                      AnyObjectTicked);
}

QString DataLogger::AskLogFile(const QString& Extension) {
    const QString pattern = u'*' + Extension;
    const std::optional<QString> chosen =
        m_services.dialogs->saveFileName(QString(), pattern + u'|' + pattern + u'|');
    if (!chosen || chosen->isEmpty()) return {};
    QFile file(*chosen);
    // Opening creates the file where it is missing, and never empties it.
    if (!file.open(QIODevice::ReadWrite)) {
        m_services.dialogs->messageBox(
            m_texts.str(kStringOpenFailed)
                .arg(QDir::toNativeSeparators(*chosen), file.errorString()),
            kTitle, UserDialogs::Buttons::Ok, UserDialogs::Icon::Critical, UserDialogs::Answer::Ok);
        return {};
    }
    const qint64 length = file.size();
    file.close();
    if (length >= 1 && m_services.dialogs->messageBox(
                           QStringLiteral("Datei existiert bereits. Daten anhängen?"), kTitle,
                           UserDialogs::Buttons::YesNo, UserDialogs::Icon::Question,
                           UserDialogs::Answer::Yes) == UserDialogs::Answer::No)
        return {};
    return *chosen;
}

void DataLogger::ChooseFile(int which) {
    const FileElements& e = elementsOf(which);
    const QString path =
        AskLogFile(which == Excel ? QStringLiteral(".log") : QStringLiteral(".dat"));
    Window().setCaption(e.path, path);
    m_records[which] = path.isEmpty() ? 0 : logfiles::CountLines(path);
    ShowRecords(which);
    CheckLoggerReady();
}

void DataLogger::ShowRecords(int which) {
    Form& form = Window();
    const FileElements& e = elementsOf(which);
    form.setCaption(e.records, form.caption(e.path).isEmpty()
                                   ? QString()
                                   : m_texts.str(kStringRecords).arg(m_records[which]));
}

void DataLogger::cmdStart_Click() {
    Form& form = Window();
    LoggerRunning = true;
    form.setEnabled(lg::cmdStart, false);
    form.setEnabled(lg::cmdStop, true);
    for (int which : {Excel, MathCad}) {
        form.setEnabled(elementsOf(which).tick, false);
        form.setEnabled(elementsOf(which).chooser, false);
    }
    form.setVisible(lg::lblRunning, true);
    RecordDivider = 0;
    for (int i = 0; i < 3; ++i)
        form.setEnabled(lg::lstDisplay[i], false);
    LogInfoWritten = false;
    DatInfoWritten = false;
}

void DataLogger::cmdStop_Click() {
    Form& form = Window();
    LoggerRunning = false;
    form.setEnabled(lg::cmdStart, true);
    form.setEnabled(lg::cmdStop, false);
    for (int which : {Excel, MathCad}) {
        form.setEnabled(elementsOf(which).tick, true);
        form.setEnabled(elementsOf(which).chooser, true);
    }
    if (!m_tmrBlink.isEnabled()) m_tmrBlink.enable();
    form.setVisible(lg::lblRunning, false);
    RecordDivider = 0;
    for (int i = 0; i < 3; ++i)
        form.setEnabled(lg::lstDisplay[i], true);
}

void DataLogger::tmrBlink_Timer() {
    Window().setBackColor(lg::lblSaveAsExcelFile, colors::kButtonFace);
    Window().setBackColor(lg::lblSaveAsMathCadFile, colors::kButtonFace);
    m_tmrBlink.disable();
}

void DataLogger::WriteLogRecord() {
    if (!LoggerRunning) return;
    const QDateTime now = m_services.clock->now();
    if (AnyObjectTicked && ExcelFileReady && RecordDivider == 0) RecordTo(Excel, now);
    if (LoggerRunning && AnyObjectTicked && MathCadFileReady) RecordTo(MathCad, now);
    // A failure has stopped the recording, and with it the count.
    if (!LoggerRunning) return;
    if (++RecordDivider == 5) RecordDivider = 0;
}

void DataLogger::RecordTo(int which, const QDateTime& now) {
    Form& form = Window();
    const QString stamp = which == Excel ? logfiles::ExcelStamp(now) : logfiles::MathCadStamp(now);
    const QChar separator = which == Excel ? u'\t' : u' ';
    QString line = stamp;
    for (const QString& text : form.items(lg::lstDisplay[2]))
        line += separator +
                (which == Excel ? text : logfiles::WithDecimalPoint(text, m_preferences.locale()));
    QString start = QStringLiteral("START-> ") + stamp;
    for (const QString& name : form.items(lg::lstDisplay[1]))
        start += QStringLiteral(" | ") + name;

    const FileElements& e = elementsOf(which);
    form.setBackColor(e.path, colors::kGreen);
    if (!m_tmrBlink.isEnabled()) m_tmrBlink.enable();
    const QString path = form.caption(e.path);
    // A file deleted during the recording comes back with this line, and counts from it.
    if (!QFileInfo::exists(path)) m_records[which] = 0;
    if (!Append(path, line)) return;
    ++m_records[which];
    ShowRecords(which);
    bool& infoWritten = which == Excel ? LogInfoWritten : DatInfoWritten;
    if (infoWritten) return;
    infoWritten = true;
    Append(logfiles::InfoPath(path,
                              which == Excel ? logfiles::kLogInfoSuffix : logfiles::kDatInfoSuffix),
           start);
}

bool DataLogger::Append(const QString& path, const QString& line) {
    const QString failure = logfiles::AppendLine(path, line);
    if (failure.isEmpty()) return true;
    cmdStop_Click();
    m_services.dialogs->messageBox(
        m_texts.str(kStringWriteFailed).arg(QDir::toNativeSeparators(path), failure), kTitle,
        UserDialogs::Buttons::Ok, UserDialogs::Icon::Critical, UserDialogs::Answer::Ok);
    return false;
}

void DataLogger::OnClicked(const QString& element) {
    Form& form = Window();
    for (int which : {Excel, MathCad}) {
        const FileElements& e = elementsOf(which);
        if (element == e.tick) {
            form.setEnabled(e.chooser, form.isChecked(e.tick));
            CheckLoggerReady();
        } else if (element == e.chooser) {
            ChooseFile(which);
        }
    }
    if (element == lg::cmdStart)
        cmdStart_Click();
    else if (element == lg::cmdStop)
        cmdStop_Click();
    else if (element == lg::cmdTrendExport)
        ExportTrend();
    else if (element == lg::cmdClose)
        m_window.hide(); // as the window's own close: the recording goes on
}

void DataLogger::OnEdited(const QString& element) {
    for (int i = 0; i < 3; ++i) {
        if (element != lg::lstDisplay[i]) continue;
        DataToShow();
        CheckLoggerReady();
    }
}

void DataLogger::ExportTrend() {
    std::optional<QString> path = m_services.dialogs->saveFileName(
        QString(), m_texts.str(kStringPicture) + QStringLiteral(" (*.png)|*.png|"));
    if (!path || path->isEmpty()) return;
    if (QFileInfo(*path).suffix().isEmpty()) *path += QStringLiteral(".png");
    Q_EMIT TrendExportRequested(*path);
}

void DataLogger::TrendExported(const QString& path, const QString& failure) {
    if (failure.isEmpty()) return;
    m_services.dialogs->messageBox(
        m_texts.str(kStringExportFailed).arg(QDir::toNativeSeparators(path), failure), kTitle,
        UserDialogs::Buttons::Ok, UserDialogs::Icon::Critical, UserDialogs::Answer::Ok);
}

#include "moc_datalogger.cpp"
