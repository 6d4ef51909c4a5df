// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
//
// The way between the agent and the main thread: round trips, large answers, bursts of events, a very long line; each
// beside the least that any program would have to do. Ours and the floor take turns, so that whatever else the machine
// does meets both; the figures are medians.
#include "peer.h"

#include "rpc/linereader.h"
#include "rpc/rpc.h"

#include <QCoreApplication>
#include <QCoroTask>
#include <QTimer>

#include <benchmark/benchmark.h>

#include <sys/resource.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <condition_variable>
#include <cstdlib>
#include <cstring>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

namespace {

using namespace quillfen;
using namespace quillfen::bench;
using namespace std::chrono_literals;
using Clock = std::chrono::steady_clock;

constexpr std::size_t readSize = 65'536;

double cpuSeconds()
{
    return workMilliseconds() / 1e3;
}

double secondsSince(Clock::time_point begin)
{
    return std::chrono::duration<double>(Clock::now() - begin).count();
}

/// Answers every request with null, doing as little as possible about it.
void answerNull(int socket)
{
    char bytes[4'096];
    for (ssize_t count = 0; (count = ::recv(socket, bytes, sizeof bytes - 1, 0)) > 0;) {
        bytes[count] = 0;
        const char *const id = std::strstr(bytes, "\"id\":");
        char answer[96];
        const int length = std::snprintf(answer, sizeof answer, "{\"jsonrpc\":\"2.0\",\"id\":%ld,\"result\":null}\n",
                                         std::atol(id + 5));
        sendAll(socket, {answer, static_cast<std::size_t>(length)});
    }
}

/// Waits for the first request and then sends `bytes`, as often as asked.
Peer::Serve sendOnRequest(const std::string &bytes)
{
    return [&bytes](int socket) {
        char request[4'096];
        while (::recv(socket, request, sizeof request, 0) > 0) {
            sendAll(socket, bytes);
        }
    };
}

/// The floor of a round trip: a blocking reading thread that hands each answer over to the thread that asked.
class BareClient final {
public:
    explicit BareClient(int socket) : m_socket(socket), m_thread([this] { read(); }) {}
    ~BareClient()
    {
        ::shutdown(m_socket, SHUT_RDWR);
        m_thread.join();
        ::close(m_socket);
    }
    BareClient(const BareClient &) = delete;
    BareClient &operator=(const BareClient &) = delete;

    void ask()
    {
        const std::string line =
            R"({"jsonrpc":"2.0","id":)" + std::to_string(++m_asked) + R"(,"method":"auth.status"})" + "\n";
        sendAll(m_socket, line);
        std::unique_lock hold(m_lock);
        m_arrived.wait(hold, [this] { return m_answered == m_asked; });
    }

private:
    void read()
    {
        char bytes[4'096];
        while (::recv(m_socket, bytes, sizeof bytes, 0) > 0) {
            {
                const std::scoped_lock hold(m_lock);
                ++m_answered;
            }
            m_arrived.notify_one();
        }
    }

    int m_socket;
    std::mutex m_lock;
    std::condition_variable m_arrived;
    std::int64_t m_asked = 0;
    std::int64_t m_answered = 0;
    std::thread m_thread;
};

void turnUntil(const bool &done)
{
    while (!done) {
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
}

QCoro::Task<> askOften(RPC &rpc, int count, bool &done)
{
    const json::object none;
    for (int number = 0; number < count; ++number) {
        co_await rpc.call("auth.status", none, 10s);
    }
    done = true;
}

void roundTrip(benchmark::State &state)
{
    constexpr int turns = 601;
    constexpr int trips = 25; // short turns: the scheduler changes its mind about cores every few milliseconds
    const Peer peer(answerNull);
    RPC rpc;
    rpc.connect(peer.path());
    const Peer barePeer(answerNull);
    BareClient bare(connectedTo(barePeer.path()));
    for (auto iteration : state) {
        std::vector<double> ours;
        std::vector<double> floor;
        std::vector<double> ratios;
        for (int turn = 0; turn < turns; ++turn) {
            auto begin = Clock::now();
            for (int number = 0; number < trips; ++number) {
                bare.ask();
            }
            floor.push_back(secondsSince(begin) / trips * 1e6);
            bool done = false;
            begin = Clock::now();
            askOften(rpc, trips, done);
            turnUntil(done);
            ours.push_back(secondsSince(begin) / trips * 1e6);
            ratios.push_back(ours.back() / floor.back());
        }
        state.SetIterationTime(median(ours) / 1e6);
        state.counters["ours_us"] = median(ours);
        state.counters["floor_us"] = median(floor);
        state.counters["ratio"] = median(ours) / median(floor);
        state.counters["paired_ratio"] = median(ratios);
    }
}

/// An answer of 100,000 records, about 10 MB.
std::string largeAnswer()
{
    json::array records;
    for (int number = 0; number < 100'000; ++number) {
        records.push_back(json::object{{"id", number},
                                       {"name", "volume-" + std::to_string(number)},
                                       {"size_bytes", std::int64_t{1} << (number % 50)},
                                       {"status", "Running"},
                                       {"at", "2026-11-15T21:41:00Z"},
                                       {"ok", true}});
    }
    return json::serialize(json::object{{"jsonrpc", "2.0"}, {"id", 1}, {"result", std::move(records)}}) + "\n";
}

template <typename Work>
double timeOf(Work work)
{
    const double begin = cpuSeconds();
    work();
    return cpuSeconds() - begin;
}

/// Frames and parses `text` as if it came from a socket in reads of 64 KiB.
std::optional<json::value> readLine(std::string_view text)
{
    LineReader reader;
    std::optional<json::value> result;
    const LineReader::Sink sink = [&](LineReader::Message &message, std::size_t) {
        result.emplace(std::move(message->get_object()["result"]));
    };
    while (!text.empty()) {
        const std::span<char> room = reader.room();
        const std::size_t count = std::min(room.size(), text.size());
        std::memcpy(room.data(), text.data(), count);
        text.remove_prefix(count);
        reader.received(count, sink);
    }
    return result;
}

void parseLargeAnswer(benchmark::State &state)
{
    constexpr int turns = 31;
    const std::string text = largeAnswer();
    const std::string_view line(text.data(), text.size() - 1);
    for (auto iteration : state) {
        std::vector<double> ours;
        std::vector<double> oursFree;
        std::vector<double> floor;
        std::vector<double> bareFloor;
        for (int turn = 0; turn < turns; ++turn) {
            std::optional<json::value> answer;
            floor.push_back(timeOf(
                [&] { answer.emplace(json::parse(line, json::make_shared_resource<json::monotonic_resource>())); }));
            answer.reset();
            ours.push_back(timeOf([&] { answer = readLine(text); }));
            require(answer->as_array().size() == 100'000, "records are missing");
            oursFree.push_back(timeOf([&] { answer.reset(); }));
            json::monotonic_resource arena; // whose values nobody may keep longer than it
            bareFloor.push_back(timeOf([&] { benchmark::DoNotOptimize(json::parse(line, &arena)); }));
        }
        state.SetIterationTime(median(ours));
        state.counters["MB"] = static_cast<double>(text.size()) / 1e6;
        state.counters["ours_ms"] = median(ours) * 1e3;
        state.counters["free_ms"] = median(oursFree) * 1e3;
        state.counters["floor_ms"] = median(floor) * 1e3;
        state.counters["ratio"] = median(ours) / median(floor);
        state.counters["uncounted_floor_ms"] = median(bareFloor) * 1e3;
        state.counters["uncounted_ratio"] = median(ours) / median(bareFloor);
    }
}

/// By the clock, and what the reading thread has worked for it.
struct Cost {
    double seconds = 0;
    double readerCpu = 0;
};

/// The floor of everything that arrives in bulk: read it, and look at each byte once for line feeds.
Cost bareScan(const Peer &peer, std::size_t bytes)
{
    const int socket = connectedTo(peer.path());
    std::vector<char> room(readSize);
    const double cpuBefore = cpuSeconds();
    const auto begin = Clock::now();
    sendAll(socket, "go\n");
    std::size_t lines = 0;
    while (bytes > 0) {
        const ssize_t count = ::recv(socket, room.data(), room.size(), 0);
        require(count > 0, "the peer has gone");
        bytes -= static_cast<std::size_t>(count);
        const char *at = room.data();
        const char *const end = at + count;
        while (const void *feed = std::memchr(at, '\n', static_cast<std::size_t>(end - at))) {
            at = static_cast<const char *>(feed) + 1;
            ++lines;
        }
    }
    benchmark::DoNotOptimize(lines);
    const Cost cost{secondsSince(begin), cpuSeconds() - cpuBefore};
    ::close(socket);
    return cost;
}

/// What one burst of events cost.
struct Burst {
    Cost cost;
    double mainCpu = 0;
    double longestGap = 0;    ///< of the main thread, away from its loop
    double longestGapCpu = 0; ///< of it, at work
    std::size_t mostWaiting = 0;
};

Burst receiveBurst(const Peer &peer, std::int64_t count)
{
    Burst burst;
    RPC rpc;
    std::int64_t next = 0;
    bool done = false;
    std::atomic<std::size_t> waiting = 0;
    double readerCpu = 0;
    rpc.onEvent = [&](std::string name, std::optional<json::value> data) {
        waiting.fetch_add(1, std::memory_order_relaxed);
        if (data->get_object().at("seq").as_int64() == count - 1) {
            readerCpu = cpuSeconds();
        }
        rpc.mainQueue().post([&, event = std::move(name), record = std::move(data)] {
            burst.mostWaiting = std::max(burst.mostWaiting, waiting.fetch_sub(1, std::memory_order_relaxed));
            require(record->get_object().at("seq").as_int64() == next, "events are out of order");
            done = ++next == count;
        });
    };
    rpc.connect(peer.path());
    auto lastTurn = Clock::now();
    double lastTurnCpu = cpuSeconds();
    QTimer everyTurn;
    everyTurn.setTimerType(Qt::PreciseTimer);
    everyTurn.callOnTimeout([&] {
        burst.longestGap = std::max(burst.longestGap, secondsSince(lastTurn));
        burst.longestGapCpu = std::max(burst.longestGapCpu, cpuSeconds() - lastTurnCpu);
        lastTurn = Clock::now();
        lastTurnCpu = cpuSeconds();
    });
    everyTurn.start(1ms);
    const double cpuBefore = cpuSeconds();
    const auto begin = Clock::now();
    static_cast<void>(rpc.call("events.subscribe", {}, 100s));
    turnUntil(done);
    burst.cost = {secondsSince(begin), readerCpu};
    burst.mainCpu = cpuSeconds() - cpuBefore;
    return burst;
}

std::size_t peakMemory()
{
    rusage usage{};
    ::getrusage(RUSAGE_SELF, &usage);
    return static_cast<std::size_t>(usage.ru_maxrss);
}

void eventBurst(benchmark::State &state)
{
    constexpr int turns = 5;
    constexpr std::int64_t count = 1'000'000;
    std::string burst;
    for (std::int64_t number = 0; number < count; ++number) {
        burst += R"({"event":"appliance.progress","result":{"volume_id":)" + std::to_string(number % 100) +
                 R"(,"seq":)" + std::to_string(number) +
                 R"(,"message":"volume is uploading to the vault","pending_bytes":1099511627776}})" + "\n";
    }
    const Peer peer(sendOnRequest(burst));
    for (auto iteration : state) {
        bareScan(peer, burst.size());
        const std::size_t before = peakMemory();
        std::vector<double> floor;
        std::vector<Burst> ours;
        for (int turn = 0; turn < turns; ++turn) {
            floor.push_back(bareScan(peer, burst.size()).seconds);
            ours.push_back(receiveBurst(peer, count));
        }
        const auto medianOf = [&](auto field) {
            std::vector<double> values;
            for (const Burst &one : ours) {
                values.push_back(field(one));
            }
            return median(values);
        };
        const double seconds = medianOf([](const Burst &one) { return one.cost.seconds; });
        state.SetIterationTime(seconds);
        state.counters["bytes_each"] = static_cast<double>(burst.size()) / count;
        state.counters["M_per_s"] = count / seconds / 1e6;
        state.counters["s"] = seconds;
        state.counters["floor_s"] = median(floor);
        state.counters["reader_cpu_s"] = medianOf([](const Burst &one) { return one.cost.readerCpu; });
        state.counters["main_cpu_s"] = medianOf([](const Burst &one) { return one.mainCpu; });
        state.counters["gap_ms"] = medianOf([](const Burst &one) { return one.longestGap * 1e3; });
        state.counters["gap_cpu_ms"] = medianOf([](const Burst &one) { return one.longestGapCpu * 1e3; });
        state.counters["most_waiting"] =
            medianOf([](const Burst &one) { return static_cast<double>(one.mostWaiting); });
        state.counters["memory_MB"] = static_cast<double>(peakMemory() - before) / 1e3;
    }
}

Cost receiveLine(const Peer &peer, std::size_t bytes)
{
    RPC rpc;
    bool done = false;
    double readerCpu = 0;
    rpc.onEvent = [&](const std::string &, std::optional<json::value> data) {
        require(data->as_string().size() == bytes, "the line is not whole");
        readerCpu = cpuSeconds();
        rpc.mainQueue().post([&] { done = true; });
    };
    rpc.connect(peer.path());
    const auto begin = Clock::now();
    static_cast<void>(rpc.call("events.subscribe", {}, 100s));
    turnUntil(done);
    return {secondsSince(begin), readerCpu};
}

void longLine(benchmark::State &state)
{
    constexpr int turns = 7;
    const std::size_t bytes = static_cast<std::size_t>(state.range(0)) * 1'000'000;
    const std::string line = R"({"event":"e","result":")" + std::string(bytes, 'x') + "\"}\n";
    const Peer peer(sendOnRequest(line));
    for (auto iteration : state) {
        std::vector<double> seconds;
        std::vector<double> cpu;
        std::vector<double> floor;
        std::vector<double> floorCpu;
        for (int turn = 0; turn < turns; ++turn) {
            const Cost bare = bareScan(peer, line.size());
            floor.push_back(bare.seconds);
            floorCpu.push_back(bare.readerCpu);
            const Cost ours = receiveLine(peer, bytes);
            seconds.push_back(ours.seconds);
            cpu.push_back(ours.readerCpu);
        }
        state.SetIterationTime(median(seconds));
        state.counters["s"] = median(seconds);
        state.counters["floor_s"] = median(floor);
        state.counters["reader_cpu_s"] = median(cpu);
        state.counters["floor_cpu_s"] = median(floorCpu);
        state.counters["cpu_ns_per_byte"] = median(cpu) * 1e9 / static_cast<double>(bytes);
    }
}

} // namespace

BENCHMARK(roundTrip)->Iterations(1)->UseManualTime()->Unit(benchmark::kMicrosecond);
BENCHMARK(parseLargeAnswer)->Iterations(1)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK(eventBurst)->Iterations(1)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK(longLine)->Arg(25)->Arg(50)->Arg(100)->Iterations(1)->UseManualTime()->Unit(benchmark::kMillisecond);

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) {
        return 1;
    }
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
