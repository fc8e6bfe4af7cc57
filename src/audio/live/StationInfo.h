#pragma once

#include <QString>

namespace orvel {

// What a stream's headers tell of its station; null until they have.
struct StationInfo
{
    QString name;
    QString genre;
    QString url;
};

} // namespace orvel
