#pragma once

#include <QObject>
#include <utility>

namespace orvel {

// Keeps `held` (a shared pointer, or a container of them) until `object` has been destroyed.
template<class Held>
void keepUntilDestroyed(const QObject &object, Held held)
{
    QObject::connect(&object, &QObject::destroyed, [kept = std::move(held)] {});
}

} // namespace orvel
