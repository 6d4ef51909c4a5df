// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
//
// A refresh of many volumes beside as many bare round trips to the same peer, and how long the main thread was away
// from its loop meanwhile.
#include "state/appstate.h"

#include <QCoreApplication>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>

#include <sys/socket.h>
#include <sys/un.h>
#include <time.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <condition_variable>
#include <mutex>
#include <optional>
#include <thread>

namespace {

using namespace quillfen;
using namespace std::chrono_literals;
using std::chrono::steady_clock;

double milliseconds(steady_clock::duration duration)
{
    return std::chrono::duration<double, std::milli>(duration).count();
}

sockaddr_un addressOf(const std::string &path)
{
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    path.copy(address.sun_path, sizeof address.sun_path - 1);
    return address;
}

void sendAll(int socket, std::string_view bytes)
{
    while (!bytes.empty()) {
        const ssize_t sent = ::send(socket, bytes.data(), bytes.size(), MSG_NOSIGNAL);
        if (sent <= 0) {
            return;
        }
        bytes.remove_prefix(static_cast<std::size_t>(sent));
    }
}

/// Calls `use` with each line until the other end closes. Blocking.
template <typename Use>
void readLines(int socket, Use use)
{
    std::string pending;
    std::array<char, 65'536> chunk{};
    for (ssize_t count = 0; (count = ::recv(socket, chunk.data(), chunk.size(), 0)) > 0;) {
        pending.append(chunk.data(), static_cast<std::size_t>(count));
        std::size_t begin = 0;
        for (std::size_t end = 0; (end = pending.find('\n', begin)) != std::string::npos; begin = end + 1) {
            use(std::string_view(pending).substr(begin, end - begin));
        }
        pending.erase(0, begin);
    }
}

std::string volumesAnswer(std::int64_t count)
{
    json::array volumes;
    for (std::int64_t id = 1; id <= count; ++id) {
        const json::object appliance = params("container", "quill-volume-" + std::to_string(id), "port", 40'000 + id);
        volumes.push_back(params("id", id, "name", "volume-" + std::to_string(id), "size_bytes", id << 30,
                                 "presentation_type", "smb", "encryption", "customer", "appliance", appliance,
                                 "created_at", "2026-11-15T21:04:05.123456Z", "history", "60,60,24,30,12,5", "tenant",
                                 "acme"));
    }
    return json::serialize(volumes);
}

/// Answers each request by what its method calls for, with next to no work of its own.
class Peer final {
public:
    explicit Peer(std::int64_t volumes) : m_volumes(volumesAnswer(volumes))
    {
        m_path = m_folder.filePath(QStringLiteral("s")).toStdString();
        m_listener = ::socket(AF_UNIX, SOCK_STREAM, 0);
        const sockaddr_un address = addressOf(m_path);
        ::bind(m_listener, reinterpret_cast<const sockaddr *>(&address), sizeof address);
        ::listen(m_listener, 4);
        m_thread = std::thread([this] {
            for (int client = -1; (client = ::accept(m_listener, nullptr, nullptr)) >= 0; ::close(client)) {
                readLines(client, [this, client](std::string_view line) { answer(client, line); });
            }
        });
    }
    ~Peer()
    {
        ::shutdown(m_listener, SHUT_RDWR);
        m_thread.join();
        ::close(m_listener);
    }
    Peer(const Peer &) = delete;
    Peer &operator=(const Peer &) = delete;

    [[nodiscard]] const std::string &path() const { return m_path; }

private:
    [[nodiscard]] std::string_view resultOf(std::string_view line) const
    {
        const auto asks = [line](std::string_view method) { return line.find(method) != std::string_view::npos; };
        if (asks("volumes.status")) {
            return R"({"appliance":{"online":true,"connected":true,"pending_bytes":5},"offsite":{"percent":87},)"
                   R"("sync":{"local":{"FS_USED_BYTES":123456789012},"remote":{"seq":99}},"state":"running"})";
        }
        if (asks("recoveries.list_for_volume")) {
            return R"({"recoveries":[]})";
        }
        if (asks("volumes.list")) {
            return m_volumes;
        }
        return asks("auth.status") ? R"({"signed_in":true})" : R"({"status":"Running"})";
    }

    void answer(int client, std::string_view line)
    {
        const std::size_t id = line.find(R"("id":)") + 5;
        m_answer.assign(R"({"jsonrpc":"2.0","id":)");
        m_answer.append(line.substr(id, line.find_first_not_of("0123456789", id) - id));
        m_answer.append(R"(,"result":)").append(resultOf(line)).append("}\n");
        sendAll(client, m_answer);
    }

    QTemporaryDir m_folder;
    std::string m_path;
    std::string m_volumes;
    std::string m_answer;
    int m_listener = -1;
    std::thread m_thread;
};

/// The floor: a blocking write, and a reading thread that hands each line over to the one that waits.
class BareClient final {
public:
    explicit BareClient(const std::string &path) : m_socket(::socket(AF_UNIX, SOCK_STREAM, 0))
    {
        const sockaddr_un address = addressOf(path);
        ::connect(m_socket, reinterpret_cast<const sockaddr *>(&address), sizeof address);
        m_reader = std::thread([this] {
            readLines(m_socket, [this](std::string_view line) {
                const std::scoped_lock hold(m_lock);
                m_line = line;
                m_arrived.notify_one();
            });
        });
    }
    ~BareClient()
    {
        ::shutdown(m_socket, SHUT_RDWR);
        m_reader.join();
        ::close(m_socket);
    }
    BareClient(const BareClient &) = delete;
    BareClient &operator=(const BareClient &) = delete;

    void roundTrip(std::string_view request)
    {
        sendAll(m_socket, request);
        std::unique_lock hold(m_lock);
        m_arrived.wait(hold, [this] { return m_line.has_value(); });
        benchmark::DoNotOptimize(m_line->size());
        m_line.reset();
    }

private:
    int m_socket;
    std::thread m_reader;
    std::mutex m_lock;
    std::condition_variable m_arrived;
    std::optional<std::string> m_line;
};

std::chrono::nanoseconds threadTime()
{
    timespec time{};
    ::clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return std::chrono::seconds(time.tv_sec) + std::chrono::nanoseconds(time.tv_nsec);
}

/// Looks in every millisecond. What lies between two looks was spent away from the loop: by the clock on the wall,
/// which counts what the machine gave to others, and by the work this thread did.
class GapMeter final {
public:
    GapMeter()
    {
        m_timer.setTimerType(Qt::PreciseTimer);
        m_timer.callOnTimeout([this] {
            const auto wall = steady_clock::now();
            const auto work = threadTime();
            m_longest = std::max(m_longest, wall - m_lastWall);
            m_longestWork = std::max(m_longestWork, work - m_lastWork);
            m_lastWall = wall;
            m_lastWork = work;
        });
        m_timer.start(1ms);
    }

    [[nodiscard]] double longest() const { return milliseconds(m_longest); }
    [[nodiscard]] double longestWork() const { return milliseconds(m_longestWork); }

private:
    QTimer m_timer;
    steady_clock::time_point m_lastWall = steady_clock::now();
    std::chrono::nanoseconds m_lastWork = threadTime();
    steady_clock::duration m_longest{};
    std::chrono::nanoseconds m_longestWork{};
};

/// As a board does: totals, and as many rows as a screen holds.
void readAScreenful(const AppState &state)
{
    benchmark::DoNotOptimize(state.allSynced());
    benchmark::DoNotOptimize(state.allocatedBytes());
    for (const Record &volume : state.volumes().mid(0, 20)) {
        benchmark::DoNotOptimize(state.offsiteState(volume).label.size());
        benchmark::DoNotOptimize(state.applianceState(volume).label.size());
        benchmark::DoNotOptimize(state.mountOf(str(volume, "name")).has_value());
    }
}

double bareRoundTrips(const std::string &path, std::int64_t volumes)
{
    BareClient client(path);
    std::string request;
    const auto begin = steady_clock::now();
    for (const std::string_view method : {"volumes.status", "recoveries.list_for_volume"}) {
        for (std::int64_t id = 1; id <= volumes; ++id) {
            const std::string number = std::to_string(id);
            request.assign(R"({"jsonrpc":"2.0","id":)").append(number).append(R"(,"method":")").append(method);
            request.append(R"(","params":{"volume_id":)").append(number).append("}}\n");
            client.roundTrip(request);
        }
    }
    return milliseconds(steady_clock::now() - begin);
}

void refreshBesideBareRoundTrips(benchmark::State &run)
{
    const std::int64_t volumes = run.range(0);
    Peer peer(volumes);
    qputenv("QUILL_AGENT_SOCKET", peer.path().c_str());
    double gap = 0;
    double work = 0;
    double bare = 0;
    double refreshed = 0;
    std::vector<double> ratios;
    for ([[maybe_unused]] auto turn : run) {
        const double floor = bareRoundTrips(peer.path(), volumes);
        const auto state = AppState::create();
        state->rpc().connect(peer.path());
        int renders = 0;
        const Observer board({&state->volumes, &state->statuses, &state->mounts, &state->account}, [&] {
            readAScreenful(*state);
            ++renders;
        });
        const auto begin = steady_clock::now();
        QCoro::waitFor(state->refresh());
        const double taken = milliseconds(steady_clock::now() - begin);
        run.SetIterationTime(taken / 1'000);
        {
            const GapMeter meter; // on a run of its own, which also puts away what the first one has brought
            QCoro::waitFor(state->refresh());
            gap = std::max(gap, meter.longest());
            work = std::max(work, meter.longestWork());
        }
        bare += floor;
        refreshed += taken;
        ratios.push_back(taken / floor);
        if (static_cast<std::int64_t>(state->statuses().size()) != volumes || renders == 0) {
            run.SkipWithError("the refresh did not bring what it was to bring");
        }
        state->shutDown();
    }
    std::sort(ratios.begin(), ratios.end());
    const auto turns = static_cast<double>(run.iterations());
    run.counters["bare_ms"] = bare / turns;
    run.counters["refresh_ms"] = refreshed / turns;
    run.counters["ratio"] = ratios.empty() ? 0 : ratios[ratios.size() / 2];
    run.counters["gap_ms"] = gap;
    run.counters["gap_work_ms"] = work;
}

BENCHMARK(refreshBesideBareRoundTrips)
    ->Arg(100)
    ->Arg(10'000)
    ->Iterations(5)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);

} // namespace

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
}
