#include "support/SoundFile.h"

#include "support/SoundComparison.h"

#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace orvel::test {

namespace {

const QString tone = QStringLiteral("aevalsrc=0.4*sin(2*PI*t*(220+40*t))+0.05*random(0)|"
                                    "0.3*sin(2*PI*t*(330+60*t))+0.05*random(1):s=44100:d=1.3");

class Ffmpeg
{
public:
    explicit Ffmpeg(const QByteArray &input)
    {
        QFile file(path(QStringLiteral("input")));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(input);
    }
    QString path(const QString &name) const { return m_folder.filePath(name); }

    QByteArray run(QStringList arguments, const QString &output) const
    {
        arguments.prepend(QStringLiteral("-nostdin"));
        arguments << path(output);
        QProcess process;
        process.start(QStringLiteral("ffmpeg"), arguments);
        process.waitForFinished();
        EXPECT_EQ(process.exitCode(), 0) << process.readAllStandardError().right(600).toStdString();
        QFile file(path(output));
        EXPECT_TRUE(file.open(QIODevice::ReadOnly));
        return file.readAll();
    }

private:
    QTemporaryDir m_folder;
};

} // namespace

QByteArray soundFile(const QString &name, const QStringList &arguments, const QByteArray &sound)
{
    const Ffmpeg ffmpeg(sound);
    const QStringList input =
        sound.isEmpty()
            ? QStringList{QStringLiteral("-f"), QStringLiteral("lavfi"), QStringLiteral("-i"), tone}
            : QStringList{QStringLiteral("-i"), ffmpeg.path(QStringLiteral("input"))};
    return ffmpeg.run(input + arguments, name);
}

std::vector<float> decodedByFfmpeg(const QByteArray &file)
{
    const Ffmpeg ffmpeg(file);
    ffmpeg.run({QStringLiteral("-i"), ffmpeg.path(QStringLiteral("input")), QStringLiteral("-map"),
                QStringLiteral("0:a:0"), QStringLiteral("-f"), QStringLiteral("f32le")},
               QStringLiteral("raw"));
    return samplesIn(ffmpeg.path(QStringLiteral("raw")));
}

} // namespace orvel::test
