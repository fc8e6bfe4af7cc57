#pragma once

#include "audio/probe/StreamReading.h"
#include "platform/foundation/SerialQueue.h"

#include <functional>
#include <memory>
#include <optional>

namespace orvel {

// Opens a live stream without playing it, one request after another: the connection lives on the main thread,
// the reading on a serial queue. The connection rests while a chunk is read, so no more than one waits, and
// neither side ever waits for the other. Main thread.
class StreamRequest
{
public:
    // A probe asks for in-band metadata and reads at most `maxProbedBytes`, where its stream ends. A
    // recording wants sound alone, for as long as it lasts.
    enum class Purpose { Probe, Recording };
    static constexpr qint64 maxProbedBytes = 16 * 1024 * 1024;

    struct Ending
    {
        std::optional<UrlResponse> response; // nullopt when it never came
        std::optional<NetError> error;
        // False without an error: the stream has ended before.
        bool isReadingOver = false;
    };
    using EndHandler = std::function<void(const Ending &)>;

    explicit StreamRequest(const QString &queueName);
    // Cancels.
    ~StreamRequest();
    StreamRequest(const StreamRequest &) = delete;
    StreamRequest &operator=(const StreamRequest &) = delete;

    // Cancels the request before it. `ended` is called once, on the main thread, never from inside start();
    // the reading may be asked from then on.
    void start(const Url &url, Purpose purpose, std::shared_ptr<StreamReading> reading, EndHandler ended);
    // `ended` is not called any more. A chunk may still be under way to the reading on the queue.
    void cancel();
    SerialQueue &selfQueue() { return m_selfQueue; }

private:
    class Transfer;
    SerialQueue m_selfQueue;
    std::weak_ptr<Transfer> m_transfer; // its connection holds it
};

} // namespace orvel
