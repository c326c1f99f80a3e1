#include "common/forms.h"

#include "common/dialog_elements.h"
#include "common/logger_elements.h"
#include "common/mainview_elements.h"
#include "common/record_elements.h"
#include "common/startwindow_elements.h"
#include "common/workwindow_elements.h"

namespace {

// The declaration of each window; a window without elements of its own yet has none.
const QHash<QString, FormDeclaration>& declarations() {
    static const QHash<QString, FormDeclaration> all = {
        {formname::frmMQ27D, frmMQ27D::kElements},
        {formname::frmDisplay, frmDisplay::kElements},
        {formname::frmInterface, frmInterface::kElements},
        {formname::frmLanguage, frmLanguage::kElements},
        {formname::frmAbout, frmAbout::kElements},
        {formname::frmConnect, frmConnect::kElements},
        {formname::frmDeviceSearch, frmDeviceSearch::kElements},
        {formname::frmLogdataDev, frmLogdataDev::kElements},
        {formname::frmLocalizeLearn, frmLocalizeLearn::kElements},
        {formname::frmExtinguishSettings, frmExtinguishSettings::kElements},
        {formname::frmExtinguishDetails, frmExtinguishDetails::kElements},
        {formname::frmDeviceSettings, frmDeviceSettings::kElements},
        {formname::frmProtocol, frmProtocol::kElements},
        {formname::frmProtocolComment, frmProtocolComment::kElements},
    };
    return all;
}

FormDeclaration declarationOf(const QString& name) {
    const auto it = declarations().constFind(name);
    if (it == declarations().constEnd()) reportUndeclaredElement(name, QStringLiteral("(window)"));
    return it == declarations().constEnd() ? FormDeclaration{} : *it;
}

} // namespace

bool Forms::isDeclared(const QString& name) {
    return declarations().contains(name);
}

Form& Forms::get(const QString& name) {
    auto it = m_forms.find(name);
    if (it == m_forms.end()) {
        it = m_forms.insert(name, new Form(name, declarationOf(name), this));
        Q_EMIT created(**it);
    }
    return **it;
}
