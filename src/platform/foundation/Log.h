#pragma once

#include <QLoggingCategory>

namespace orvel {

// One logging category a room; lines with a fixed format go through these.
Q_DECLARE_LOGGING_CATEGORY(logFoundation)
Q_DECLARE_LOGGING_CATEGORY(logNet)
Q_DECLARE_LOGGING_CATEGORY(logMedia)
Q_DECLARE_LOGGING_CATEGORY(logUi)
Q_DECLARE_LOGGING_CATEGORY(logApi)
Q_DECLARE_LOGGING_CATEGORY(logAudio)
Q_DECLARE_LOGGING_CATEGORY(logApp)

} // namespace orvel
