// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_COMPARISON_H
#define CONNUI_COMPARISON_H

#include <benchmark/benchmark.h>
#include <limits>
#include <string>

#include "measurement.h"

/** The ratios that a comparison is meant to come out at. */
struct Goal
{
    double atLeast = 0;
    double atMost = std::numeric_limits<double>::max();
};

/** One side of a comparison: its name, and a call whose time is taken over and over. The call returns its
 * result. */
template <typename Call>
struct Side
{
    const char *name;
    Call call;
};
template <typename Call>
Side(const char *, Call) -> Side<Call>;

/** So many calls are counted under callgrind. */
constexpr int countedCalls = 100;

template <typename Call>
void addSide(const std::string &what, const Goal &goal, const char *role, const Side<Call> &side)
{
    auto *added = benchmark::RegisterBenchmark((what + '/' + role + '/' + side.name).c_str(),
                                               [what, role, goal, call = side.call](benchmark::State &state) {
                                                   benchmark::DoNotOptimize(call());
                                                   Measurement::countAnew();
                                                   Measurement::countFromHere();
                                                   for ([[maybe_unused]] const auto &iteration : state)
                                                       benchmark::DoNotOptimize(call());
                                                   Measurement::countFromHere();
                                                   Measurement::dumpInstructions(what, role);
                                                   state.counters["at_least"] = goal.atLeast;
                                                   state.counters["at_most"] = goal.atMost;
                                               });
    // As many on both sides.
    if (Measurement::countsInstructions())
        added->Iterations(countedCalls);
}

/**
 * Adds a line to the table that scripts/bench prints: the time of \a other divided by the time of \a base.
 *
 * Both run in the same process, by turns. No name may hold a slash.
 */
template <typename Base, typename Other>
void compare(const std::string &what, const Side<Base> &base, const Side<Other> &other, const Goal &goal)
{
    addSide(what, goal, "base", base);
    addSide(what, goal, "other", other);
}

#endif
