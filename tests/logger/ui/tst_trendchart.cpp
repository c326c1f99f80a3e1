// What the trend chart draws of the store: the chosen time window, nothing new while it is
// paused and everything missed once it goes on, one axis per unit.
#include "common/formmodel.h"
#include "logger/logger_elements.h"
#include "logger/trendstore.h"
#include "logger/ui/trendchart.h"

#include <QChart>
#include <QChartView>
#include <QImage>
#include <QTemporaryDir>
#include <QTest>
#include <QValueAxis>

#include <limits>

namespace lg = frmLogdataDev;

class TestTrendChart : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void drawsTheChosenWindowAndHonoursThePause() {
        Form form(QStringLiteral("frmLogdataDev"), frmLogdataDev::kElements);
        TrendStore store;
        TrendChart chart(form, store, [](int) { return QStringLiteral("t"); });
        chart.resize(800, 500);
        store.setSeries({{1, QStringLiteral("Akt. Luftstrom [m/s]"), QStringLiteral("m/s")},
                         {3, QStringLiteral("Akt. Lufttemperatur [°C]"), QStringLiteral("°C")},
                         {9, QStringLiteral("Luftstrom Sollwert [m/s]"), QStringLiteral("m/s")}});
        // Ten minutes, one read-out every 1.26 s would be 476; one every 6 s keeps it short.
        for (int i = 0; i < 100; ++i)
            store.append(std::int64_t(i) * 6000, {1.0 + i, 20.0, i == 50 ? std::nan("") : 2.0});

        form.setValue(lg::cboTrendSpan, 3); // all
        QCOMPARE(chart.pointCounts(), (std::vector<qsizetype>{100, 100, 99}));
        form.setValue(lg::cboTrendSpan, 0); // the last minute: t from 534 s to 594 s
        QCOMPARE(chart.pointCounts(), (std::vector<qsizetype>{11, 11, 11}));
        // Two units, two value axes and the time axis.
        auto* view = chart.findChild<QChartView*>();
        QVERIFY(view);
        QCOMPARE(view->chart()->axes(Qt::Vertical).size(), 2);

        form.userSetValue(lg::chkTrendPause, 1);
        store.append(600'000, {std::numeric_limits<double>::infinity(), 21.0, 2.0});
        QCOMPARE(chart.pointCounts(), (std::vector<qsizetype>{11, 11, 11}));
        form.userSetValue(lg::chkTrendPause, 0);
        QCOMPARE(chart.pointCounts(), (std::vector<qsizetype>{10, 11, 11}));
        // The flat temperature line gets room around it instead of a zero range.
        auto* celsius = qobject_cast<QValueAxis*>(view->chart()->axes(Qt::Vertical).last());
        QVERIFY(celsius && celsius->max() > celsius->min());

        // The chart as a picture.
        const QTemporaryDir folder;
        const QString png = folder.filePath(QStringLiteral("trend.png"));
        QCOMPARE(chart.exportPng(png), QString());
        QVERIFY(!QImage(png).isNull());
    }
};

QTEST_MAIN(TestTrendChart)
#include "tst_trendchart.moc"
