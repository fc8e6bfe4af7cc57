#include "tools/stream/Signals.h"

#include <array>
#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <unistd.h>
#include <utility>

namespace orvel {

namespace {

constexpr std::array signalsHeard{SIGINT, SIGTERM};
std::array<int, 2> pipeEnds{-1, -1};

int openPipe()
{
    if (::pipe2(pipeEnds.data(), O_CLOEXEC | O_NONBLOCK) != 0)
        qFatal("No pipe for signals");
    return pipeEnds[0];
}

void note(int signal)
{
    const int savedErrno = errno;
    const char byte = char(signal);
    [[maybe_unused]] const auto written = ::write(pipeEnds[1], &byte, 1);
    errno = savedErrno;
}

void handleWith(void (*handler)(int))
{
    struct sigaction action
    {
    };
    action.sa_handler = handler;
    // The default comes back with the first signal, also when the event loop should be stuck.
    action.sa_flags = int(SA_RESTART | SA_RESETHAND);
    for (const int signal : signalsHeard)
        ::sigaction(signal, &action, nullptr);
}

} // namespace

Signals::Signals(std::function<void(int signal)> handler)
    : m_handler(std::move(handler)), m_notifier(openPipe(), QSocketNotifier::Read)
{
    QObject::connect(&m_notifier, &QSocketNotifier::activated, &m_notifier, [this] {
        char signal = 0;
        if (::read(pipeEnds[0], &signal, 1) != 1)
            return;
        handleWith(SIG_DFL);
        m_notifier.setEnabled(false);
        m_handler(signal);
    });
    handleWith(note);
}

Signals::~Signals()
{
    handleWith(SIG_DFL);
    m_notifier.setEnabled(false);
    for (int &end : pipeEnds)
        ::close(std::exchange(end, -1));
}

} // namespace orvel
