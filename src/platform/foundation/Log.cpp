#include "platform/foundation/Log.h"

namespace orvel {

Q_LOGGING_CATEGORY(logFoundation, "orvel.foundation", QtWarningMsg)
Q_LOGGING_CATEGORY(logNet, "orvel.net", QtWarningMsg)
Q_LOGGING_CATEGORY(logMedia, "orvel.media", QtWarningMsg)
Q_LOGGING_CATEGORY(logUi, "orvel.ui", QtWarningMsg)
Q_LOGGING_CATEGORY(logApi, "orvel.api", QtWarningMsg)
Q_LOGGING_CATEGORY(logAudio, "orvel.audio", QtWarningMsg)
Q_LOGGING_CATEGORY(logApp, "orvel.app", QtWarningMsg)

} // namespace orvel
