#include "platform/ui/table/TextHeight.h"

#include <QCache>
#include <QTextLayout>
#include <utility>

namespace orvel {

namespace {

using Measured = std::pair<QString, std::pair<int, double>>; // text, pixel size and width

// Lays the text out as QML does.
double measure(const QString &text, int pixelSize, double width)
{
    QFont font(QStringLiteral("Inter"));
    font.setPixelSize(pixelSize);
    QTextOption option;
    option.setWrapMode(QTextOption::WordWrap);
    option.setUseDesignMetrics(true); // unhinted, as QML draws
    QTextLayout layout(QString(text).replace(u'\n', QChar::LineSeparator), font);
    layout.setTextOption(option);
    layout.beginLayout();
    double height = 0;
    for (QTextLine line = layout.createLine(); line.isValid(); line = layout.createLine()) {
        line.setLineWidth(width);
        height += line.height(); // rounded up by Qt
    }
    layout.endLayout();
    return height;
}

} // namespace

double textHeight(const QString &text, int pixelSize, double width)
{
    if (text.isEmpty())
        return 0;
    // Measuring takes about 0.3 ms a text, and a table asks for all its heights at each reload.
    constexpr int maxCharacters = 1 << 20;
    static QCache<Measured, double> heights(maxCharacters);
    const Measured key(text, {pixelSize, width});
    if (const double *known = heights.object(key))
        return *known;
    const double height = measure(text, pixelSize, width);
    heights.insert(key, new double(height), text.size());
    return height;
}

} // namespace orvel
