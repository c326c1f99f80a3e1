#include "common/waitingnote.h"

#include "common/appstate.h"
#include "common/formmodel.h"

#include <QElapsedTimer>

namespace {

constexpr int kStringWaiting = 506;
constexpr int kStringStillDifferent = 507;

} // namespace

void showWaitingNote(const AppState& state, Form& form, const QString& label, bool waiting,
                     const QElapsedTimer& sentAt, const QStringList& differing) {
    form.setVisible(label, waiting);
    if (!waiting) {
        form.setCaption(label, QString());
        return;
    }
    const qint64 seconds = sentAt.isValid() ? sentAt.elapsed() / 1000 : 0;
    QString text = state.str(kStringWaiting).arg(seconds);
    if (!differing.isEmpty())
        text +=
            u' ' + state.str(kStringStillDifferent) + u' ' + differing.join(QStringLiteral(", "));
    form.setCaption(label, text);
}
