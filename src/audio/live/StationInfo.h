#pragma once

#include <QString>

namespace orvel {

// What a stream's headers say of its station. Null texts until they have.
struct StationInfo
{
    QString name;
    QString genre;
    QString url;
};

} // namespace orvel
