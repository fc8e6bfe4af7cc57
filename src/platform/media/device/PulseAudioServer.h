#pragma once

#include <chrono>
#include <functional>
#include <list>
#include <memory>
#include <mutex>
#include <optional>
#include <pulse/pulseaudio.h>
#include <set>

namespace orvel {

struct PulseAudioDeleter
{
    void operator()(pa_threaded_mainloop *loop) const { pa_threaded_mainloop_free(loop); }
    void operator()(pa_context *context) const;
    void operator()(pa_stream *stream) const;
    void operator()(pa_proplist *list) const { pa_proplist_free(list); }
};
template<typename Handle>
using PulseAudioHandle = std::unique_ptr<Handle, PulseAudioDeleter>;

// What has a stream on the server. Its operations run on the server's thread, which holds the lock, and never
// inside one of libpulse's callbacks.
class PulseAudioClient
{
public:
    virtual ~PulseAudioClient() = default;
    // The server answers. Makes a stream unless there is one that works.
    virtual void serverAnswers(pa_context &context) = 0;
    // The server is gone. Lets go of the stream.
    virtual void serverIsGone() = 0;
};

// The program's one connection with the PulseAudio server, or PipeWire's, on a thread of its own. Once it has
// been had, it is had again when it fails, for as long as it has clients. Any thread.
class PulseAudioServer
{
public:
    static PulseAudioServer &instance();

    // Held whenever something of libpulse is called. Not on the server's own thread, which holds it always.
    class Lock
    {
    public:
        Lock() { pa_threaded_mainloop_lock(instance().m_loop.get()); }
        ~Lock() { pa_threaded_mainloop_unlock(instance().m_loop.get()); }
        Lock(const Lock &) = delete;
        Lock &operator=(const Lock &) = delete;
    };

    // Connects if need be. Returns false when there is no server and none was before. Makes a stream for the
    // client at once if the server answers within a second, else when it does.
    bool add(PulseAudioClient &client);
    // The client is not called any more. With the lock held.
    void remove(PulseAudioClient &client) { m_clients.erase(&client); }
    // Ends the connection if it has no clients.
    void quit();

    // Whether the server is PipeWire. With the lock held.
    bool isPipeWire() const { return m_isPipeWire; }
    // A client's stream works, has failed, or is to be made anew. With the lock held, also inside libpulse's
    // callbacks.
    void streamWorks() { m_failingSince.reset(); }
    void streamHasFailed();
    void streamIsSpent() { callAfter({}); }
    // Keeps a corked stream until the server no longer wants it corked, or fails, and calls `ended` then.
    // With the lock held.
    void awaitUncork(PulseAudioHandle<pa_stream> stream, std::function<void()> ended);

private:
    using Clock = std::chrono::steady_clock;
    struct Waiting;

    bool isConnected() const; // or about to be
    void connect();
    void awaitAnswer();
    void onContextState();
    void onServerInfo(const pa_server_info &info);
    void onTime();
    void callAfter(Clock::duration time);

    std::mutex m_users; // held while the thread is started or ended
    PulseAudioHandle<pa_threaded_mainloop> m_loop;
    // Guarded by the loop's lock.
    PulseAudioHandle<pa_context> m_context;
    pa_time_event *m_timer = nullptr; // for onTime()
    Clock::time_point m_due;          // the timer's
    std::set<PulseAudioClient *> m_clients;
    std::list<Waiting> m_waiting;
    std::optional<Clock::time_point> m_failingSince;
    bool m_isPatient = false; // who waits for the first answer
    bool m_isReady = false;   // the context is, and who the server is is known
    bool m_hasAnswered = false;
    bool m_isPipeWire = false;
};

} // namespace orvel
