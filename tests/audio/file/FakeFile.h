#pragma once

#include "audio/file/AudioStreamer.h"
#include "platform/foundation/MainQueue.h"
#include "platform/foundation/NotificationCentre.h"
#include "platform/foundation/SerialQueue.h"
#include "support/ScriptedServer.h"
#include "support/TestLoop.h"

#include <algorithm>
#include <atomic>
#include <deque>
#include <gtest/gtest.h>
#include <limits>

namespace orvel::test {

// Plays nothing. Its callbacks come on another thread, as the real ones do: of themselves while it is
// `automatic`, which keeps the last buffer, else when a test asks for them.
class FakeFileQueue : public OutputQueue
{
public:
    explicit FakeFileQueue(BufferCallback bufferCallback) : m_callback(std::move(bufferCallback)) {}
    ~FakeFileQueue() override
    {
        m_callbacks.sync([] {});
    }

    OutputBuffer *allocateBuffer(quint32 bytes) override
    {
        const std::lock_guard lock(m_mutex);
        return allocates ? &m_buffers.emplace_back(bytes) : nullptr;
    }
    bool enqueueBuffer(OutputBuffer &buffer, std::span<const AudioStreamPacketDescription> packets) override
    {
        const std::lock_guard lock(m_mutex);
        m_enqueued.push_back(&buffer);
        m_sizes.push_back(buffer.byteSize);
        m_packets += packets.size();
        m_played += buffer.data.first(buffer.byteSize);
        if (automatic && m_isStarted)
            playLater(1);
        return enqueues;
    }
    bool start() override
    {
        note("start");
        const std::lock_guard lock(m_mutex);
        m_isStarted = true;
        if (automatic) {
            tellLater(true);
            playLater(1);
        }
        return starts;
    }
    void pause() override
    {
        note("pause");
        const std::lock_guard lock(m_mutex);
        m_isStarted = false;
    }
    void stop(bool immediate) override
    {
        note(immediate ? "stop" : "play out");
        const std::lock_guard lock(m_mutex);
        if (!tellsStops)
            return;
        playLater(0);
        tellLater(false);
    }
    void flush() override { note("flush"); }
    void dispose() override
    {
        note("dispose");
        m_isDisposed = true;
    }
    void setVolume(float) override {}
    void setMagicCookie(const QByteArray &) override {}
    void setTrim(const std::optional<AudioTrim> &trim) override
    {
        if (trim)
            note("trim " + QByteArray::number(trim->primingFrames) + ' ' +
                 QByteArray::number(trim->validFrames.value_or(-1)));
    }
    void setMediaName(const QString &) override {}
    void addIsRunningListener(IsRunningListener listener) override { m_listener = std::move(listener); }
    std::optional<double> currentTime() const override
    {
        return isStopped ? std::nullopt : std::optional<double>(time);
    }

    void tellRunning(bool isRunning)
    {
        const std::lock_guard lock(m_mutex);
        tellLater(isRunning);
    }
    void playAll()
    {
        const std::lock_guard lock(m_mutex);
        playLater(0);
    }
    void returnForeignBuffer()
    {
        m_callbacks.async([this] { m_callback(*this, m_foreign); });
    }

    QByteArray played() const { return locked(m_played); }
    std::vector<quint32> sizes() const { return locked(m_sizes); }
    std::size_t packets() const { return locked(m_packets); }
    QList<QByteArray> calls() const { return locked(m_calls); }

    bool allocates = true;
    bool enqueues = true;
    bool starts = true;
    std::atomic<bool> automatic = true;
    std::atomic<bool> tellsStops = true;
    std::atomic<bool> isStopped = false;
    std::atomic<double> time = 0; // frames

private:
    void note(const QByteArray &call)
    {
        const std::lock_guard lock(m_mutex);
        m_calls << call;
    }
    template<typename Value>
    Value locked(const Value &value) const
    {
        const std::lock_guard lock(m_mutex);
        return value;
    }
    void tellLater(bool isRunning)
    {
        m_callbacks.async([this, isRunning] {
            if (!m_isDisposed)
                m_listener(*this, isRunning);
        });
    }
    void playLater(std::size_t rest)
    {
        for (; m_enqueued.size() > rest; m_enqueued.pop_front())
            m_callbacks.async([this, buffer = m_enqueued.front()] {
                if (!m_isDisposed)
                    m_callback(*this, *buffer);
            });
    }

