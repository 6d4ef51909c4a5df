// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
//
// A million restore points: from the wire to the painted strip beside the mere parsing of the same answer, a drag over
// them, and scrolling through them. Ours and the floor take turns; the figures are medians.
#include "gapmeter.h"
#include "peer.h"
#include "widgetmain.h"

#include "boards/timetravel/restorepointslist.h"
#include "boards/timetravel/timeline.h"
#include "boards/timetravel/timelinestrip.h"
#include "boards/timetravel/timetravelview.h"
#include "state/appstate.h"
#include "ui/theme.h"

#include <QApplication>
#include <QMouseEvent>
#include <QScrollBar>
#include <QVBoxLayout>

#include <benchmark/benchmark.h>

#include <array>
#include <cmath>
#include <cstdio>
#include <string>
#include <thread>
#include <vector>

namespace {

using namespace quillfen;
using namespace quillfen::bench;
using namespace std::chrono_literals;
using std::chrono::steady_clock;

constexpr int points = 1'000'000;

/// As an agent answers: in the order of time, from ninety days ago until now, some with a label.
std::string restorePointsAnswer()
{
    const auto present = std::chrono::floor<std::chrono::seconds>(now());
    std::string text = R"({"recovery_points":[)";
    for (int each = points - 1; each >= 0; --each) {
        const auto moment = present - std::chrono::seconds(1 + static_cast<std::int64_t>(each) * 7);
        const auto day = std::chrono::floor<std::chrono::days>(moment);
        const std::chrono::year_month_day date(day);
        const std::chrono::hh_mm_ss time(moment - day);
        std::array<char, 128> record{};
        const int length =
            std::snprintf(record.data(), record.size(), R"({"id":%d,"timestamp":"%04d-%02u-%02uT%02d:%02d:%02dZ"%s}%s)",
                          each, static_cast<int>(date.year()), static_cast<unsigned>(date.month()),
                          static_cast<unsigned>(date.day()), static_cast<int>(time.hours().count()),
                          static_cast<int>(time.minutes().count()), static_cast<int>(time.seconds().count()),
                          each % 50 == 0 ? R"(,"label":"before the clean-up")" : "", each == 0 ? "" : ",");
        text.append(record.data(), static_cast<std::size_t>(length));
    }
    return text + "]}";
}

/// Sends the answer to whoever asks for restore points, and to everybody else that there is nothing.
Peer::Serve answeringPoints(const std::string &result)
{
    return [&result](int client) {
        eachRequest(client, [&result, client](std::string_view request) {
            sendAll(client, R"({"jsonrpc":"2.0","id":)" + std::string(idOf(request)) + R"(,"result":)");
            sendAll(client, request.find("restore_points.list") != std::string_view::npos ? result : "{}");
            sendAll(client, "}\n");
        });
    };
}

/// Notes the first painting of a widget once `ready` is set.
class PaintWatch final : public QObject {
public:
    PaintWatch(QWidget *widget, const bool &ready) : m_ready(ready) { widget->installEventFilter(this); }
    [[nodiscard]] bool hasPainted() const noexcept { return m_painted; }
    bool eventFilter(QObject *, QEvent *event) override
    {
        m_painted = m_painted || (m_ready && event->type() == QEvent::Paint);
        return false;
    }

private:
    const bool &m_ready;
    bool m_painted = false;
};

/// The parts of the board that show the points, in a window as large as the board's.
struct Board {
    Board()
    {
        QPalette ground = window.palette();
        ground.setColor(QPalette::Window, Theme::dBg);
        window.setPalette(ground);
        auto *const layout = new QVBoxLayout(&window);
        layout->addWidget(timeline);
        layout->addWidget(list);
        layout->addStretch();
        window.resize(676, 560); // the strip is 630 wide then, as at the window's usual size
        window.show();
        QCoreApplication::processEvents();
    }

