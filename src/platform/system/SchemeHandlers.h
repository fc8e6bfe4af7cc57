#pragma once

#include <QString>

namespace orvel {

// Returns whether an installed program takes URLs of `scheme`, in any case of letters. Reads the desktop's
// own data: the mimeapps.list of the user and of the system, then the mimeinfo.cache of the folders of
// installed programs (freedesktop.org, MIME applications). Starts no program. Any thread.
bool hasSchemeHandler(const QString &scheme);

} // namespace orvel
