// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
//
// What hours of refreshes leave behind: the whole window over the bundled agent's worlds, one refresh after the other
// and every view rendered after each, and the memory after a tenth of an hour's worth, an hour's and ten hours'.
#include "surroundings.h"

#include "shell/mainwindow.h"
#include "state/appstate.h"
#include "ui/style/housestyle.h"

#include <QApplication>
#include <QEventLoop>
#include <QTemporaryDir>
#include <QTimer>

#include <benchmark/benchmark.h>

#include <malloc.h>
#include <unistd.h>

#include <chrono>
#include <optional>
#include <string>

namespace {

using namespace quillfen;
using namespace std::chrono_literals;

constexpr int tenth = 24;
constexpr int hour = 240;
constexpr int tenHours = 2'400;

/// The views' frame and a little more: each of them has rendered when it is over.
constexpr auto frame = 18ms;

void turnLoop(std::chrono::milliseconds duration)
{
    QEventLoop loop;
    QTimer::singleShot(duration, Qt::PreciseTimer, &loop, &QEventLoop::quit);
    loop.exec();
}

/// An agent, and the client's window before it with a volume selected.
class Client final {
public:
    Client(const std::string &world, bool isShown)
        : m_agent({QUILLFEN_LOCALAGENT, "--world", world, "--socket", inFolder("agent.sock"), "--home", inFolder("")},
                  {{"PATH", "/usr/bin:/bin"}}, inFolder("agent.log"))
    {
        const std::string socket = inFolder("agent.sock");
        bench::require(e2e::waitFor([&] { return e2e::listensAt(socket); }), "the agent does not listen");
        qputenv("QUILL_AGENT_SOCKET", socket.c_str());
        m_state->connect();
        m_window.emplace(m_state);
        m_window->show();
        refresh();
        bench::require(!m_state->volumes().isEmpty(), "the refresh has brought no volumes");
        m_state->selectedVolume = num(m_state->volumes().first(), "id");
        turnLoop(500ms);
        m_window->setVisible(isShown);
    }
    ~Client()
    {
        m_window.reset();
        m_state->shutDown();
    }
    Client(const Client &) = delete;
    Client &operator=(const Client &) = delete;

    void refresh()
    {
        QCoro::waitFor(m_state->refresh());
        turnLoop(frame);
        ++m_refreshes;
    }

    void refreshUpTo(int count)
    {
        while (m_refreshes < count) {
            refresh();
        }
    }

private:
    [[nodiscard]] std::string inFolder(const char *name) const { return m_folder.path().toStdString() + "/" + name; }

    QTemporaryDir m_folder;
    e2e::Process m_agent;
    std::shared_ptr<AppState> m_state = AppState::create(Timing{.refreshInterval = 24h}); ///< one refresh at a time
    std::optional<MainWindow> m_window;
    int m_refreshes = 0;
};

struct Memory {
    double live = 0;      ///< what the program holds of the heap
    double ofProcess = 0; ///< what the kernel holds for the program alone
};

Memory memory()
{
    const struct mallinfo2 heap = mallinfo2();
    return {static_cast<double>(heap.uordblks + heap.hblkhd), bench::privateMemory(getpid())};
}

void note(benchmark::State &run, const std::string &name, const Memory &now)
{
    run.counters["live_kB_" + name] = now.live / 1e3;
    run.counters["private_kB_" + name] = now.ofProcess / 1e3;
}

void refreshForHours(benchmark::State &run, const std::string &world, bool isShown, int most)
{
    for ([[maybe_unused]] const auto turn : run) {
        Client client(world, isShown);
        client.refreshUpTo(tenth);
        const Memory first = memory();
        note(run, "24", first);
        client.refreshUpTo(hour);
        Memory last = memory();
        note(run, "240", last);
        if (most > hour) {
            client.refreshUpTo(most);
            last = memory();
            note(run, "2400", last);
        }
        run.counters["live_growth_%"] = (last.live / first.live - 1) * 100;
        run.counters["private_growth_%"] = (last.ofProcess / first.ofProcess - 1) * 100;
    }
}

BENCHMARK_CAPTURE(refreshForHours, everyday_closed, "everyday", false, tenHours)
    ->Iterations(1)
    ->Unit(benchmark::kSecond);
BENCHMARK_CAPTURE(refreshForHours, everyday_open, "everyday", true, tenHours)->Iterations(1)->Unit(benchmark::kSecond);
BENCHMARK_CAPTURE(refreshForHours, large_closed, "large", false, hour)->Iterations(1)->Unit(benchmark::kSecond);
BENCHMARK_CAPTURE(refreshForHours, large_open, "large", true, hour)->Iterations(1)->Unit(benchmark::kSecond);

} // namespace

int main(int argc, char **argv)
{
    // No desktop of whoever runs this has a part in it.
    qunsetenv("DBUS_SESSION_BUS_ADDRESS");
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
    applyHouseLook(application);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