    const BufferCallback m_callback;
    IsRunningListener m_listener;
    std::atomic<bool> m_isDisposed = false;
    mutable std::mutex m_mutex;
    bool m_isStarted = false;
    OutputBuffer m_foreign{1};
    std::deque<OutputBuffer> m_buffers;
    std::deque<OutputBuffer *> m_enqueued;
    std::vector<quint32> m_sizes;
    std::size_t m_packets = 0;
    QByteArray m_played;
    QList<QByteArray> m_calls;
    SerialQueue m_callbacks{QStringLiteral("FakeFileQueue")};
};

// What a test's file is said to be. Its packets are pieces of `packetSize` bytes.
struct FakeFormat
{
    AudioStreamBasicDescription format{
        .sampleRate = 1000, .format = AudioFormat::mpegLayer3, .framesPerPacket = 100, .channelsPerFrame = 1};
    std::vector<AudioStreamBasicDescription> formatList{};
    qsizetype packetSize = 100;
    bool isDescribed = true;
    bool hasFormat = true;
    std::optional<qint64> dataOffset{};
    std::optional<quint64> byteCount{};
    std::optional<quint32> upperBound{};
    std::optional<quint32> maximum{};
    QByteArray cookie{};
    std::optional<AudioTrim> trim{};
    std::optional<AudioFileStreamSeek> seek{};
    std::optional<qint64> wantedAtFirst{};
    bool opens = true;
    bool parses = true;
    bool findsPackets = true;
};

class FakeFileParser : public AudioFileStream
{
public:
    FakeFileParser(const FakeFormat &format, AudioFileStreamClient &client, std::vector<qsizetype> &pieces,
                   std::vector<qint64> &jumps)
        : m_format(format), m_client(client), m_pieces(pieces), m_jumps(jumps)
    {
    }

    bool parseBytes(QByteArrayView bytes) override
    {
        using enum AudioFileStreamProperty;
        m_pieces.push_back(bytes.size());
        m_wanted = m_pieces.size() == 1 ? m_format.wantedAtFirst : std::nullopt;
        if (!m_format.parses || !m_format.findsPackets)
            return m_format.parses;
        if (m_pieces.size() == 1) {
            m_client.handlePropertyChange(*this, DataFormat);
            if (!m_format.formatList.empty())
                m_client.handlePropertyChange(*this, FormatList);
            if (m_format.dataOffset)
                m_client.handlePropertyChange(*this, DataOffset);
            if (m_format.byteCount)
                m_client.handlePropertyChange(*this, AudioDataByteCount);
            m_client.handlePropertyChange(*this, ReadyToProducePackets);
        }
        m_rest += bytes.toByteArray();
        std::vector<AudioStreamPacketDescription> packets;
        qint64 end = 0;
        for (; end + m_format.packetSize <= m_rest.size(); end += m_format.packetSize)
            packets.push_back({end, 0, quint32(m_format.packetSize)});
        const QByteArray whole = m_rest.first(end);
        m_rest.remove(0, end);
        const auto count = quint32(packets.size());
        if (!m_format.isDescribed)
            packets.clear();
        if (count > 0)
            m_client.handlePacket(*this, count, whole, packets);
        return true;
    }
    void finish() override {}
    std::optional<AudioFileStreamSeek> seek(qint64) const override { return m_format.seek; }
    void continueAt(qint64 offset) override
    {
        m_rest.clear();
        m_wanted.reset();
        m_jumps.push_back(offset);
    }
    std::optional<qint64> wantedOffset() const override { return m_wanted; }
    std::optional<AudioStreamBasicDescription> dataFormat() const override
    {
        return m_format.hasFormat ? std::optional(m_format.format) : std::nullopt;
    }
    std::vector<AudioStreamBasicDescription> formatList() const override { return m_format.formatList; }
    std::optional<qint64> dataOffset() const override { return m_format.dataOffset; }
    std::optional<quint64> audioDataByteCount() const override { return m_format.byteCount; }
    std::optional<quint32> packetSizeUpperBound() const override { return m_format.upperBound; }
    std::optional<quint32> maximumPacketSize() const override { return m_format.maximum; }
    QByteArray magicCookie() const override { return m_format.cookie; }
    std::optional<AudioTrim> trim() const override { return m_format.trim; }

private:
    const FakeFormat m_format;
    AudioFileStreamClient &m_client;
    std::vector<qsizetype> &m_pieces;
    std::vector<qint64> &m_jumps;
    QByteArray m_rest;
    std::optional<qint64> m_wanted;
};

// A streamer on a fake parser and a fake output queue, with a real connection to a scripted server.
struct StreamerUnderTest
{
    explicit StreamerUnderTest(const QString &url, FakeFormat fakeFormat = {}) : format(std::move(fakeFormat))
    {
        AudioStreamerServices services{
            .openAudioFileStream = [this](AudioFileStreamClient &client,
                                          AudioFileType hint) -> std::unique_ptr<AudioFileStream> {
                hints.push_back(hint);
                if (!format.opens)
                    return nullptr;
                return std::make_unique<FakeFileParser>(format, client, pieces, jumps);
            },
            .newOutputQueue = [this](const AudioStreamBasicDescription &queueFormat,
                                     OutputQueue::BufferCallback callback,
                                     const OutputQueueOptions &options) -> std::shared_ptr<OutputQueue> {
                formats.push_back(queueFormat);
                cookie = options.magicCookie;
                if (!makesQueues)
                    return nullptr;
                auto made = std::make_shared<FakeFileQueue>(std::move(callback));
                prepareQueue(*made);
                const std::lock_guard lock(mutex);
                queues.push_back(made);
                return made;
            },
            .showAlert = [this](const QString &title, const QString &message,
                                const QString &button) { alerts << title + '|' + message + '|' + button; }};
        streamer = AudioStreamer::initWithURL(*Url::fromText(url), std::move(services));
        NotificationCentre::defaultCentre().addObserver(
            this, ASStatusChangedNotification, [this](const Notification &notification) {
                EXPECT_TRUE(MainQueue::isMainThread());
                changes += notification.object.value<AudioStreamer *>() == streamer.get();
            });
    }
    ~StreamerUnderTest()
    {
        streamer->stop();
        const std::weak_ptr<AudioStreamer> weak = streamer;
        letEventsRun();
        NotificationCentre::defaultCentre().removeObserver(this);
        streamer.reset();
        EXPECT_TRUE(waitUntil([&] { return weak.expired(); }));
    }

