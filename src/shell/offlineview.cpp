#include "shell/offlineview.h"

#include "display/mainview.h"
#include "files/devicefiles.h"
#include "files/offlineload.h"
#include "shell/languages.h"
#include "shell/program.h"
#include "values/valuestore.h"

OfflineView::OfflineView(const Options& options) {
    m_program = std::make_unique<Program>(m_outside.services(), nullptr);
    Preferences& preferences = m_program->preferences();
    preferences.setLocale(options.locale);
    // As the tool starts: the main view loads with the units, then the language applies.
    preferences.setTemperatureUnit(options.temperatureUnit);
    preferences.setSmokeUnit(options.smokeUnit);
    m_program->forms().frmDisplay().load();
    m_program->languages().SwitchToLanguage(languageNumber(options.language));
}

OfflineView::~OfflineView() = default;

std::optional<QString> OfflineView::load(const QString& path) {
    // A look through a scratch store first: a file of another family would hand the tool
    // over, which a look must not do, and an unreadable one deserves its reason.
    ValueStore scratch;
    const offline::LoadReport report = offline::LoadIntoStore(path, scratch);
    if (!report.error.isEmpty()) return path + QStringLiteral(": ") + report.error;
    if (!report.otherFamilies.isEmpty())
        return path + QStringLiteral(": telegram of another device family: ") +
               report.otherFamilies.first();
    if (report.stored == 0) return path + QStringLiteral(": no readable telegram of this device");
    m_program->files().LoadDeviceFile(path);
    m_program->mainView().ShowData();
    return std::nullopt;
}
