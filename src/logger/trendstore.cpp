#include "logger/trendstore.h"

#include <algorithm>
#include <cmath>

namespace {

// Of a run of points, the smallest and the largest, in their order of time.
void keepExtremes(std::vector<TrendPoint>::const_iterator first,
                  std::vector<TrendPoint>::const_iterator last, std::vector<TrendPoint>& out) {
    if (first == last) return;
    const auto [low, high] = std::minmax_element(
        first, last, [](const TrendPoint& a, const TrendPoint& b) { return a.v < b.v; });
    if (low == high) {
        out.push_back(*low);
        return;
    }
    out.push_back(low < high ? *low : *high);
    out.push_back(low < high ? *high : *low);
}

} // namespace

TrendStore::TrendStore(std::size_t capacity)
    : QObject()
    , m_capacity(std::max<std::size_t>(capacity, 16)) {}

void TrendStore::setSeries(const std::vector<Key>& keys) {
    std::vector<Series> next;
    next.reserve(keys.size());
    for (const Key& key : keys) {
        auto old = std::find_if(m_series.begin(), m_series.end(),
                                [&key](const Series& s) { return s.row == key.row; });
        Series s;
        if (old != m_series.end()) s.points = std::move(old->points);
        s.row = key.row;
        s.name = key.name;
        s.unit = key.unit;
        next.push_back(std::move(s));
    }
    const bool same =
        next.size() == m_series.size() && std::equal(next.begin(), next.end(), m_series.begin(),
                                                     [](const Series& a, const Series& b) {
                                                         return a.row == b.row && a.name == b.name;
                                                     });
    m_series = std::move(next);
    if (!same) Q_EMIT changed();
}

void TrendStore::append(std::int64_t t, const std::vector<double>& values) {
    const std::size_t n = std::min(values.size(), m_series.size());
    for (std::size_t i = 0; i < n; ++i) {
        if (!std::isfinite(values[i])) continue;
        std::vector<TrendPoint>& points = m_series[i].points;
        points.push_back({t, values[i]});
        if (points.size() > m_capacity) thin(points);
    }
    m_newest = std::max(m_newest, t);
    Q_EMIT changed();
}

void TrendStore::thin(std::vector<TrendPoint>& points) const {
    const std::size_t half = points.size() / 2;
    std::vector<TrendPoint> kept;
    kept.reserve(points.size());
    for (std::size_t i = 0; i < half; i += 4)
        keepExtremes(points.begin() + static_cast<std::ptrdiff_t>(i),
                     points.begin() + static_cast<std::ptrdiff_t>(std::min(i + 4, half)), kept);
    kept.insert(kept.end(), points.begin() + static_cast<std::ptrdiff_t>(half), points.end());
    points = std::move(kept);
}

std::vector<QPointF> VisiblePoints(const std::vector<TrendPoint>& points, std::int64_t from,
                                   std::int64_t to, int columns) {
    const auto byTime = [](const TrendPoint& p, std::int64_t t) { return p.t < t; };
    const auto first = std::lower_bound(points.begin(), points.end(), from, byTime);
    const auto last = std::upper_bound(first, points.end(), to,
                                       [](std::int64_t t, const TrendPoint& p) { return t < p.t; });
    std::vector<TrendPoint> shown;
    const auto count = static_cast<std::size_t>(last - first);
    if (columns < 1 || to <= from || count <= 2 * static_cast<std::size_t>(columns)) {
        shown.assign(first, last);
    } else {
        shown.reserve(2 * static_cast<std::size_t>(columns));
        const double width = static_cast<double>(to - from) / columns;
        const auto columnOf = [&](const TrendPoint& p) {
            return std::min<std::int64_t>(
                static_cast<std::int64_t>(static_cast<double>(p.t - from) / width), columns - 1);
        };
        auto begin = first;
        while (begin != last) {
            const std::int64_t column = columnOf(*begin);
            const auto end = std::find_if(
                begin, last, [&](const TrendPoint& p) { return columnOf(p) != column; });
            keepExtremes(begin, end, shown);
            begin = end;
        }
    }
    std::vector<QPointF> out;
    out.reserve(shown.size());
    for (const TrendPoint& p : shown)
        out.emplace_back(static_cast<double>(p.t), p.v);
    return out;
}

#include "moc_trendstore.cpp"
