#pragma once

#include <QQuickPaintedItem>

namespace orvel {

// A round-ended arc over a faint track: `value` of the circle, clockwise from `start`; both count in circles,
// from twelve o'clock.
class ProgressArc : public QQuickPaintedItem
{
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(double start MEMBER m_start NOTIFY changed)
    Q_PROPERTY(double value MEMBER m_value NOTIFY changed)
    Q_PROPERTY(QColor color MEMBER m_color NOTIFY changed)
    Q_PROPERTY(double lineWidth MEMBER m_lineWidth NOTIFY changed)
public:
    explicit ProgressArc(QQuickItem *parent = nullptr);
    void paint(QPainter *painter) override;

Q_SIGNALS:
    void changed();

private:
    double m_start = 0;
    double m_value = 0;
    QColor m_color = Qt::white;
    double m_lineWidth = 2;
};

} // namespace orvel
