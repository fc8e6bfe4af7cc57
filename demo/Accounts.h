#pragma once

#include "demo/WebServer.h"

#include <QSet>

#include <mutex>
#include <optional>
#include <vector>

namespace orvel::demo {

// The station's users and newsletter subscribers, in memory. Two users are there from the start (see
// demo/README.md). An odd user id is sent as a text, an even one as a number. Any thread.
class Accounts
{
public:
    Accounts();

    // Answers a URL-encoded form for "login", "register" or "newsletter"; nullopt for another endpoint.
    std::optional<WebAnswer> answer(const QByteArray &endpoint, const QByteArray &form);

private:
    using Fields = QHash<QByteArray, QString>;
    struct User
    {
        int id;
        QString name;
        QString email;
        QByteArray salt;
        QByteArray passwordHash;
    };
    static Fields fieldsOf(const QByteArray &form);
    static WebAnswer welcome(const User &user);
    const User &add(const QString &name, const QString &email, const QString &password);

    WebAnswer logIn(const Fields &fields) const;
    WebAnswer enrol(const Fields &fields);
    WebAnswer subscribe(const Fields &fields);

    std::mutex m_mutex;
    std::vector<User> m_users;
    QSet<QString> m_subscribers;
};

} // namespace orvel::demo
