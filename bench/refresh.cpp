// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
//
// A refresh of many volumes beside as many bare round trips to the same peer, and how long the main thread was away
// from its loop meanwhile.
#include "gapmeter.h"
#include "peer.h"

#include "state/appstate.h"

#include <QCoreApplication>

#include <benchmark/benchmark.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <condition_variable>
#include <mutex>
#include <optional>
#include <thread>

namespace {

using namespace quillfen;
using namespace quillfen::bench;
using namespace std::chrono_literals;
using std::chrono::steady_clock;

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

std::string_view resultOf(std::string_view request, const std::string &volumes)
{
    const auto asks = [request](std::string_view method) { return request.find(method) != std::string_view::npos; };
    if (asks("volumes.status")) {
        return R"({"appliance":{"online":true,"connected":true,"pending_bytes":5},"offsite":{"percent":87},)"
               R"("sync":{"local":{"FS_USED_BYTES":123456789012},"remote":{"seq":99}},"state":"running"})";
    }
    if (asks("recoveries.list_for_volume")) {
        return R"({"recoveries":[]})";
    }
    if (asks("volumes.list")) {
        return volumes;
    }
    return asks("auth.status") ? R"({"signed_in":true})" : R"({"status":"Running"})";
}

/// Answers each request by what its method calls for, with next to no work of its own.
Peer::Serve answeringFor(std::int64_t count)
{
    return [volumes = volumesAnswer(count)](int client) {
        std::string answer;
        readLines(client, [&](std::string_view line) {
            answer.assign(R"({"jsonrpc":"2.0","id":)").append(idOf(line));
            answer.append(R"(,"result":)").append(resultOf(line, volumes)).append("}\n");
            sendAll(client, answer);
        });
    };
}

/// The floor: a blocking write, and a reading thread that hands each line over to the one that waits.
class BareClient final {
public:
    explicit BareClient(const std::string &path) : m_socket(connectedTo(path))
    {
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
    const Peer peer(answeringFor(volumes));
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
