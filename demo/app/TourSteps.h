#pragma once

#include <QString>
#include <functional>
#include <vector>

namespace orvel {

class Visitor;

// One step of a tour: what to do, what to wait for, and the picture to leave of it.
struct TourStep
{
    std::function<bool(Visitor &)> act; // tried until it returns true
    QString sees;                       // to be in sight after it; empty: no text
    double rest;                        // seconds from then to the picture or the next step
    QString picture;                    // its name; none when empty
};

// Through every screen of the client, with the demo station's radios and accounts.
std::vector<TourStep> tourSteps();

} // namespace orvel
