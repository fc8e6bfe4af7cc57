#pragma once

#include "api/json/Decimal.h"
#include "api/json/JsonBase.h"

#include <QByteArrayView>
#include <QVarLengthArray>

namespace orvel {

// Reads the tokens of a JSON text from its UTF-8 bytes, in place. What fails adds its errors to `errors`.
class JsonScanner
{
public:
    JsonScanner(QByteArrayView utf8, JsonBase &errors)
        : m_at(utf8.begin()), m_end(utf8.end()), m_errors(errors)
    {
    }

    // Returns the next byte, or 0 at the end.
    char peek() const { return m_at < m_end ? *m_at : '\0'; }
    bool isAtEnd() const { return m_at == m_end; }
    const char *position() const { return m_at; }
    void skip() { ++m_at; }
    bool skipIf(char byte)
    {
        const bool isNext = m_at < m_end && *m_at == byte;
        m_at += isNext ? 1 : 0;
        return isNext;
    }
    // Skips `text` when it comes next.
    bool skipIf(QByteArrayView text);
    // Skips `text` and a quote behind it when they come next.
    bool skipQuoted(QByteArrayView text);
    // Skips the six white-space characters of C, whatever the locale.
    // Deliberate: vertical tab and form feed count, which JSON does not know
    // (JsonParserTest.ReadsEveryKindAndWritesItBack)
    void skipSpace()
    {
        while (m_at < m_end && (*m_at == ' ' || (*m_at >= '\t' && *m_at <= '\r')))
            ++m_at;
    }

    // Reads from behind the opening quote to behind the closing one.
    bool readString(QString &text);
    // Reads from the sign or the first digit on.
    bool readNumber(Decimal &number);

private:
    // Skips to the next quote, backslash or control character, or to the end. Returns whether the run is all
    // ASCII.
    bool skipRun();
    bool readEscapedString(const char *run, bool isAscii, QString &text);
    bool appendRun(const char *run, bool isAscii);
    bool readEscape();
    bool readUnicodeUnit();
    bool readHexQuad(unsigned &unit);
    // Returns the run of digits and appends them to `number`, which wraps around when there are too many.
    QByteArrayView readDigits(quint64 &number);
    // Reads from behind the "e" on.
    bool readExponent(qint64 &exponent);
    bool fail(int code, const QString &description);

    const char *m_at;
    const char *m_end;
    JsonBase &m_errors;
    QVarLengthArray<char16_t, 256> m_units; // of a string with escapes
};

} // namespace orvel
