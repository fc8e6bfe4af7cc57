#include "platform/system/DesktopServices.h"
#include "support/FakeDesktop.h"

#include <QDir>
#include <filesystem>
#include <gtest/gtest.h>

using namespace orvel;

namespace {

struct DesktopServicesTest : testing::Test
{
    test::FakeDesktop desktop;
    DesktopServices services;
    QString error;

    MailDraft mail(const QByteArray &attachment = {}) const
    {
        return {{"studio@orvel.example", "-x@orvel.example"},
                "Été & co",
                "<b>Bonjour</b> &amp; merci<br>à vous",
                attachment,
                "image/jpeg",
                "../photo.jpeg"};
    }
};

} // namespace

TEST_F(DesktopServicesTest, KnowsWhoTakesASchemeFromTheDesktopsOwnData)
{
    desktop.install("xdg-open");
    EXPECT_FALSE(services.canSendMail() || services.canSendText());
    desktop.takeScheme("mailto");
    EXPECT_TRUE(services.canSendMail());
    EXPECT_FALSE(services.canSendText());

    const QByteArray entry = "[Desktop Entry]\n";
    desktop.write("data/applications/mimeinfo.cache",
                  "[MIME Cache]\nx-scheme-handler/tel=gone.desktop;\nx-scheme-handler/sms=a.desktop;\n");
    desktop.write("data/applications/a.desktop", entry);
    EXPECT_FALSE(services.canOpen("tel")) << "its program is not there any more";
    EXPECT_TRUE(services.canSendText());
    desktop.write("config/mimeapps.list", "[Removed Associations]\nx-scheme-handler/sms=a.desktop;\n"
                                          "[Default Applications]\nx-scheme-handler/tel=k-b-c.desktop\n");
    EXPECT_FALSE(services.canSendText()) << "the user took it away";
    desktop.write("system/applications/k/b-c.desktop", entry);
    EXPECT_TRUE(services.canOpen("TEL")) << "folders are dashes in a program's name";
    desktop.write("system-config/mimeapps.list",
                  "nonsense\n[\n=\n[Added Associations]\nx-scheme-handler/sms=gone.desktop;k-b-c.desktop;\n");
    EXPECT_TRUE(services.canSendText());

    qputenv("XDG_CURRENT_DESKTOP", "Here:There");
    desktop.write("config/there-mimeapps.list", "[Default Applications]\nx-scheme-handler/geo=a.desktop\n");
    EXPECT_TRUE(services.canOpen("geo"));

    QFile::remove(desktop.path("bin/xdg-open"));
    EXPECT_FALSE(services.canSendText()) << "nobody would hand it over";
}

TEST_F(DesktopServicesTest, OpensAURLOrATextMessageInTheProgramOfItsScheme)
{
    desktop.install("xdg-open");
    desktop.takeScheme("tel");
    EXPECT_TRUE(services.openURL("tel://+33100000000"));
    EXPECT_EQ(desktop.given("xdg-open"), QStringList{"tel://+33100000000"});
    desktop.takeScheme("https");
    EXPECT_TRUE(services.openURL(u"https://orvel.example/été?a=%20#b"_qs));
    EXPECT_EQ(desktop.given("xdg-open"), QStringList{"https://orvel.example/%C3%A9t%C3%A9?a=%20#b"});
    desktop.takeScheme("sms");
    EXPECT_TRUE(services.sendMessage({{"70000", "+33 6"}, "TRV votre texte\n& plus"}, error));
    EXPECT_EQ(desktop.given("xdg-open"),
              QStringList{"sms:70000,+33%206?body=TRV%20votre%20texte%0A%26%20plus"});
    for (const char *refused : {"", "http://orvel.example", "--help", "https://a b", "https://a\n", "--tel:1",
                                "file:///etc/passwd", ":"})
        EXPECT_FALSE(services.openURL(refused)) << refused;
}

TEST_F(DesktopServicesTest, OpensWebPagesInTheBrowserOfTheEnvironment)
{
    EXPECT_FALSE(services.canOpen("http"));
    desktop.install("reader");
    qputenv("BROWSER", "gone:reader --page %s");
    EXPECT_TRUE(services.canOpen("HTTP"));
    EXPECT_FALSE(services.canOpen("mailto"));
    EXPECT_TRUE(services.openURL("http://orvel.example/"));
    EXPECT_EQ(desktop.given("reader"), (QStringList{"--page", "http://orvel.example/"}));
}

TEST_F(DesktopServicesTest, HandsAMailWithItsAttachmentToTheMailProgram)
{
    desktop.install("xdg-open");
    desktop.takeScheme("mailto");
    const MailDraft draft = mail(QByteArray("\xff\xd8\0picture", 10));
    const QString url = "mailto:studio@orvel.example,-x@orvel.example?subject=%C3%89t%C3%A9%20%26%20co"
                        "&body=Bonjour%20%26%20merci%0D%0A%C3%A0%20vous";
    EXPECT_FALSE(services.takesAttachments());
    EXPECT_TRUE(services.sendMail(draft, error));
    EXPECT_EQ(desktop.given("xdg-open"), QStringList{url});

    desktop.install("xdg-email");
    EXPECT_TRUE(services.takesAttachments());
    EXPECT_TRUE(services.sendMail(draft, error));
    const QStringList given = desktop.given("xdg-email");
    ASSERT_EQ(given.size(), 3);
    EXPECT_EQ(given.first(), "--attach");
    EXPECT_TRUE(given.at(1).startsWith(desktop.path("cache")) && given.at(1).endsWith("/photo.jpeg"));
    EXPECT_EQ(given.last(), url);
    EXPECT_EQ(desktop.attachmentGiven(), draft.attachment);

    EXPECT_TRUE(services.sendMail({{""}, "", "", {}, "", ""}, error));
    EXPECT_EQ(desktop.given("xdg-email"), QStringList{"mailto:"});
    EXPECT_EQ(error, "");

    const QString &kept = given.at(1);
    EXPECT_TRUE(services.sendMail(draft, error) && QFile::exists(kept));
    desktop.given("xdg-email");
    std::filesystem::last_write_time(QFileInfo(kept).path().toStdString(),
                                     std::filesystem::file_time_type::clock::now() - std::chrono::hours(49));
    EXPECT_TRUE(services.sendMail(draft, error));
    EXPECT_FALSE(QFile::exists(kept));
    desktop.given("xdg-email");
}

TEST_F(DesktopServicesTest, TellsWhyNothingWasTaken)
{
    const auto isTold = [this](bool isTaken) { return !isTaken && !std::exchange(error, {}).isEmpty(); };
    EXPECT_TRUE(isTold(services.sendMessage({{"70000"}, "TRV"}, error)));
    EXPECT_TRUE(isTold(services.sendMail(mail(), error)));
    desktop.install("xdg-email");
    QDir(desktop.path("cache")).removeRecursively();
    desktop.write("cache", "a file where the cache should be");
    EXPECT_TRUE(isTold(services.sendMail(mail("picture"), error)));
}
