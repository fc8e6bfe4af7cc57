#include "shell/ProgressArc.h"

#include <QPainter>
#include <algorithm>

namespace orvel {

ProgressArc::ProgressArc(QQuickItem *parent) : QQuickPaintedItem(parent)
{
    connect(this, &ProgressArc::changed, this, [this] { update(); });
}

void ProgressArc::paint(QPainter *painter)
{
    constexpr int sixteenths = 16; // QPainter counts angles in sixteenths of a degree
    const double half = m_lineWidth / 2;
    const QRectF circle = QRectF(0, 0, width(), height()).adjusted(half, half, -half, -half);
    QColor track = m_color;
    track.setAlphaF(0.2F);
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setPen(QPen(track, m_lineWidth));
    painter->drawEllipse(circle);
    painter->setPen(QPen(m_color, m_lineWidth, Qt::SolidLine, Qt::RoundCap));
    painter->drawArc(circle, 90 * sixteenths, -qRound(std::clamp(m_value, 0.0, 1.0) * 360 * sixteenths));
}

} // namespace orvel
