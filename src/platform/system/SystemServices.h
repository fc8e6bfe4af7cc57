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
    QByteArray attachment; // empty when there is none
    QString attachmentType;
    QString attachmentName;
};

struct MessageDraft
{
    QStringList recipients; // telephone numbers
    QString body;
};

// What the application hands over to the system it runs on. No call waits for the program that takes over.
// Main thread.
class SystemServices
{
public:
    virtual ~SystemServices() = default;

    // Returns whether a program takes URLs of this scheme ("mailto", "sms", "tel", "http").
    virtual bool canOpen(const QString &scheme) const = 0;
    // Hands `url` to the program that takes its scheme. Returns false when there is none, when it can't be
    // started, and when `url` is malformed.
    virtual bool openURL(const QString &url) = 0;
    // Hands a draft to the mail program, with its attachment where that is possible. Returns false and sets
    // `error` to a French sentence when no program has taken it.
    virtual bool sendMail(const MailDraft &draft, QString &error) = 0;
    // The same for a text message.
    virtual bool sendMessage(const MessageDraft &draft, QString &error) = 0;

    // Returns whether sendMail() hands attachments on.
    virtual bool takesAttachments() const { return true; }

    bool canSendMail() const { return canOpen(QStringLiteral("mailto")); }
    bool canSendText() const { return canOpen(QStringLiteral("sms")); }

    // Returns the services in use: the desktop's, until a test sets others.
    static SystemServices &current();
    // nullptr stands for the desktop's.
    static void use(std::shared_ptr<SystemServices> services);

private:
    static std::shared_ptr<SystemServices> &inUse();
};

} // namespace orvel
