#include "demo/Accounts.h"

#include "demo/Envelope.h"

#include <QJsonObject>
#include <QMessageAuthenticationCode>
#include <QRandomGenerator>

#include <algorithm>

namespace orvel::demo {

namespace {

constexpr int firstId = 1041;
constexpr std::size_t maxUsers = 1000;
constexpr qsizetype maxSubscribers = 1000;
constexpr qsizetype maxNameLength = 60;
constexpr qsizetype maxEmailLength = 254;
constexpr qsizetype minPasswordLength = 6;

QString decoded(QByteArray text)
{
    return QString::fromUtf8(QByteArray::fromPercentEncoding(text.replace('+', ' ')));
}

QByteArray hashOf(const QString &password, const QByteArray &salt)
{
    return QMessageAuthenticationCode::hash(password.toUtf8(), salt, QCryptographicHash::Sha256);
}

bool isSame(const QString &a, const QString &b) { return a.compare(b, Qt::CaseInsensitive) == 0; }

bool isName(const QString &text) { return !text.trimmed().isEmpty() && text.size() <= maxNameLength; }

bool isEmail(const QString &text)
{
    return text.size() <= maxEmailLength && text.count(u'@') == 1 && !text.startsWith(u'@') &&
           !text.endsWith(u'@');
}

} // namespace

Accounts::Accounts()
{
    add(QStringLiteral("Camille"), QStringLiteral("camille@example.org"), QStringLiteral("musique"));
    add(QStringLiteral("Léo"), QStringLiteral("leo@example.org"), QStringLiteral("guitare"));
}

std::optional<WebAnswer> Accounts::answer(const QByteArray &endpoint, const QByteArray &form)
{
    const Fields fields = fieldsOf(form);
    const std::scoped_lock lock(m_mutex);
    if (endpoint == "login")
        return logIn(fields);
    if (endpoint == "register")
        return enrol(fields);
    if (endpoint == "newsletter")
        return subscribe(fields);
    return {};
}

Accounts::Fields Accounts::fieldsOf(const QByteArray &form)
{
    Fields fields;
    for (const QByteArray &pair : form.split('&')) {
        const qsizetype sign = pair.indexOf('=');
        if (sign > 0)
            fields.insert(decoded(pair.left(sign)).toUtf8(), decoded(pair.mid(sign + 1)));
    }
    return fields;
}

const Accounts::User &Accounts::add(const QString &name, const QString &email, const QString &password)
{
    const QByteArray salt = QByteArray::number(QRandomGenerator::system()->generate64(), 16);
    m_users.push_back({firstId + int(m_users.size()), name, email, salt, hashOf(password, salt)});
    return m_users.back();
}

WebAnswer Accounts::welcome(const User &user)
{
    const QJsonValue id = user.id % 2 == 0 ? QJsonValue(user.id) : QJsonValue(QString::number(user.id));
    return contentAnswer(
        QJsonObject{{QStringLiteral("user_id"), id}, {QStringLiteral("username"), user.name}});
}

WebAnswer Accounts::logIn(const Fields &fields) const
{
    const auto user = std::ranges::find_if(
        m_users, [email = fields.value("login")](const User &known) { return isSame(known.email, email); });
    if (user == m_users.end() || hashOf(fields.value("password"), user->salt) != user->passwordHash)
        return errorAnswer("login", 403, QStringLiteral("Adresse e-mail ou mot de passe incorrect."));
    return welcome(*user);
}

WebAnswer Accounts::enrol(const Fields &fields)
{
    const QString name = fields.value("username");
    const QString email = fields.value("email");
    const QString password = fields.value("password");
    const auto refuse = [](int status, const QString &message) {
        return errorAnswer("register", status, message);
    };
    if (!isName(name))
        return refuse(422, QStringLiteral("Le nom d'utilisateur doit compter de 1 à 60 caractères."));
    if (!isEmail(email))
        return refuse(422, QStringLiteral("Cette adresse e-mail n'est pas valable."));
    if (password.size() < minPasswordLength)
        return refuse(422, QStringLiteral("Le mot de passe doit compter au moins 6 caractères."));
    for (const User &user : m_users) {
        if (isSame(user.email, email))
            return refuse(409, QStringLiteral("Un compte existe déjà avec cette adresse e-mail."));
        if (isSame(user.name, name))
            return refuse(409, QStringLiteral("Ce nom d'utilisateur est déjà pris."));
    }
    if (m_users.size() >= maxUsers)
        return refuse(503, QStringLiteral("Les inscriptions sont closes pour le moment."));
    return welcome(add(name, email, password));
}

WebAnswer Accounts::subscribe(const Fields &fields)
{
    const QString name = fields.value("name");
    const QString email = fields.value("email");
    const auto refuse = [](int status, const QString &message) {
        return errorAnswer("newsletter", status, message);
    };
    if (!isName(name))
        return refuse(422, QStringLiteral("Le nom doit compter de 1 à 60 caractères."));
    if (!isEmail(email))
        return refuse(422, QStringLiteral("Cette adresse e-mail n'est pas valable."));
    if (m_subscribers.contains(email.toLower()))
        return refuse(409, QStringLiteral("Cette adresse est déjà inscrite à la newsletter."));
    if (m_subscribers.size() >= maxSubscribers)
        return refuse(503, QStringLiteral("Les inscriptions sont closes pour le moment."));
    m_subscribers.insert(email.toLower());
    return contentAnswer(
        QStringLiteral("Merci %1 ! La newsletter d'Orvel Radio vous attend chaque vendredi.").arg(name));
}

} // namespace orvel::demo
