#include "support/TestLoop.h"

#include "platform/foundation/MainQueue.h"
#include "platform/foundation/RunLoop.h"

#include <QCoreApplication>
#include <QElapsedTimer>

namespace orvel::test {

bool waitUntil(const std::function<bool()> &condition, double seconds)
{
    QElapsedTimer timer;
    timer.start();
    while (!condition()) {
        if (double(timer.elapsed()) > seconds * 1000)
            return false;
        QCoreApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents, 5);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
    return true;
}

void letEventsRun()
{
    for (int i = 0; i < 5 || !MainQueue::isEmpty(); ++i)
        QCoreApplication::processEvents();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

TakenClock::TakenClock() { RunLoop::main().takeClock(); }
TakenClock::~TakenClock() { RunLoop::main().returnClock(); }
void TakenClock::turn(double seconds) { RunLoop::main().turn(seconds); }

bool TakenClock::turnUntil(const std::function<bool()> &condition)
{
    QElapsedTimer sinceLast;
    sinceLast.start();
    return waitUntil([&] {
        turn(double(sinceLast.restart()) / 1000);
        return condition();
    });
}

} // namespace orvel::test
