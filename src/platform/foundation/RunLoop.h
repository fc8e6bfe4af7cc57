#pragma once

#include <QTimer>
#include <functional>
#include <map>
#include <memory>

namespace orvel {

// Delayed performs, repeating timers and the time of day of one thread, on its event loop. Each thread has
// its own, current(); main() is the main thread's. Everything that waits goes through here, so that a test
// can turn the clock. What a scheduled function holds stays alive until it has run or was cancelled.
class RunLoop
{
public:
    // A wait for a request holds Screen entries until it is over; Service entries (a stall, an idle time-out)
    // go on.
    enum class Lane { Screen, Service };
    using Token = quint64; // never 0
    using Function = std::function<void()>;

    static RunLoop &current();
    // The main thread's run loop; the first call must come from the main thread.
    static RunLoop &main();

    ~RunLoop();

    // Runs `function` once, `seconds` from now. Of equal due times the one asked for first runs first.
    Token after(double seconds, Function function, Lane lane = Lane::Screen);
    // Runs `function` every `seconds` (more than 0). Beats that were missed are skipped.
    Token every(double seconds, Function function, Lane lane = Lane::Service);
    // An unknown or spent token has no effect. A running function may cancel itself.
    void cancel(Token token);
    // For the end of the application, whose screens the entries may hold.
    void cancelAll();
    // True while a Screen entry runs.
    bool isInScreenEntry() const { return m_inScreenEntry; }

    // Nested: Screen entries wait until every hold has been released.
    void holdScreens();
    void releaseScreens();

    // Seconds on the steady clock, which counts from a moment of its own.
    double now() const;
    // Seconds since 1 January 1970, with fractions.
    double secondsSince1970() const;

    // For tests. From then on time stands still until turn() moves it.
    void takeClock(double secondsSince1970 = 1400000000.0);
    // Moves the clock `seconds` on, stopping at each due time in order and letting posted events run in
    // between.
    void turn(double seconds);
    // Lets time run again and cancels whatever is still scheduled.
    void returnClock();

private:
    RunLoop();
    struct Entry;
    using Key = std::pair<double, Token>;
    Token schedule(double seconds, Function function, Lane lane, double repetition);
    std::map<Key, std::shared_ptr<Entry>>::iterator firstRunnable();
    bool runOneDue();
    void arm();

    std::map<Key, std::shared_ptr<Entry>> m_entries;
    std::map<Token, double> m_dueOf;
    Token m_lastToken = 0;
    int m_holds = 0;
    bool m_inScreenEntry = false;
    bool m_clockTaken = false;
    double m_takenNow = 0;
    double m_taken1970 = 0;
    QTimer m_timer;
};

} // namespace orvel
