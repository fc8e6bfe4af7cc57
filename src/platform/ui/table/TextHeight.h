#pragma once

#include <QString>

namespace orvel {

// Returns the points that `text` takes in the application's font of `pixelSize`, wrapped by words at `width`
// points: what a QML Text of Inter with WordWrap takes. An empty text takes 0. Main thread.
double textHeight(const QString &text, int pixelSize, double width);

} // namespace orvel
