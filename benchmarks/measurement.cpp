// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "measurement.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <ctime>
#include <valgrind/callgrind.h>

namespace Measurement {

namespace {

bool quick = false;

double time(clockid_t clock)
{
    timespec value;
    clock_gettime(clock, &value);
    return double(value.tv_sec) * 1e9 + double(value.tv_nsec);
}

double timeOf(clockid_t clock, const std::function<void()> &call)
{
    const double start = time(clock);
    CALLGRIND_TOGGLE_COLLECT;
    call();
    CALLGRIND_TOGGLE_COLLECT;
    return time(clock) - start;
}

std::string limit(const char *name, double value)
{
    return std::isfinite(value) ? ", \"" + std::string(name) + "\": " + std::to_string(value) : std::string();
}

void count(const std::string &comparison, const char *side, const Way &way, int times)
{
    way.round();
    CALLGRIND_ZERO_STATS;
    for (int i = 0; i < times; ++i)
        way.round();
    dumpInstructions(comparison, side);
}

} // namespace

void begin(int argc, char **argv)
{
    quick = std::any_of(
        argv, argv + argc, [](const char *word) { return std::strcmp(word, "--quick") == 0; });
}

int rounds(int full)
{
    if (countsInstructions())
        return 1;
    return quick ? std::max(full / 10, 3) : full;
}

bool countsInstructions()
{
    return RUNNING_ON_VALGRIND;
}

double processorTime(const std::function<void()> &call)
{
    return timeOf(CLOCK_THREAD_CPUTIME_ID, call);
}

double wallTime(const std::function<void()> &call)
{
    return timeOf(CLOCK_MONOTONIC, call);
}

void countFromHere()
{
    CALLGRIND_TOGGLE_COLLECT;
}

void countAnew()
{
    CALLGRIND_ZERO_STATS;
}

void endCount()
{
    CALLGRIND_DUMP_STATS;
}

double now()
{
    return time(CLOCK_MONOTONIC);
}

double quantile(std::vector<double> values, double fraction)
{
    const auto place = values.begin() + std::ptrdiff_t(double(values.size() - 1) * fraction);
    std::nth_element(values.begin(), place, values.end());
    return *place;
}

void print(const std::string &comparison, const char *unit, const std::string &baseName, double base,
           const std::string &otherName, double other, const Goal &goal)
{
    std::printf("{\"comparison\": \"%s\", \"unit\": \"%s\", \"base\": {\"name\": \"%s\", \"value\": %.17g}, "
                "\"other\": {\"name\": \"%s\", \"value\": %.17g}, \"at_least\": %g%s}\n",
                comparison.c_str(), unit, baseName.c_str(), base, otherName.c_str(), other, goal.atLeast,
                limit("at_most", goal.atMost).c_str());
    std::fflush(stdout);
}

void printInstructions(const std::string &comparison, double base, double other)
{
    std::printf("{\"comparison\": \"%s\", \"instructions\": {\"base\": %.0f, \"other\": %.0f}}\n",
                comparison.c_str(), base, other);
    std::fflush(stdout);
}

void printMedians(const std::string &comparison, const Samples &base, const Samples &other, const Goal &goal)
{
    print(comparison, "ns", base.name, quantile(base.values, 0.5), other.name, quantile(other.values, 0.5),
          goal);
}

void compare(const std::string &comparison, const Way &base, const Way &other, const Goal &goal, int full)
{
    const int times = rounds(full);
    if (countsInstructions()) {
        count(comparison, "base", base, times);
        count(comparison, "other", other, times);
        return;
    }
    base.round();
    other.round();
    Samples bases{base.name, {}};
    Samples others{other.name, {}};
    for (int i = 0; i < times; ++i) {
        bases.values.push_back(base.round());
        others.values.push_back(other.round());
    }
    printMedians(comparison, bases, others, goal);
}

void dumpInstructions(const std::string &comparison, const char *side)
{
    if (!countsInstructions())
        return;
    endCount();
    std::printf("{\"comparison\": \"%s\", \"counted\": \"%s\"}\n", comparison.c_str(), side);
    std::fflush(stdout);
}

} // namespace Measurement
