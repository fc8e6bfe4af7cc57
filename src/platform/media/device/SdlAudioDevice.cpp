#include "platform/media/device/SdlAudioDevice.h"

#include "platform/foundation/Log.h"

#define SDL_MAIN_HANDLED
#include <SDL.h>

#include <chrono>
#include <cstring>
#include <dlfcn.h>

namespace orvel {

namespace {

struct SdlSound
{
    std::mutex mutex; // held while SDL starts, ends, or opens a device
    std::condition_variable deviceClosed;
    int openDevices = 0;
};

SdlSound &sdlSound()
{
    static SdlSound sound;
    return sound;
}

void ignoreAlsaError(const char *, int, const char *, int, const char *, ...) {}

// A machine without a sound card is no reason for lines on stderr. SDL loads ALSA where it is used at all.
void silenceAlsa()
{
    using Handler = void (*)(const char *, int, const char *, int, const char *, ...);
    using SetHandler = int (*)(Handler);
    if (const auto setHandler =
            reinterpret_cast<SetHandler>(dlsym(RTLD_DEFAULT, "snd_lib_error_set_handler")))
        setHandler(ignoreAlsaError);
}

bool startSdl()
{
    if (SDL_WasInit(SDL_INIT_AUDIO))
        return true;
    silenceAlsa();
    SDL_LogSetOutputFunction(
        [](void *, int, SDL_LogPriority, const char *text) { qCInfo(logMedia, "%s", text); }, nullptr);
    SDL_SetMainReady();
    SDL_SetHint(SDL_HINT_NO_SIGNAL_HANDLERS, "1"); // Ctrl-C stays the program's own
    if (SDL_InitSubSystem(SDL_INIT_AUDIO) == 0)
        return true;
    qCInfo(logMedia, "No sound: %s", SDL_GetError());
    return false;
}

} // namespace

AudioBackEnd::Opening SdlAudioDevice::open(const AudioDeviceRequest &request)
{
    static constexpr std::chrono::seconds patience(2);
    SdlSound &sound = sdlSound();
    std::unique_lock lock(sound.mutex);
    if (!startSdl())
        return {};
    std::unique_ptr<SdlAudioDevice> device(new SdlAudioDevice(request));
    // A queue that has just ended may still be closing a device that only one can have.
    const auto deadline = std::chrono::steady_clock::now() + patience;
    bool opened = device->openDevice();
    while (!opened && sound.openDevices > 0 &&
           sound.deviceClosed.wait_until(lock, deadline) == std::cv_status::no_timeout)
        opened = device->openDevice();
    const bool isBusy = !opened && sound.openDevices > 0;
    if (opened)
        ++sound.openDevices;
    return {opened ? std::move(device) : nullptr, isBusy};
}

SdlAudioDevice::SdlAudioDevice(const AudioDeviceRequest &request)
    : AudioDevice(request), m_volume(*request.volume), m_wantsData(request.wantsData), m_ramp(*request.volume)
{
}

bool SdlAudioDevice::openDevice()
{
    SDL_AudioSpec wanted{};
    wanted.freq = sampleRate();
    wanted.format = AUDIO_F32SYS;
    wanted.channels = Uint8(channels());
    wanted.samples = 1024; // a period of silence may go first
    wanted.userdata = this;
    wanted.callback = [](void *device, Uint8 *bytes, int size) {
        auto *self = static_cast<SdlAudioDevice *>(device);
        self->render(reinterpret_cast<float *>(bytes), size / int(sizeof(float)) / self->channels());
    };
    SDL_AudioSpec obtained{};
    m_id = SDL_OpenAudioDevice(nullptr, 0, &wanted, &obtained, SDL_AUDIO_ALLOW_FREQUENCY_CHANGE);
    if (m_id == 0) {
        qCInfo(logMedia, "No sound device: %s", SDL_GetError());
        return false;
    }
    setSampleRate(obtained.freq);
    m_ring = std::make_unique<PcmRing>(capacity(), channels());
    m_waitsForData = std::strcmp(SDL_GetCurrentAudioDriver(), "disk") == 0;
    SDL_PauseAudioDevice(m_id, 0);
    return true;
}

SdlAudioDevice::~SdlAudioDevice()
{
    {
        const std::lock_guard lock(m_waitMutex);
        m_isClosing = true;
    }
    m_dataOrEnd.notify_all();
    if (m_id == 0)
        return;
    SDL_CloseAudioDevice(m_id);
    const std::lock_guard lock(sdlSound().mutex);
    --sdlSound().openDevices;
    sdlSound().deviceClosed.notify_all();
}

void SdlAudioDevice::setPlaying(bool playing)
{
    if (m_isPlaying.exchange(playing) != playing)
        wakeReader();
}

qint64 SdlAudioDevice::write(const float *samples, qint64 frames)
{
    const qint64 taken = m_ring->write(samples, frames);
    wakeReader();
    return taken;
}

void SdlAudioDevice::wakeReader()
{
    if (!m_waitsForData && m_hasBegun)
        return;
    {
        const std::lock_guard lock(m_waitMutex);
    }
    m_dataOrEnd.notify_all();
}

void SdlAudioDevice::render(float *samples, qint64 frames)
{
    qint64 got = 0;
    if (!m_waitsForData && !m_hasBegun)
        awaitBeginning();
    if (m_waitsForData)
        got = readWaiting(samples, frames);
    else if (m_isPlaying)
        got = m_ring->read(samples, frames);

    const qint64 heard = got * channels();
    m_ramp.apply({samples, std::size_t(heard)}, m_volume);
    std::fill(samples + heard, samples + frames * channels(), 0.f);
}

void SdlAudioDevice::awaitBeginning()
{
    static constexpr std::chrono::milliseconds patience(100);
    std::unique_lock lock(m_waitMutex);
    m_dataOrEnd.wait_for(lock, patience,
                         [this] { return m_isClosing || (m_isPlaying && m_ring->written() > 0); });
    m_hasBegun = true;
}

qint64 SdlAudioDevice::readWaiting(float *samples, qint64 frames)
{
    qint64 got = 0;
    std::unique_lock lock(m_waitMutex);
    while (!m_isClosing) {
        if (m_isPlaying)
            got += m_ring->read(samples + got * channels(), frames - got);
        if (got == frames)
            break;
        lock.unlock();
        m_wantsData();
        lock.lock();
        m_dataOrEnd.wait(lock, [this] { return m_isClosing || (m_isPlaying && m_ring->available() > 0); });
    }
    return got;
}

void SdlAudioDevice::leaveThread() { SDL_TLSCleanup(); }

void SdlAudioDevice::quit()
{
    const std::lock_guard lock(sdlSound().mutex);
    if (SDL_WasInit(SDL_INIT_AUDIO) && sdlSound().openDevices == 0)
        SDL_QuitSubSystem(SDL_INIT_AUDIO);
}

} // namespace orvel
