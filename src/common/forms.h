#pragma once

#include "common/formmodel.h"

#include <QHash>
#include <QObject>

// Names of the windows.
namespace formname {
inline const QString frmMQ27D = QStringLiteral("frmMQ27D");
inline const QString frmDisplay = QStringLiteral("frmDisplay");
inline const QString frmInterface = QStringLiteral("frmInterface");
inline const QString frmLanguage = QStringLiteral("frmLanguage");
inline const QString frmAbout = QStringLiteral("frmAbout");
inline const QString frmConnect = QStringLiteral("frmConnect");
inline const QString frmDeviceSearch = QStringLiteral("frmDeviceSearch");
inline const QString frmLogdataDev = QStringLiteral("frmLogdataDev");
inline const QString frmLocalizeLearn = QStringLiteral("frmLocalizeLearn");
inline const QString frmExtinguishSettings = QStringLiteral("frmExtinguishSettings");
inline const QString frmExtinguishDetails = QStringLiteral("frmExtinguishDetails");
inline const QString frmDeviceSettings = QStringLiteral("frmDeviceSettings");
inline const QString frmProtocol = QStringLiteral("frmProtocol");
inline const QString frmProtocolComment = QStringLiteral("frmProtocolComment");
} // namespace formname

// Every window model of the program, each created on first use and kept to the end.
class Forms : public QObject {
    Q_OBJECT

public:
    using QObject::QObject;

    Form& get(const QString& name);
    bool exists(const QString& name) const { return m_forms.contains(name); }
    // Whether a window of this name is declared at all.
    static bool isDeclared(const QString& name);
    QList<Form*> all() const { return m_forms.values(); }

    Form& frmMQ27D() { return get(formname::frmMQ27D); }
    Form& frmDisplay() { return get(formname::frmDisplay); }
    Form& frmInterface() { return get(formname::frmInterface); }
    Form& frmLanguage() { return get(formname::frmLanguage); }
    Form& frmAbout() { return get(formname::frmAbout); }
    Form& frmConnect() { return get(formname::frmConnect); }
    Form& frmDeviceSearch() { return get(formname::frmDeviceSearch); }
    Form& frmLogdataDev() { return get(formname::frmLogdataDev); }
    Form& frmLocalizeLearn() { return get(formname::frmLocalizeLearn); }
    Form& frmExtinguishSettings() { return get(formname::frmExtinguishSettings); }
    Form& frmExtinguishDetails() { return get(formname::frmExtinguishDetails); }
    Form& frmDeviceSettings() { return get(formname::frmDeviceSettings); }
    Form& frmProtocol() { return get(formname::frmProtocol); }
    Form& frmProtocolComment() { return get(formname::frmProtocolComment); }

Q_SIGNALS:
    void created(Form& form);

private:
    QHash<QString, Form*> m_forms;
};
