#pragma once

#include <QByteArray>
#include <QStringList>
#include <vector>

namespace orvel::test {

// What ffmpeg writes with these arguments (codec and the like) to a file of this name. Its input is `sound`,
// a file's bytes, or else two channels of sweeps, different ones, of 1.3 s at 44.1 kHz.
QByteArray soundFile(const QString &name, const QStringList &arguments, const QByteArray &sound = {});

// What ffmpeg decodes a file to, interleaved.
std::vector<float> decodedByFfmpeg(const QByteArray &file);

} // namespace orvel::test
