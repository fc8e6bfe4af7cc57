#pragma once

#include <QSize>
#include <algorithm>

namespace orvel {

// A picture of more pixels is not decoded.
inline constexpr qint64 maxPicturePixels = 16'000'000;
inline constexpr int maxPictureSide = 2048;

// Returns the size at which a picture of `size` is decoded: its own, or scaled down to maxPictureSide at its
// longer side, at least 1 by 1. Returns an empty size for a picture that is not decoded.
inline QSize decodedPictureSize(QSize size)
{
    if (size.isEmpty() || qint64(size.width()) * size.height() > maxPicturePixels)
        return {};
    if (std::max(size.width(), size.height()) <= maxPictureSide)
        return size;
    return size.scaled(maxPictureSide, maxPictureSide, Qt::KeepAspectRatio).expandedTo(QSize(1, 1));
}

} // namespace orvel
