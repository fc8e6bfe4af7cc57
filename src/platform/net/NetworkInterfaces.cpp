#include "platform/net/NetworkInterfaces.h"

#include "platform/foundation/Log.h"

#include <QCoreApplication>
#include <QFile>
#include <QNetworkInterface>
#include <QPointer>
#include <QRegularExpression>
#include <QSet>
#include <QSocketNotifier>

#include <algorithm>
#include <array>
#include <cerrno>

#include <linux/rtnetlink.h>
#include <sys/socket.h>
#include <unistd.h>

namespace orvel {

namespace {

int openSocket()
{
    const int socket = ::socket(AF_NETLINK, SOCK_RAW | SOCK_CLOEXEC | SOCK_NONBLOCK, NETLINK_ROUTE);
    sockaddr_nl address{};
    address.nl_family = AF_NETLINK;
    address.nl_groups = RTMGRP_LINK | RTMGRP_IPV4_ROUTE | RTMGRP_IPV6_ROUTE; // an address has a route, too
    if (socket < 0 || ::bind(socket, reinterpret_cast<const sockaddr *>(&address), sizeof address) != 0)
        qCWarning(logNet) << "Changes of the network can't be watched:" << qt_error_string(errno);
    return socket;
}

// The socket and what notices that it has something to read, as long as the application lives.
class InterfaceWatch : public QObject
{
public:
    static InterfaceWatch &ofApplication()
    {
        static QPointer<InterfaceWatch> instance;
        if (!instance)
            instance = new InterfaceWatch;
        return *instance;
    }
    ~InterfaceWatch() override { ::close(m_socket); }

    QSocketNotifier notifier{QSocketNotifier::Read};

private:
    InterfaceWatch() : QObject(QCoreApplication::instance())
    {
        if (m_socket < 0)
            return;
        notifier.setSocket(m_socket);
        connect(&notifier, &QSocketNotifier::activated, this, [this] { drain(); });
        notifier.setEnabled(true);
    }
    // What a message says is not read: whoever hears of it asks for the state. Too many at once are reported
    // as an error (ENOBUFS), which is a change, too.
    void drain() const
    {
        std::array<char, 8192> message;
        while (::recv(m_socket, message.data(), message.size(), 0) > 0 || errno == ENOBUFS)
            ;
    }

    const int m_socket = openSocket();
};

// Adds the interface of each line of the kernel's table of routes that begins with `isDefault`.
void addInterfaces(const char *table, const QRegularExpression &isDefault, QSet<QString> &names)
{
    QFile file(QString::fromLatin1(table));
    if (!file.open(QIODevice::ReadOnly))
        return;
    for (const QString &line : QString::fromUtf8(file.readAll()).split(u'\n'))
        if (const QRegularExpressionMatch match = isDefault.match(line); match.hasMatch())
            names.insert(match.captured(u"name"));
}

QSet<QString> interfacesOfDefaultRoutes()
{
    static const QRegularExpression ipv4(
        QStringLiteral(R"(^(?<name>\S+)\t0{8}\t(?:\S+\t){5}0{8}\t)")); // destination and mask
    static const QRegularExpression ipv6(
        QStringLiteral(R"(^0{32} 00 .*\s(?<name>\S+)\s*$)")); // destination and its length
    QSet<QString> names;
    addInterfaces("/proc/thread-self/net/route", ipv4, names);
    addInterfaces("/proc/thread-self/net/ipv6_route", ipv6, names);
    return names;
}

} // namespace

bool hasRouteToInternet()
{
    const QSet<QString> routed = interfacesOfDefaultRoutes();
    const auto isUsable = [&routed](const QNetworkInterface &it) {
        const auto addresses = it.addressEntries();
        return routed.contains(it.name()) &&
               it.flags().testFlags(QNetworkInterface::IsUp | QNetworkInterface::IsRunning) &&
               !it.flags().testFlag(QNetworkInterface::IsLoopBack) &&
               std::any_of(addresses.begin(), addresses.end(),
                           [](const QNetworkAddressEntry &entry) { return !entry.ip().isLinkLocal(); });
    };
    const auto all = QNetworkInterface::allInterfaces();
    return std::any_of(all.begin(), all.end(), isUsable);
}

void watchNetworkInterfaces(const QObject &context, std::function<void()> changed)
{
    QObject::connect(&InterfaceWatch::ofApplication().notifier, &QSocketNotifier::activated, &context,
                     std::move(changed));
}

} // namespace orvel
