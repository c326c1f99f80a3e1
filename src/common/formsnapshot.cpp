#include "common/formsnapshot.h"

#include "common/formmodel.h"
#include "common/numberformat.h"

#include <algorithm>
#include <utility>
#include <vector>

namespace {

using Property = std::pair<const char*, QString>;

// One line per property: a text's own line breaks, tabs and backslashes are escaped.
QString escaped(QString text) {
    return text.replace(u'\\', QStringLiteral("\\\\"))
        .replace(u'\t', QStringLiteral("\\t"))
        .replace(u'\r', QStringLiteral("\\r"))
        .replace(u'\n', QStringLiteral("\\n"));
}

QString number(double value) {
    return numberformat::plainC(value);
}

QString flag(bool value) {
    return value ? QStringLiteral("1") : QStringLiteral("0");
}

// An element that keeps its kind's own colour shows the system colour that stands for it:
// fields on the window colour with window text, everything else on the button face with
// button text.
QString color(std::uint32_t value, ElementKind kind, bool background) {
    if (value == colors::kDefault) {
        const bool field =
            kind == ElementKind::Text || kind == ElementKind::Combo || kind == ElementKind::List;
        value = background ? (field ? colors::kWindowBackground : colors::kButtonFace)
                           : (field ? colors::kWindowText : colors::kButtonText);
    }
    return QString::number(value);
}

enum Show : unsigned {
    Caption = 1 << 0,
    Value = 1 << 1,
    Range = 1 << 2,
    Centre = 1 << 3,
    Step = 1 << 4,
    Colours = 1 << 5,
    ToolTip = 1 << 6,
    Items = 1 << 7,
    Top = 1 << 8,
    Dot = 1 << 9,
    Left = 1 << 10,
};

unsigned shownFor(ElementKind kind) {
    switch (kind) {
    case ElementKind::Menu:
        return Caption | Value;
    case ElementKind::Label:
        return Caption | Colours | ToolTip | Left;
    case ElementKind::Text:
        return Caption | Colours | ToolTip;
    case ElementKind::Check:
    case ElementKind::Option:
        return Caption | Value | ToolTip;
    case ElementKind::Combo:
    case ElementKind::List:
        return Value | Items;
    case ElementKind::UpDown:
        return Value | Range | Step;
    case ElementKind::Button:
    case ElementKind::Frame:
        return Caption | ToolTip;
    case ElementKind::Tab:
        return Caption | Value | ToolTip;
    case ElementKind::Box:
        return Value | Colours | Dot | ToolTip;
    case ElementKind::Gauge:
        return Value | Range | Centre | Items | ToolTip;
    case ElementKind::BarGraph:
        return Value | Range | ToolTip;
    case ElementKind::Relay:
        return Value | ToolTip;
    case ElementKind::Line:
        return Top;
    case ElementKind::Image:
    case ElementKind::Tray:
        return Value | ToolTip;
    }
    return Caption | Value;
}

std::vector<Property> properties(const Element& e, ElementKind kind, bool led) {
    const unsigned show = shownFor(kind);
    std::vector<Property> out = {{"visible", flag(e.visible)}, {"enabled", flag(e.enabled)}};
    if (show & Caption) out.push_back({"caption", e.caption});
    if (show & Value) out.push_back({led ? "ledstate" : "value", number(e.value)});
    if (show & Range) {
        out.push_back({"min", number(e.minimum)});
        out.push_back({"max", number(e.maximum)});
    }
    if (show & Centre) out.push_back({"centre", number(e.centre)});
    if (show & Step) out.push_back({"step", number(e.step)});
    if (show & Colours) {
        out.push_back({"backcolor", color(e.backColor, kind, true)});
        out.push_back({"forecolor", color(e.foreColor, kind, false)});
    }
    if (show & Dot)
        out.push_back(
            {"dot", e.dotColor == colors::kDefault ? QString() : color(e.dotColor, kind, true)});
    if (show & ToolTip) out.push_back({"tooltip", e.toolTip});
    if (show & Items) out.push_back({"items", e.items.join(u'|')});
    if (show & Top) out.push_back({"top", QString::number(e.top)});
    // Only the unit elements are placed by the logic; the others keep no position.
    if ((show & Left) && e.left != 0) out.push_back({"left", QString::number(e.left)});
    std::sort(out.begin(), out.end(),
              [](const Property& a, const Property& b) { return qstrcmp(a.first, b.first) < 0; });
    return out;
}

} // namespace

QStringList FormSnapshot(const Form& form, const QSet<QString>& rhythmLeds) {
    QStringList lines;
    for (const QString& name : form.elementNames()) {
        const Element& e = form.element(name);
        const bool led = rhythmLeds.contains(name);
        for (const auto& [property, value] : properties(e, form.kind(name), led))
            lines << name + u'\t' + QLatin1String(property) + u'\t' + escaped(value);
    }
    return lines;
}
