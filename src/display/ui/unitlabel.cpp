#include "display/ui/unitlabel.h"

#include <algorithm>
#include <cmath>

#include <QEvent>

namespace {

constexpr double kTwipsPerInch = 1440;

} // namespace

UnitLabel::UnitLabel(QWidget* parent)
    : QLabel(parent) {}

void UnitLabel::follow(QWidget* label, QWidget* field) {
    m_label = label;
    m_field = field;
    for (QWidget* anchor : {label, field})
        if (anchor) anchor->installEventFilter(this);
}

void UnitLabel::setPeers(const QStringList& units) {
    m_peers = units;
    updateGeometry();
}

QSize UnitLabel::sizeHint() const {
    QSize hint = QLabel::sizeHint();
    // Measured as the label measures its own text, so that a peer as wide as it is takes
    // the same room.
    int widest = 0;
    for (const QString& unit : m_peers)
        widest = std::max(widest, fontMetrics().boundingRect(QRect(), Qt::AlignLeft, unit).width());
    const QMargins margins = contentsMargins();
    hint.setWidth(std::max(hint.width(), widest + margins.left() + margins.right() + 2 * margin()));
    return hint;
}

// A unit is never cut: its text is only a few letters.
QSize UnitLabel::minimumSizeHint() const {
    return sizeHint();
}

bool UnitLabel::event(QEvent* event) {
    switch (event->type()) {
    case QEvent::DynamicPropertyChange: {
        const QVariant twips = property("mq27LeftTwips");
        if (twips.isValid() && twips.toInt() != m_twips) {
            m_twips = twips.toInt();
            place();
        }
        break;
    }
    case QEvent::Move:
    case QEvent::Show:
        place();
        break;
    default:
        break;
    }
    return QLabel::event(event);
}

bool UnitLabel::eventFilter(QObject* watched, QEvent* event) {
    const QEvent::Type type = event->type();
    if (type == QEvent::Move || type == QEvent::Show || type == QEvent::Hide) place();
    return QLabel::eventFilter(watched, event);
}

void UnitLabel::place() {
    QWidget* anchor = m_field && m_field->isVisible() ? m_field.data() : m_label.data();
    if (!anchor || anchor->parentWidget() != parentWidget()) return;
    const int distance = static_cast<int>(std::lround(m_twips * logicalDpiX() / kTwipsPerInch));
    const int indent = std::max(0, anchor->x() + distance - x());
    if (contentsMargins().left() != indent) setContentsMargins(indent, 0, 0, 0);
}

#include "moc_unitlabel.cpp"
