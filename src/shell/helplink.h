#pragma once

#include "common/preferences.h"

#include <QString>
#include <QStringList>

class Form;
class Texts;
struct Services;

// Context help: KompaHelp_<device>_<language>.pdf beside the program (or where an
// installation keeps the program's data), opened at a named destination by a PDF viewer found
// on the PATH, else at its start by the desktop's own PDF viewer.
class HelpLink {
public:
    // `about` names the manual.
    HelpLink(const Services& services, const Texts& texts, Form& about);

    // Mode 1 opens the viewer at the destination, mode 2 shows what would be opened.
    void ShowHelp(int DeviceNumber, int Mode, int PDF_Target, const QString& Remark);
    // The viewer's path, or empty when no viewer that can jump to a destination is found.
    QString PdfViewer() const;

    static QString HelpFileName(int deviceNumber, Language language);
    // The help file of `deviceNumber` in the present language, where it is found; the path
    // beside the program when it is found nowhere.
    QString HelpFile(int deviceNumber) const;
    // Names this device kind's manual in the About window, in the present language.
    void ShowManualPath();
    // How `viewer` is told to open `file` at `destination`.
    static QStringList ViewerArguments(const QString& viewer, const QString& file,
                                       const QString& destination);

private:
    void Describe(int target, const QString& file, const QString& destination,
                  const QString& remark);
    void Open(const QString& file, const QString& destination);

    const Services& m_services;
    const Texts& m_texts;
    Form& m_about;
};
