#pragma once

#include "common/ui/elementwidget.h"

#include <QWidget>

// A relay contact, drawn as its switch symbol: the blade lifted when open (value 0), lying
// on its contact and lit green when closed (any other value). Shows relays, the manual
// release line and the enable input of the modules.
class RelayElement : public QWidget, public ElementWidget {
    Q_OBJECT

public:
    explicit RelayElement(QWidget* parent = nullptr);

    bool isClosed() const { return m_closed; }
    void setClosed(bool closed);

    void applyElement(const Element& element, ElementProperty changed) override;

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    bool m_closed = false;
};