    AudioStreamer *operator->() const { return streamer.get(); }
    bool reaches(AudioStreamerState state)
    {
        return waitUntil([&] { return streamer->state() == state; });
    }
    // Whether it does so soon.
    bool reachesWithin(AudioStreamerState state, double seconds)
    {
        return waitUntil([&] { return streamer->state() == state; }, seconds);
    }
    // Plays, with the queue's callbacks left to the test from then on.
    bool plays()
    {
        prepareQueue = [](FakeFileQueue &fake) { fake.automatic = false; };
        streamer->start();
        return begins();
    }
    // Also after a seek.
    bool begins()
    {
        if (!reaches(AudioStreamerStateWaitingForQueueStart))
            return false;
        queue().tellRunning(true);
        return reaches(AudioStreamerStatePlaying);
    }
    // Of notifications.
    bool changesReach(int count)
    {
        return waitUntil([&] { return changes >= count; }) && changes == count;
    }
    // Has all played that comes, until there is no more.
    bool runsDry()
    {
        return waitUntil([&] {
            queue().playAll();
            return streamer->state() == AudioStreamerStateBuffering;
        });
    }
    FakeFileQueue &queue()
    {
        const std::lock_guard lock(mutex);
        return *queues.back();
    }
    bool hasQueue()
    {
        const std::lock_guard lock(mutex);
        return !queues.empty();
    }

    FakeFormat format;
    bool makesQueues = true;
    std::function<void(FakeFileQueue &)> prepareQueue = [](FakeFileQueue &) {};
    std::mutex mutex; // guards the list
    std::vector<std::shared_ptr<FakeFileQueue>> queues;
    // To be looked at when the streamer is idle again.
    std::vector<AudioFileType> hints;
    std::vector<AudioStreamBasicDescription> formats;
    QByteArray cookie;
    std::vector<qsizetype> pieces;
    std::vector<qint64> jumps;

    QStringList alerts;
    int changes = 0;
    std::shared_ptr<AudioStreamer> streamer;
};

// Bytes that tell their places apart.
inline QByteArray numbered(qsizetype size)
{
    QByteArray bytes(size, '\0');
    for (qsizetype i = 0; i < size; ++i)
        bytes[i] = char(i * 7 + i / 251);
    return bytes;
}

} // namespace orvel::test
