#pragma once

#include <QBrush>
#include <QColor>
#include <QLinearGradient>
#include <QPainter>
#include <QPainterPath>
#include <QPointF>
#include <QRectF>

#include <initializer_list>
#include <numbers>

// What the covers are painted with. Covers are drawn on a square of 100 by 100.
namespace orvel::demo {

constexpr double pi = std::numbers::pi;
inline constexpr QRectF whole(0, 0, 100, 100);

struct Palette
{
    QColor dark;
    QColor deep;
    QColor warm;
    QColor light;
};

// Pseudo-random numbers, the same on every machine.
class Dice
{
public:
    explicit Dice(quint32 seed) : m_state(seed) {}
    double roll(double from, double to)
    {
        m_state = m_state * 1664525U + 1013904223U;
        return from + (to - from) * double(m_state >> 8) / double(1U << 24);
    }

private:
    quint32 m_state;
};

QColor faded(QColor colour, double alpha);
QColor mixed(const QColor &a, const QColor &b, double part);
QPointF onCircle(QPointF centre, double radius, double angle);
void sky(QPainter &p, std::initializer_list<QColor> fromTop);
void glow(QPainter &p, QPointF centre, double radius, const QColor &colour, double alpha);
void disc(QPainter &p, QPointF centre, double radius, const QBrush &brush);
void ring(QPainter &p, QPointF centre, double radius, const QColor &colour, double width);
QLinearGradient downwards(double top, double bottom, const QColor &first, const QColor &last);
// The ground below a wavy line around `height`.
QPainterPath hill(double height, double swell, double length, double shift);
void wedge(QPainter &p, QPointF centre, double inner, double outer, double from, double to,
           const QBrush &brush);
void stars(QPainter &p, Dice &dice, int count, double lowest, const QColor &colour);

} // namespace orvel::demo
