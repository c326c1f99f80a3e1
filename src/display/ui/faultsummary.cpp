#include "display/ui/faultsummary.h"

#include "common/colors.h"
#include "common/formmodel.h"
#include "display/mainview_elements.h"

namespace el = frmDisplay;

namespace {

// The entries with a place in the list; the bits without one show through the common
// entries 32 and 33.
constexpr int kShownEntries[] = {0,  1,  2,  3,  4,  5,  6,  7,  8,  9,  11, 12, 13, 14,
                                 15, 16, 21, 22, 23, 24, 25, 26, 27, 28, 30, 31, 32, 33};

// The doubled texts belong to detector 1 and 2; with two detectors they say which.
int detectorFrameOf(int entry) {
    switch (entry) {
    case 22:
    case 32:
        return 1;
    case 23:
    case 33:
        return 2;
    default:
        return 0;
    }
}

} // namespace

FaultSummary::FaultSummary(Form& form, QString noneText, QWidget* parent)
    : QLabel(parent)
    , m_form(form)
    , m_noneText(std::move(noneText)) {
    setWordWrap(true);
    setAlignment(Qt::AlignLeft | Qt::AlignTop);
    setTextFormat(Qt::PlainText);
    setTextInteractionFlags(Qt::TextSelectableByMouse);
    connect(&m_form, &Form::elementChanged, this,
            [this](const QString& element, ElementProperty) { onElementChanged(element); });
    refresh();
}

QStringList FaultSummary::pending() const {
    QStringList lines;
    const bool twoDetectors = m_form.isVisible(el::fraErr[2]);
    for (int entry : kShownEntries) {
        const QString& box = el::picErr[entry];
        if (!m_form.isVisible(box) || m_form.backColor(box) != colors::kYellow) continue;
        QString line = m_form.caption(el::lblErr[entry]);
        if (const int frame = detectorFrameOf(entry); twoDetectors && frame != 0)
            line += QStringLiteral(" (") + m_form.caption(el::fraErr[frame]) + u')';
        lines << line;
    }
    return lines;
}

// The list changes box by box within one read-out; the summary follows once, after it.
void FaultSummary::onElementChanged(const QString& element) {
    if (m_refreshQueued) return;
    const bool ours = element.startsWith(QLatin1String("picErr_")) ||
                      element.startsWith(QLatin1String("lblErr_")) ||
                      element.startsWith(QLatin1String("fraErr_")) || element == m_noneText;
    if (!ours) return;
    m_refreshQueued = true;
    QMetaObject::invokeMethod(this, &FaultSummary::refresh, Qt::QueuedConnection);
}

void FaultSummary::refresh() {
    m_refreshQueued = false;
    const QStringList lines = pending();
    const QString text = lines.isEmpty()
                             ? m_form.caption(m_noneText)
                             : QStringLiteral("\u25A0 ") + lines.join(QStringLiteral("\n\u25A0 "));
    if (text != this->text()) setText(text);
    setAccessibleDescription(text);
}

#include "moc_faultsummary.cpp"
