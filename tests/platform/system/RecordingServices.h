#pragma once

#include "platform/system/SystemServices.h"

namespace orvel::test {

// Takes everything that is handed over, for as long as it is wanted to.
struct RecordingServices : SystemServices
{
    bool canOpen(const QString &scheme) const override { return !refused.contains(scheme); }
    bool openURL(const QString &url) override
    {
        if (!canOpen(url.section(u':', 0, 0)))
            return false;
        opened << url;
        return true;
    }
    bool sendMail(const MailDraft &draft, QString &error) override
    {
        mails << draft;
        error = failure;
        return failure.isEmpty();
    }
    bool sendMessage(const MessageDraft &draft, QString &error) override
    {
        messages << draft;
        error = failure;
        return failure.isEmpty();
    }

    QStringList refused; // schemes that nobody takes
    QString failure;     // what becomes of mails and messages
    QStringList opened;
    QList<MailDraft> mails;
    QList<MessageDraft> messages;
};

} // namespace orvel::test
