#pragma once

#include "common/preferences.h"

#include <QString>

// The message texts that the language switch builds.
struct AppMessages {
    QString saveQuestion;     // string 104
    QString saveConfirmation; // string 105
    QString loadFilter;       // strings 100 and 101
    QString normalModeWarning;
    QString notPossible;
    QString standardValuesRemark;
    QString notPossibleWithReason;
    QString fileMissing;   // string 419
    QString viewerMissing; // string 420
    QString buzzerWarning; // string 421
    QString closeQuestion; // string 422
};

// The words of the tool in the language the user has chosen: the string table, the title
// of every window and message box, and the messages the language switch builds.
class Texts {
public:
    explicit Texts(const Preferences& preferences)
        : m_preferences(preferences) {}

    // String `index` of the table in the current language.
    QString str(int index) const;
    Language language() const { return m_preferences.language(); }

    QString appTitle;      // the title of every window and message box
    QString versionSuffix; // ",  V3.01.05" behind the version in the About window
    AppMessages messages;

private:
    const Preferences& m_preferences;
};
