// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
//
// A minute at rest, with an idle agent: processor time and wake-ups of the client with its window closed, beside an
// empty window and beside a program that makes the calls of the 15-second refresh and does nothing else. All of them
// rest side by side, each on a display and a bus of its own, so that whatever else the machine does meets all.
#include "surroundings.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <fstream>
#include <optional>
#include <sstream>
#include <thread>
#include <vector>

using namespace std::chrono_literals;
using quillfen::bench::privateMemory;
using quillfen::bench::require;
using quillfen::bench::Surroundings;
using quillfen::e2e::Clock;
using quillfen::e2e::Process;
using quillfen::e2e::waitFor;

namespace {

constexpr int turns = 3;
constexpr auto minute = 60s;
// Past the start and the wait for an X11 status area, which is asked for ten seconds after it.
constexpr auto settling = 20s;
// A minute that begins this long after a refresh, and no longer than the second, has four of them in it.
constexpr auto afterRefresh = 3s;
constexpr auto longestAfterRefresh = 5s;
constexpr auto refreshInterval = 15s;

/// What the kernel has counted for all threads of a process so far.
struct Counters {
    double seconds = 0;     ///< of processor time
    double wakeUps = 0;     ///< each time a thread had gone to sleep by itself and went on
    double preemptions = 0; ///< each time a thread had to make room for another program's
    int threads = 0;
};

void addStatus(const std::filesystem::path &thread, Counters &counters)
{
    std::ifstream status(thread / "status");
    for (std::string line; std::getline(status, line);) {
        std::istringstream words(line);
        std::string name;
        double count = 0;
        words >> name >> count;
        counters.wakeUps += name == "voluntary_ctxt_switches:" ? count : 0;
        counters.preemptions += name == "nonvoluntary_ctxt_switches:" ? count : 0;
    }
}

Counters countersOf(pid_t process)
{
    Counters counters;
    for (const auto &thread : std::filesystem::directory_iterator("/proc/" + std::to_string(process) + "/task")) {
        double nanoseconds = 0;
        std::ifstream(thread.path() / "schedstat") >> nanoseconds;
        counters.seconds += nanoseconds / 1e9;
        addStatus(thread.path(), counters);
        ++counters.threads;
    }
    return counters;
}

Counters operator-(const Counters &later, const Counters &earlier)
{
    return {later.seconds - earlier.seconds, later.wakeUps - earlier.wakeUps, later.preemptions - earlier.preemptions,
            later.threads};
}

enum class Window { Open, Closed };
enum class Area { None, There };

/// What is measured, and where.
struct Subject {
    std::string name;
    std::vector<std::string> command;
    Window window = Window::Closed;
    Area area = Area::None;
};

/// Those that rest side by side, before agents of one world. One of them is the floor of all.
struct Group {
    std::string world;
    std::vector<Subject> subjects;
};

constexpr auto floorName = "refresh_alone";

const std::vector<Group> &groups()
{
    static const Subject floor{floorName, {QUILLFEN_RESTFLOOR}};
    static const Subject closed{"client_closed_icon", {QUILLFEN_CLIENT}, Window::Closed, Area::There};
    static const Subject open{"client_open", {QUILLFEN_CLIENT}, Window::Open};
    static const std::vector<Group> all{
        {"everyday",
         {floor,
          {"empty_window_hidden", {QUILLFEN_EMPTYWINDOW, "--hidden"}},
          {"empty_window_open", {QUILLFEN_EMPTYWINDOW}, Window::Open},
          {"client_background", {QUILLFEN_CLIENT, "--background"}},
          {"client_background_icon", {QUILLFEN_CLIENT, "--background"}, Window::Closed, Area::There},
          closed,
          open}},
        {"large", {floor, closed, open}},
    };
    return all;
}

/// One program at rest, from its start to the end of its minute.
class Rest final {
public:
    Rest(const Subject &subject, const std::string &world) : m_subject(subject), m_surroundings(world)
    {
        if (subject.area == Area::There) {
            m_surroundings.start({QUILLFEN_STATUSAREA}, "statusarea");
        }
        m_process = m_surroundings.run(subject.command);
        m_started = m_lastWork = Clock::now();
    }

    /// Looks at the program, which does not notice; true once its minute is over.
    bool look()
    {
        if (m_used) {
            return true;
        }
        require(m_process->running(), "a program ended while it was measured");
        const auto now = Clock::now();
        const Counters counters = countersOf(m_process->id());
        if (counters.wakeUps > m_last.wakeUps) {
            m_lastWork = now;
        }
        m_last = counters;
        if (!m_begin && now - m_started > settling && !closesWindow()) {
            begin(now);
        } else if (m_begin && now - m_begun >= minute) {
            m_used = counters - *m_begin;
        }
        return m_used.has_value();
    }

