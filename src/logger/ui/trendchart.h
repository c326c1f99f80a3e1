#pragma once

#include <functional>
#include <vector>

#include <QWidget>

class Form;
class TrendStore;
class QChart;
class QChartView;
class QDateTimeAxis;
class QLineSeries;
class QValueAxis;

// The trend of the logger's ticked numbers: one line per row, one value axis per unit,
// over the time window that the window's model chooses, unless the model pauses it. It
// draws at most two points per pixel column, however long the recording.
class TrendChart : public QWidget {
    Q_OBJECT

public:
    // `text` gives string n of the table in the current language.
    TrendChart(Form& form, TrendStore& store, std::function<QString(int)> text,
               QWidget* parent = nullptr);
    ~TrendChart() override;

    // Points of each line as drawn, in the order of the store's series.
    std::vector<qsizetype> pointCounts() const;
    // The chart as it stands, as a PNG; empty when saved, else the reason.
    QString exportPng(const QString& path);

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    void onElementChanged(const QString& element);
    void refresh();
    void rebuildSeries();
    bool paused() const;
    // The window shown: from, to, in ms since the epoch.
    std::pair<qint64, qint64> visibleSpan() const;

    Form& m_form;
    TrendStore& m_store;
    std::function<QString(int)> m_text;
    QChartView* m_view;
    QChart* m_chart;
    QDateTimeAxis* m_time = nullptr;
    std::vector<QLineSeries*> m_lines;
    std::vector<QValueAxis*> m_axes; // one per line: the axis of its unit
    std::vector<int> m_rows;
    std::vector<QString> m_names;
};
