#include "demo/CoverArt.h"

#include "demo/Brushwork.h"

#include <QHash>
#include <QRadialGradient>

#include <cmath>

namespace orvel::demo {

namespace {

constexpr int coverSize = 600;

void sunburst(QPainter &p, const Palette &c)
{
    sky(p, {c.dark, c.deep});
    const QPointF sun(50, 60);
    constexpr int rays = 20;
    for (int i = 0; i < rays; ++i) {
        QRadialGradient shine(sun, 85);
        shine.setColorAt(0.2, faded(c.warm, 0.85));
        shine.setColorAt(1, faded(c.warm, i % 2 == 0 ? 0.1 : 0.3));
        const double from = 2 * pi * i / rays;
        wedge(p, sun, 0, 120, from, from + pi / rays, shine);
    }
    for (int i = 3; i >= 0; --i)
        disc(p, sun, 19 + i * 5.0, faded(c.light, i == 0 ? 1 : 0.16));
    disc(p, sun, 18.6, downwards(41, 79, c.light, c.warm));
    p.fillPath(hill(76, 3, 80, 0.1), mixed(c.deep, c.dark, 0.25));
    p.fillPath(hill(84, 3.5, 65, 0.6), mixed(c.deep, c.dark, 0.65));
    p.fillPath(hill(92, 2.5, 90, 0.3), c.dark);
}

void equaliser(QPainter &p, const Palette &c)
{
    sky(p, {c.dark, mixed(c.dark, c.deep, 0.7), c.dark});
    glow(p, {25, 45}, 55, c.warm, 0.32);
    glow(p, {78, 55}, 55, c.light, 0.36);
    for (int i = 0; i < 5; ++i)
        ring(p, {50, 50}, 22 + i * 7.5, faded(c.warm, 0.22 - i * 0.04), 0.35);
    constexpr int bars = 15;
    p.setPen(Qt::NoPen);
    for (int i = 0; i < bars; ++i) {
        const double x = 11 + i * 5.2;
        const double swell = std::exp(-std::pow((i - 7) / 4.6, 2));
        const double height = 5 + 33 * swell * (0.62 + 0.38 * std::cos(i * 2.1));
        const QColor colour = mixed(c.warm, c.light, i / double(bars - 1));
        p.setBrush(downwards(50 - height, 50 + height, colour.lighter(135), colour));
        p.drawRoundedRect(QRectF(x, 50 - height, 3.1, 2 * height), 1.55, 1.55);
    }
}

void horizon(QPainter &p, const Palette &c)
{
    sky(p, {c.dark, c.deep, c.warm});
    Dice dice(80);
    stars(p, dice, 70, 45, c.light);
    constexpr double ground = 62;
    glow(p, {50, 50}, 48, c.warm, 0.6);
    p.save();
    p.setClipRect(QRectF(0, 0, 100, ground));
    QPainterPath sun;
    sun.addEllipse(QPointF(50, 45), 25, 25);
    for (int i = 0; i < 6; ++i) {
        QPainterPath gap;
        gap.addRect(QRectF(0, 42 + i * 4.4, 100, 0.7 + i * 0.42));
        sun = sun.subtracted(gap);
    }
    p.fillPath(sun, downwards(20, 70, c.light, mixed(c.warm, c.deep, 0.25)));
    p.restore();
    QPolygonF mountains({{0, ground},
                         {0, 52},
                         {9, 46},
                         {17, 54},
                         {24, 50},
                         {34, ground},
                         {66, ground},
                         {77, 49},
                         {84, 55},
                         {92, 45},
                         {100, 51},
                         {100, ground}});
    p.setPen(Qt::NoPen);
    p.setBrush(mixed(c.dark, c.deep, 0.25));
    p.drawPolygon(mountains);
    p.fillRect(QRectF(0, ground, 100, 100 - ground),
               downwards(ground, 100, c.dark, mixed(c.dark, c.deep, 0.6)));
    p.setPen(QPen(faded(c.warm, 0.85), 0.4));
    p.setClipRect(QRectF(0, ground, 100, 100 - ground));
    for (int i = -14; i <= 14; ++i)
        p.drawLine(QPointF(50 + i * 4, ground), QPointF(50 + i * 19, 100));
    for (double y = 0.8; y < 40; y *= 1.55)
        p.drawLine(QPointF(0, ground + y), QPointF(100, ground + y));
    p.setClipping(false);
    p.setPen(QPen(c.light, 0.6));
    p.drawLine(QPointF(0, ground), QPointF(100, ground));
}

void dunes(QPainter &p, const Palette &c)
{
    sky(p, {mixed(c.deep, c.light, 0.25), mixed(c.warm, c.light, 0.55), c.light});
    glow(p, {66, 34}, 40, c.light, 0.9);
    disc(p, {66, 34}, 13, downwards(21, 47, c.light, c.warm));
    constexpr int layers = 6;
    for (int i = 0; i < layers; ++i) {
        const double part = i / double(layers - 1);
        const double height = 46 + 44 * part;
        const QColor colour =
            part < 0.5 ? mixed(c.warm, c.deep, part * 2) : mixed(c.deep, c.dark, part * 2 - 1);
        p.fillPath(hill(height, 5.5 - 2 * part, 75 + 17 * i, 0.29 * i),
                   downwards(height - 8, height + 26, colour.lighter(118), colour.darker(112)));
    }
}

void record(QPainter &p, const Palette &c)
{
    sky(p, {c.deep, c.dark});
    p.setPen(Qt::NoPen);
    p.setBrush(c.warm);
    p.drawPie(QRectF(-34, 46, 88, 88), 0, 90 * 16);
    p.setBrush(c.light);
    p.drawRect(QRectF(8, 10, 4, 38));
    p.drawRect(QRectF(16, 22, 4, 26));
    p.drawRect(QRectF(24, 15, 4, 33));
    p.setBrush(mixed(c.warm, c.dark, 0.35));
    p.drawPie(QRectF(70, -22, 52, 52), 180 * 16, 90 * 16);
    const QPointF centre(60, 52);
    disc(p, centre + QPointF(1.5, 2.5), 36, faded(Qt::black, 0.3));
    disc(p, centre, 36, mixed(c.dark, Qt::black, 0.55));
    for (double radius = 15.5; radius < 35; radius += 1.3)
        ring(p, centre, radius, faded(c.light, std::fmod(radius, 3.9) < 1.3 ? 0.16 : 0.06), 0.3);
    for (const double angle : {-0.9, 2.24}) { // light on the grooves
        for (int i = 0; i < 10; ++i)
            wedge(p, centre, 13, 35.5, angle - 0.02 * (i + 1), angle + 0.02 * (i + 1), faded(c.light, 0.02));
    }
    disc(p, centre, 12.5, downwards(40, 65, c.warm.lighter(110), c.warm));
    ring(p, centre, 9, faded(c.dark, 0.5), 0.5);
    disc(p, centre, 1.6, c.light);
    p.setPen(QPen(c.light, 1.5, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    p.drawPolyline(QPolygonF({{91, 10}, {91, 34}, {80, 50}}));
    disc(p, {91, 10}, 3.4, c.light);
    p.setPen(QPen(c.light, 3.4, Qt::SolidLine, Qt::RoundCap));
    p.drawLine(QPointF(80, 50), QPointF(77.8, 53.2));
}

void parasol(QPainter &p, QPointF at, double radius, const QColor &first, const QColor &second)
{
    disc(p, at + QPointF(radius * 0.35, radius * 0.45), radius, faded(Qt::black, 0.18));
    constexpr int panels = 12;
    for (int i = 0; i < panels; ++i)
        wedge(p, at, 0, radius, 2 * pi * i / panels, 2 * pi * (i + 1) / panels, i % 2 == 0 ? first : second);
    disc(p, at, radius * 0.1, second);
}

void beach(QPainter &p, const Palette &c)
{
    sky(p, {c.dark, c.deep});
    p.translate(50, 50);
    p.rotate(-24);
    p.translate(-50, -50);
    const QColor sand = mixed(c.warm, QColor(0xfb, 0xe6, 0xb4), 0.7);
    const auto shore = [&](double height, const QColor &colour) {
        QPainterPath path(QPointF(-40, 160));
        for (double x = -40; x <= 140; x += 1)
            path.lineTo(x, height + 2.6 * std::sin(x * 0.13) + 1.4 * std::sin(x * 0.31 + height));
        path.lineTo(140, 160);
        p.fillPath(path, colour);
    };
    for (int i = 0; i < 6; ++i)
        shore(-4 + i * 9.0, faded(mixed(c.deep, c.light == c.warm ? c.deep : Qt::white, 0.1 + i * 0.1), 0.5));
    shore(49, faded(Qt::white, 0.75));
    shore(51, faded(mixed(c.deep, Qt::white, 0.55), 0.9));
    shore(55, faded(Qt::white, 0.9));
    shore(56.6, mixed(sand, c.dark, 0.18));
    shore(60, sand);
    parasol(p, {28, 76}, 8.5, c.light, Qt::white);
    parasol(p, {52, 84}, 7, c.deep, Qt::white);
    parasol(p, {75, 73}, 9.5, c.light, c.warm);
    p.setPen(Qt::NoPen);
    p.setBrush(c.deep);
    p.drawRoundedRect(QRectF(38, 68, 4.5, 10), 0.8, 0.8);
    p.setBrush(c.light);
    p.drawRoundedRect(QRectF(61, 78, 4.5, 10), 0.8, 0.8);
}

void bellows(QPainter &p, const Palette &c)
{
    sky(p, {c.dark, mixed(c.dark, c.deep, 0.45)});
    glow(p, {50, 48}, 62, c.warm, 0.45);
    for (int i = 0; i < 4; ++i)
        disc(p, {50, 50}, 46 - i * 9.0, faded(c.light, 0.07));
    p.translate(50, 86);
    p.scale(0.8, 0.8);
    p.translate(-50, -96);
    const QPointF hinge(50, 96);
    constexpr int folds = 13;
    const double first = -pi * 0.84;
    const double step = pi * 0.68 / folds;
    for (int i = 0; i < folds; ++i) {
        const double from = first + i * step;
        const QColor shade = i % 2 == 0 ? c.deep.lighter(118) : c.deep.darker(135);
        wedge(p, hinge, 26, i % 2 == 0 ? 74 : 72, from, from + step, shade);
        p.setPen(QPen(faded(c.light, 0.85), 0.5));
        p.drawLine(onCircle(hinge, 26, from), onCircle(hinge, 73, from));
        wedge(p, hinge, 70, 73.2, from, from + step, c.warm);
        wedge(p, hinge, 26, 28.5, from, from + step, c.warm);
    }
    for (const double side : {-1.0, 1.0}) {
        p.save();
        p.translate(hinge);
        p.rotate(side * 62);
        p.setPen(QPen(c.warm, 0.8));
        p.setBrush(downwards(-78, -22, mixed(c.dark, Qt::black, 0.45), mixed(c.dark, Qt::black, 0.1)));
        p.drawRoundedRect(QRectF(side < 0 ? -15 : 0, -79, 15, 57), 3, 3);
        for (int row = 0; row < 8; ++row) {
            for (int column = 0; column < 2; ++column)
                disc(p, {side * (4.4 + column * 5.8), -73.0 + row * 6.4}, 1.9,
                     row % 3 == 1 ? c.warm : c.light);
        }
        p.restore();
    }
}

void staves(QPainter &p, const Palette &c)
{
    sky(p, {c.dark, c.deep, mixed(c.deep, c.light, 0.45)});
    glow(p, {72, 30}, 50, c.warm, 0.35);
    disc(p, {72, 30}, 15, downwards(15, 45, c.light, mixed(c.light, c.warm, 0.6)));
    const auto lineAt = [](double x, double index) {
        return 58 + 13 * std::sin(x * 0.052 - 0.6) + (index - 2) * (4.2 + 0.9 * std::sin(x * 0.06 + 1));
    };
    for (int line = 0; line < 5; ++line) {
        QPolygonF curve;
        for (double x = -1; x <= 101; x += 1)
            curve << QPointF(x, lineAt(x, line));
        p.setPen(QPen(faded(c.light, 0.85), 0.45));
        p.drawPolyline(curve);
    }
    const double places[] = {3, 1.5, 2, 0.5, 1, 2.5, 3.5, 2};
    double x = 9;
    for (const double place : places) {
        const QPointF head(x, lineAt(x, place));
        p.setPen(QPen(c.warm, 0.8));
        p.drawLine(head + QPointF(1.9, -0.4), head + QPointF(1.9, -14));
        p.save();
        p.translate(head);
        p.rotate(-22);
        p.setPen(Qt::NoPen);
        p.setBrush(c.warm);
        p.drawEllipse(QPointF(), 2.5, 1.8);
        p.restore();
        x += 11.6;
    }
    p.fillPath(hill(90, 2.5, 85, 0.2), mixed(c.dark, Qt::black, 0.15));
}

void night(QPainter &p, const Palette &c)
{
    sky(p, {c.dark, c.deep, mixed(c.deep, c.warm, 0.5)});
    Dice dice(23);
    stars(p, dice, 130, 75, c.light);
    glow(p, {66, 30}, 34, c.light, 0.3);
    QPainterPath moon;
    moon.addEllipse(QPointF(66, 30), 14, 14);
    QPainterPath shadow;
    shadow.addEllipse(QPointF(60, 27), 12.5, 12.5);
    p.fillPath(moon.subtracted(shadow), c.light);
    p.fillPath(hill(70, 4, 70, 0.4), mixed(c.deep, c.dark, 0.3));
    p.fillPath(hill(79, 4, 95, 0.1), mixed(c.deep, c.dark, 0.65));
    p.fillPath(hill(88, 3, 80, 0.7), c.dark);
}

void stage(QPainter &p, const Palette &c)
{
    sky(p, {c.dark, c.deep, mixed(c.deep, c.warm, 0.6)});
    p.setCompositionMode(QPainter::CompositionMode_Screen);
    const double lamps[] = {8, 30, 50, 70, 92};
    int index = 0;
    for (const double lamp : lamps) {
        const double aim = 50 + (50 - lamp) * 0.75;
        p.setPen(Qt::NoPen);
        const QColor colour = index++ % 2 == 0 ? c.light : c.warm;
        p.setBrush(downwards(0, 92, faded(colour, 0.75), faded(colour, 0.02)));
        p.drawPolygon(QPolygonF({{lamp - 1, 0}, {lamp + 1, 0}, {aim + 15, 95}, {aim - 15, 95}}));
    }
    p.setCompositionMode(QPainter::CompositionMode_SourceOver);
    Dice dice(7);
    for (int i = 0; i < 90; ++i) {
        p.save();
        p.translate(dice.roll(0, 100), dice.roll(4, 70));
        p.rotate(dice.roll(0, 180));
        p.fillRect(QRectF(-0.7, -0.4, 1.5, 0.8), i % 3 == 0   ? c.light
                                                 : i % 3 == 1 ? c.warm
                                                              : QColor(Qt::white));
        p.restore();
    }
    for (const double row : {82.0, 90.0}) {
        const QColor colour = row > 85 ? mixed(c.dark, Qt::black, 0.45) : mixed(c.dark, c.deep, 0.3);
        for (double x = dice.roll(-2, 2); x < 104; x += dice.roll(6, 8.5)) {
            const double y = row + dice.roll(-2, 2);
            disc(p, {x, y}, 3, colour);
            p.fillRect(QRectF(x - 4, y + 2.4, 8, 30), colour);
            p.setPen(QPen(colour, 1.7, Qt::SolidLine, Qt::RoundCap));
            const double reach = dice.roll(6, 12);
            p.drawLine(QPointF(x - 3.4, y + 4), QPointF(x - 4.6 + dice.roll(-1, 1), y - reach));
            if (reach > 9)
                p.drawLine(QPointF(x + 3.4, y + 4), QPointF(x + 4.6, y - reach * 0.8));
        }
    }
}

} // namespace

QImage drawCover(const Art &art)
{
    static const QHash<QString, void (*)(QPainter &, const Palette &)> motifs = {
        {QStringLiteral("sunburst"), sunburst}, {QStringLiteral("equaliser"), equaliser},
        {QStringLiteral("horizon"), horizon},   {QStringLiteral("dunes"), dunes},
        {QStringLiteral("record"), record},     {QStringLiteral("beach"), beach},
        {QStringLiteral("bellows"), bellows},   {QStringLiteral("staves"), staves},
        {QStringLiteral("night"), night},       {QStringLiteral("stage"), stage},
    };
    QImage image(coverSize, coverSize, QImage::Format_RGB32);
    image.fill(Qt::black);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.scale(coverSize / whole.width(), coverSize / whole.height());
    const auto motif = motifs.value(art.motif, sunburst);
    motif(painter, {art.colours.value(0), art.colours.value(1), art.colours.value(2), art.colours.value(3)});
    return image;
}

} // namespace orvel::demo