    [[nodiscard]] const Counters &used() const { return m_used.value(); }

private:
    /// Whether the window had still to be asked.
    [[nodiscard]] bool closesWindow() const
    {
        const auto &screen = m_surroundings.screen();
        if (m_subject.window == Window::Open || !screen.showsWindow()) {
            return false;
        }
        screen.closeWindows();
        return true;
    }

    void begin(Clock::time_point now)
    {
        const auto quiet = now - m_lastWork;
        const bool isAfterRefresh = quiet > afterRefresh && quiet < longestAfterRefresh;
        const bool refreshesNever = quiet > 2 * refreshInterval;
        if (!isAfterRefresh && !refreshesNever) {
            return;
        }
        const bool wantsWindow = m_subject.window == Window::Open;
        require(m_surroundings.screen().showsWindow() == wantsWindow, "a window is not as it is to be");
        m_begin = m_last;
        m_begun = now;
    }

    const Subject &m_subject;
    Surroundings m_surroundings;
    std::unique_ptr<Process> m_process;
    Clock::time_point m_started;
    Clock::time_point m_lastWork;
    Clock::time_point m_begun;
    Counters m_last;
    std::optional<Counters> m_begin;
    std::optional<Counters> m_used;
};

using Runs = std::vector<Counters>;

/// Adds to the runs of each subject what it used in one minute.
void restTogether(const Group &group, std::vector<Runs> &runs)
{
    std::vector<std::unique_ptr<Rest>> all;
    for (const Subject &subject : group.subjects) {
        all.push_back(std::make_unique<Rest>(subject, group.world));
    }
    const auto allLook = [&] {
        std::this_thread::sleep_for(100ms);
        return std::count_if(all.begin(), all.end(), [](const auto &rest) { return !rest->look(); }) == 0;
    };
    require(waitFor(allLook, 5 * minute), "a program does not come to rest");
    for (std::size_t subject = 0; subject < all.size(); ++subject) {
        runs[subject].push_back(all[subject]->used());
    }
}

double median(const Runs &runs, double Counters::*figure)
{
    std::vector<double> values;
    for (const Counters &used : runs) {
        values.push_back(used.*figure);
    }
    std::sort(values.begin(), values.end());
    return values[values.size() / 2];
}

/// Hands the medians to the usual report.
void report(const std::string &name, const Runs &runs, const Runs &floor)
{
    const double seconds = median(runs, &Counters::seconds);
    const double wakeUps = median(runs, &Counters::wakeUps);
    const double preemptions = median(runs, &Counters::preemptions);
    const double floorSeconds = median(floor, &Counters::seconds);
    const double floorWakeUps = median(floor, &Counters::wakeUps);
    const int threads = runs.back().threads;
    benchmark::RegisterBenchmark(name.c_str(),
                                 [=](benchmark::State &state) {
                                     for ([[maybe_unused]] const auto &unused : state) {
                                         state.SetIterationTime(seconds);
                                     }
                                     state.counters["cpu_ms_a_minute"] = seconds * 1e3;
                                     state.counters["cpu_x_refresh"] = seconds / floorSeconds;
                                     state.counters["wakeups_a_second"] = wakeUps / 60;
                                     state.counters["wakeups_x_refresh"] = wakeUps / floorWakeUps;
                                     state.counters["preemptions_a_second"] = preemptions / 60;
                                     state.counters["program_threads"] = threads;
                                 })
        ->UseManualTime()
        ->Iterations(1)
        ->Unit(benchmark::kMillisecond);
}

void measure(const Group &group)
{
    std::vector<Runs> runs(group.subjects.size());
    for (int turn = 0; turn < turns; ++turn) {
        restTogether(group, runs);
    }
    const auto floor = std::find_if(group.subjects.begin(), group.subjects.end(),
                                    [](const Subject &subject) { return subject.name == floorName; });
    for (std::size_t subject = 0; subject < runs.size(); ++subject) {
        report(group.world + "/" + group.subjects[subject].name, runs[subject],
               runs[static_cast<std::size_t>(floor - group.subjects.begin())]);
    }
}

} // namespace

int main(int argc, char **argv)
{
    benchmark::Initialize(&argc, argv);
    for (const Group &group : groups()) {
        measure(group);
    }
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
