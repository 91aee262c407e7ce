// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_MEASUREMENT_H
#define CONNUI_MEASUREMENT_H

#include <functional>
#include <limits>
#include <string>
#include <vector>

/**
 * Lines of the table of scripts/bench that no function in a loop can give: what crosses processes, or counts
 * but a part of each round.
 *
 * Two sides take turns, so that whatever else the machine does strikes both. A program prints its lines as
 * JSON, one a line. Started under callgrind it has the instructions of each side dumped apart, and prints
 * whose they are, dump by dump.
 */
namespace Measurement {

/** The ratios, other to base, that a line is meant to come out at. */
struct Goal
{
    double atLeast = 0;
    double atMost = std::numeric_limits<double>::infinity();
};

/** One side of a line that is measured round by round: its name, and what does a round and returns its
 * figure. */
struct Way
{
    std::string name;
    std::function<double()> round;
};

/** One side of a line with its figures. */
struct Samples
{
    std::string name;
    std::vector<double> values;
};

/** Reads the arguments that every program takes: --quick for a tenth of the rounds. */
void begin(int argc, char **argv);

/** Returns how many rounds to do where a whole run does \a full. */
int rounds(int full);

/** Returns whether instructions are counted. A round is as good as many then, but takes fifty times as long.
 */
bool countsInstructions();

/** Returns the nanoseconds of processor time that this thread takes for \a call. Its instructions are
 * counted. */
double processorTime(const std::function<void()> &call);

/** Returns the nanoseconds that pass during \a call. Its instructions are counted, on this thread. */
double wallTime(const std::function<void()> &call);

/** Counts the instructions of this thread from here on, for a subject that is not a single call. */
void countFromHere();

/** Forgets what has been counted so far, in a process of which all is counted. */
void countAnew();

/** Returns the nanoseconds since some time in the past. */
double now();

/** Returns the value below which \a fraction of \a values lie. */
double quantile(std::vector<double> values, double fraction);

/** Prints a line with a figure for each side. \a unit is "ns", "bytes" or "" for numbers of things. */
void print(const std::string &comparison, const char *unit, const std::string &baseName, double base,
           const std::string &otherName, double other, const Goal &goal);

/** Prints the instructions of both sides of a line that other processes have counted. */
void printInstructions(const std::string &comparison, double base, double other);

/** Prints the line of the medians. */
void printMedians(const std::string &comparison, const Samples &base, const Samples &other, const Goal &goal);

/** Does rounds() of \a full of each side by turns, after one of each that does not count, and prints the line
 * of the medians. */
void compare(const std::string &comparison, const Way &base, const Way &other, const Goal &goal, int full);

/** Ends what is counted since the last end, in a process of which all is counted. */
void endCount();

/** Ends what is counted for a side of a line; when nothing is counted, does nothing. \a side is "base" or
 * "other", or empty when nobody wants to know. */
void dumpInstructions(const std::string &comparison, const char *side);

} // namespace Measurement

#endif
