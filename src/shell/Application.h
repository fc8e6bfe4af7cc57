#pragma once

#include "api/StationConfiguration.h"
#include "audio/live/Streamer.h"

namespace orvel {

class AppDelegate;
class Shell;

// The whole client between a QGuiApplication and its window, put together for one station and taken apart in
// the order that its parts need. Main thread.
class Application
{
public:
    // Names the program to the system and has it keep one heap; call before the QGuiApplication is made.
    static void prepare();

    explicit Application(const StationConfiguration &station, StreamerServices services = {});
    // Ends the sound and the transfers, then the window, then the screens.
    ~Application();
    Application(const Application &) = delete;
    Application &operator=(const Application &) = delete;

    // Makes the screens and shows the window. Returns false when the window can't be shown.
    bool start();

    AppDelegate &delegate() { return *m_delegate; }
    // From start() on.
    Shell &shell() { return *m_shell; }

private:
    std::shared_ptr<AppDelegate> m_delegate;
    std::unique_ptr<Shell> m_shell;
};

} // namespace orvel
