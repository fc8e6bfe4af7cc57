#pragma once

#include "audio/live/RadioState.h"
#include "audio/live/StationInfo.h"
#include "platform/foundation/Url.h"

#include <memory>

namespace orvel {

class Radio;

// Called on the main queue, after the fact; the receiver reads what it needs from the radio.
class RadioDelegate
{
public:
    virtual ~RadioDelegate() = default;
    virtual void radioStateChanged(Radio & /*radio*/) {}
    // The station's name, genre or site is known.
    virtual void radioMetadataReady(Radio & /*radio*/) {}
    virtual void radioTitleChanged(Radio & /*radio*/) {}
};

// What every player of one web radio has. Main thread, fields and operations.
class Radio : public std::enable_shared_from_this<Radio>
{
public:
    virtual ~Radio() = default;

    virtual void play() {}
    virtual void pause() {}
    virtual void shutdown() {}

    bool isPlaying() const { return m_isPlaying; }
    bool isPaused() const { return m_isPaused; }
    virtual bool isBuffering() const { return false; }

    // How much sound is gathered before it starts: at least 1 second, at most 30.
    virtual void setBufferInSeconds(unsigned seconds);
    // In half seconds; 6 unless set.
    quint64 bufferCount() const { return m_bufferCount; }
    // Clamped to 0.0 to 1.0; 0.5 unless set.
    virtual void setVolume(float volume);
    float volume() const { return m_volume; }

    RadioState radioState() const { return m_radioState; }
    // Stores without telling the delegate.
    void setRadioState(RadioState state) { m_radioState = state; }
    // Meaningful in RadioStateError.
    RadioError radioError() const { return m_radioError; }
    // Null until the stream has told them.
    const QString &radioTitle() const { return m_radioTitle; }
    const QString &radioName() const { return m_station.name; }
    const QString &radioGenre() const { return m_station.genre; }
    const QString &radioUrl() const { return m_station.url; }

    std::shared_ptr<RadioDelegate> delegate() const { return m_delegate.lock(); }
    void setDelegate(std::weak_ptr<RadioDelegate> delegate) { m_delegate = std::move(delegate); }

protected:
    explicit Radio(const Url &url) : m_url(url) {}

    Url m_url; // becomes the stream's once a playlist has named it
    QString m_radioTitle;
    StationInfo m_station;
    RadioState m_radioState = RadioStateStopped;
    RadioError m_radioError = RadioErrorNone;
    bool m_isPlaying = false;
    bool m_isPaused = false;
    std::weak_ptr<RadioDelegate> m_delegate;

private:
    quint64 m_bufferCount = 6;
    float m_volume = 0.5F;
};

} // namespace orvel
