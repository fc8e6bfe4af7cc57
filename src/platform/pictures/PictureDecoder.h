#pragma once

#include <QByteArrayView>
#include <QImage>
#include <functional>

namespace orvel {

// A picture of more bytes is not loaded.
inline constexpr qint64 maxPictureBytes = qint64(8) * 1024 * 1024;

// Returns whether a file that begins with `head` is a picture of a kind shown here: PNG, JPEG, GIF, BMP or
// WebP. 16 bytes are enough to decide.
bool looksLikePicture(QByteArrayView head);

// Decodes `bytes` on a thread of its own and calls `then` on the main thread, on a later turn of its loop.
// The picture is upright and scaled (see PictureScale.h). It is null when `bytes` are not a picture shown
// here, or one that is too large. Main thread.
void decodePicture(const QByteArray &bytes, std::function<void(const QImage &picture)> then);

} // namespace orvel
