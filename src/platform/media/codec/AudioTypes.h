#pragma once

#include <QtGlobal>
#include <bit>
#include <optional>
#include <vector>

namespace orvel {

// File types and formats are named by four-character codes.
constexpr quint32 fourCharacterCode(const char (&code)[5])
{
    return quint32(quint8(code[0])) << 24 | quint32(quint8(code[1])) << 16 | quint32(quint8(code[2])) << 8 |
           quint32(quint8(code[3]));
}

enum class AudioFileType : quint32 {
    none = 0,
    kAudioFileMP3Type = fourCharacterCode("MPG3"),
    kAudioFileAAC_ADTSType = fourCharacterCode("adts"),
    kAudioFileAC3Type = fourCharacterCode("ac-3"),
    kAudioFileWAVEType = fourCharacterCode("WAVE"),
    kAudioFileAIFCType = fourCharacterCode("AIFC"),
    kAudioFileAIFFType = fourCharacterCode("AIFF"),
    kAudioFileM4AType = fourCharacterCode("m4af"),
    kAudioFileMPEG4Type = fourCharacterCode("mp4f"),
    kAudioFileCAFType = fourCharacterCode("caff"),
    kAudioFile3GPType = fourCharacterCode("3gpp"),
    kAudioFile3GP2Type = fourCharacterCode("3gp2"),
};

enum class AudioFormat : quint32 {
    none = 0,
    mpegLayer3 = fourCharacterCode(".mp3"),
    mpeg4Aac = fourCharacterCode("aac "),
    mpeg4AacHe = fourCharacterCode("aach"),
    mpeg4AacHeV2 = fourCharacterCode("aacp"),
    appleLossless = fourCharacterCode("alac"),
    aLaw = fourCharacterCode("alaw"),
    muLaw = fourCharacterCode("ulaw"),
    linearPcm = fourCharacterCode("lpcm"),
};

// How linear PCM samples are written.
enum class SampleType : quint8 { SignedInteger, UnsignedInteger, FloatingPoint };

// A stream's format. Zero means "varies" for the byte and frame counts of a packet.
struct AudioStreamBasicDescription
{
    double sampleRate = 0; // frames a second
    AudioFormat format = AudioFormat::none;
    quint32 bytesPerPacket = 0;
    quint32 framesPerPacket = 0;
    quint32 channelsPerFrame = 0;
    // Linear PCM only, whose samples fill whole bytes.
    quint32 bitsPerChannel = 0;
    SampleType sampleType = SampleType::SignedInteger;
    std::endian byteOrder = std::endian::native;

    bool operator==(const AudioStreamBasicDescription &) const = default;
};

// What an encoder added around the sound, in frames as the decoder makes them (for HE-AAC at the doubled
// rate). Only the frames between are to be heard.
struct AudioTrim
{
    quint32 primingFrames = 0;         // in front
    std::optional<qint64> validFrames; // behind the priming frames; nullopt: all that follow

    bool operator==(const AudioTrim &) const = default;
};

// Where one packet lies in a run of bytes.
struct AudioStreamPacketDescription
{
    qint64 startOffset = 0;
    quint32 variableFramesInPacket = 0; // 0: the number that the stream's format says
    quint32 dataByteSize = 0;
};

} // namespace orvel
