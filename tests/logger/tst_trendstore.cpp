// The trend's memory over a long recording and what a chart of a given width draws of it.
#include "logger/trendstore.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include <QTest>

namespace {

bool ascending(const std::vector<TrendPoint>& points) {
    return std::is_sorted(points.begin(), points.end(),
                          [](const TrendPoint& a, const TrendPoint& b) { return a.t < b.t; });
}

bool holds(const std::vector<TrendPoint>& points, double value) {
    return std::any_of(points.begin(), points.end(),
                       [value](const TrendPoint& p) { return p.v == value; });
}

} // namespace

class TestTrendStore : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void longRecordingStaysBoundedAndKeepsItsPeaks() {
        TrendStore store(256);
        store.setSeries({{7, QStringLiteral("Akt. Luftstrom [m/s]"), QStringLiteral("m/s")}});
        // Eight hours at one read-out every 1.26 s, with one spike early on and one dip late.
        const int samples = 8 * 3600 * 100 / 126;
        for (int i = 0; i < samples; ++i) {
            const double v = i == 100 ? 99.0 : i == samples - 500 ? -99.0 : std::sin(i / 50.0);
            store.append(std::int64_t(i) * 1260, {v});
        }
        const std::vector<TrendPoint>& points = store.series()[0].points;
        QVERIFY(points.size() <= 256);
        QVERIFY(points.size() >= 128);
        QVERIFY(ascending(points));
        QVERIFY(holds(points, 99.0));
        QVERIFY(holds(points, -99.0));
        // The newest samples are kept as they came.
        QCOMPARE(points.back().t, std::int64_t(samples - 1) * 1260);
        QCOMPARE(points[points.size() - 2].t, std::int64_t(samples - 2) * 1260);
        QCOMPARE(store.newest(), std::int64_t(samples - 1) * 1260);
    }

    void valuesThatAreNoNumbersLeaveNoPoint() {
        TrendStore store;
        store.setSeries({{1, QStringLiteral("a"), {}}, {2, QStringLiteral("b"), {}}});
        const double inf = std::numeric_limits<double>::infinity();
        store.append(1000, {std::nan(""), 2.0});
        store.append(2000, {inf, -inf});
        store.append(3000, {1.0}); // a short row leaves the rest alone
        QCOMPARE(store.series()[0].points.size(), 1u);
        QCOMPARE(store.series()[1].points.size(), 1u);
        const std::vector<QPointF> shown = VisiblePoints(store.series()[1].points, 0, 5000, 10);
        QCOMPARE(shown.size(), 1u);
        QCOMPARE(shown[0], QPointF(1000, 2.0));
    }

    void seriesFollowTheTickedRows() {
        TrendStore store;
        store.setSeries({{1, QStringLiteral("a"), {}}, {2, QStringLiteral("b"), {}}});
        store.append(1000, {1, 2});
        // Row 2 stays and keeps its points, also under a new unit; row 1 goes; row 5 starts empty.
        store.setSeries(
            {{5, QStringLiteral("e"), {}}, {2, QStringLiteral("b [V]"), QStringLiteral("V")}});
        QCOMPARE(store.series().size(), 2u);
        QCOMPARE(store.series()[0].row, 5);
        QVERIFY(store.series()[0].points.empty());
        QCOMPARE(store.series()[1].points.size(), 1u);
        QCOMPARE(store.series()[1].unit, QStringLiteral("V"));
    }

    void visiblePointsKeepEachColumnsExtremes() {
        std::vector<TrendPoint> points;
        for (int i = 0; i < 10000; ++i)
            points.push_back({i, i == 4321 ? 50.0 : double(i % 7)});
        // The window from 1000 to 8999 on 100 columns: two points a column at most, the peak
        // among them, nothing outside the window.
        const std::vector<QPointF> shown = VisiblePoints(points, 1000, 8999, 100);
        QVERIFY(shown.size() <= 200);
        QVERIFY(shown.size() >= 100);
        QVERIFY(
            std::any_of(shown.begin(), shown.end(), [](const QPointF& p) { return p.y() == 50; }));
        QVERIFY(std::all_of(shown.begin(), shown.end(),
                            [](const QPointF& p) { return p.x() >= 1000 && p.x() <= 8999; }));
        QVERIFY(std::is_sorted(shown.begin(), shown.end(),
                               [](const QPointF& a, const QPointF& b) { return a.x() < b.x(); }));
        // Few enough points are drawn as they are.
        QCOMPARE(VisiblePoints(points, 10, 19, 100).size(), 10u);
        QVERIFY(VisiblePoints(points, 20000, 30000, 100).empty());
    }
};

QTEST_GUILESS_MAIN(TestTrendStore)
#include "tst_trendstore.moc"
