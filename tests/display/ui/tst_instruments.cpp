#include "common/colors.h"
#include "common/ui/elementwidget.h"
#include "display/thresholdscale.h"
#include "display/ui/bargraph.h"
#include "display/ui/extgauge.h"
#include "display/ui/faultbox.h"
#include "display/ui/ledlamp.h"
#include "display/ui/relayelement.h"

#include <QAccessible>
#include <QtTest>

#include <cfloat>
#include <cmath>
#include <limits>

namespace {

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kInf = std::numeric_limits<double>::infinity();

QImage shot(QWidget& widget, QSize size) {
    widget.resize(size);
    return widget.grab().toImage();
}

QColor centreOf(const QImage& image) {
    return image.pixelColor(image.width() / 2, image.height() / 2);
}

// One channel clearly above the two others (0 red, 1 green, 2 blue), or yellow.
bool tinted(const QColor& c, int channel) {
    const int v[] = {c.red(), c.green(), c.blue()};
    return v[channel] > v[(channel + 1) % 3] + 60 && v[channel] > v[(channel + 2) % 3] + 60;
}
bool yellowish(const QColor& c) {
    return c.red() > 200 && c.green() > 180 && c.blue() < 100;
}

// The rows of `image` that hold a pixel for which `test` holds.
template <typename Test>
QList<int> rowsWhere(const QImage& image, Test test) {
    QList<int> rows;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            if (test(image.pixelColor(x, y))) {
                rows << y;
                break;
            }
    return rows;
}

int distance(const QColor& a, const QColor& b) {
    return std::abs(a.red() - b.red()) + std::abs(a.green() - b.green()) +
           std::abs(a.blue() - b.blue());
}

} // namespace

class TestInstruments : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void ledIsDarkLitOrLitByItsDot() {
        LedLamp led;
        const QSize size(40, 40);
        const QColor window = led.palette().color(QPalette::Window);
        const QColor base = led.palette().color(QPalette::Base);

        for (std::uint32_t dark : {colors::kDefault, colors::kWindowBackground}) {
            led.setBackColor(dark);
            const QColor centre = centreOf(shot(led, size));
            QVERIFY(!led.isLit());
            QVERIFY2(centre.lightness() < 110, qPrintable(centre.name()));
            QVERIFY(distance(centre, window) > 120 && distance(centre, base) > 120);
        }

        for (const auto& [color, channel] : {std::pair{colors::kRed, 0}, {colors::kGreen, 1}}) {
            led.setBackColor(color);
            QVERIFY(tinted(centreOf(shot(led, size)), channel));
        }

