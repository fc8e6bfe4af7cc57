#pragma once

#include "audio/live/IcyStream.h"
#include "audio/live/Radio.h"
#include "audio/playlist/PlaylistDownload.h"
#include "platform/media/output/SoundOutput.h"
#include "platform/net/UrlConnection.h"

#include <optional>
#include <span>
#include <vector>

namespace orvel {

// The platform services that a player stands on; the real ones unless others are handed in.
struct StreamerServices
{
    AudioFileStreamOpener openAudioFileStream = orvel::openAudioFileStream;
    OutputQueueMaker newOutputQueue = orvel::newOutputQueue;
    ReachabilityFactory reachability = reachabilityForInternetConnection;
};

// Plays one web radio: resolves its playlist, reads the stream, strips the in-band metadata, and plays the
// packets. It survives a lost network by waiting for it. Main thread; see handlePlayCallback for the output
// queue's thread.
class Streamer final : public Radio,
                       public UrlConnectionDelegate,
                       public IcyStreamClient,
                       public AudioFileStreamClient
{
public:
    // Nothing unless the URL's scheme is exactly "http" or "https".
    static std::shared_ptr<Streamer> initWithURL(const Url &url, StreamerServices services = {});
    ~Streamer() override;

    void play() override;
    void pause() override;
    // Ends the player for good: every operation after it returns at once, and the delegate hears nothing any
    // more.
    void shutdown() override;

    // What is fetched: the stream, once a playlist has named it.
    const Url &requestedUrl() const { return m_url; }
    // How the last request fared, for who has to explain an error: the answer's status code (0 before it, and
    // of a bare ICY answer), and why the transfer failed, when it did.
    int httpStatusCode() const { return m_httpStatusCode; }
    const std::optional<NetError> &networkError() const { return m_networkError; }

    // Sent as "User-Agent" when not null.
    QString httpUserAgent;
    // Seconds without a byte after which a request has failed.
    unsigned httpTimeout = 30;

private:
    static constexpr double stallSeconds = 10;
    static constexpr double reconnectionSeconds = 60;
    enum class HttpState { FetchingPlaylist, FetchingStream };
    enum class FillOutcome { Filled, EnqueueFailed, Recovered, Underrun, StreamEnded };

    Streamer(const Url &url, StreamerServices services);
    std::shared_ptr<Streamer> self() { return std::static_pointer_cast<Streamer>(shared_from_this()); }

    // Streamer.cpp: connection, states, timers, reachability
    void observeNotifications();
    void requestPlaylist();
    void requestAudioStream();
    void startRequest(UrlRequest request);
    void cancelConnection();
    void playlistReceived();
    void readStreamHeaders(const HeaderFields &headers);
    void setState(RadioState state);
    void fail(RadioError error);
    void tell(void (RadioDelegate::*operation)(Radio &));
    void startBufferTimerWithTimeout(double seconds);
    void startReconnectTimerWithTimeout(double seconds);
    void stopBufferTimer();
    void stopReconnectTimer();
    void onBufferTimerFired();
    void onReconnectTimerFired();
    void onReachabilityChanged();
    void onBackground();
    void onForeground();
    void beginBackgroundTaskIfNone();
    void endBackgroundTaskIfAny();
    void startReachability();
    void dropReachability();
    bool isOnWiFiOrCellular() const;

    void didReceiveResponse(UrlConnection &connection, const UrlResponse &response) override;
    void didReceiveData(UrlConnection &connection, QByteArrayView data) override;
    void didFailWithError(UrlConnection &connection, const NetError &error) override;
    void connectionDidFinishLoading(UrlConnection &connection) override;

    // StreamerOutput.cpp: parser, buffers, output queue
    AudioFileType fileTypeHint() const;
    bool openParser();
    void parseAudioData(QByteArrayView data);
    bool icyHeadersEnded() override;
    void icyMetadataReady() override;
    void icyTitleChanged(const QString &title) override;
    bool icyAudioGathered(QByteArrayView audio) override;
    void handlePropertyChange(AudioFileStream &stream, AudioFileStreamProperty property) override;
    void readyToProducePackets(AudioFileStream &stream);
    RadioError makeOutputQueue(AudioFileStream &stream);
    void setBufferSizeFor(const AudioStreamBasicDescription &format,
                          std::optional<quint32> packetSizeUpperBound);
    void handlePacket(AudioFileStream &stream, quint32 numberOfPackets, QByteArrayView inputData,
                      std::span<const AudioStreamPacketDescription> descriptions) override;
    void handlePlayCallback(OutputBuffer &buffer, quint64 outputQueueNumber);
    FillOutcome fill(QueueBuffer &slot);
    void afterFilling(FillOutcome outcome);
    void primeQueueBuffers();
    void startQueue();
    bool disposeOutputQueue();
    void dismissQueue();
    std::size_t transferBound() const;
    void resumeTransfer();

    StreamerServices m_services;
    std::shared_ptr<UrlConnection> m_urlConnection;
    IcyStream m_icyStream{*this, m_station};
    int m_httpStatusCode = 0;
    std::optional<NetError> m_networkError;
    std::unique_ptr<PlaylistDownload> m_playlist; // none: the URL is the stream's
    HttpState m_httpState = HttpState::FetchingStream;
    std::atomic<bool> m_connectionFinished = false;
    std::atomic<bool> m_transferSuspended = false;
    bool m_isParsing = false;
    bool m_closeParser = false;                          // asked for while it parses
    std::optional<AudioStreamBasicDescription> m_hqASBD; // the high-quality format this parser has told
    std::vector<AudioStreamPacketDescription> m_packetDescriptions; // lock queue: of the buffer being filled
};

} // namespace orvel
