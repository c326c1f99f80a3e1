#include "logger/ui/trendchart.h"

#include "common/formmodel.h"
#include "common/savefile.h"
#include "logger/logger_elements.h"
#include "logger/trendstore.h"

#include <QBuffer>
#include <QChart>
#include <QChartView>
#include <QDateTime>
#include <QDateTimeAxis>
#include <QImageWriter>
#include <QLegend>
#include <QLegendMarker>
#include <QLineSeries>
#include <QPen>
#include <QValueAxis>
#include <QVBoxLayout>

#include <algorithm>
#include <cmath>
#include <limits>
#include <map>

namespace lg = frmLogdataDev;

namespace {

constexpr int kStringTime = 712;
constexpr int kStringNothingTicked = 714;
// The spans of the time window's choices, in ms; the last shows everything.
constexpr qint64 kSpans[] = {60'000, 600'000, 3'600'000, 0};

} // namespace

TrendChart::TrendChart(Form& form, TrendStore& store, std::function<QString(int)> text,
                       QWidget* parent)
    : QWidget(parent)
    , m_form(form)
    , m_store(store)
    , m_text(std::move(text))
    , m_view(new QChartView)
    , m_chart(new QChart) {
    m_chart->legend()->setAlignment(Qt::AlignBottom);
    m_chart->legend()->setShowToolTips(true);
    m_chart->setBackgroundRoundness(0);
    m_chart->setMargins(QMargins(4, 4, 4, 4));
    m_view->setChart(m_chart);
    m_view->setRenderHint(QPainter::Antialiasing);
    m_view->setMinimumSize(360, 240);
    // A picture of the ticked values, which the lists name: not a stop for the keyboard.
    m_view->setFocusPolicy(Qt::NoFocus);
    m_view->viewport()->setFocusPolicy(Qt::NoFocus);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_view);
    connect(&m_store, &TrendStore::changed, this, &TrendChart::refresh);
    connect(&m_form, &Form::elementChanged, this,
            [this](const QString& element, ElementProperty) { onElementChanged(element); });
    connect(&m_form, &Form::edited, this, &TrendChart::onElementChanged);
    refresh();
}

TrendChart::~TrendChart() = default;

void TrendChart::onElementChanged(const QString& element) {
    if (element == lg::cboTrendSpan || element == lg::chkTrendPause || element == lg::fraTrend)
        refresh();
}

void TrendChart::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    refresh();
}

bool TrendChart::paused() const {
    return m_form.isChecked(lg::chkTrendPause);
}

std::pair<qint64, qint64> TrendChart::visibleSpan() const {
    const qint64 to = m_store.newest();
    const int choice = std::clamp(static_cast<int>(m_form.value(lg::cboTrendSpan)), 0, 3);
    if (kSpans[choice] > 0) return {to - kSpans[choice], to};
    qint64 from = to;
    for (const TrendStore::Series& s : m_store.series())
        if (!s.points.empty()) from = std::min<qint64>(from, s.points.front().t);
    return {from, to};
}

// New lines and axes whenever the ticked rows change; their points at every refresh.
void TrendChart::rebuildSeries() {
    m_chart->removeAllSeries();
    for (QAbstractAxis* axis : m_chart->axes()) {
        m_chart->removeAxis(axis);
        delete axis;
    }
    m_lines.clear();
    m_axes.clear();
    m_rows.clear();
    m_names.clear();

    m_time = new QDateTimeAxis;
    m_chart->addAxis(m_time, Qt::AlignBottom);
    std::map<QString, QValueAxis*> byUnit;
    for (const TrendStore::Series& s : m_store.series()) {
        auto* line = new QLineSeries;
        line->setName(s.name);
        m_chart->addSeries(line);
        // A thin cosmetic pen draws without stroking a path: an hour of eight lines costs
        // two thirds of the time of the default wide pen. On a scaled screen it keeps its
        // width in logical pixels, so that a line stays as easy to see.
        QPen pen = line->pen();
        pen.setWidthF(std::max(1.0, devicePixelRatioF()));
        pen.setCosmetic(true);
        line->setPen(pen);
        QValueAxis*& axis = byUnit[s.unit];
        if (!axis) {
            axis = new QValueAxis;
            axis->setTitleText(s.unit);
            axis->setLabelFormat(QStringLiteral("%.5g"));
            // Units alternate sides, so that two of them are read without crossing lines.
            m_chart->addAxis(axis, byUnit.size() % 2 == 1 ? Qt::AlignLeft : Qt::AlignRight);
        }
        line->attachAxis(m_time);
        line->attachAxis(axis);
        m_lines.push_back(line);
        m_axes.push_back(axis);
        m_rows.push_back(s.row);
        m_names.push_back(s.name);
    }
}

void TrendChart::refresh() {
    const auto& series = m_store.series();
    bool sameRows = series.size() == m_rows.size();
    for (std::size_t i = 0; sameRows && i < series.size(); ++i)
        sameRows = series[i].row == m_rows[i] && series[i].name == m_names[i];
    if (!sameRows) rebuildSeries();
    m_view->setAccessibleName(m_form.caption(lg::fraTrend));
    m_chart->setTitle(series.empty() ? m_text(kStringNothingTicked) : QString());
    if (paused() || series.empty()) return;

    const auto [from, to] = visibleSpan();
    const int columns = std::max(1, static_cast<int>(m_chart->plotArea().width()));
    std::map<QValueAxis*, std::pair<double, double>> ranges;
    for (std::size_t i = 0; i < series.size(); ++i) {
        const std::vector<QPointF> points = VisiblePoints(series[i].points, from, to, columns);
        m_lines[i]->replace(QList<QPointF>(points.begin(), points.end()));
        auto [it, fresh] = ranges.try_emplace(m_axes[i], std::numeric_limits<double>::infinity(),
                                              -std::numeric_limits<double>::infinity());
        (void)fresh;
        for (const QPointF& p : points) {
            it->second.first = std::min(it->second.first, p.y());
            it->second.second = std::max(it->second.second, p.y());
        }
    }
    for (auto& [axis, range] : ranges) {
        auto [low, high] = range;
        if (!(low <= high)) low = 0, high = 1;
        // A flat line sits in the middle of its axis; others get a little room.
        const double room = high > low ? (high - low) * 0.05 : std::max(std::fabs(low) * 0.05, 1.0);
        axis->setRange(low - room, high + room);
    }
    const qint64 span = to - from;
    m_time->setFormat(span > 86'400'000 ? QStringLiteral("dd.MM. HH:mm")
                                        : QStringLiteral("HH:mm:ss"));
    m_time->setTitleText(m_text(kStringTime));
    m_time->setRange(QDateTime::fromMSecsSinceEpoch(from),
                     QDateTime::fromMSecsSinceEpoch(std::max(to, from + 1000)));
}

std::vector<qsizetype> TrendChart::pointCounts() const {
    std::vector<qsizetype> counts;
    for (const QLineSeries* line : m_lines)
        counts.push_back(line->count());
    return counts;
}

QString TrendChart::exportPng(const QString& path) {
    // Encoded in memory first, then written whole: a full disk leaves no half picture.
    QBuffer encoded;
    encoded.open(QIODevice::WriteOnly);
    QImageWriter writer(&encoded, "png");
    if (!writer.write(m_view->grab().toImage())) return writer.errorString();
    return writeWholeFile(path, encoded.data());
}

#include "moc_trendchart.cpp"
