// An empty Qt Quick window of a phone's size. Prints when its first frame was there, in ms on the system's
// monotonic clock, and ends.

#include <QElapsedTimer>
#include <QGuiApplication>
#include <QQmlApplicationEngine>
#include <QQuickWindow>
#include <cstdio>

int main(int argc, char *argv[])
{
    QGuiApplication app(argc, argv);
    QQmlApplicationEngine engine;
    engine.loadData("import QtQuick\nWindow { visible: true; width: 375; height: 667 }");
    auto *const window = qobject_cast<QQuickWindow *>(engine.rootObjects().value(0));
    if (!window)
        return 1;
    QObject::connect(window, &QQuickWindow::frameSwapped, &app, [] {
        QElapsedTimer now;
        now.start();
        std::printf("{\"first\": %lld}\n", static_cast<long long>(now.msecsSinceReference()));
        QCoreApplication::exit(0);
    });
    return QGuiApplication::exec();
}
