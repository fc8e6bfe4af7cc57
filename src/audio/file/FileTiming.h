#pragma once

#include "audio/file/BitRateEstimate.h"
#include "platform/media/parse/AudioFileStream.h"
#include "platform/net/HeaderFields.h"

namespace orvel {

// Where a file's sound lies in its bytes and in time, as far as the server, the parser and the packets so far
// say it. The lock of the streamer's states guards it, and every caller holds it. The reading thread alone
// changes the format, and reads it without the lock.
class FileTiming
{
public:
    // Takes the server's answer, which has the file's length unless it is the answer for a part.
    void takeHeaders(const HeaderFields &headers);
    const HeaderFields &httpHeaders() const { return m_httpHeaders; }
    // The next download is the whole file again.
    void forgetDownload();

    // Takes the plain format, unless there is one.
    void takeFormat(const AudioStreamBasicDescription &format);
    // Takes the high-efficiency format of a list, if it has one.
    void takeFormatOf(const std::vector<AudioStreamBasicDescription> &formats);
    const AudioStreamBasicDescription &format() const { return m_asbd; }
    void setDataOffset(qint64 offset);
    void setAudioDataByteCount(quint64 count);
    qint64 fileLength() const { return m_fileLength; } // in bytes; 0 when it is not known

    // Counts packets for the bit rate. `descriptions` is empty for packets of constant size.
    void addPackets(quint32 numberOfPackets, std::span<const AudioStreamPacketDescription> descriptions);
    quint32 bitRate() const { return m_bitRate; }
    void setBitRate(quint32 bitRate) { m_bitRate = bitRate; }
    double calculatedBitRate() const;
    double duration() const;
    // Whether a position can be told and found.
    bool isSeekable() const { return calculatedBitRate() > 0 && m_fileLength > 0; }
    // Returns the seconds of the sound at this many frames after the current download's first.
    double secondsAt(double frames) const;

    // A jump that has been asked for: seconds; nullopt when there is none.
    std::optional<double> requestedSeek{};
    // Finds where to go on for this time, and the time there. Returns the packet that begins there; nullopt
    // when the place is an estimate. `packetBufferSize` is in bytes.
    std::optional<qint64> prepareSeek(double target, const AudioFileStream &stream, quint32 packetBufferSize);
    // The file's offset where the current download began.
    qint64 seekByteOffset() const { return m_seekByteOffset; }

private:
    void updateFileLength();
    double packetDuration() const; // in seconds; 0 when it is not known

    HeaderFields m_httpHeaders;
    AudioStreamBasicDescription m_asbd;
    qint64 m_fileLength = 0;
    qint64 m_dataOffset = 0;
    std::optional<quint64> m_audioDataByteCount;
    qint64 m_seekByteOffset = 0;
    double m_seekTime = 0; // of the current download's first sound
    quint32 m_bitRate = 0;
    BitRateEstimate m_estimate;
};

} // namespace orvel
