#pragma once

#include "api/json/JsonValue.h"

namespace orvel::WebRadioEntry {

// The keys of a web radio's entry: one of the "webradio" answer's content, with what the list of web radios
// adds to it. A favourite is stored as such an entry, whole.

// From the server. All are texts.
inline const QString id = QStringLiteral("id"); // compared as an integer
inline const QString title = QStringLiteral("title");
inline const QString subtitle = QStringLiteral("subtitle");                 // may be a JSON null
inline const QString file = QStringLiteral("file");                         // of the large picture
inline const QString thumb_smartphone = QStringLiteral("thumb_smartphone"); // file of the logo
inline const QString flux_aac = QStringLiteral("flux_aac");                 // the live stream's address

// Added by the list.
inline const QString imageurl = QStringLiteral("imageurl");   // base of the picture files
inline const QString songtitle = QStringLiteral("songtitle"); // what its stream told last; empty before
inline const QString fav = QStringLiteral("fav");             // favIconFull for a favourite, else favIcon

inline const QString favIcon = QStringLiteral("list_fav_icon.png");
inline const QString favIconFull = QStringLiteral("list_fav_icon_full.png");

// The addresses of its large picture and of its logo.
QString picturePath(const JsonValue &radio);
QString logoPath(const JsonValue &radio);

} // namespace orvel::WebRadioEntry
