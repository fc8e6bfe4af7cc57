#pragma once

#include <QString>
#include <optional>

namespace orvel {

// An absolute URL (RFC 3986) that remembers its text as typed.
class Url
{
public:
    // Strict: a text with a space, a control character or a broken escape makes none, nor does one without a
    // scheme ("(null)", a relative path, the empty text). Other characters in path or query are escaped when
    // sent.
    static std::optional<Url> fromText(const QString &text);

    const QString &text() const { return m_text; }
    // As typed, case kept.
    QString scheme() const;
    // What follows the last "." in the path's last segment, without query or fragment; empty when there is
    // none.
    QString pathExtension() const;
    // What goes on the wire: the text as typed, without the fragment. Only what is not ASCII is changed: it
    // is escaped, in a host's name written in Punycode.
    QByteArray encoded() const;

    bool operator==(const Url &) const = default;

private:
    explicit Url(const QString &text) : m_text(text) {}
    QString m_text;
};

} // namespace orvel
