#include "platform/media/device/PulseAudioServer.h"

#include "platform/foundation/Log.h"

#include <QCoreApplication>
#include <algorithm>
#include <utility>

namespace orvel {

namespace {

constexpr std::chrono::seconds patience(1);

PulseAudioHandle<pa_proplist> applicationProperties()
{
    PulseAudioHandle<pa_proplist> properties(pa_proplist_new());
    pa_proplist_sets(properties.get(), PA_PROP_APPLICATION_NAME,
                     QCoreApplication::applicationName().toUtf8().constData());
    pa_proplist_sets(properties.get(), PA_PROP_APPLICATION_ICON_NAME, "orvel");
    return properties;
}

void ignore(pa_operation *operation)
{
    if (operation)
        pa_operation_unref(operation);
}

pa_time_event *timeEvent(pa_threaded_mainloop &loop, std::chrono::steady_clock::duration time,
                         pa_time_event_cb_t callback, void *data)
{
    timeval at{};
    pa_gettimeofday(&at);
    pa_timeval_add(&at, pa_usec_t(std::chrono::duration_cast<std::chrono::microseconds>(time).count()));
    pa_mainloop_api *api = pa_threaded_mainloop_get_api(&loop);
    return api->time_new(api, &at, callback, data);
}

} // namespace

// Callbacks are cleared first: a disconnection calls them.
void PulseAudioDeleter::operator()(pa_context *context) const
{
    pa_context_set_state_callback(context, nullptr, nullptr);
    pa_context_set_subscribe_callback(context, nullptr, nullptr);
    pa_context_disconnect(context);
    pa_context_unref(context);
}

void PulseAudioDeleter::operator()(pa_stream *stream) const
{
    pa_stream_set_state_callback(stream, nullptr, nullptr);
    pa_stream_set_write_callback(stream, nullptr, nullptr);
    pa_stream_set_event_callback(stream, nullptr, nullptr);
    pa_stream_set_underflow_callback(stream, nullptr, nullptr);
    pa_stream_set_started_callback(stream, nullptr, nullptr);
    pa_stream_disconnect(stream);
    pa_stream_unref(stream);
}

// A stream that was corked for another sound, after its client has let go of it.
struct PulseAudioServer::Waiting
{
    PulseAudioHandle<pa_stream> stream;
    std::function<void()> ended; // empty after the end

