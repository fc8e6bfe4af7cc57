#pragma once

#include <QString>

namespace orvel {

// Whether a program of the desktop takes URLs of `scheme`, by the desktop's own data: the users' and the
// system's mimeapps.list, then the mimeinfo.cache of the folders of installed programs (freedesktop.org, MIME
// applications). Reads a few small files; starts nothing.
bool hasSchemeHandler(const QString &scheme);

} // namespace orvel
