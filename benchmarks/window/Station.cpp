// A station with so many radios, its pictures those of the demo station in turn:
//   orvel-bench-station RADIOS
// Prints its address. Ends with its input.

#include "api/StationConfiguration.h"
#include "demo/PictureBook.h"
#include "demo/StationApi.h"

#include <QCoreApplication>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <cstdio>

using namespace orvel;
using namespace orvel::demo;

namespace {

QByteArray radios(const QByteArray &few, int count)
{
    QJsonObject answer = QJsonDocument::fromJson(few).object();
    const QJsonArray content = answer["content"].toArray();
    QJsonArray many;
    for (int i = 0; i < count; ++i) {
        QJsonObject radio = content[i % content.size()].toObject();
        radio["id"] = QString::number(1000 + i);
        radio["title"] = QStringLiteral("%1 %2").arg(radio["title"].toString()).arg(i + 1);
        many.append(radio);
    }
    answer["content"] = many;
    return QJsonDocument(answer).toJson();
}

} // namespace

int main(int argc, char *argv[])
{
    QCoreApplication app(argc, argv);
    const int count = QCoreApplication::arguments().value(1).toInt();
    const auto server = WebServer::listen(0);
    if (count <= 0 || !server) {
        std::fprintf(stderr, "usage: orvel-bench-station RADIOS\n");
        return 2;
    }
    const QString address = QStringLiteral("http://127.0.0.1:%1").arg(server->port());
    const StationContent content(address, address);
    PictureBook pictures(content.programmes());
    const StationConfiguration keys = StationConfiguration::compiledIn();
    const StationApi api({keys.stationSigningKey.toUtf8(), keys.stationPublicKey.toUtf8()},
                         radios(content.webradio(), count));
    server->start([&](const WebRequest &request) {
        if (const auto answer = api.answer(request))
            return *answer;
        return pictures.answer(request).value_or(WebAnswer{404, "text/plain", "Nothing here\n"});
    });
    std::printf("%s\n", qUtf8Printable(address));
    std::fflush(stdout);
    while (std::getchar() != EOF) {
    }
}
