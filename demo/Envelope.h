#pragma once

#include "demo/WebServer.h"

#include <QJsonValue>

namespace orvel::demo {

inline const QByteArray jsonType = "application/json; charset=utf-8";

// Return the JSON that every endpoint answers in: what was asked for under "content", or an error with a
// message for the user. Endpoints differ in where they put the error.
WebAnswer contentAnswer(const QJsonValue &content);
WebAnswer errorAnswer(const QByteArray &endpoint, int status, const QString &message);

} // namespace orvel::demo
