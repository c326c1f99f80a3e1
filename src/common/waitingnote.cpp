#include "common/waitingnote.h"

#include "common/colors.h"
#include "common/formmodel.h"
#include "common/texts.h"

#include <QElapsedTimer>

namespace {

constexpr int kStringWaiting = 506;
constexpr int kStringStillDifferent = 507;
constexpr int kStringDeviceReports = 823;

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

QStringList markRefusedRows(const Texts& texts, Form& form, std::span<const ComparedRow> rows,
                            const QStringList& differing, bool waiting) {
    QStringList notes;
    if (!waiting) return notes;
    for (const ComparedRow& row : rows) {
        const QString name = form.caption(row.name);
        const bool refused = differing.contains(name);
        form.setBackColor(row.field, refused ? colors::kYellow : colors::kWindowBackground);
        if (!refused) continue;
        const QString reported =
            (form.caption(row.label) + u' ' + form.caption(row.unit)).trimmed();
        notes << texts.str(kStringDeviceReports).arg(name, reported);
    }
    return notes;
}
