// Times the JSON codec and its peers on this thread's CPU clock and prints the tables as Markdown.

#include "benchmarks/json/Candidates.h"
#include "benchmarks/json/Payloads.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <ctime>

using namespace orvel::benchmark;

namespace {

constexpr int rounds = 7;
constexpr double secondsOfARound = 0.25;

double cpuSeconds()
{
    timespec now{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
    return double(now.tv_sec) + double(now.tv_nsec) * 1e-9;
}

// One run of `work`, as the mean of as many as fill a round.
double secondsFor(const std::function<void()> &work)
{
    const double start = cpuSeconds();
    double spent = 0;
    int runs = 0;
    while (spent < secondsOfARound) {
        work();
        ++runs;
        spent = cpuSeconds() - start;
    }
    return spent / runs;
}

double median(std::vector<double> values)
{
    std::ranges::sort(values);
    return values[values.size() / 2];
}

struct Row
{
    const char *name;
    std::function<void()> work;
    std::vector<double> speeds{}; // MB/s, one a round
    std::vector<double> ratios{}; // of its time to ours in the same round
};

// The candidates take turns in every round, so that a ratio is of neighbours in time.
void run(const char *heading, double megabytes, std::vector<Row> &rows)
{
    for (const Row &row : rows)
        row.work();
    for (int round = 0; round < rounds; ++round) {
        std::fprintf(stderr, "%s: round %d of %d\n", heading, round + 1, rounds);
        double ours = 0;
        for (Row &row : rows) {
            const double seconds = secondsFor(row.work);
            ours = ours > 0 ? ours : seconds;
            row.speeds.push_back(megabytes / seconds);
            row.ratios.push_back(seconds / ours);
        }
    }
    std::printf("**%s**\n\n| | MB/s | time, ours = 1 |\n|---|---:|---:|\n", heading);
    for (const Row &row : rows)
        std::printf("| %s | %.0f | %.2f |\n", row.name, median(row.speeds), median(row.ratios));
    std::printf("\n");
}

[[noreturn]] void refuse(const char *name)
{
    std::fprintf(stderr, "%s refuses the payload\n", name);
    std::exit(1);
}

void compare(const char *payload, const QByteArray &text)
{
    const double megabytes = double(text.size()) / 1e6;
    std::vector<Row> reading;
    std::vector<Row> writing;
    for (const Candidate &candidate : candidates()) {
        if (!candidate.parse(text))
            refuse(candidate.name);
        reading.push_back({candidate.name, [text, candidate] { candidate.parse(text); }});
        if (candidate.writer)
            writing.push_back({candidate.name, [write = candidate.writer(text)] { write(); }});
    }
    char heading[100];
    std::snprintf(heading, sizeof heading, "Parsing %s (%.1f MB)", payload, megabytes);
    run(heading, megabytes, reading);
    std::snprintf(heading, sizeof heading, "Writing %s again (MB of the text read)", payload);
    run(heading, megabytes, writing);
}

} // namespace

int main()
{
    compare("an API's answer", apiPayload());
    compare("numbers", numberPayload());
}
