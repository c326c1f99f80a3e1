#include "common/waitingnote.h"

#include "common/formmodel.h"
#include "common/texts.h"

#include <QElapsedTimer>

namespace {

constexpr int kStringWaiting = 506;
constexpr int kStringStillDifferent = 507;

} // namespace

void showWaitingNote(const Texts& texts, Form& form, const QString& label, bool waiting,
                     const QElapsedTimer& sentAt, const QStringList& differing) {
    form.setVisible(label, waiting);
    if (!waiting) {
        form.setCaption(label, QString());
        return;
    }
    const qint64 seconds = sentAt.isValid() ? sentAt.elapsed() / 1000 : 0;
    QString text = texts.str(kStringWaiting).arg(seconds);
    if (!differing.isEmpty())
        text +=
            u' ' + texts.str(kStringStillDifferent) + u' ' + differing.join(QStringLiteral(", "));
    form.setCaption(label, text);
}
