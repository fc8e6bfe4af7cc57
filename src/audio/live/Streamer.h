#pragma once

#include "audio/live/NetworkWait.h"
#include "audio/live/Radio.h"
#include "audio/live/StreamConnection.h"
#include "audio/live/StreamOutput.h"
#include "platform/media/output/AudioSession.h"
#include "platform/media/output/SoundOutput.h"
#include "platform/media/parse/FramedAudioFileStream.h"

namespace orvel {

// The platform services that a player stands on; the real ones unless others are handed in.
struct StreamerServices
{
    AudioFileStreamOpener openAudioFileStream = openFramedAudioFileStream;
    OutputQueueMaker newOutputQueue = orvel::newOutputQueue;
    ReachabilityFactory reachability = reachabilityForInternetConnection;
};

// Plays one web radio: what its connection brings goes to its output, and a lost network is waited for. Main
// thread. Dropping it ends it.
class Streamer final : public Radio,
                       public StreamConnectionClient,
                       public IcyStreamClient,
                       public StreamOutputClient
{
public:
    // Returns nullptr unless the URL's scheme is exactly "http" or "https".
    static std::shared_ptr<Streamer> initWithURL(const Url &url, StreamerServices services = {});
    ~Streamer() override;

    void play() override;
    void pause() override;
    // Ends the player for good: later operations have no effect, and the delegate is not called any more.
    void shutdown() override;

    bool isBuffering() const override { return m_output->isBuffering(); }
    void setBufferInSeconds(unsigned seconds) override;
    void setVolume(float volume) override;

    // What is fetched: the stream, once a playlist has named it.
    const Url &requestedUrl() const { return m_url; }
    // How the last request fared, for who has to explain an error.
    int httpStatusCode() const { return m_connection->httpStatusCode(); }
    const std::optional<NetError> &networkError() const { return m_connection->networkError(); }

    // Sent as "User-Agent" when not null.
    QString httpUserAgent;
    // Seconds without a byte after which a request has failed.
    unsigned httpTimeout = 30;

private:
    enum class StopReason { ByListener, StreamEnded, ConnectionLost, NoReconnection };

    Streamer(const Url &url, StreamerServices services);
    std::shared_ptr<Streamer> self() { return std::static_pointer_cast<Streamer>(shared_from_this()); }
    void observeNotifications();
    void stop(StopReason reason);
    void fail(RadioError error);
    void endTransferAndSound();
    void setState(RadioState state);
    void tell(void (RadioDelegate::*operation)(Radio &));

    void onReachabilityChanged();
    void onInterruption(InterruptionState state);
    void onBackground();
    void onForeground() { m_background.end(); }

    void streamAnswered() override;
    void requestFailed(RadioError error) override { fail(error); }
    void connectionLost() override;
    void connectionFinished() override;

    bool openParser();
    // Deliberate: a parser that can't be opened for a bare answer is not an error, its sound is dropped
    // (StreamerTest.ReadsABareAnswerAndOpensASecondParserForIt).
    bool icyHeadersEnded() override { return openParser(); }
    void icyMetadataReady() override;
    void icyTitleChanged(const QString &title) override;
    bool icyAudioGathered(QByteArrayView audio) override { return m_output->parse(audio); }

    void nameSound();

    void outputPrepared(quint32 bufferSize) override;
    void packetsWaiting(std::size_t bytes, std::size_t startThreshold) override;
    void outputStarted() override;
    void outputRanDry() override;
    void outputHasEnded() override { stop(StopReason::StreamEnded); }
    void outputFailed(RadioError error) override { fail(error); }

    BackgroundStay m_background; // while connecting, buffering or waiting out of sight
    NetworkWait m_network;
    const std::shared_ptr<StreamConnection> m_connection;
    const std::shared_ptr<StreamOutput> m_output;
    bool m_pausedByInterruption = false; // and not touched since
    bool m_shutdown = false;
};

} // namespace orvel
