#pragma once

#include <QByteArray>
#include <QMap>
#include <QString>
#include <optional>
#include <utility>

namespace orvel {

// The beginning of an answer without HTTP header fields, gathered until it shows whether it is a bare ICY
// answer.
class IcyAnswer
{
public:
    // Takes a chunk of the body. Returns true once there are the 200 bytes that it takes to decide.
    bool gather(QByteArrayView chunk);
    // The header fields gathered so far, at most from the first 64 KiB: names in their received case,
    // untrimmed values. Returns std::nullopt when the answer is not bare ICY.
    std::optional<QMap<QString, QString>> headerFields() const;
    // Returns all bytes gathered and forgets them.
    QByteArray takeData() { return std::exchange(m_data, {}); }

private:
    QByteArray m_data;
};

} // namespace orvel
