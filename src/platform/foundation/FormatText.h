#pragma once

#include <QString>

namespace orvel {

// What "%@" writes for a value that is absent, and for a JSON null.
inline const QString absentText = QStringLiteral("(null)");
inline const QString nullObjectText = QStringLiteral("<null>");

// The "%@" text of a text: itself, or "(null)" when it is absent (a null QString; an empty one is a text).
inline QString formatText(const QString &text) { return text.isNull() ? absentText : text; }

// "%@/%@" of a base and a name, as picture URLs are made: one slash between, nothing escaped.
inline QString formatPath(const QString &base, const QString &name)
{
    return formatText(base) + u'/' + formatText(name);
}

} // namespace orvel
