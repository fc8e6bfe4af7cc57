#pragma once

#include <QString>
#include <optional>

namespace orvel {

// An absolute URL (RFC 3986) that remembers its text as typed.
class Url
{
public:
    // Returns std::nullopt for a text with a space, a control character, a broken escape or another character
    // that may not stand in an address, and for one without a scheme ("(null)", a relative path, an empty
    // text). Characters beyond ASCII are taken.
    static std::optional<Url> fromText(const QString &text);

    const QString &text() const { return m_text; }
    // As typed, case kept.
    QString scheme() const;
    // Returns what follows the last "." in the path's last segment, or an empty text without one.
    QString pathExtension() const;
    // Returns what goes on the wire: the text as typed, without the fragment. Only what is not ASCII is
    // changed: a host's name to Punycode, all else to escapes.
    QByteArray encoded() const;

    bool operator==(const Url &) const = default;

private:
    explicit Url(const QString &text) : m_text(text) {}
    QString m_text;
};

} // namespace orvel
