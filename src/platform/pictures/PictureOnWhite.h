#pragma once

#include <QImage>

namespace orvel {

// Returns `picture` without transparency, on white, for those who would show the ground black. A null image
// stays null. Any thread.
QImage pictureOnWhite(const QImage &picture);

} // namespace orvel
