#include "shell/ui/screenshots.h"

#include "devicesettings/devicesettings_elements.h"
#include "display/mainview_elements.h"
#include "extinguish/extinguish_elements.h"
#include "localize/localize_elements.h"
#include "logger/datalogger.h"
#include "logger/logger_elements.h"
#include "record/record_elements.h"
#include "search/search_elements.h"
#include "shell/dialog_elements.h"
#include "shell/program.h"
#include "shell/startwindow_elements.h"
#include "shell/ui/toolruntime.h"

#include <QApplication>
#include <QDir>
#include <QScrollArea>
#include <QTabWidget>
#include <QWidget>

#include <vector>

namespace {

// Long enough for every telegram of a read-out to arrive and the LEDs to have blinked.
constexpr int kSettleMs = 4000;
constexpr const char* kPageNames[] = {"status", "measurement",  "messages",  "settings",
                                      "relays", "localisation", "modules-a", "modules-b"};
// Long enough for a working window's first refreshes (234 ms apart) to have filled it.
constexpr int kWindowSettleMs = 800;

// The two settings pages while they are edited: the buttons that open their fields, the field
// and the button that take the focus for the pictures, and the button that closes them again.
struct EditingShot {
    int page;
    const char* name;
    std::vector<QString> openers;
    QString field;
    QString button;
    std::vector<QString> closers;
};

const std::vector<EditingShot>& editingShots() {
    static const std::vector<EditingShot> shots = {
        {3,
         "settings-a-editing",
         {frmDisplay::cmdSettings, frmDisplay::cmdAirFlowSet, frmDisplay::cmdSensorTempAlarmSet},
         frmDisplay::txtSensitivity[0],
         frmDisplay::cmdSettingsAssume,
         {frmDisplay::cmdSettingsCancel, frmDisplay::cmdAirFlowCancel,
          frmDisplay::cmdSensorTempAlarmCancel}},
        {4,
         "settings-b-editing",
         {frmDisplay::cmdRelaySet},
         frmDisplay::kRelayBoxes[0][0],
         frmDisplay::cmdRelayAssume,
         {frmDisplay::cmdRelayCancel}},
    };
    return shots;
}

// The working windows, each opened through the main view's own button or menu entry, then
// the small windows, each shown as it is.
struct WindowShot {
    QString opener; // on the main view; none for a window shown as it is
    QString form;
    const char* name;
    QString ticked = {}; // a box that must be ticked, or the opener only says why not
};

const std::vector<WindowShot>& windowShots() {
    static const std::vector<WindowShot> shots = {
        {frmDisplay::cmdShowLocLearnMode[0], frmLocalizeLearn::kName, "localisation-learn",
         frmDisplay::chkLocalization[0]},
        {frmDisplay::cmdShowLocLearnMode[1], frmLocalizeLearn::kName, "localisation-test",
         frmDisplay::chkLocalization[0]},
        {frmDisplay::cmdExtinguisherMessages[0], frmExtinguishDetails::kName, "module-details"},
        {frmDisplay::mnuExtinguishSettings, frmExtinguishSettings::kName, "module-settings"},
        {frmDisplay::mnuDeviceSettings, frmDeviceSettings::kName, "device-settings"},
        {frmDisplay::mnuLogDataDev, frmLogdataDev::kName, "logger"},
        {frmDisplay::mnuProtocolCreate, frmProtocol::kName, "record"},
        {{}, frmMQ27D::kName, "start"},
        {{}, frmInterface::kName, "interface"},
        {{}, frmLanguage::kName, "language"},
        {{}, frmAbout::kName, "about"},
        {{}, frmDeviceSearch::kName, "search"},
        {{}, frmConnect::kName, "connect"},
        {{}, frmProtocolComment::kName, "record-comment"},
    };
    return shots;
}

} // namespace

ScreenshotRun::ScreenshotRun(ToolRuntime& runtime, const QString& folder, const QString& prefix)
    : QObject()
    , m_runtime(runtime)
    , m_folder(folder)
    , m_prefix(prefix) {
    m_settle.setSingleShot(true);
    m_settle.setInterval(kSettleMs);
    connect(&m_settle, &QTimer::timeout, this, &ScreenshotRun::capture);
    connect(&runtime.app().forms().frmDisplay(), &Form::windowChanged, this,
            [this](Form::WindowChange change) {
                if (change != Form::WindowChange::Shown || m_settle.isActive()) return;
                m_settle.start();
                startRecording();
            });
}

// The logger records a few values from the first read-out on, so that its picture shows a
// trend of every read-out since and a recording under way.
void ScreenshotRun::startRecording() {
    namespace lg = frmLogdataDev;
    Form& logger = m_runtime.app().forms().frmLogdataDev();
    if (m_recording.path().isEmpty() || logger.isChecked(lg::chkSaveAsMathCad)) return;
    logger.load();
    // As the logic sets them, so that the window shows them too.
    for (const QString& row :
         {QStringLiteral("Akt. Luftstrom [m/s]"), QStringLiteral("Akt. Lufttemperatur [°C]"),
          QStringLiteral("Lüfter Sollspannung [mV]"),
          QStringLiteral("Detektor 1: Aktueller Zustand Bargraphanzeige [%]")}) {
        const qsizetype index = logger.items(lg::lstDisplay[0]).indexOf(row);
        if (index >= 0) logger.setTicked(lg::lstDisplay[0], index, true);
    }
    logger.setValue(lg::cboTrendSpan, 3);
    logger.setChecked(lg::chkSaveAsMathCad, true);
    logger.click(lg::chkSaveAsMathCad);
    logger.setCaption(lg::lblSaveAsMathCadFile,
                      QDir(m_recording.path()).filePath(QStringLiteral("Messung 1.dat")));
    DataLogger& logic = m_runtime.app().logger();
    logic.DataToShow();
    logic.CheckLoggerReady();
    logger.click(lg::cmdStart);
}

