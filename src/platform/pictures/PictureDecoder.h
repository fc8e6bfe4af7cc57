#pragma once

#include <QByteArrayView>
#include <QImage>

namespace orvel {

// The bytes of a picture that a view takes at most, and its pixels.
inline constexpr qint64 maximumPictureBytes = qint64(8) * 1024 * 1024;
inline constexpr qint64 maximumPicturePixels = 16'000'000;

// Whether a file that begins with `head` is a picture of a kind shown here: PNG, JPEG, GIF, BMP or WebP. 16
// bytes are enough to tell.
bool looksLikePicture(QByteArrayView head);

// The picture in `bytes`, upright, scaled down to 2,048 pixels at its longer side; a null one when they hold
// none or one of more than maximumPicturePixels. Any thread.
QImage decodePicture(const QByteArray &bytes);

} // namespace orvel
