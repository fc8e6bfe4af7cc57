#include "FuzzSupport.h"

#include <QHashSeed>
#include <QLoggingCategory>
#include <algorithm>
#include <cstdio>
#include <cstdlib>

// Bad input is all there is here: nobody wants to read of it. Hashes without a seed, so that an input takes
// the same path in each run.
extern "C" int LLVMFuzzerInitialize(int *, char ***)
{
    QLoggingCategory::setFilterRules(QStringLiteral("*=false"));
    QHashSeed::setDeterministicGlobalSeed();
    return 0;
}

namespace orvel::fuzz {

namespace {

constexpr qsizetype sizeBytes = 6;

void handOver(QByteArrayView bytes, const ChunkedInput::Taker &take)
{
    const std::vector<char> copy(bytes.begin(), bytes.end());
    take({copy.data(), static_cast<qsizetype>(copy.size())});
}

} // namespace

void require(bool holds, const char *what)
{
    if (holds)
        return;
    std::fprintf(stderr, "Does not hold: %s\n", what);
    std::abort();
}

std::vector<HeaderField> takeHead(QByteArrayView &input)
{
    std::vector<HeaderField> fields;
    for (qsizetype end = input.indexOf('\n'); end >= 0; end = input.indexOf('\n')) {
        const QString line = QString::fromLatin1(input.first(end)).trimmed();
        input = input.sliced(end + 1);
        if (line.isEmpty())
            break;
        fields.push_back({line.section(u':', 0, 0), line.section(u':', 1).trimmed()});
    }
    return fields;
}

ChunkedInput::ChunkedInput(QByteArrayView input)
    : m_bytes(input.chopped(std::min(sizeBytes, input.size()))), m_sizes(input.sliced(m_bytes.size()))
{
}

void ChunkedInput::takeWhole(const Taker &take) const { handOver(m_bytes, take); }

void ChunkedInput::takeByteForByte(const Taker &take) const
{
    for (qsizetype i = 0; i < m_bytes.size(); ++i)
        handOver(m_bytes.sliced(i, 1), take);
}

void ChunkedInput::takeChunks(const Taker &take) const
{
    QByteArrayView rest = m_bytes;
    for (qsizetype i = 0; !rest.isEmpty(); ++i) {
        // 1 to 128 bytes, or up to 8 KiB in steps of 64.
        const int size = static_cast<unsigned char>(m_sizes[i % m_sizes.size()]);
        const QByteArrayView chunk =
            rest.first(std::min<qsizetype>(size < 128 ? size + 1 : (size - 127) * 64, rest.size()));
        rest = rest.sliced(chunk.size());
        handOver(chunk, take);
    }
}

} // namespace orvel::fuzz
