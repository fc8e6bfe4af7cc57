#include "platform/system/MailDraftFile.h"
#include "platform/system/SafeFileName.h"
#include "support/FakeDesktop.h"

#include <QFileInfo>
#include <gtest/gtest.h>

using namespace orvel;

TEST(MailDraftFileTest, NamesAFileSafely)
{
    const QList<QPair<QString, QString>> cases{{"photo.jpeg", "photo.jpeg"},
                                               {"../../etc/passwd", "passwd"},
                                               {"C:\\x\\y.png", "y.png"},
                                               {"..", "document"},
                                               {"a\nb\x1b.txt", "ab.txt"},
                                               {"", "document"},
                                               {QString(300, u'a') + ".jpeg", QString(115, u'a') + ".jpeg"}};
    for (const auto &[name, safe] : cases)
        EXPECT_EQ(safeFileName(name), safe) << name.toStdString();
}

TEST(MailDraftFileTest, KeepsADraftAsAFileAmongTheDocuments)
{
    const test::FakeDesktop desktop;
    const MailDraft draft{{"a@b.example", "c@d.example\r\nBcc: e@f.example"},
                          u"Un long sujet accentué, étés comme hiver 🎧🎧🎧\r\nX-Other: 1"_qs,
                          "<b>Bonjour</b>",
                          QByteArray(200, '\xff'),
                          "image/jpeg\r\nX-Third: 1",
                          u"photo d'été.jpeg"_qs};
    QString error;
    const QString path = saveMailFile(draft, error);
    const QString second = saveMailFile(draft, error);
    ASSERT_FALSE(path.isEmpty() || second.isEmpty()) << error.toStdString();
    EXPECT_NE(path, second);
    EXPECT_TRUE(path.startsWith(desktop.path("")));
    const QByteArray mail = mailFile(draft);
    EXPECT_EQ(QFileInfo(path).size(), mail.size());
    for (const QByteArray &part :
         {QByteArray("X-Unsent: 1\r\n"), QByteArray("To: a@b.example, c@d.example Bcc: e@f.example\r\n"),
          QByteArray("filename*=UTF-8''photo%20d%27%C3%A9t%C3%A9.jpeg\r\n"),
          QByteArray("Content-Type: text/html; charset=utf-8\r\n"), QByteArray("<b>Bonjour</b>").toBase64()})
        EXPECT_TRUE(mail.contains(part)) << part.constData();
    QString subject;
    const qsizetype at = mail.indexOf("Subject: ") + 9;
    for (const QByteArray &word : mail.sliced(at, mail.indexOf("\r\nContent", at) - at).split('\n'))
        subject += QString::fromUtf8(QByteArray::fromBase64(word.trimmed().sliced(10).chopped(2)));
    EXPECT_EQ(subject, draft.subject.simplified());
    EXPECT_TRUE(mailFile({{}, u"Été"_qs, "", {}, "", ""}).contains("Subject: =?UTF-8?B?w4l0w6k=?=\r\n"));
    const qsizetype boundary = mail.indexOf("boundary=\"") + 10;
    EXPECT_TRUE(
        mail.endsWith("--" + mail.sliced(boundary, mail.indexOf('"', boundary) - boundary) + "--\r\n"));
    for (const char *injected : {"\r\nX-Third", "\r\nBcc"})
        EXPECT_FALSE(mail.contains(injected)) << injected;
    for (const QByteArray &line : mail.split('\n'))
        EXPECT_LE(line.size(), 120) << line.constData();

    desktop.write("blocked", {});
    qputenv("HOME", desktop.path("blocked/home").toUtf8());
    EXPECT_EQ(saveMailFile(draft, error), "");
    EXPECT_NE(error, "");
}