    // The stream is let go of later: it may be calling.
    void end()
    {
        if (const auto function = std::exchange(ended, nullptr))
            function();
        instance().callAfter({});
    }
};

// Never destroyed: a thread that outlives main still finds it.
PulseAudioServer &PulseAudioServer::instance()
{
    static PulseAudioServer &server = *new PulseAudioServer;
    return server;
}

bool PulseAudioServer::add(PulseAudioClient &client)
{
    const std::lock_guard users(m_users);
    if (!m_loop) {
        PulseAudioHandle<pa_threaded_mainloop> loop(pa_threaded_mainloop_new());
        if (!loop || pa_threaded_mainloop_start(loop.get()) < 0)
            return false;
        m_loop = std::move(loop);
    }
    const Lock lock;
    if (!isConnected())
        connect();
    awaitAnswer();
    // A server that is there but slow holds up every other way to the sound, too.
    if (!isConnected() && !m_hasAnswered)
        return false;
    m_clients.insert(&client);
    if (m_isReady)
        client.serverAnswers(*m_context);
    else
        streamHasFailed();
    return true;
}

void PulseAudioServer::quit()
{
    const std::lock_guard users(m_users);
    if (!m_loop)
        return;
    {
        const Lock lock;
        if (!m_clients.empty())
            return;
        for (Waiting &waiting : m_waiting)
            waiting.end();
        m_waiting.clear();
        if (m_timer)
            pa_threaded_mainloop_get_api(m_loop.get())->time_free(std::exchange(m_timer, nullptr));
        m_context.reset();
        m_failingSince.reset();
        m_isReady = m_hasAnswered = false;
    }
    pa_threaded_mainloop_stop(m_loop.get());
    m_loop.reset();
}

void PulseAudioServer::streamHasFailed()
{
    const auto now = Clock::now();
    if (!m_failingSince)
        m_failingSince = now;
    // The longer it lasts the rarer the tries.
    callAfter(std::clamp<Clock::duration>((now - *m_failingSince) / 8, std::chrono::milliseconds(500),
                                          std::chrono::seconds(10)));
}

void PulseAudioServer::awaitUncork(PulseAudioHandle<pa_stream> stream, std::function<void()> ended)
{
    m_waiting.push_back({std::move(stream), std::move(ended)});
    Waiting &waiting = m_waiting.back();
    pa_stream_set_underflow_callback(waiting.stream.get(), nullptr, nullptr);
    pa_stream_set_started_callback(waiting.stream.get(), nullptr, nullptr);
    pa_stream_set_event_callback(
        waiting.stream.get(),
        [](pa_stream *, const char *name, pa_proplist *, void *data) {
            if (qstrcmp(name, PA_STREAM_EVENT_REQUEST_UNCORK) == 0)
                static_cast<Waiting *>(data)->end();
        },
        &waiting);
    pa_stream_set_state_callback(
        waiting.stream.get(),
        [](pa_stream *corked, void *data) {
            if (!PA_STREAM_IS_GOOD(pa_stream_get_state(corked)))
                static_cast<Waiting *>(data)->end();
        },
        &waiting);
}

bool PulseAudioServer::isConnected() const
{
    return m_context && PA_CONTEXT_IS_GOOD(pa_context_get_state(m_context.get()));
}

void PulseAudioServer::connect()
{
    m_isReady = false;
    m_context.reset(pa_context_new_with_proplist(pa_threaded_mainloop_get_api(m_loop.get()), nullptr,
                                                 applicationProperties().get()));
    pa_context_set_state_callback(
        m_context.get(),
        [](pa_context *, void *server) { static_cast<PulseAudioServer *>(server)->onContextState(); }, this);
    pa_context_set_subscribe_callback(
        m_context.get(),
        [](pa_context *, pa_subscription_event_type_t event, uint32_t, void *server) {
            if ((event & PA_SUBSCRIPTION_EVENT_TYPE_MASK) == PA_SUBSCRIPTION_EVENT_NEW)
                static_cast<PulseAudioServer *>(server)->callAfter({});
        },
        this);
    if (pa_context_connect(m_context.get(), nullptr, PA_CONTEXT_NOAUTOSPAWN, nullptr) < 0)
        streamHasFailed();
}

void PulseAudioServer::awaitAnswer()
{
    m_isPatient = true;
    pa_time_event *const end = timeEvent(
        *m_loop, patience,
        [](pa_mainloop_api *, pa_time_event *, const timeval *, void *data) {
            auto *server = static_cast<PulseAudioServer *>(data);
            server->m_isPatient = false;
            pa_threaded_mainloop_signal(server->m_loop.get(), 0);
        },
        this);
    while (!m_isReady && m_isPatient && isConnected())
        pa_threaded_mainloop_wait(m_loop.get());
    pa_threaded_mainloop_get_api(m_loop.get())->time_free(end);
}

void PulseAudioServer::onContextState()
{
    const pa_context_state_t state = pa_context_get_state(m_context.get());
    if (state == PA_CONTEXT_READY) {
        ignore(pa_context_subscribe(m_context.get(), PA_SUBSCRIPTION_MASK_SINK, nullptr, nullptr));
        ignore(pa_context_get_server_info(
            m_context.get(),
            [](pa_context *, const pa_server_info *info, void *server) {
                if (info)
                    static_cast<PulseAudioServer *>(server)->onServerInfo(*info);
            },
            this));
    } else if (!PA_CONTEXT_IS_GOOD(state)) {
        m_isReady = false;
        qCInfo(logMedia, "The sound server is gone: %s", pa_strerror(pa_context_errno(m_context.get())));
        streamHasFailed();
    }
    pa_threaded_mainloop_signal(m_loop.get(), 0);
}

void PulseAudioServer::onServerInfo(const pa_server_info &info)
{
    m_isPipeWire = QByteArrayView(info.server_name).contains("PipeWire");
    m_isReady = m_hasAnswered = true;
    callAfter({});
    pa_threaded_mainloop_signal(m_loop.get(), 0);
}

void PulseAudioServer::onTime()
{
    pa_threaded_mainloop_get_api(m_loop.get())->time_free(std::exchange(m_timer, nullptr));
    std::erase_if(m_waiting, [](const Waiting &waiting) { return !waiting.ended; });
    if (!isConnected()) {
        for (PulseAudioClient *client : m_clients)
            client->serverIsGone();
        m_context.reset();
        if (!m_clients.empty())
            connect();
    } else if (m_isReady) {
        for (PulseAudioClient *client : m_clients)
            client->serverAnswers(*m_context);
    }
}

void PulseAudioServer::callAfter(Clock::duration time)
{
    const auto at = Clock::now() + time;
    if (m_timer && m_due <= at)
        return;
    if (m_timer)
        pa_threaded_mainloop_get_api(m_loop.get())->time_free(m_timer);
    m_due = at;
    m_timer = timeEvent(
        *m_loop, time,
        [](pa_mainloop_api *, pa_time_event *, const timeval *, void *server) {
            static_cast<PulseAudioServer *>(server)->onTime();
        },
        this);
}

} // namespace orvel
