#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <memory>

namespace orvel {

// A mail as a composer hands it on.
struct MailDraft
{
    QStringList recipients;
    QString subject;
    QString body;          // HTML
    QByteArray attachment; // none when empty
    QString attachmentType;
    QString attachmentName;
};

struct MessageDraft
{
    QStringList recipients; // telephone numbers
    QString body;
};

// What the application hands over to the system it runs on. Main thread; nothing here waits for the program
// that takes over.
class SystemServices
{
public:
    virtual ~SystemServices() = default;

    // Whether somebody takes a URL of this scheme ("mailto", "sms", "tel", "http").
    virtual bool canOpen(const QString &scheme) const = 0;
    // Hands `url` to the program that takes its scheme. False when there is none or it can't be started.
    virtual bool openURL(const QString &url) = 0;
    // Hands a draft to the mail program, with its attachment where that is possible. `error` tells why not.
    virtual bool sendMail(const MailDraft &draft, QString &error) = 0;
    virtual bool sendMessage(const MessageDraft &draft, QString &error) = 0;

    // Whether sendMail can hand an attachment on.
    virtual bool takesAttachments() const { return true; }

    bool canSendMail() const { return canOpen(QStringLiteral("mailto")); }
    bool canSendText() const { return canOpen(QStringLiteral("sms")); }

    // The ones in use: the desktop's, until others are handed in (tests).
    static SystemServices &current();
    // Null: the desktop's again.
    static void use(std::shared_ptr<SystemServices> services);

private:
    static std::shared_ptr<SystemServices> &inUse();
};

} // namespace orvel
