// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
//
// From exec to the first painted window, and private memory at rest: the client on the everyday world beside an empty
// window. The two take turns on one virtual display, so that whatever else the machine does meets both.
#include "process.h"

#include <benchmark/benchmark.h>
#include <xcb/xcb.h>

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>
#include <memory>
#include <sstream>
#include <stdexcept>
#include <thread>
#include <vector>

// This program has no Qt in it: pages that it shared with the measured programs would not count as theirs. Another Qt
// program that runs meanwhile does the same harm, to the floor most of all: measure on a machine without one.
using namespace std::chrono_literals;
using quillfen::e2e::Clock;
using quillfen::e2e::displayIn;
using quillfen::e2e::Environment;
using quillfen::e2e::listensAt;
using quillfen::e2e::Process;
using quillfen::e2e::waitFor;

// How the test programs' waiting passes its time; a hundredth of what is measured.
void quillfen::e2e::deliverEvents(std::chrono::milliseconds)
{
    std::this_thread::sleep_for(300us);
}

namespace {

constexpr int turns = 15;

template <class Reply>
using Owned = std::unique_ptr<Reply, decltype(&std::free)>;

template <class Reply>
Owned<Reply> owned(Reply *reply)
{
    return {reply, &std::free};
}

void require(bool holds, const char *problem)
{
    if (!holds) {
        throw std::runtime_error(problem);
    }
}

/// The display's own view of its windows: neither program is changed for the measurement.
class Screen final {
public:
    explicit Screen(const std::string &display) : m_connection(xcb_connect(display.c_str(), nullptr))
    {
        require(!xcb_connection_has_error(m_connection), "the display cannot be reached");
        m_root = xcb_setup_roots_iterator(xcb_get_setup(m_connection)).data->root;
    }
    ~Screen() { xcb_disconnect(m_connection); }
    Screen(const Screen &) = delete;
    Screen &operator=(const Screen &) = delete;

    /// Whether a window of a main window's size shows its own pixels. Qt's windows have no background: until the
    /// program paints they keep the black of the empty screen.
    bool showsPaintedWindow() const
    {
        const auto tree = owned(xcb_query_tree_reply(m_connection, xcb_query_tree(m_connection, m_root), nullptr));
        require(tree != nullptr, "the display is gone");
        const xcb_window_t *windows = xcb_query_tree_children(tree.get());
        return std::any_of(windows, windows + xcb_query_tree_children_length(tree.get()),
                           [this](xcb_window_t window) { return painted(window); });
    }

private:
    bool painted(xcb_window_t window) const
    {
        const auto attributes = owned(
            xcb_get_window_attributes_reply(m_connection, xcb_get_window_attributes(m_connection, window), nullptr));
        const auto place = owned(xcb_get_geometry_reply(m_connection, xcb_get_geometry(m_connection, window), nullptr));
        if (!attributes || attributes->map_state != XCB_MAP_STATE_VIEWABLE || !place || place->width < 600) {
            return false;
        }
        for (const int part : {1, 2, 3}) {
            if (!pixel(window, place->width * part / 4, place->height * part / 4)) {
                return false;
            }
        }
        return true;
    }

    unsigned pixel(xcb_window_t window, int x, int y) const
    {
        const auto image = owned(xcb_get_image_reply(m_connection,
                                                     xcb_get_image(m_connection, XCB_IMAGE_FORMAT_Z_PIXMAP, window,
                                                                   static_cast<std::int16_t>(x),
                                                                   static_cast<std::int16_t>(y), 1, 1, 0x00ffffff),
                                                     nullptr));
        if (!image) {
            return 0;
        }
        const std::uint8_t *bytes = xcb_get_image_data(image.get());
        return static_cast<unsigned>(bytes[0] | bytes[1] << 8 | bytes[2] << 16);
    }

