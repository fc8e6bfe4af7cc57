#pragma once

#include "audio/live/Streamer.h"

#include <QStringList>

namespace orvel::test {

// The whole player on the null sound device, with a network that the test can take away.
class PlayerUnderTest : public RadioDelegate
{
public:
    explicit PlayerUnderTest(const QString &url);
    ~PlayerUnderTest() override;

    Streamer &operator*() const { return *m_streamer; }
    Streamer *operator->() const { return m_streamer.get(); }

    void setNetwork(Reachability::Status status);
    bool hasSounded() const { return m_hasSounded; }
    const QStringList &titles() const { return m_titles; }
    // Shuts it down, drops it, and closes what connections it has left for later ones. False when something
    // keeps it.
    bool letGo();

private:
    void radioStateChanged(Radio &radio) override { m_hasSounded |= radio.radioState() == RadioStatePlaying; }
    void radioTitleChanged(Radio &radio) override
    {
        m_titles << radio.radioTitle();
        m_titles.removeDuplicates();
    }

    Reachability::Status m_network = Reachability::Status::WiFi;
    const std::shared_ptr<RadioDelegate> m_delegate{this, [](RadioDelegate *) {}};
    std::shared_ptr<Streamer> m_streamer;
    bool m_hasSounded = false;
    QStringList m_titles;
};

} // namespace orvel::test
