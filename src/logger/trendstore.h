#pragma once

#include <cstdint>
#include <vector>

#include <QObject>
#include <QPointF>
#include <QString>

// One sample of a trend: milliseconds since the epoch and the value.
struct TrendPoint {
    std::int64_t t;
    double v;
};

// The ticked numbers of the data logger over time, one series per ticked row, for the
// trend chart. A recording may run for days, so a series keeps at most `capacity` points:
// when it is full, its older half is thinned to the smallest and the largest value of every
// four points, so that the recent past stays exact and a spike of long ago still shows.
class TrendStore : public QObject {
    Q_OBJECT

public:
    struct Series {
        int row = 0;  // the row of the data object, its identity
        QString name; // the row's text: description and unit
        QString unit;
        std::vector<TrendPoint> points;
    };
    // What a series is made from: the row, its text and its unit.
    struct Key {
        int row;
        QString name;
        QString unit;
    };

    explicit TrendStore(std::size_t capacity = 4096);

    // The series become those of `keys`, in their order; a row that stays keeps its points.
    void setSeries(const std::vector<Key>& keys);
    // One sample of every series at `t`; `values` row for row with the series. A value that
    // is no finite number leaves a series without a point.
    void append(std::int64_t t, const std::vector<double>& values);

    const std::vector<Series>& series() const { return m_series; }
    std::size_t capacity() const { return m_capacity; }
    // The time of the newest sample of any series; 0 before the first.
    std::int64_t newest() const { return m_newest; }

Q_SIGNALS:
    void changed();

private:
    void thin(std::vector<TrendPoint>& points) const;

    std::size_t m_capacity;
    std::vector<Series> m_series;
    std::int64_t m_newest = 0;
};

// The points of `points` from `from` to `to`, as a chart `columns` wide draws them: all of
// them where they are few enough, else the smallest and the largest value of each column in
// the order they came, so that no peak is lost. The x of a point is its time in ms.
std::vector<QPointF> VisiblePoints(const std::vector<TrendPoint>& points, std::int64_t from,
                                   std::int64_t to, int columns);
