#pragma once

#include <QString>

namespace orvel {

// Returns `name` as a file can bear it in any folder: without folders, control characters and leading dots,
// at most 120 characters from its end, never empty.
QString safeFileName(const QString &name);

} // namespace orvel
