#pragma once

#include "common/services.h"

// Message boxes and file dialogs on the desktop.
class WidgetDialogs : public UserDialogs {
public:
    Answer messageBox(const QString& text, const QString& title, Buttons buttons, Icon icon,
                      Answer defaultAnswer) override;
    // Never asks about overwriting: the caller asks in its own words.
    std::optional<QString> saveFileName(const QString& initialName, const QString& filter) override;
    std::optional<QString> openFileName(const QString& filter,
                                        const QString& defaultSuffix) override;

    // The tool's "description|pattern|description|pattern|" as Qt's name filters,
    // "description (pattern);;...". A description that already names its pattern in
    // parentheses keeps it once.
    static QString qtFilter(const QString& toolFilter);
    // The extension of the first filter's first pattern when it is a plain "*.ext".
    static QString firstSuffix(const QString& toolFilter);
};
