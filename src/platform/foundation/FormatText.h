#pragma once

#include <QString>

namespace orvel {

// What "%@" writes for a value that is absent, and for a JSON null.
// Deliberate: an absent part of an address or a text is written as its marker, as the station's server knows
// it (FrequenceControllerTest.ShowsWhatTheServerSends).
inline const QString absentText = QStringLiteral("(null)");
inline const QString nullObjectText = QStringLiteral("<null>");

// Returns the "%@" text of a text: itself, or "(null)" when it is absent (a null QString; an empty one is a
// text).
inline QString formatText(const QString &text) { return text.isNull() ? absentText : text; }

// Returns "%@/%@" of a base and a name, as addresses are made: one slash between, no character escaped.
inline QString formatPath(const QString &base, const QString &name)
{
    return formatText(base) + u'/' + formatText(name);
}

} // namespace orvel
