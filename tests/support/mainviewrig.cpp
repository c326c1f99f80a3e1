#include "support/mainviewrig.h"

#include "display/mainview.h"
#include "link/recognition.h"
#include "link/seriallink.h"
#include "link/telegram.h"
#include "shell/languages.h"
#include "support/testsupport.h"
#include "values/valuestore.h"

#include "sim/sim_clock.h"
#include "sim/sim_device.h"

MainViewRig::MainViewRig(const QString& profile) {
    QString error;
    const auto loaded = mq27sim::ProfileLoader::load(
        testsupport::sourcePath(QStringLiteral("tools/profiles/%1.json").arg(profile)), error);
    if (!loaded) qFatal("%s", qPrintable(error));
    m_profile = *loaded;
    app->preferences().setLocale(QLocale::c());
    app->forms().frmDisplay().load();
    app->languages().SwitchToLanguage(2);
    readOut();
}

void MainViewRig::set(const std::string& name, double value) {
    if (!m_profile.values.set(name, value)) qFatal("the profile holds no value %s", name.c_str());
}

void MainViewRig::readOut() {
    const mq27sim::SimClock clock;
    const mq27sim::SimDevice device(m_profile, clock, false, nullptr);
    for (int command : {1, 2, 3, 5}) {
        const auto frame = device.readTelegram(command);
        app->link().SetDataFromFile(true);
        app->recognition().RcvDataHandle(
            telegram::StampTelegram(*frame, testsupport::kRecorded).value());
    }
    app->mainView().ShowData();
}

void MainViewRig::overwrite(int command, int offset, const Bytes& bytes) {
    ValueStore& values = *app->values();
    Bytes telegram;
    values.GetDataArray(telegram, static_cast<std::int16_t>(command));
    std::copy(bytes.begin(), bytes.end(), telegram.begin() + offset);
    values.SetDataArray(telegram, static_cast<std::int16_t>(command));
    app->mainView().ShowData();
}

Form& MainViewRig::view() {
    return app->forms().frmDisplay();
}

QString MainViewRig::caption(const QString& element) {
    return view().caption(element);
}
