#include "platform/system/DesktopServices.h"

#include "platform/html/HtmlText.h"
#include "platform/system/SafeFileName.h"
#include "platform/system/SchemeHandlers.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QProcess>
#include <QRegularExpression>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QUrl>

namespace orvel {

namespace {

// A mail program may still read what it was given long after it took it.
constexpr int attachmentDays = 2;

bool isInstalled(const QString &program) { return !QStandardPaths::findExecutable(program).isEmpty(); }

// The command line of a browser that runs without a handler being registered: $BROWSER holds several,
// separated by colons; without it, the system's own choice. Empty when there is none.
QStringList browser()
{
    const QString wanted = qEnvironmentVariable("BROWSER", QStringLiteral("x-www-browser"));
    for (const QString &command : wanted.split(u':', Qt::SkipEmptyParts)) {
        const QStringList words = QProcess::splitCommand(command);
        if (!words.isEmpty() && isInstalled(words.first()))
            return words;
    }
    return {};
}

bool isWeb(const QString &scheme)
{
    return scheme.compare(u"http", Qt::CaseInsensitive) == 0 ||
           scheme.compare(u"https", Qt::CaseInsensitive) == 0;
}

bool startBrowser(const QString &url)
{
    QStringList words = browser();
    if (words.isEmpty())
        return false;
    if (words.filter(QStringLiteral("%s")).isEmpty())
        words << url;
    else
        words.replaceInStrings(QStringLiteral("%s"), url);
    const QString program = words.takeFirst();
    return QProcess::startDetached(program, words);
}

// Escapes what is not ASCII and leaves the rest as it is: "tel://+33" is no URL to a strict reader.
QString inAscii(const QString &url)
{
    QString encoded;
    for (const char byte : url.toUtf8())
        encoded += uchar(byte) < 0x80 ? QString(QLatin1Char(byte))
                                      : QStringLiteral("%%1").arg(uchar(byte), 2, 16).toUpper();
    return encoded;
}

QString escaped(const QString &text) { return QString::fromLatin1(QUrl::toPercentEncoding(text)); }

// RFC 6068; lines end as in a mail.
QString mailtoURL(const MailDraft &draft)
{
    QStringList recipients;
    for (const QString &recipient : draft.recipients)
        recipients << QString::fromLatin1(QUrl::toPercentEncoding(recipient, "@+"));
    QStringList fields;
    if (!draft.subject.isEmpty())
        fields << QStringLiteral("subject=") + escaped(draft.subject);
    if (const QString body = plainTextOfHtml(draft.body); !body.isEmpty())
        fields << QStringLiteral("body=") + escaped(QString(body).replace(u'\n', QStringLiteral("\r\n")));
    return QStringLiteral("mailto:") + recipients.join(u',') +
           (fields.isEmpty() ? QString() : u'?' + fields.join(u'&'));
}

// RFC 5724.
QString smsURL(const MessageDraft &draft)
{
    QStringList recipients;
    for (const QString &recipient : draft.recipients)
        recipients << QString::fromLatin1(QUrl::toPercentEncoding(recipient, "+"));
    return QStringLiteral("sms:") + recipients.join(u',') +
           (draft.body.isEmpty() ? QString() : QStringLiteral("?body=") + escaped(draft.body));
}

void removeOldAttachments(const QDir &folder)
{
    const QDateTime old = QDateTime::currentDateTime().addDays(-attachmentDays);
    for (const QFileInfo &entry : folder.entryInfoList(QDir::Dirs | QDir::NoDotAndDotDot)) {
        if (entry.lastModified() < old)
            QDir(entry.filePath()).removeRecursively();
    }
}

// The attachment as a file that another program can read, under its own name; empty when it can't be written.
QString attachmentFile(const MailDraft &draft)
{
    const QDir folder(QStandardPaths::writableLocation(QStandardPaths::CacheLocation) +
                      QStringLiteral("/mail"));
    folder.mkpath(QStringLiteral("."));
    removeOldAttachments(folder);
    QTemporaryDir own(folder.filePath(QStringLiteral("XXXXXX")));
    own.setAutoRemove(false);
    QFile file(own.filePath(safeFileName(draft.attachmentName)));
    const bool written = own.isValid() && file.open(QIODevice::WriteOnly) &&
                         file.write(draft.attachment) == draft.attachment.size() && file.flush();
    return written ? file.fileName() : QString();
}

} // namespace

SystemServices &SystemServices::current() { return *inUse(); }

void SystemServices::use(std::shared_ptr<SystemServices> services)
{
    inUse() = services ? std::move(services) : std::make_shared<DesktopServices>();
}

std::shared_ptr<SystemServices> &SystemServices::inUse()
{
    static std::shared_ptr<SystemServices> services = std::make_shared<DesktopServices>();
    return services;
}

bool DesktopServices::canOpen(const QString &scheme) const
{
    if (isWeb(scheme) && !browser().isEmpty())
        return true;
    return isInstalled(QStringLiteral("xdg-open")) && hasSchemeHandler(scheme);
}

bool DesktopServices::openURL(const QString &url)
{
    static const QRegularExpression form(
        QStringLiteral("^([A-Za-z][A-Za-z0-9+.-]*):[^\\s\\x00-\\x1f\\x7f]*\\z"));
    const QRegularExpressionMatch parts = form.match(url);
    if (!parts.hasMatch() || !canOpen(parts.captured(1)))
        return false;
    const QString encoded = inAscii(url);
    if (QProcess::startDetached(QStringLiteral("xdg-open"), {encoded}))
        return true;
    return isWeb(parts.captured(1)) && startBrowser(encoded);
}

bool DesktopServices::takesAttachments() const { return isInstalled(QStringLiteral("xdg-email")); }

bool DesktopServices::sendMail(const MailDraft &draft, QString &error)
{
    const QString url = mailtoURL(draft);
    if (!takesAttachments()) {
        if (openURL(url))
            return true;
        error = QStringLiteral("Aucun programme de messagerie n'a pris le message.");
        return false;
    }
    QStringList arguments;
    if (!draft.attachment.isEmpty()) {
        const QString path = attachmentFile(draft);
        if (path.isEmpty()) {
            error = QStringLiteral("La pièce jointe n'a pas pu être enregistrée.");
            return false;
        }
        arguments << QStringLiteral("--attach") << path;
    }
    arguments << url;
    if (QProcess::startDetached(QStringLiteral("xdg-email"), arguments))
        return true;
    error = QStringLiteral("Le programme de messagerie n'a pas pu être ouvert.");
    return false;
}

bool DesktopServices::sendMessage(const MessageDraft &draft, QString &error)
{
    if (openURL(smsURL(draft)))
        return true;
    error = QStringLiteral("Aucun programme n'a pris le SMS.");
    return false;
}

} // namespace orvel
