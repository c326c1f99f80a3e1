#pragma once

#include <QObject>

class AppContext;

// Every visible word of every window from the four-language string table, the units of
// temperature and smoke, and the language dialog frmLanguage.
class Languages : public QObject {
    Q_OBJECT

public:
    explicit Languages(AppContext& app);

    // Rewrites all window models and the message texts in `language` (1 to 4; anything
    // else is German), and stores a changed language.
    void SwitchToLanguage(int language);
    // Store the unit unconditionally; a value other than 1 and 2 is stored but used as 1.
    void SwitchToTemperature(int unit);
    void SwitchToSmokeUnit(int unit);

    // mnuLanguage: frmLanguage non-modal with the current language checked.
    void ShowLanguage();

    // " - V1.00.00": the program's own version behind the title.
    static QString versionText();

Q_SIGNALS:
    void languageSwitched(int language);

private:
    void applyStartWindow();
    void applyMessages();
    void applyInterfaceAndLanguage();
    void applyMainView();
    void applyAbout();
    void applyConnectAndSearch();
    void onLanguageClicked(const QString& element);

    AppContext& m_app;
};
