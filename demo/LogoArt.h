#pragma once

#include "demo/StationContent.h"

#include <QImage>

namespace orvel::demo {

// Returns a radio's logo, 160 by 160: a light sign on the radio's colours, always the same for the same art.
QImage drawLogo(const Art &art);

} // namespace orvel::demo
