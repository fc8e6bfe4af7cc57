#include "demo/Brushwork.h"

#include <QRadialGradient>

#include <cmath>

namespace orvel::demo {

QColor faded(QColor colour, double alpha)
{
    colour.setAlphaF(float(alpha));
    return colour;
}

QColor mixed(const QColor &a, const QColor &b, double part)
{
    const auto blend = [part](int x, int y) { return int(std::lround(x + (y - x) * part)); };
    return QColor(blend(a.red(), b.red()), blend(a.green(), b.green()), blend(a.blue(), b.blue()));
}

QPointF onCircle(QPointF centre, double radius, double angle)
{
    return centre + QPointF(std::cos(angle), std::sin(angle)) * radius;
}

void sky(QPainter &p, std::initializer_list<QColor> fromTop)
{
    QLinearGradient gradient(0, 0, 0, 100);
    const double last = double(fromTop.size()) - 1;
    double index = 0;
    for (const QColor &colour : fromTop)
        gradient.setColorAt(index++ / last, colour);
    p.fillRect(whole, gradient);
}

void glow(QPainter &p, QPointF centre, double radius, const QColor &colour, double alpha)
{
    QRadialGradient gradient(centre, radius);
    gradient.setColorAt(0, faded(colour, alpha));
    gradient.setColorAt(1, faded(colour, 0));
    p.fillRect(whole, gradient);
}

void disc(QPainter &p, QPointF centre, double radius, const QBrush &brush)
{
    p.setPen(Qt::NoPen);
    p.setBrush(brush);
    p.drawEllipse(centre, radius, radius);
}

void ring(QPainter &p, QPointF centre, double radius, const QColor &colour, double width)
{
    p.setPen(QPen(colour, width));
    p.setBrush(Qt::NoBrush);
    p.drawEllipse(centre, radius, radius);
}

QLinearGradient downwards(double top, double bottom, const QColor &first, const QColor &last)
{
    QLinearGradient gradient(0, top, 0, bottom);
    gradient.setColorAt(0, first);
    gradient.setColorAt(1, last);
    return gradient;
}

QPainterPath hill(double height, double swell, double length, double shift)
{
    QPainterPath path(QPointF(0, 101));
    for (double x = 0; x <= 100; x += 1) {
        const double turn = 2 * pi * (x / length + shift);
        path.lineTo(x, height + swell * (std::sin(turn) + 0.35 * std::sin(turn * 2.3 + 1)));
    }
    path.lineTo(100, 101);
    path.closeSubpath();
    return path;
}

void wedge(QPainter &p, QPointF centre, double inner, double outer, double from, double to,
           const QBrush &brush)
{
    p.setPen(Qt::NoPen);
    p.setBrush(brush);
    p.drawPolygon(QPolygonF({onCircle(centre, inner, from), onCircle(centre, outer, from),
                             onCircle(centre, outer, (from + to) / 2), onCircle(centre, outer, to),
                             onCircle(centre, inner, to)}));
}

void stars(QPainter &p, Dice &dice, int count, double lowest, const QColor &colour)
{
    for (int i = 0; i < count; ++i) {
        const QPointF at(dice.roll(0, 100), dice.roll(0, lowest));
        disc(p, at, dice.roll(0.12, 0.4), faded(colour, dice.roll(0.35, 0.95)));
    }
}

} // namespace orvel::demo
