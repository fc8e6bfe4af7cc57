// An empty Qt Quick window of a phone's size. Prints when its first frame was there, in ms on the system's
// monotonic clock, and ends.

#include <QElapsedTimer>
#include <QGuiApplication>
#include <QQmlApplicationEngine>
#include <QQuickWindow>
#include <cstdio>
#include <ctime>

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
        timespec cpu{};
        clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &cpu);
        std::printf("{\"first\": %lld, \"firstCpu\": %.1f}\n",
                    static_cast<long long>(now.msecsSinceReference()),
                    double(cpu.tv_sec) * 1e3 + double(cpu.tv_nsec) / 1e6);
        QCoreApplication::exit(0);
    });
    return QGuiApplication::exec();
}
