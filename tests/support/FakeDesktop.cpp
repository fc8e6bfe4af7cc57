#include "support/FakeDesktop.h"

#include "support/TestLoop.h"

#include <QDir>
#include <QFile>

namespace orvel::test {

FakeDesktop::FakeDesktop()
{
    const auto set = [this](const char *name, const QString &folder) {
        QDir().mkpath(path(folder));
        m_environment.emplace_back(name, path(folder).toUtf8());
    };
    set("HOME", QStringLiteral("."));
    set("PATH", QStringLiteral("bin"));
    set("XDG_DATA_HOME", QStringLiteral("data"));
    set("XDG_DATA_DIRS", QStringLiteral("system"));
    set("XDG_CONFIG_HOME", QStringLiteral("config"));
    set("XDG_CONFIG_DIRS", QStringLiteral("system-config"));
    set("XDG_CACHE_HOME", QStringLiteral("cache"));
    for (const char *name : {"BROWSER", "XDG_CURRENT_DESKTOP"})
        m_environment.emplace_back(name, QByteArray());
}

void FakeDesktop::install(const QString &program) const
{
    const QByteArray note = path(program).toUtf8();
    write(QStringLiteral("bin/") + program, "#!/bin/sh\n"
                                            "if [ \"$1\" = --attach ]; then /bin/cp \"$2\" '" +
                                                path(QStringLiteral("attached")).toUtf8() +
                                                "'; fi\n"
                                                "printf '%s\\n' \"$@\" >'" +
                                                note + ".part'\n/bin/mv '" + note + ".part' '" + note +
                                                "'\n");
    QFile::setPermissions(path(QStringLiteral("bin/") + program),
                          QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
}

void FakeDesktop::takeScheme(const QString &scheme) const
{
    const QString program = scheme + QStringLiteral("-taker.desktop");
    write(QStringLiteral("data/applications/") + program, "[Desktop Entry]\nType=Application\n");
    QFile cache(path(QStringLiteral("data/applications/mimeinfo.cache")));
    if (cache.open(QIODevice::Append))
        cache.write(QStringLiteral("[MIME Cache]\nx-scheme-handler/%1=%2;\n").arg(scheme, program).toUtf8());
}

void FakeDesktop::write(const QString &name, const QByteArray &content) const
{
    QDir().mkpath(QFileInfo(path(name)).path());
    QFile file(path(name));
    if (file.open(QIODevice::WriteOnly))
        file.write(content);
}

QStringList FakeDesktop::given(const QString &program) const
{
    QFile note(path(program));
    if (!waitUntil([&] { return note.exists(); }) || !note.open(QIODevice::ReadOnly))
        return {};
    const QStringList lines = QString::fromUtf8(note.readAll()).split(u'\n', Qt::SkipEmptyParts);
    note.remove();
    return lines;
}

QByteArray FakeDesktop::attachmentGiven() const
{
    QFile file(path(QStringLiteral("attached")));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

} // namespace orvel::test
