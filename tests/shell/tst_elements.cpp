#include "common/forms.h"
#include "display/mainview_elements.h"
#include "shell/allforms.h"

#include <QtTest>

namespace {

QStringList refused;

void remember(const QString& form, const QString& element) {
    refused << form + u'.' + element;
}

} // namespace

class TestElements : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void misspeltNamesAreRefused() {
        setUndeclaredElementHandler(remember);
        AllForms forms;
        Form& view = forms.frmDisplay();
        view.setCaption(QStringLiteral("lblSerialNumber_0"), QStringLiteral("x"));
        view.caption(QStringLiteral("lblSerialNo_8"));
        view.setBackColor(frmDisplay::lblSerialNo[9], 0);
        forms.get(QStringLiteral("frmNowhere"));
        setUndeclaredElementHandler(nullptr);
        QCOMPARE(refused, QStringList({"frmDisplay.lblSerialNumber_0", "frmDisplay.lblSerialNo_8",
                                       "frmDisplay.lblSerialNo_9", "frmNowhere.(window)"}));
    }
};

QTEST_GUILESS_MAIN(TestElements)
#include "tst_elements.moc"
