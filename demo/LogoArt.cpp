#include "demo/LogoArt.h"

#include <QHash>
#include <QLinearGradient>
#include <QPainter>
#include <QPainterPath>

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>

namespace orvel::demo {

namespace {

constexpr int logoSize = 160;
constexpr int oversampling = 4;
constexpr double pi = std::numbers::pi;

// A sign is a shape on a square of 100 by 100, between 22 and 78.

QPainterPath disc(QPointF centre, double radius)
{
    QPainterPath path;
    path.addEllipse(centre, radius, radius);
    return path;
}

QPainterPath bar(const QRectF &rect)
{
    QPainterPath path;
    const double radius = std::min(rect.width(), rect.height()) / 2;
    path.addRoundedRect(rect, radius, radius);
    return path;
}

QPainterPath stroke(const QPainterPath &line, double width)
{
    QPainterPathStroker stroker;
    stroker.setWidth(width);
    stroker.setCapStyle(Qt::RoundCap);
    stroker.setJoinStyle(Qt::RoundJoin);
    return stroker.createStroke(line);
}

QPainterPath turned(const QPainterPath &path, double degrees)
{
    QTransform transform;
    transform.translate(50, 50);
    transform.rotate(degrees);
    transform.translate(-50, -50);
    return transform.map(path);
}

QPainterPath wave(double y)
{
    QPainterPath line(QPointF(24, y));
    for (double x = 25; x <= 76; x += 1)
        line.lineTo(x, y + 3.4 * std::sin((x - 24) / 52 * 4 * pi));
    return stroke(line, 5.5);
}

QPainterPath sun()
{
    QPainterPath sign = disc({50, 50}, 13.5);
    for (int i = 0; i < 8; ++i)
        sign = sign.united(turned(bar({47, 21, 6, 11}), i * 45.0));
    return sign;
}

QPainterPath bars()
{
    QPainterPath sign;
    const double heights[] = {22, 44, 56, 34, 16};
    double x = 22;
    for (const double height : heights) {
        sign.addPath(bar({x, 50 - height / 2, 8, height}));
        x += 12;
    }
    return sign;
}

QPainterPath slattedSun()
{
    QPainterPath sign = disc({50, 50}, 27);
    for (int i = 0; i < 4; ++i) {
        QPainterPath gap;
        gap.addRect(QRectF(0, 48 + i * 8.0, 100, 2.2 + i * 0.9));
        sign = sign.subtracted(gap);
    }
    return sign;
}

QPainterPath waves()
{
    QPainterPath sign = disc({50, 34}, 10);
    for (const double y : {54.0, 65.0, 76.0})
        sign = sign.united(wave(y));
    return sign;
}

QPainterPath vinyl()
{
    QPainterPath sign = disc({50, 50}, 28).subtracted(disc({50, 50}, 20.5));
    sign = sign.united(disc({50, 50}, 17.5).subtracted(disc({50, 50}, 10.5)));
    return sign.united(disc({50, 50}, 4));
}

QPainterPath parasol()
{
    QPainterPath top(QPointF(21, 52));
    top.arcTo(QRectF(21, 23, 58, 58), 180, -180);
    for (int i = 0; i < 3; ++i)
        top.arcTo(QRectF(79 - 58.0 / 3 * (i + 1), 46, 58.0 / 3, 12), 0, 180);
    QPainterPath pole(QPointF(50, 50));
    pole.lineTo(50, 76);
    return turned(top.united(stroke(pole, 5)), 18);
}

QPainterPath fan()
{
    QPainterPath sign;
    for (int i = 0; i < 5; ++i) {
        QPainterPath fold(QPointF(45.5, 58));
        fold.lineTo(43, 24);
        fold.lineTo(57, 24);
        fold.lineTo(54.5, 58);
        fold.closeSubpath();
        QTransform transform;
        transform.translate(50, 78);
        transform.rotate((i - 2) * 26.0);
        transform.translate(-50, -78);
        sign.addPath(transform.map(fold));
    }
    return sign.united(disc({50, 76}, 7));
}

QPainterPath notes()
{
    QPainterPath beam(QPointF(39, 34));
    beam.lineTo(69, 27);
    beam.lineTo(69, 36);
    beam.lineTo(39, 43);
    beam.closeSubpath();
    QPainterPath stems(QPointF(41, 68));
    stems.lineTo(41, 37);
    stems.moveTo(67, 61);
    stems.lineTo(67, 30);
    return beam.united(stroke(stems, 4.5)).united(disc({34.5, 68}, 8.7)).united(disc({60.5, 61}, 8.7));
}

QPainterPath moon()
{
    QPainterPath sign = disc({47, 53}, 26).subtracted(disc({57, 45}, 22));
    for (const auto &[x, y, size] : {std::array{68.0, 34.0, 8.0}, std::array{58.0, 51.0, 5.0}}) {
        QPainterPath star(QPointF(x, y - size));
        for (const QPointF corner : {QPointF(1, 0), QPointF(0, 1), QPointF(-1, 0), QPointF(0, -1)})
            star.quadTo(QPointF(x, y), QPointF(x, y) + corner * size);
        sign = sign.united(star);
    }
    return sign;
}

QPainterPath microphone()
{
    QPainterPath cradle;
    cradle.arcMoveTo(QRectF(31, 28, 38, 38), 190);
    cradle.arcTo(QRectF(31, 28, 38, 38), 190, 160);
    cradle.moveTo(50, 66);
    cradle.lineTo(50, 77);
    cradle.moveTo(39, 77);
    cradle.lineTo(61, 77);
    return bar({39.5, 21, 21, 37}).united(stroke(cradle, 5));
}

} // namespace

QImage drawLogo(const Art &art)
{
    static const QHash<QString, QPainterPath (*)()> signs = {
        {QStringLiteral("sunburst"), sun},       {QStringLiteral("equaliser"), bars},
        {QStringLiteral("horizon"), slattedSun}, {QStringLiteral("dunes"), waves},
        {QStringLiteral("record"), vinyl},       {QStringLiteral("beach"), parasol},
        {QStringLiteral("bellows"), fan},        {QStringLiteral("staves"), notes},
        {QStringLiteral("night"), moon},         {QStringLiteral("stage"), microphone},
    };
    constexpr int size = logoSize * oversampling;
    QImage image(size, size, QImage::Format_RGB32);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.scale(size / 100.0, size / 100.0);

    QLinearGradient ground(0, 0, 100, 100);
    ground.setColorAt(0, art.colours.value(1).lighter(115));
    ground.setColorAt(1, art.colours.value(0));
    painter.fillRect(QRectF(0, 0, 100, 100), ground);
    painter.fillPath(disc({20, 4}, 72), QColor(255, 255, 255, 18));

    const QPainterPath sign = signs.value(art.motif, sun)();
    painter.fillPath(sign.translated(0, 2), QColor(0, 0, 0, 50));
    QLinearGradient ink(0, 22, 0, 80);
    ink.setColorAt(0, art.colours.value(3));
    ink.setColorAt(1, art.colours.value(2));
    painter.fillPath(sign, ink);
    painter.end();
    return image.scaled(logoSize, logoSize, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
}

} // namespace orvel::demo
