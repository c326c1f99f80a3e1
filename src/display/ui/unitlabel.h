#pragma once

#include <QLabel>
#include <QPointer>

// The unit beside a setting's value. The logic places it by twips from the left edge of
// the value it follows: the label with the device's value, or the field with its up/down
// element while the page is edited. Here those twips become the least distance, in pixels
// of the screen's logical resolution, from that edge to the unit's text; the grid already
// sets the unit after its value, and the distance only adds room where the grid leaves less.
// Its width comes from its font: the widest of the texts it stands among, so that the values
// of separate grids line up, and never less than its own text and that added room.
class UnitLabel : public QLabel {
    Q_OBJECT

public:
    explicit UnitLabel(QWidget* parent = nullptr);

    // The label and the field the unit follows; they share its parent.
    void follow(QWidget* label, QWidget* field);
    // The units of the rows it stands among.
    void setPeers(const QStringList& units);
    int twips() const { return m_twips; }

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    bool event(QEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void place();

    QPointer<QWidget> m_label;
    QPointer<QWidget> m_field;
    QStringList m_peers;
    int m_twips = 0;
};
