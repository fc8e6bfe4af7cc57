#include "platform/system/MailDraftFile.h"

#include "platform/system/SafeFileName.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QStandardPaths>
#include <QUrl>
#include <QUuid>

namespace orvel {

namespace {

constexpr qsizetype lineLength = 76;

QByteArray inLines(const QByteArray &base64)
{
    QByteArray lines;
    for (qsizetype at = 0; at < base64.size(); at += lineLength)
        lines += base64.sliced(at, std::min(lineLength, base64.size() - at)) + "\r\n";
    return lines;
}

// A value of a header stays on its line.
QString onOneLine(const QString &text) { return text.simplified(); }

// RFC 2047: words of at most 75 characters, none with half a character in it.
QByteArray encodedWords(const QString &text)
{
    constexpr qsizetype unitsAWord = 14; // of up to 3 bytes each
    const QByteArray latin = text.toLatin1();
    if (QString::fromLatin1(latin) == text &&
        std::ranges::all_of(latin, [](uchar c) { return c != 0 && c < 0x80; }))
        return latin;
    QByteArrayList words;
    for (qsizetype at = 0; at < text.size();) {
        qsizetype length = std::min(unitsAWord, text.size() - at);
        if (at + length < text.size() && text.at(at + length - 1).isHighSurrogate())
            --length;
        words << "=?UTF-8?B?" + text.sliced(at, length).toUtf8().toBase64() + "?=";
        at += length;
    }
    return words.join("\r\n ");
}

QByteArray part(const QByteArray &boundary, const QByteArray &type, const QByteArray &disposition,
                const QByteArray &content)
{
    return "--" + boundary + "\r\nContent-Type: " + type + "\r\nContent-Disposition: " + disposition +
           "\r\nContent-Transfer-Encoding: base64\r\n\r\n" + inLines(content.toBase64());
}

} // namespace

QByteArray mailFile(const MailDraft &draft)
{
    const QByteArray boundary = "orvel-" + QUuid::createUuid().toByteArray(QUuid::Id128);
    QByteArray file = "X-Unsent: 1\r\nMIME-Version: 1.0\r\nDate: " +
                      QDateTime::currentDateTime().toString(Qt::RFC2822Date).toLatin1() +
                      "\r\nTo: " + onOneLine(draft.recipients.join(QStringLiteral(", "))).toUtf8() +
                      "\r\nSubject: " + encodedWords(onOneLine(draft.subject)) +
                      "\r\nContent-Type: multipart/mixed; boundary=\"" + boundary + "\"\r\n\r\n" +
                      part(boundary, "text/html; charset=utf-8", "inline", draft.body.toUtf8());
    if (!draft.attachment.isEmpty()) {
        const QByteArray name = QUrl::toPercentEncoding(safeFileName(draft.attachmentName));
        file += part(boundary, onOneLine(draft.attachmentType).toUtf8(),
                     "attachment; filename*=UTF-8''" + name, draft.attachment);
    }
    return file + "--" + boundary + "--\r\n";
}

QString saveMailFile(const MailDraft &draft, QString &error)
{
    const QDir folder(QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation));
    folder.mkpath(QStringLiteral("."));
    const QString name = QStringLiteral("Brouillon Orvel ") +
                         QDateTime::currentDateTime().toString(QStringLiteral("yyyy-MM-dd HH.mm.ss"));
    QFile file(folder.filePath(name + QStringLiteral(".eml")));
    for (int copy = 2; file.exists() && copy < 100; ++copy)
        file.setFileName(folder.filePath(QStringLiteral("%1 (%2).eml").arg(name).arg(copy)));
    const QByteArray bytes = mailFile(draft);
    if (!file.open(QIODevice::WriteOnly | QIODevice::NewOnly)) {
        error = QStringLiteral("Le brouillon n'a pas pu être enregistré : ") + file.errorString();
        return {};
    }
    if (file.write(bytes) != bytes.size() || !file.flush()) {
        error = QStringLiteral("Le brouillon n'a pas pu être enregistré : ") + file.errorString();
        file.remove();
        return {};
    }
    return file.fileName();
}

} // namespace orvel
