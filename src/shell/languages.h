#pragma once

#include <QObject>
#include <QString>

class AppState;
class Form;

// Every visible word of every window from the four-language string table, and the language
// dialog frmLanguage.
class Languages : public QObject {
    Q_OBJECT

public:
    explicit Languages(AppState& state);

    // Rewrites all window models and the message texts in `language` (1 to 4; anything
    // else is German), and stores a changed language.
    void SwitchToLanguage(int language);
    // mnuLanguage: frmLanguage non-modal with the current language checked.
    void ShowLanguage();

    // " - V1.00.00": the program's own version behind the title.
    static QString versionText();
    // "1.00.00".
    static QString versionNumber();

Q_SIGNALS:
    void languageSwitched(int language);

private:
    // The texts of one language, as a switch applies them.
    class Texts;

    void applyStartWindow(const Texts& s);
    void applyMessages(const Texts& s);
    void applyInterfaceAndLanguage(const Texts& s);
    void applyMainView(const Texts& s);
    void applyAbout(const Texts& s);
    void applyConnectAndSearch(const Texts& s);
    void onLanguageClicked(const QString& element);
    void onLanguageEdited(const QString& element);
    void checkCurrentLanguage();

    AppState& m_state;
};
