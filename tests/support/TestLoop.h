#pragma once

#include <functional>

namespace orvel::test {

// Runs the event loop until `condition` holds. False after `seconds` of real time without it: a test's safety
// net, never a measure of speed.
bool waitUntil(const std::function<bool()> &condition, double seconds = 20);

// Runs what is posted and due now.
void letEventsRun();

// Takes the main run loop's clock for a test's time.
class TakenClock
{
public:
    TakenClock();
    ~TakenClock();
    TakenClock(const TakenClock &) = delete;
    TakenClock &operator=(const TakenClock &) = delete;
    void turn(double seconds);
    // As waitUntil, with the clock going on in real time: while sound is played a connection rests on it
    // between reads.
    bool turnUntil(const std::function<bool()> &condition);
};

} // namespace orvel::test
