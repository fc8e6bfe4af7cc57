#pragma once

#include "demo/StationContent.h"

#include <QImage>

namespace orvel::demo {

// Returns a radio's large picture, 600 by 600, always the same for the same art.
QImage drawCover(const Art &art);

} // namespace orvel::demo
