#pragma once

#include <QByteArrayView>
#include <QString>
#include <optional>

namespace orvel {

// What ends a header line.
inline constexpr QByteArrayView icyLineEnd("\r\n");

// The status line that a bare ICY answer begins with, without its end. Public source: the SHOUTcast streaming
// convention.
inline constexpr QByteArrayView icyStatus("ICY 200 OK");
// Ignores case. False for fewer bytes than the status line has.
bool beginsWithIcyStatus(QByteArrayView answer);

struct IcyHeaderField
{
    QString name;
    QString value; // what follows the first colon, untrimmed
};
// Reads a header line without its end: UTF-8, or else Latin-1. Returns std::nullopt when it has no colon.
std::optional<IcyHeaderField> icyHeaderField(QByteArrayView line);

} // namespace orvel
