// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
//
// A million restore points: from the wire to the painted strip beside the mere parsing of the same answer, a drag over
// them, and scrolling through them. Ours and the floor take turns; the figures are medians.
#include "boards/timetravel/restorepointslist.h"
#include "boards/timetravel/timeline.h"
#include "boards/timetravel/timelinestrip.h"
#include "boards/timetravel/timetravelview.h"
#include "state/appstate.h"
#include "ui/housestyle.h"
#include "ui/theme.h"

#include <QApplication>
#include <QMouseEvent>
#include <QScrollBar>
#include <QTemporaryDir>
#include <QTimer>
#include <QVBoxLayout>

#include <benchmark/benchmark.h>

#include <sys/socket.h>
#include <sys/un.h>
#include <time.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <functional>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

namespace {

using namespace quillfen;
using namespace std::chrono_literals;
using std::chrono::steady_clock;

constexpr int points = 1'000'000;

void require(bool holds, const char *what)
{
    if (!holds) {
        throw std::runtime_error(what);
    }
}

double millisecondsSince(steady_clock::time_point begin)
{
    return std::chrono::duration<double, std::milli>(steady_clock::now() - begin).count();
}

/// What this thread has worked, whatever else the machine does.
double workMilliseconds()
{
    timespec time{};
    ::clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) * 1e3 + static_cast<double>(time.tv_nsec) * 1e-6;
}

double median(std::vector<double> values)
{
    std::sort(values.begin(), values.end());
    return values.at(values.size() / 2);
}

double largest(const std::vector<double> &values)
{
    return *std::max_element(values.begin(), values.end());
}

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
class Peer final {
public:
    explicit Peer(const std::string &result) : m_result(result)
    {
        m_path = m_folder.filePath(QStringLiteral("s")).toStdString();
        m_listener = ::socket(AF_UNIX, SOCK_STREAM, 0);
        sockaddr_un address{};
        address.sun_family = AF_UNIX;
        m_path.copy(address.sun_path, sizeof address.sun_path - 1);
        require(::bind(m_listener, reinterpret_cast<const sockaddr *>(&address), sizeof address) == 0, "no socket");
        ::listen(m_listener, 4);
        m_thread = std::thread([this] { serve(); });
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
    static void sendAll(int socket, std::string_view bytes)
    {
        while (!bytes.empty()) {
            const ssize_t sent = ::send(socket, bytes.data(), bytes.size(), MSG_NOSIGNAL);
            if (sent <= 0) {
                return;
            }
            bytes.remove_prefix(static_cast<std::size_t>(sent));
        }
    }

    void serve() const
    {
        for (int client = -1; (client = ::accept(m_listener, nullptr, nullptr)) >= 0; ::close(client)) {
            std::array<char, 4'096> room{};
            for (ssize_t count = 0; (count = ::recv(client, room.data(), room.size(), 0)) > 0;) {
                const std::string_view line(room.data(), static_cast<std::size_t>(count));
                const std::size_t id = line.find(R"("id":)") + 5;
                const std::size_t end = line.find_first_not_of("0123456789", id);
                sendAll(client, R"({"jsonrpc":"2.0","id":)" + std::string(line.substr(id, end - id)) + R"(,"result":)");
                sendAll(client, line.find("restore_points.list") != std::string_view::npos ? m_result : "{}");
                sendAll(client, "}\n");
            }
        }
    }

    const std::string &m_result;
    QTemporaryDir m_folder;
    std::string m_path;
    int m_listener = -1;
    std::thread m_thread;
};

/// Looks in every millisecond. What lies between two looks was spent away from the loop: by the clock on the wall,
/// which counts what the machine gave to others, and by the work this thread did.
class GapMeter final {
public:
    GapMeter()
    {
        m_timer.setTimerType(Qt::PreciseTimer);
        m_timer.callOnTimeout([this] { look(); });
        m_timer.start(1ms);
    }

    void look()
    {
        m_longest = std::max(m_longest, millisecondsSince(m_lastWall));
        m_longestWork = std::max(m_longestWork, workMilliseconds() - m_lastWork);
        m_lastWall = steady_clock::now();
        m_lastWork = workMilliseconds();
    }

    [[nodiscard]] double longest() const { return m_longest; }
    [[nodiscard]] double longestWork() const { return m_longestWork; }

private:
    QTimer m_timer;
    steady_clock::time_point m_lastWall = steady_clock::now();
    double m_lastWork = workMilliseconds();
    double m_longest = 0;
    double m_longestWork = 0;
};

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
    const Peer peer(answerText());
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
    const Peer peer(answerText());
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
    QApplication application(argc, argv);
    applyHouseLook(application);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
}
