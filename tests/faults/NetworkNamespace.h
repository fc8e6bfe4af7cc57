#pragma once

namespace orvel::test {

// A network of the calling thread's own, with nothing but a loopback link, which is up. Threads made
// meanwhile live in it too.
class NetworkNamespace
{
public:
    NetworkNamespace();
    ~NetworkNamespace();
    NetworkNamespace(const NetworkNamespace &) = delete;
    NetworkNamespace &operator=(const NetworkNamespace &) = delete;

    // False where the machine does not allow it.
    bool isEntered() const { return m_entered; }
    bool setLink(bool up);
    bool linkIsUp() const;

private:
    const int m_before; // the namespace to come back to
    bool m_entered = false;
};

} // namespace orvel::test
