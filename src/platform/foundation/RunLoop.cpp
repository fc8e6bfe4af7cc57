#include "platform/foundation/RunLoop.h"

#include "platform/foundation/MainQueue.h"

#include <QCoreApplication>
#include <QThread>
#include <algorithm>
#include <chrono>
#include <cmath>

namespace orvel {

namespace {

double steadySeconds()
{
    return std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch()).count();
}

} // namespace

struct RunLoop::Entry
{
    Function function;
    Lane lane;
    double repetition; // 0: once
};

RunLoop &RunLoop::current()
{
    thread_local RunLoop loop;
    return loop;
}

RunLoop &RunLoop::main()
{
    static RunLoop &loop = current();
    return loop;
}

RunLoop::RunLoop()
{
    m_timer.setSingleShot(true);
    m_timer.setTimerType(Qt::PreciseTimer);
    QObject::connect(&m_timer, &QTimer::timeout, &m_timer, [this] {
        // One entry a turn of the event loop, so that a long row of due entries does not starve drawing.
        runOneDue();
        arm();
    });
}

RunLoop::~RunLoop() = default;

double RunLoop::now() const { return m_clockTaken ? m_takenNow : steadySeconds(); }

double RunLoop::secondsSince1970() const
{
    if (m_clockTaken)
        return m_taken1970;
    return std::chrono::duration<double>(std::chrono::system_clock::now().time_since_epoch()).count();
}

RunLoop::Token RunLoop::after(double seconds, Function function, Lane lane)
{
    return schedule(seconds, std::move(function), lane, 0);
}

RunLoop::Token RunLoop::every(double seconds, Function function, Lane lane)
{
    Q_ASSERT(seconds > 0);
    return schedule(seconds, std::move(function), lane, seconds);
}

RunLoop::Token RunLoop::schedule(double seconds, Function function, Lane lane, double repetition)
{
    const Token token = ++m_lastToken;
    const double due = now() + std::max(0.0, seconds);
    m_entries.emplace(Key{due, token}, std::make_shared<Entry>(Entry{std::move(function), lane, repetition}));
    m_dueOf.emplace(token, due);
    arm();
    return token;
}

void RunLoop::cancel(Token token)
{
    const auto due = m_dueOf.find(token);
    if (due == m_dueOf.end())
        return;
    // The entry is dropped last: what its function held may come back here when it goes.
    const auto node = m_entries.extract(Key{due->second, token});
    m_dueOf.erase(due);
    arm();
}

void RunLoop::cancelAll()
{
    const auto dropped = std::exchange(m_entries, {});
    m_dueOf.clear();
    arm();
}

void RunLoop::holdScreens() { ++m_holds; }

void RunLoop::releaseScreens()
{
    Q_ASSERT(m_holds > 0);
    --m_holds;
    arm();
}

std::map<RunLoop::Key, std::shared_ptr<RunLoop::Entry>>::iterator RunLoop::firstRunnable()
{
    return std::find_if(m_entries.begin(), m_entries.end(), [this](const auto &entry) {
        return m_holds == 0 || entry.second->lane == Lane::Service;
    });
}

bool RunLoop::runOneDue()
{
    const auto first = firstRunnable();
    if (first == m_entries.end() || first->first.first > now())
        return false;
    const auto [due, token] = first->first;
    const std::shared_ptr<Entry> entry = first->second;
    m_entries.erase(first);
    m_dueOf.erase(token);
    if (entry->repetition > 0) {
        // Missed beats are skipped, the rhythm is kept.
        const double missed = std::floor((now() - due) / entry->repetition);
        const double next = due + (missed + 1) * entry->repetition;
        m_entries.emplace(Key{next, token}, entry);
        m_dueOf.emplace(token, next);
    }
    arm();
    const bool outer = m_inScreenEntry;
    m_inScreenEntry = entry->lane == Lane::Screen;
    entry->function();
    m_inScreenEntry = outer;
    return true;
}

void RunLoop::arm()
{
    const auto first = firstRunnable();
    if (m_clockTaken || first == m_entries.end()) {
        m_timer.stop();
        return;
    }
    const double seconds = std::max(0.0, first->first.first - now());
    m_timer.start(int(std::min(std::ceil(seconds * 1000), 86'400'000.0)));
}

void RunLoop::takeClock(double secondsSince1970)
{
    m_takenNow = now();
    m_taken1970 = secondsSince1970;
    m_clockTaken = true;
    m_timer.stop();
}

void RunLoop::turn(double seconds)
{
    Q_ASSERT(m_clockTaken);
    const double target = m_takenNow + seconds;
    const auto moveTo = [this](double time) {
        m_taken1970 += time - m_takenNow;
        m_takenNow = time;
    };
    const auto letEventsRun = [] {
        do
            QCoreApplication::processEvents();
        while (!MainQueue::isEmpty());
    };
    letEventsRun();
    for (auto first = firstRunnable(); first != m_entries.end() && first->first.first <= target;
         first = firstRunnable()) {
        moveTo(std::max(m_takenNow, first->first.first));
        runOneDue();
        letEventsRun();
    }
    moveTo(std::max(m_takenNow, target));
}

void RunLoop::returnClock()
{
    m_clockTaken = false;
    cancelAll();
}

} // namespace orvel
