#pragma once

#include <QObject>
#include <QString>

#include "common/preferences.h"

class AllForms;
class Form;
class RegSettings;
class Texts;

// Every visible word of every window from the four-language string table, and the language
// dialog frmLanguage.
class Languages : public QObject {
    Q_OBJECT

public:
    // Writes the texts of every window in `forms` and the message texts of `texts`.
    Languages(AllForms& forms, Preferences& preferences, Texts& texts, RegSettings& settings);

    // Rewrites all window models and the message texts in `language` (1 to 4; anything
    // else is German), and stores a changed language.
    void SwitchToLanguage(int language);
    // mnuLanguage: frmLanguage non-modal with the current language checked.
    void ShowLanguage();

    // " - V1.00.00": the program's own version behind the title.
    static QString VersionText();
    // "1.00.00".
    static QString VersionNumber();

Q_SIGNALS:
    void LanguageSwitched(Language language);

private:
    // The texts of one language, as a switch applies them.
    class Words;

    void ApplyStartWindow(const Words& s);
    void ApplyMessages(const Words& s);
    void ApplyInterfaceAndLanguage(const Words& s);
    void ApplyMainView(const Words& s);
    void ApplyAbout(const Words& s);
    void ApplyConnectAndSearch(const Words& s);
    void OnLanguageClicked(const QString& element);
    void OnLanguageEdited(const QString& element);
    void CheckCurrentLanguage();

    AllForms& m_forms;
    Preferences& m_preferences;
    Texts& m_texts;
    RegSettings& m_settings;
};
