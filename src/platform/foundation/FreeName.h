#pragma once

#include <QString>

namespace orvel {

// Returns the first of "name", "name2" to "name9" that is not taken, or the ninth, to be replaced, when all
// are.
template<class IsTaken>
QString freeName(const QString &name, IsTaken isTaken)
{
    QString candidate = name;
    for (int number = 2; number <= 9 && isTaken(candidate); ++number)
        candidate = name + QString::number(number);
    return candidate;
}

} // namespace orvel
