#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QString>
#include <cstring>

namespace orvel {

// The input of the reader: a text, or UTF-8 bytes that are read in place and must outlive the call.
// Deliberate: it ends at its first zero byte, as answers always have
// (JsonParserTest.NamesEachErrorAndWhatItMadeMissing)
class JsonInput
{
public:
    JsonInput(const QString &text) : m_isNil(text.isNull()), m_converted(text.toUtf8()), m_bytes(m_converted)
    {
    }
    JsonInput(QByteArrayView utf8) : m_isNil(utf8.isNull()), m_bytes(utf8) {}
    JsonInput(const QByteArray &utf8) : m_isNil(utf8.isNull()), m_converted(utf8), m_bytes(m_converted) {}
    JsonInput(const char *utf8) : JsonInput(QByteArrayView(utf8)) {}
    JsonInput(const JsonInput &) = delete;
    JsonInput &operator=(const JsonInput &) = delete;

    // Returns whether the text was null.
    bool isNil() const { return m_isNil; }
    QByteArrayView bytes() const
    {
        const void *const zero =
            m_bytes.isEmpty() ? nullptr : std::memchr(m_bytes.data(), 0, size_t(m_bytes.size()));
        return zero ? QByteArrayView(m_bytes.data(), static_cast<const char *>(zero)) : m_bytes;
    }

private:
    bool m_isNil;
    QByteArray m_converted;
    QByteArrayView m_bytes;
};

} // namespace orvel