std::unique_ptr<ScreenshotRun> ScreenshotRun::fromEnvironment(ToolRuntime& runtime) {
    const QString folder = qEnvironmentVariable("MQ27D_SCREENSHOTS");
    if (folder.isEmpty()) return nullptr;
    const QString prefix = qEnvironmentVariable("MQ27D_SCREENSHOT_PREFIX", QStringLiteral("tool"));
    return std::make_unique<ScreenshotRun>(runtime, folder, prefix);
}

void ScreenshotRun::capture() {
    QWidget* window = m_runtime.window(frmDisplay::kName);
    auto* tabs = window ? window->findChild<QTabWidget*>(frmDisplay::tabDisplay.whole()) : nullptr;
    if (!tabs) return;
    QDir().mkpath(m_folder);
    for (int page = 0; page < tabs->count(); ++page) {
        if (!tabs->isTabVisible(page)) continue;
        tabs->setCurrentIndex(page);
        QApplication::processEvents();
        window->grab().save(QDir(m_folder).filePath(
            m_prefix + u'-' + QLatin1String(kPageNames[page]) + QStringLiteral(".png")));
    }
    captureEditing(window, tabs);
    tabs->setCurrentIndex(0);
    captureWindow(0);
}

// Each settings page with its fields open, once with the focus on a field and once on a
// button, as a keyboard user sees it; then the page is closed again, nothing sent.
void ScreenshotRun::captureEditing(QWidget* window, QTabWidget* tabs) {
    Form& view = m_runtime.app().forms().frmDisplay();
    window->activateWindow();
    // As after a press of Tab: the style draws the focus only for the keyboard.
    window->setAttribute(Qt::WA_KeyboardFocusChange);
    for (const EditingShot& shot : editingShots()) {
        if (!tabs->isTabVisible(shot.page)) continue;
        tabs->setCurrentIndex(shot.page);
        for (const QString& opener : shot.openers)
            if (view.isVisible(opener) && view.isEnabled(opener)) view.click(opener);
        for (const auto& [focus, what] :
             {std::pair{shot.field, "field"}, {shot.button, "button"}}) {
            if (auto* target = window->findChild<QWidget*>(focus)) {
                target->setFocus(Qt::TabFocusReason);
                if (auto* scroll = tabs->currentWidget()->findChild<QScrollArea*>())
                    scroll->ensureWidgetVisible(target);
            }
            QApplication::processEvents();
            window->grab().save(QDir(m_folder).filePath(m_prefix + u'-' + QLatin1String(shot.name) +
                                                        u'-' + QLatin1String(what) +
                                                        QStringLiteral(".png")));
        }
        for (const QString& closer : shot.closers)
            if (view.isVisible(closer) && view.isEnabled(closer)) view.click(closer);
    }
}

// One working window after the other, each given time to fill, then the tool ends. A window
// that the device doesn't offer (its opener hidden or disabled) is left out.
void ScreenshotRun::captureWindow(std::size_t index) {
    Form& view = m_runtime.app().forms().frmDisplay();
    auto offered = [&view](const WindowShot& shot) {
        return shot.opener.isEmpty() ||
               (view.isVisible(shot.opener) && view.isEnabled(shot.opener) &&
                (shot.ticked.isEmpty() || view.isChecked(shot.ticked)));
    };
    while (index < windowShots().size() && !offered(windowShots()[index]))
        ++index;
    if (index >= windowShots().size()) {
        QApplication::exit(0);
        return;
    }
    const WindowShot& shot = windowShots()[index];
    // A small window is taken at once: the tool would close some of them (the start and
    // the connection window) as soon as it has a device.
    if (shot.opener.isEmpty()) {
        Form& form = m_runtime.app().forms().get(shot.form);
        form.show();
        QApplication::processEvents();
        if (QWidget* window = m_runtime.window(shot.form))
            window->grab().save(QDir(m_folder).filePath(m_prefix + u'-' + QLatin1String(shot.name) +
                                                        QStringLiteral(".png")));
        form.hide();
        captureWindow(index + 1);
        return;
    }
    view.click(shot.opener);
    // The record asks for its comment lines first.
    if (shot.form == frmProtocol::kName) {
        Form& comment = m_runtime.app().forms().frmProtocolComment();
        comment.setCaption(frmProtocolComment::txtComment1,
                           QStringLiteral("Annual service, filter changed"));
        comment.click(frmProtocolComment::cmdOK);
    }
    QTimer::singleShot(kWindowSettleMs, this, [this, index, &shot] {
        Form& form = m_runtime.app().forms().get(shot.form);
        if (QWidget* window = m_runtime.window(shot.form); window && form.isShown())
            window->grab().save(QDir(m_folder).filePath(m_prefix + u'-' + QLatin1String(shot.name) +
                                                        QStringLiteral(".png")));
        form.hide();
        captureWindow(index + 1);
    });
}

#include "moc_screenshots.cpp"
