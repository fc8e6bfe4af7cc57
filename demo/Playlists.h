#pragma once

#include "demo/StationContent.h"
#include "demo/WebServer.h"

#include <optional>

namespace orvel::demo {

// Returns the playlist file that names a radio's stream: "/ecouter/<radio>.m3u", ".pls" or ".xspf". A query
// is handed on to the stream's URL, so that a fault can be asked for behind a playlist too. nullopt for any
// other request.
std::optional<WebAnswer> playlistAnswer(const StationContent &content, const WebRequest &request);

} // namespace orvel::demo