    QWidget window;
    Timeline *timeline = new Timeline;
    RestorePointsList *list = new RestorePointsList;
};

QCoro::Task<> load(std::shared_ptr<AppState> state, Board &board, bool &loaded)
{
    const RestorePoints answer = co_await state->restorePoints(1);
    board.timeline->setPoints(answer);
    board.list->setPoints(answer);
    loaded = answer.size() == points;
}

const std::string &answerText()
{
    static const std::string text = restorePointsAnswer();
    return text;
}

void loadBesideParsing(benchmark::State &run)
{
    constexpr int turns = 9;
    const Peer peer(answeringPoints(answerText()));
    const auto state = AppState::create();
    state->rpc().connect(peer.path());
    for ([[maybe_unused]] auto iteration : run) {
        std::vector<double> ours;
        std::vector<double> floor;
        std::vector<double> ratios;
        std::vector<double> gaps;
        std::vector<double> works;
        for (int turn = 0; turn < turns; ++turn) {
            auto begin = steady_clock::now();
            {
                const json::value parsed =
                    json::parse(answerText(), json::make_shared_resource<json::monotonic_resource>());
                benchmark::DoNotOptimize(parsed.is_object());
                floor.push_back(millisecondsSince(begin));
            }
            Board board;
            bool loaded = false;
            const PaintWatch watch(board.timeline->strip(), loaded);
            GapMeter meter;
            begin = steady_clock::now();
            const QCoro::Task<> task = load(state, board, loaded);
            while (!watch.hasPainted()) {
                QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
            }
            ours.push_back(millisecondsSince(begin));
            meter.look();
            ratios.push_back(ours.back() / floor.back());
            gaps.push_back(meter.longest());
            works.push_back(meter.longestWork());
        }
        run.SetIterationTime(median(ours) / 1e3);
        run.counters["MB"] = static_cast<double>(answerText().size()) / 1e6;
        run.counters["parse_ms"] = median(floor);
        run.counters["load_ms"] = median(ours);
        run.counters["ratio"] = median(ratios);
        run.counters["gap_ms"] = median(gaps);
        run.counters["gap_worst_ms"] = largest(gaps);
        run.counters["gap_work_ms"] = largest(works);
    }
    state->shutDown();
}

RestorePoints allPoints()
{
    return RestorePoints::of(json::parse(answerText(), json::make_shared_resource<json::monotonic_resource>()));
}

/// On the whole board, whose other parts follow the drag.
void dragOverAll(benchmark::State &run)
{
    const Peer peer(answeringPoints(answerText()));
    const auto state = AppState::create();
    state->rpc().connect(peer.path());
    state->volumes = Records{params("id", 1, "name", "Documents")};
    TimeTravelView board(state);
    board.resize(956, 1'090);
    board.show();
    while (!board.findChild<RestorePointsList *>()->isVisible()) {
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
    QWidget *const strip = board.findChild<TimelineStrip *>();
    std::vector<double> frames;
    std::vector<double> works;
    const auto mouse = [strip](QEvent::Type type, double x) {
        const QPointF place(x, 40);
        QMouseEvent event(type, place, strip->mapToGlobal(place),
                          type == QEvent::MouseMove ? Qt::NoButton : Qt::LeftButton, Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(strip, &event);
    };
    for ([[maybe_unused]] auto iteration : run) {
        mouse(QEvent::MouseButtonPress, 100);
        QCoreApplication::processEvents();
        for (int frame = 0; frame < 2'000; ++frame) {
            const double x = 320 + 310 * std::sin(frame * 0.05) + 15 * std::sin(frame * 0.7);
            const auto begin = steady_clock::now();
            const double before = workMilliseconds();
            mouse(QEvent::MouseMove, x);
            QCoreApplication::processEvents(); // renders and paints
            works.push_back(workMilliseconds() - before);
            frames.push_back(millisecondsSince(begin));
            run.SetIterationTime(frames.back() / 1e3);
            std::this_thread::sleep_for(500us); // as the hand takes its time, so that the strip has to catch up
        }
        mouse(QEvent::MouseButtonRelease, 100);
    }
    run.counters["median_ms"] = median(frames);
    run.counters["worst_ms"] = largest(frames);
    run.counters["work_median_ms"] = median(works);
    run.counters["work_worst_ms"] = largest(works);
    run.counters["bytes_per_point"] = static_cast<double>(allPoints().bytes()) / points;
    state->shutDown();
}

void scrollThroughAll(benchmark::State &run)
{
    Board board;
    board.list->setPoints(allPoints());
    QCoreApplication::processEvents();
    std::vector<double> steps;
    std::vector<double> pages;
    QScrollBar *const bar = board.list->verticalScrollBar();
    const auto frame = [bar](int by) {
        const double before = workMilliseconds();
        bar->setValue(bar->value() + by);
        QCoreApplication::sendPostedEvents();
        return workMilliseconds() - before;
    };
    for ([[maybe_unused]] auto iteration : run) {
        bar->setValue(1'000'000);
        for (int count = 0; count < 500; ++count) {
            steps.push_back(frame(60));
            pages.push_back(frame(280));
            run.SetIterationTime(pages.back() / 1e3);
        }
    }
    run.counters["step_median_ms"] = median(steps);
    run.counters["step_worst_ms"] = largest(steps);
    run.counters["page_median_ms"] = median(pages);
    run.counters["page_worst_ms"] = largest(pages);
}

BENCHMARK(loadBesideParsing)->Iterations(1)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK(dragOverAll)->Iterations(1)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK(scrollThroughAll)->Iterations(1)->UseManualTime()->Unit(benchmark::kMillisecond);

} // namespace

int main(int argc, char **argv)
{
    return quillfen::bench::measureWidgets(argc, argv);
}
