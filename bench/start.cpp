// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
//
// From exec to the first painted window, and private memory at rest: the client on the everyday world beside an empty
// window. The two take turns on one virtual display, so that whatever else the machine does meets both.
#include "surroundings.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <memory>
#include <thread>
#include <vector>

// This program has no Qt in it: pages that it shared with the measured programs would not count as theirs. Another Qt
// program that runs meanwhile does the same harm, to the floor most of all: measure on a machine without one.
using namespace std::chrono_literals;
using quillfen::bench::privateMemory;
using quillfen::bench::require;
using quillfen::bench::Surroundings;
using quillfen::e2e::Clock;
using quillfen::e2e::waitFor;

namespace {

constexpr int turns = 15;

struct Run {
    double seconds = 0;
    double bytes = 0;
};

// At rest: three readings in a row that differ by less than a hundredth.
double memoryAtRest(pid_t process)
{
    double last = 0;
    int equal = 0;
    const auto atRest = [&] {
        std::this_thread::sleep_for(300ms);
        const double now = privateMemory(process);
        equal = std::abs(now - last) < now / 100 ? equal + 1 : 0;
        last = now;
        return equal == 3;
    };
    require(waitFor(atRest), "a program's memory does not come to rest");
    return last;
}

Run measure(const Surroundings &surroundings, const std::string &program)
{
    const auto isPainted = [&] { return surroundings.screen().showsPaintedWindow(); };
    require(waitFor([&] { return !isPainted(); }), "a window stays after its program");
    const auto start = Clock::now();
    const auto process = surroundings.run({program});
    require(waitFor(isPainted), "no window is painted");
    const std::chrono::duration<double> taken = Clock::now() - start;
    return {taken.count(), memoryAtRest(process->id())};
}

double median(std::vector<Run> runs, double Run::*figure)
{
    std::sort(runs.begin(), runs.end(), [&](const Run &a, const Run &b) { return a.*figure < b.*figure; });
    return runs[runs.size() / 2].*figure;
}

// Hands the figures that were taken in turns to the usual report, one run a repetition.
void report(const char *name, const std::vector<Run> &runs, const std::vector<Run> &floor)
{
    const double floorSeconds = median(floor, &Run::seconds);
    const double floorBytes = median(floor, &Run::bytes);
    const auto next = std::make_shared<std::size_t>(0);
    const auto replay = [=](benchmark::State &state) {
        const Run &run = runs[(*next)++ % runs.size()];
        for ([[maybe_unused]] const auto &unused : state) {
            state.SetIterationTime(run.seconds);
        }
        state.counters["start_x_floor"] = run.seconds / floorSeconds;
        state.counters["private_MB"] = run.bytes / 1e6;
        state.counters["private_x_floor"] = run.bytes / floorBytes;
    };
    benchmark::RegisterBenchmark(name, replay)
        ->UseManualTime()
        ->Iterations(1)
        ->Repetitions(turns)
        ->ReportAggregatesOnly()
        ->Unit(benchmark::kMillisecond);
}

} // namespace

int main(int argc, char **argv)
{
    benchmark::Initialize(&argc, argv);
    std::vector<Run> floor;
    std::vector<Run> ours;
    {
        const Surroundings surroundings;
        // The first of each warms the page cache and the font cache.
        measure(surroundings, QUILLFEN_EMPTYWINDOW);
        measure(surroundings, QUILLFEN_CLIENT);
        for (int turn = 0; turn < turns; ++turn) {
            floor.push_back(measure(surroundings, QUILLFEN_EMPTYWINDOW));
            ours.push_back(measure(surroundings, QUILLFEN_CLIENT));
        }
    }
    report("empty_window", floor, floor);
    report("client", ours, floor);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