        // The main alarm arrives as a dot: it lights the LED whatever the back colour, and a dot
        // in the window colour is dark.
        led.setDotColor(colors::kRed);
        QVERIFY(tinted(centreOf(shot(led, size)), 0));
        led.setBackColor(colors::kDefault);
        QVERIFY(tinted(centreOf(shot(led, size)), 0));
        led.setDotColor(colors::kWindowBackground);
        QVERIFY(!led.isLit());
        QVERIFY(centreOf(shot(led, size)).lightness() < 110);
    }

    void faultBoxShowsPendingAndLatched() {
        FaultBox box;
        const QSize size(30, 30);
        const QColor base = box.palette().color(QPalette::Base);
        const QPoint corner(4, 4); // inside the rim, outside the dot

        // Empty, a shade of the window: neither the white field of a tick box nor invisible.
        box.setBackColor(colors::kWindowBackground);
        QImage image = shot(box, size);
        const QColor empty = centreOf(image);
        QVERIFY(distance(empty, base) > 40 && empty != box.palette().color(QPalette::Window));

        box.setBackColor(colors::kYellow);
        image = shot(box, size);
        QVERIFY(yellowish(centreOf(image)) && yellowish(image.pixelColor(corner)));

        box.setBackColor(colors::kWindowBackground);
        box.setDotColor(colors::kYellow);
        image = shot(box, size);
        QVERIFY(yellowish(centreOf(image)));
        QCOMPARE(image.pixelColor(corner), empty);
        // A radius of a third of the height: a third out from the centre is still inside.
        QVERIFY(yellowish(image.pixelColor(15 + 8, 15)));
        QCOMPARE(image.pixelColor(15 + 12, 15), empty);
    }

    void gaugeNeedleStopsAtTheEnds() {
        ExtGauge gauge;
        gauge.setRange(-2000, 0, 2000);
        gauge.setLabels({QStringLiteral("-20 %"), QStringLiteral("0 %"), QStringLiteral("20 %")});
        const QSize size(200, 130);

        gauge.setValue(2000);
        const QImage atMaximum = shot(gauge, size);
        for (double beyond : {2000.5, 1e9, DBL_MAX, kInf}) {
            gauge.setValue(beyond);
            QCOMPARE(gauge.deflection(), 1.0);
            QCOMPARE(shot(gauge, size), atMaximum);
        }
        gauge.setValue(-kInf);
        QCOMPARE(gauge.deflection(), -1.0);
        const QImage atMinimum = shot(gauge, size);

        // What the needle at the upper end adds to the picture lies right of the pivot, what it
        // adds at the lower end left of it.
        const QColor face = gauge.palette().color(QPalette::Base);
        const int pivot = size.width() / 2;
        int right = 0, left = 0;
        for (int y = 0; y < size.height(); ++y)
            for (int x = 0; x < size.width(); ++x)
                if (atMaximum.pixelColor(x, y).lightness() < 100 &&
                    atMinimum.pixelColor(x, y) == face)
                    (x > pivot ? right : left) += x > pivot + 8 || x < pivot - 8 ? 1 : 0;
        QVERIFY(right > 20);
        QCOMPARE(left, 0);
    }

    // Each half of the scale is linear on its own, so an off-centre zero still stands at the
    // centre mark.
    void gaugeHalvesMeetAtTheCentre() {
        ExtGauge gauge;
        gauge.setRange(0, 10, 100);
        for (const auto& [value, deflection] : {std::pair{10.0, 0.0}, {5.0, -0.5}, {55.0, 0.5}}) {
            gauge.setValue(value);
            QCOMPARE(gauge.deflection(), deflection);
        }
        gauge.setRange(-DBL_MAX, 0, DBL_MAX);
        gauge.setValue(DBL_MAX);
        QCOMPARE(gauge.deflection(), 1.0);
    }

    void nonNumbersNeitherCrashNorDraw() {
        ExtGauge gauge;
        gauge.setRange(-10000, 0, 10000);
        gauge.setValue(0);
        const QImage centred = shot(gauge, {200, 130});
        gauge.setValue(kNaN);
        QVERIFY(std::isnan(gauge.deflection()));
        QVERIFY(shot(gauge, {200, 130}) != centred);
        gauge.setValue(5);
        for (double odd : {kNaN, kInf, -kInf}) {
            gauge.setRange(odd, 0, 10000);
            QCOMPARE(gauge.deflection(), 0.0);
            gauge.setRange(-10000, odd, 10000);
            QVERIFY(std::abs(gauge.deflection()) < 1e-3);
            gauge.setRange(-10000, 0, odd);
            QCOMPARE(gauge.deflection(), 0.0);
            shot(gauge, {200, 130});
        }
        gauge.setRange(10, 0, -10);
        QCOMPARE(gauge.deflection(), 0.0);
        shot(gauge, {3, 3});

        BarGraph bar;
        for (double odd : {kNaN, -kInf, kInf}) {
            bar.setValue(odd);
            QCOMPARE(bar.level(), odd == kInf ? 1.0 : 0.0);
            shot(bar, {80, 200});
        }
        bar.setRange(kNaN, kInf);
        bar.setValue(50);
        QCOMPARE(bar.level(), 0.5);
        shot(bar, {2, 2});
    }

    void thresholdLineStandsAtItsPercentage() {
        BarGraph bar;
        bar.setColors(colors::kDefault, colors::rgb(0, 0, 255));
        const QSize size(bar.sizeHint().width(), 300);
        bar.setValue(100);
        const QList<int> full =
            rowsWhere(shot(bar, size), [](const QColor& c) { return tinted(c, 2); });
        QVERIFY(full.size() > 200);
        const double zero = full.last();
        const double hundred = full.first();

        // The view finds a line by its name among the bar's children and hands it its top.
        bar.addThresholdLine(QStringLiteral("linFireAlarm_0"), ThresholdLine::Kind::FireAlarm);
        auto* line = dynamic_cast<ElementWidget*>(bar.findChild<QObject*>("linFireAlarm_0"));
        QVERIFY(line);
        auto place = [&](double percent) {
            Element element;
            element.top = static_cast<int>(std::lround(thresholdscale::percentToTwips(percent)));
            line->applyElement(element, ElementProperty::Top);
            return rowsWhere(shot(bar, size), [](const QColor& c) { return tinted(c, 0); });
        };
        bar.setValue(0);
        QList<int> red = place(50);
        QVERIFY(!red.isEmpty());
        const double middle = (red.first() + red.last()) / 2.0;
        QVERIFY(std::abs(middle - (zero + hundred) / 2) <= 1.5);

        red = place(100);
        QVERIFY(!red.isEmpty());
        QVERIFY(std::abs((red.first() + red.last()) / 2.0 - hundred) <= 1.5);

        // Beyond the bar, or not placed yet (top 0), the line is left out.
        QVERIFY(place(130).isEmpty());
        QVERIFY(place(-5).isEmpty());
        QVERIFY(place(thresholdscale::twipsToPercent(0)).isEmpty());
    }

    void relayShowsOpenAndClosed() {
        RelayElement relay;
        const QSize size = relay.sizeHint() * 2;
        Element element;
        relay.applyElement(element, ElementProperty::Value);
        const QImage open = shot(relay, size);
        element.value = 1;
        relay.applyElement(element, ElementProperty::Value);
        const QImage closed = shot(relay, size);
        QVERIFY(relay.isClosed());
        const auto green = [](const QColor& c) { return tinted(c, 1); };
        QVERIFY(rowsWhere(open, green).isEmpty() && !rowsWhere(closed, green).isEmpty());
    }

    void screenReadersReadTheValue() {
        ExtGauge gauge;
        gauge.setRange(-2000, 0, 2000);
        gauge.setValue(-700);
        BarGraph bar;
        bar.setValue(42);
        QAccessibleInterface* reading = QAccessible::queryAccessibleInterface(&gauge);
        QCOMPARE(reading->role(), QAccessible::Indicator);
        QCOMPARE(reading->valueInterface()->currentValue().toDouble(), -700.0);
        reading = QAccessible::queryAccessibleInterface(&bar);
        QCOMPARE(reading->role(), QAccessible::ProgressBar);
        QCOMPARE(reading->valueInterface()->currentValue().toDouble(), 42.0);
    }
};

QTEST_MAIN(TestInstruments)
#include "tst_instruments.moc"
