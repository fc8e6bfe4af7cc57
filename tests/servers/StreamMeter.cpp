#include "servers/StreamMeter.h"

#include "platform/foundation/NotificationCentre.h"
#include "platform/net/SystemReachability.h"

namespace orvel::test {

// What a parser takes for its player.
struct StreamMeter::Tap : AudioFileStreamClient
{
    StreamMeter &meter;
    AudioFileStreamClient &player;

    Tap(StreamMeter &it, AudioFileStreamClient &client) : meter(it), player(client) {}
    void handlePropertyChange(AudioFileStream &stream, AudioFileStreamProperty property) override
    {
        player.handlePropertyChange(stream, property);
    }
    void handlePacket(AudioFileStream &stream, quint32 count, QByteArrayView data,
                      std::span<const AudioStreamPacketDescription> descriptions) override
    {
        meter.beforePackets();
        meter.m_packets += count;
        meter.m_bytes += data.size();
        player.handlePacket(stream, count, data, descriptions);
    }
};

StreamerServices StreamMeter::services()
{
    return {.openAudioFileStream =
                [this](AudioFileStreamClient &client, AudioFileType hint) {
                    m_taps.push_back(std::make_shared<Tap>(*this, client));
                    return openAudioFileStream(*m_taps.back(), hint);
                },
            .reachability =
                [this] { return std::make_unique<SystemReachability>([this] { return m_network; }); }};
}

void StreamMeter::setNetwork(Reachability::Status status)
{
    m_network = status;
    NotificationCentre::defaultCentre().postNotification(Reachability::changedNotification);
}

} // namespace orvel::test
