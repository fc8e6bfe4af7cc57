#include "support/SoundComparison.h"

#include <QFile>
#include <algorithm>
#include <cmath>
#include <cstring>
#include <gtest/gtest.h>

namespace orvel::test {

std::vector<float> samplesIn(const QString &path)
{
    QFile file(path);
    const QByteArray bytes = file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    std::vector<float> samples(std::size_t(bytes.size()) / sizeof(float));
    if (!samples.empty())
        std::memcpy(samples.data(), bytes.constData(), samples.size() * sizeof(float));
    return samples;
}

std::vector<float> withoutSilence(const std::vector<float> &samples)
{
    const auto isSound = [](float sample) { return sample != 0; };
    const auto first = std::find_if(samples.begin(), samples.end(), isSound);
    const auto last = std::find_if(samples.rbegin(), std::make_reverse_iterator(first), isSound).base();
    return {first, last};
}

QString soundDifference(const std::vector<float> &captured, const std::vector<float> &expected)
{
    constexpr float bound = 1e-6F;
    const std::vector<float> heard = withoutSilence(captured);
    const std::vector<float> wanted = withoutSilence(expected);
    const auto [at, other] =
        std::mismatch(heard.begin(), heard.end(), wanted.begin(), wanted.end(),
                      [](float a, float b) { return std::abs(a - b) <= bound; }); // not of what is no number
    if (at == heard.end() && other == wanted.end())
        return {};
    return QStringLiteral("sample %1 is another, or the last of %2 instead of %3")
        .arg(at - heard.begin())
        .arg(heard.size())
        .arg(wanted.size());
}

void expectSameSound(const std::vector<float> &captured, const std::vector<float> &expected)
{
    EXPECT_GT(withoutSilence(expected).size(), 10000u);
    EXPECT_EQ(soundDifference(captured, expected), QString());
}

} // namespace orvel::test
