#pragma once

#include <QLabel>

class Form;

// The faults the device reports as pending now, one per line, read from the fault list's
// own boxes and texts: the status page shows them at a glance without a state of its own.
// Faults the device does not know stay out, as they do in the list.
class FaultSummary : public QLabel {
    Q_OBJECT

public:
    // `noneText` is the element whose caption stands when nothing is pending.
    FaultSummary(Form& form, QString noneText, QWidget* parent = nullptr);

    // The texts of the pending entries, in the order of the list.
    QStringList pending() const;

private:
    void onElementChanged(const QString& element);
    void refresh();

    Form& m_form;
    QString m_noneText;
    bool m_refreshQueued = false;
};
