#include "benchmarks/titles/Rounds.h"

#include <unistd.h>

namespace orvel::benchmark {

Rounds::Rounds() : m_input(STDIN_FILENO, QSocketNotifier::Read)
{
    connect(&m_input, &QSocketNotifier::activated, this, &Rounds::read);
}

void Rounds::read()
{
    char bytes[4096];
    const ssize_t got = ::read(STDIN_FILENO, bytes, sizeof bytes);
    if (got <= 0) {
        m_input.setEnabled(false);
        return;
    }
    m_text.append(bytes, got);
    for (qsizetype end = 0; (end = m_text.indexOf('\n')) >= 0;) {
        const QByteArray line = m_text.first(end);
        m_text.remove(0, end + 1);
        if (m_ended && line.startsWith("round "))
            m_ended(line.mid(6).toDouble());
    }
}

} // namespace orvel::benchmark
