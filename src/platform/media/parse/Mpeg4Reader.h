#pragma once

#include "platform/media/parse/Mpeg4Movie.h"

namespace orvel {

// MPEG-4 files with AAC or ALAC, also beside pictures. The index lies in front of the sound, behind it, or in
// fragments between.
class Mpeg4Reader final : public ContainerReader
{
public:
    ContainerStep begin() override { return ContainerStep::read(0, headerBytes); }
    ContainerStep next(QByteArrayView headers) override;
    ContainerStep continueAt(qint64 offset) override;

private:
    enum class Part { Header, LongSize, Movie, Fragment, Sound, Search };

    static constexpr qint64 headerBytes = 8;

    struct Box
    {
        quint32 type = 0;
        qint64 offset = 0;
        qint64 bodyOffset = 0;
        std::optional<qint64> end; // nullopt: the end of the file
    };

    ContainerStep enterBox(quint64 size);
    ContainerStep enterSound();
    static bool isWithin(const Box &box, qint64 offset);
    ContainerStep readBody(Part part);
    ContainerStep boxBehind();
    ContainerStep takeMovie(QByteArrayView body);
    ContainerStep takeFragment(QByteArrayView body);
    ContainerStep search(char byte);

    Part m_part = Part::Header;
    Box m_box;
    std::optional<Mpeg4Movie> m_movie; // its sound is m_sound
    bool m_hasPassedSound = false;     // before the index
    std::optional<Box> m_firstSound;   // that of the first fragment
    // While it looks for the next fragment.
    QByteArray m_seen;
    qint64 m_searchOffset = 0;
};

} // namespace orvel
