#pragma once

#include <QByteArrayView>
#include <QMap>
#include <QString>
#include <optional>

namespace orvel {

// A bare ICY answer is told from its first bytes, once there are this many.
inline constexpr qsizetype icyAnswerSize = 200;

// The header fields at the beginning of a bare "ICY 200 OK" answer, as far as they have arrived: names in
// their received case, values with whatever follows the colon. Nothing when `data` begins otherwise. What
// lies beyond 64 KiB is not read.
std::optional<QMap<QString, QString>> icyHeaderFields(QByteArrayView data);

} // namespace orvel
