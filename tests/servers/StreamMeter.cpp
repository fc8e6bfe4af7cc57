#include "servers/StreamMeter.h"

#include "platform/foundation/NotificationCentre.h"

namespace orvel::test {

class StreamMeter::Stream : public AudioFileStream, AudioFileStreamClient
{
public:
    Stream(StreamMeter &meter, AudioFileStreamClient &client, AudioFileType hint)
        : m_meter(meter), m_client(client), m_inner(openAudioFileStream(*this, hint))
    {
    }
    bool parseBytes(QByteArrayView bytes) override { return m_inner->parseBytes(bytes); }
    std::optional<AudioStreamBasicDescription> dataFormat() const override { return m_inner->dataFormat(); }
    std::vector<AudioStreamBasicDescription> formatList() const override { return m_inner->formatList(); }
    std::optional<quint32> packetSizeUpperBound() const override { return m_inner->packetSizeUpperBound(); }
    QByteArray magicCookie() const override { return m_inner->magicCookie(); }

private:
    void handlePropertyChange(AudioFileStream &, AudioFileStreamProperty property) override
    {
        m_client.handlePropertyChange(*this, property);
    }
    void handlePacket(AudioFileStream &, quint32 count, QByteArrayView data,
                      std::span<const AudioStreamPacketDescription> descriptions) override
    {
        if (m_meter.beforePackets)
            m_meter.beforePackets();
        m_meter.m_packets += count;
        m_meter.m_bytes += data.size();
        m_client.handlePacket(*this, count, data, descriptions);
    }

    StreamMeter &m_meter;
    AudioFileStreamClient &m_client;
    const std::unique_ptr<AudioFileStream> m_inner;
};

class StreamMeter::Network : public Reachability
{
public:
    explicit Network(const StreamMeter &meter) : m_meter(meter) {}
    void startNotifier() override {}
    void stopNotifier() override {}
    Status currentReachabilityStatus() const override { return m_meter.m_network; }

private:
    const StreamMeter &m_meter;
};

StreamerServices StreamMeter::services()
{
    return {.openAudioFileStream =
                [this](AudioFileStreamClient &client, AudioFileType hint) {
                    return std::make_unique<Stream>(*this, client, hint);
                },
            .reachability = [this] { return std::make_unique<Network>(*this); }};
}

void StreamMeter::setNetwork(Reachability::Status status)
{
    m_network = status;
    NotificationCentre::defaultCentre().postNotification(Reachability::changedNotification);
}

} // namespace orvel::test
