// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
//
// An answer of fifty megabytes in the console: how long until it is seen, how long the main thread was away from its
// loop meanwhile, and how much memory it took, beside the bare parsing and writing of the same bytes.
#include "gapmeter.h"
#include "peer.h"
#include "widgetmain.h"

#include "boards/advanced/advancedmodel.h"
#include "boards/advanced/advancedview.h"
#include "boards/advanced/outputsearch.h"
#include "boards/advanced/outputview.h"
#include "boards/advanced/prettyjson.h"

#include "state/start.h"

#include <QApplication>
#include <QDeadlineTimer>
#include <QFile>
#include <QScrollBar>

#include <benchmark/benchmark.h>

#include <algorithm>

namespace {

using namespace quillfen;
using namespace quillfen::bench;
using namespace std::chrono_literals;
using std::chrono::steady_clock;

/// So many megabytes of records, as a list of restore points or tokens has them.
std::string answerOf(std::size_t megabytes)
{
    std::string text = "[";
    for (std::size_t number = 1; text.size() < megabytes * 1'000'000; ++number) {
        const std::string id = std::to_string(number);
        text += number == 1 ? "" : ",";
        text += R"({"id":)" + id + R"(,"timestamp":"2026-11-20T14:31:52Z","label":null,"size_bytes":)" + id +
                R"(000,"name":"point-)" + id + R"( of the volume photos-archive"})";
    }
    return text + "]";
}

/// Answers "big" with the large answer, and everything else with the list that names it.
Peer::Serve answeringBig(const std::string &big)
{
    return [&big](int client) {
        eachRequest(client, [&big, client](std::string_view request) {
            sendAll(client, R"({"jsonrpc":"2.0","id":)" + std::string(idOf(request)) + R"(,"result":)");
            sendAll(client, request.find(R"("big")") == std::string_view::npos ? R"([{"name":"big"}])" : big);
            sendAll(client, "}\n");
        });
    };
}

/// A line of /proc/self/status, in megabytes (2^20 bytes).
double memory(const QByteArray &name)
{
    QFile status(QStringLiteral("/proc/self/status"));
    if (!status.open(QIODevice::ReadOnly)) {
        return 0;
    }
    for (const QByteArray &line : status.readAll().split('\n')) {
        if (line.startsWith(name)) {
            return line.mid(name.size() + 1).trimmed().split(' ').front().toDouble() / 1'024;
        }
    }
    return 0;
}

/// From now on the peak is counted anew.
void forgetPeak()
{
    QFile file(QStringLiteral("/proc/self/clear_refs"));
    if (file.open(QIODevice::WriteOnly)) {
        file.write("5");
    }
}

template <typename Condition>
bool turnUntil(Condition condition)
{
    const QDeadlineTimer deadline(60s);
    while (!condition() && !deadline.hasExpired()) {
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents, 1);
    }
    return condition();
}

/// The board with the large operation picked, on a screen.
class Console final {
public:
    explicit Console(const Peer &peer) : m_state(AppState::create())
    {
        m_state->rpc().connect(peer.path());
        m_model = std::make_shared<AdvancedModel>(m_state);
        m_model->pick(QStringLiteral("big"));
        m_view = std::make_unique<AdvancedView>(m_state);
        m_view->resize(956, 760);
        m_view->show();
        turnUntil([&] { return output().isVisible(); });
    }
    ~Console()
    {
        m_view.reset();
        m_state->shutDown();
    }
    Console(const Console &) = delete;
    Console &operator=(const Console &) = delete;

    [[nodiscard]] OutputView &output() { return *m_view->findChild<OutputView *>(); }

    /// Returns with the first picture of the answer.
    void run()
    {
        start(m_model->run(QStringLiteral("big"), {}));
        turnUntil([&] { return !output().text()->bytes().empty(); });
        output().viewport()->repaint();
    }

private:
    std::shared_ptr<AppState> m_state;
    std::shared_ptr<AdvancedModel> m_model;
    std::unique_ptr<AdvancedView> m_view;
};

double bareMilliseconds(const std::string &answer)
{
    const auto begin = steady_clock::now();
    const json::value value = json::parse(answer, json::make_shared_resource<json::monotonic_resource>());
    benchmark::DoNotOptimize(prettyLines(value).size());
    return milliseconds(steady_clock::now() - begin);
}

void showALargeAnswer(benchmark::State &run)
{
    const std::string answer = answerOf(static_cast<std::size_t>(run.range(0)));
    const Peer peer(answeringBig(answer));
    double gap = 0;
    double work = 0;
    double peak = 0;
    double kept = 0;
    double bare = 0;
    for ([[maybe_unused]] auto turn : run) {
        bare += bareMilliseconds(answer);
        Console console(peer);
        const double before = memory("VmRSS:");
        forgetPeak();
        const GapMeter meter;
        const auto begin = steady_clock::now();
        console.run();
        run.SetIterationTime(milliseconds(steady_clock::now() - begin) / 1'000);
        gap = std::max(gap, meter.longest());
        work = std::max(work, meter.longestWork());
        peak = std::max(peak, memory("VmHWM:") - before);
        kept = std::max(kept, memory("VmRSS:") - before);
        if (console.output().text()->bytes().size() < answer.size()) {
            run.SkipWithError("the answer is not shown");
        }
    }
    run.counters["answer_MB"] = static_cast<double>(answer.size()) / (1 << 20);
    run.counters["bare_ms"] = bare / static_cast<double>(run.iterations());
    run.counters["gap_ms"] = gap;
    run.counters["gap_work_ms"] = work;
    run.counters["peak_MB"] = peak;
    run.counters["kept_MB"] = kept;
}

void scrollALargeAnswer(benchmark::State &run)
{
    const std::string answer = answerOf(50);
    const Peer peer(answeringBig(answer));
    Console console(peer);
    console.run();
    QScrollBar &bar = *console.output().verticalScrollBar();
    int place = 0;
    for ([[maybe_unused]] auto turn : run) {
        place = (place + 104'729) % bar.maximum();
        bar.setValue(place);
        console.output().viewport()->repaint();
    }
}

void layOutALargeAnswer(benchmark::State &run)
{
    const auto text = std::make_shared<const OutputText>(OutputText::ofJson(json::parse(answerOf(50))));
    std::size_t columns = 40;
    for ([[maybe_unused]] auto turn : run) {
        columns = columns == 40 ? 80 : 40;
        benchmark::DoNotOptimize(OutputRows(text, columns).count());
    }
}

void searchALargeAnswer(benchmark::State &run)
{
    const std::string text = prettyLines(json::parse(answerOf(50)));
    for ([[maybe_unused]] auto turn : run) {
        benchmark::DoNotOptimize(findIn(text, "not there", 0, SearchDirection::Forward));
    }
    run.counters["text_MB"] = static_cast<double>(text.size()) / (1 << 20);
}

BENCHMARK(showALargeAnswer)->Arg(1)->Arg(50)->Iterations(5)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK(scrollALargeAnswer)->Unit(benchmark::kMillisecond);
BENCHMARK(layOutALargeAnswer)->Unit(benchmark::kMillisecond);
BENCHMARK(searchALargeAnswer)->Unit(benchmark::kMillisecond);

} // namespace

int main(int argc, char **argv)
{
    return quillfen::bench::measureWidgets(argc, argv);
}
