#include "layouts/kit/ProgressArc.h"

#include <QPainter>
#include <algorithm>

namespace orvel {

ProgressArc::ProgressArc(QQuickItem *parent) : QQuickPaintedItem(parent)
{
    connect(this, &ProgressArc::changed, this, [this] { update(); });
}

void ProgressArc::paint(QPainter *painter)
{
    // QPainter counts in sixteenths of a degree, anticlockwise from three o'clock.
    constexpr int circle16 = 360 * 16;
    const double half = m_lineWidth / 2;
    const QRectF circle = QRectF(0, 0, width(), height()).adjusted(half, half, -half, -half);
    QColor track = m_color;
    track.setAlphaF(0.2F);
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setPen(QPen(track, m_lineWidth));
    painter->drawEllipse(circle);
    painter->setPen(QPen(m_color, m_lineWidth, Qt::SolidLine, Qt::RoundCap));
    painter->drawArc(circle, qRound((0.25 - m_start) * circle16),
                     -qRound(std::clamp(m_value, 0.0, 1.0) * circle16));
}

} // namespace orvel
