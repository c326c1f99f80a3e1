#pragma once

#include <functional>
#include <memory>

#include <QWidget>

class DataLogger;
class Form;
class FormView;
class TrendChart;

// The data logger's window: the data objects to tick, the ticked ones with their values,
// the trend chart beside them, and the recording controls below.
class frmLogdataDevWindow : public QWidget {
    Q_OBJECT

public:
    // `text` gives string n of the table in the current language.
    frmLogdataDevWindow(Form& form, DataLogger& logger, std::function<QString(int)> text,
                        QWidget* parent = nullptr);
    ~frmLogdataDevWindow() override;

    FormView& view() { return *m_view; }
    TrendChart& chart() { return *m_chart; }

private:
    QWidget* buildLists();
    QWidget* buildTrend(Form& form, DataLogger& logger, std::function<QString(int)> text);
    QWidget* buildRecording();

    TrendChart* m_chart = nullptr;
    std::unique_ptr<FormView> m_view;
};
