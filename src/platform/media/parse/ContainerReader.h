#pragma once

#include "platform/media/codec/AudioTypes.h"
#include "platform/media/parse/PacketTable.h"

#include <QByteArray>
#include <QByteArrayView>
#include <limits>

namespace orvel {

// What a container's headers say of its sound.
struct ContainedSound
{
    AudioStreamBasicDescription format;
    QByteArray cookie;
    std::optional<AudioTrim> trim;
    double trimRate = 0; // the sample rate that its frames are counted at
    PacketTable packets;
    // The table holds all packets of the file. Otherwise it is replaced as further ones become known.
    bool isComplete = true;
    // Of a table that is not complete, what it held first: the packets from the file's first on.
    PacketTable firstPackets;
    // The file says how long it is.
    bool hasEnd = true;
    // Of a table that is not complete, the bound of all packets.
    quint32 maxPacketBytes = 0;
};

// What a container's reader wants next.
struct ContainerStep
{
    enum class Kind {
        Read,  // `size` bytes of headers at `offset`, not before the end of the last ones
        Sound, // the packets are known; headers go on at `offset`
        Fail,
    };
    Kind kind = Kind::Fail;
    qint64 offset = 0;
    qint64 size = 0;
    // Before `offset` lies sound whose packets the headers there make known.
    bool passesSound = false;

    static ContainerStep read(qint64 offset, qint64 size) { return {Kind::Read, offset, size}; }
    static ContainerStep readBehindSound(qint64 offset, qint64 size)
    {
        return {Kind::Read, offset, size, true};
    }
    static ContainerStep sound(qint64 headersGoOnAt = std::numeric_limits<qint64>::max())
    {
        return {Kind::Sound, headersGoOnAt};
    }
    static ContainerStep fail() { return {}; }
};

// Reads the headers of one kind of container, and makes its packets known.
class ContainerReader
{
public:
    // Headers of more bytes are a failure.
    static constexpr qint64 maxIndexBytes = 16 * 1024 * 1024;
    // A bigger offset in a file can not be true.
    static constexpr qint64 maxFileBytes = std::numeric_limits<qint64>::max() / 8;

    virtual ~ContainerReader() = default;
    virtual ContainerStep begin() = 0;
    // Takes the headers that the last step wanted, or nothing where headers go on behind sound.
    virtual ContainerStep next(QByteArrayView headers) = 0;
    // The bytes go on at this offset, amid the sound.
    virtual ContainerStep continueAt(qint64) { return ContainerStep::sound(); }

    // Complete when sound is the next step.
    const ContainedSound &sound() const { return m_sound; }

protected:
    // The sound is packets of the format's constant size, from `offset` on. `bytes` is nullopt for a file
    // without an end.
    ContainerStep constantPackets(qint64 offset, std::optional<quint64> bytes);

    ContainedSound m_sound;
};

} // namespace orvel