    xcb_connection_t *m_connection;
    xcb_window_t m_root = 0;
};

struct Run {
    double seconds = 0;
    double bytes = 0;
};

// What belongs to a process alone, in bytes.
double privateMemory(pid_t process)
{
    std::ifstream rollup("/proc/" + std::to_string(process) + "/smaps_rollup");
    double kilobytes = 0;
    for (std::string line; std::getline(rollup, line);) {
        std::istringstream words(line);
        std::string name;
        double amount = 0;
        if (words >> name >> amount && (name == "Private_Clean:" || name == "Private_Dirty:")) {
            kilobytes += amount;
        }
    }
    require(kilobytes > 0, "a program ended before its memory was read");
    return kilobytes * 1024;
}

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

/// The surroundings of both programs: a display, a session bus, the bundled agent, folders of their own.
class Surroundings final {
public:
    Surroundings()
    {
        std::filesystem::permissions(m_folder, std::filesystem::perms::owner_all);
        start({"Xvfb", "-displayfd", "1", "-screen", "0", "1600x1000x24", "-nolisten", "tcp", "-noreset"}, "display");
        require(waitFor([this] { return !displayNumber().empty(); }), "there is no display");
        m_environment["DISPLAY"] = ":" + displayNumber();
        const std::string bus = m_folder + "/bus";
        const std::string socket = m_environment.at("QUILL_AGENT_SOCKET");
        start({"dbus-daemon", "--session", "--nofork", "--address=unix:path=" + bus}, "bus");
        start({QUILLFEN_LOCALAGENT, "--world", "everyday", "--socket", socket, "--home", m_folder}, "agent");
        require(waitFor([&] { return listensAt(bus) && listensAt(socket); }), "the agent does not listen");
        m_screen = std::make_unique<Screen>(m_environment.at("DISPLAY"));
    }
    ~Surroundings()
    {
        m_screen.reset();
        while (!m_processes.empty()) {
            m_processes.pop_back();
        }
        std::filesystem::remove_all(m_folder);
    }
    Surroundings(const Surroundings &) = delete;
    Surroundings &operator=(const Surroundings &) = delete;

    Run run(const std::string &program) const
    {
        require(waitFor([this] { return !m_screen->showsPaintedWindow(); }), "a window stays after its program");
        const auto start = Clock::now();
        const Process process({program}, m_environment, m_folder + "/program.log");
        require(waitFor([this] { return m_screen->showsPaintedWindow(); }), "no window is painted");
        const std::chrono::duration<double> taken = Clock::now() - start;
        return {taken.count(), memoryAtRest(process.id())};
    }

private:
    static std::string privateFolder()
    {
        std::string pattern = std::filesystem::temp_directory_path() / "quillfen-bench.XXXXXX";
        require(mkdtemp(pattern.data()) != nullptr, "no folder for the run");
        return pattern;
    }

    void start(const std::vector<std::string> &command, const std::string &name)
    {
        m_processes.push_back(std::make_unique<Process>(command, m_environment, m_folder + "/" + name + ".log"));
    }

    std::string displayNumber() const { return displayIn(m_processes.front()->output()); }

    std::string m_folder = privateFolder();
    Environment m_environment{{"PATH", std::getenv("PATH")},
                              {"LANG", "C.UTF-8"},
                              {"HOME", m_folder},
                              {"XDG_RUNTIME_DIR", m_folder},
                              {"DBUS_SESSION_BUS_ADDRESS", "unix:path=" + m_folder + "/bus"},
                              {"QUILL_AGENT_SOCKET", m_folder + "/agent.sock"},
                              {"QT_QPA_PLATFORM", "xcb"}};
    std::vector<std::unique_ptr<Process>> m_processes;
    std::unique_ptr<Screen> m_screen;
};

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
        surroundings.run(QUILLFEN_EMPTYWINDOW);
        surroundings.run(QUILLFEN_CLIENT);
        for (int turn = 0; turn < turns; ++turn) {
            floor.push_back(surroundings.run(QUILLFEN_EMPTYWINDOW));
            ours.push_back(surroundings.run(QUILLFEN_CLIENT));
        }
    }
    report("empty_window", floor, floor);
    report("client", ours, floor);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
