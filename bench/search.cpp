// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
//
// The Volumes board over ten thousand volumes: from a key to the painted finds, a page of scrolling, a render after one
// status has changed. The floor is a bare QTableView over a model that filters the same names and has nothing to
// derive.
#include "boards/volumes/volumestable.h"
#include "boards/volumes/volumesview.h"
#include "state/appstate.h"
#include "state/searchkey.h"
#include "ui/housestyle.h"
#include "ui/searchfield.h"

#include <QApplication>
#include <QEventLoop>
#include <QHeaderView>
#include <QKeyEvent>
#include <QScrollBar>
#include <QTableView>
#include <QThread>

#include <benchmark/benchmark.h>

#include <algorithm>
#include <chrono>

namespace {

using namespace quillfen;
using namespace std::chrono_literals;
using std::chrono::steady_clock;

constexpr int volumes = 10'000;
constexpr QSize boardSize(956, 760);

QString nameOf(int at)
{
    static const QStringList words{QStringLiteral("Documents"), QStringLiteral("photos-archive"),
                                   QStringLiteral("studio-projects"), QStringLiteral("vm-store")};
    return words[at % words.size()] + u'-' + QString::number(at);
}

std::shared_ptr<AppState> fullState()
{
    std::shared_ptr<AppState> state = AppState::create();
    Records list;
    std::unordered_map<std::int64_t, Record> statuses;
    for (int at = 0; at < volumes; ++at) {
        list.append(params("id", at + 1, "name", nameOf(at), "size_bytes", std::int64_t{at} << 30, "presentation_type",
                           "smb", "encryption", at % 3 == 0 ? "customer" : "none", "appliance",
                           params("container", QStringLiteral("quill-vol-%1").arg(at + 1))));
        statuses[at + 1] =
            params("appliance", params("online", true, "pending_bytes", at % 2), "offsite", params("percent", at % 100),
                   "sync", params("local", params("FS_USED_BYTES", std::int64_t{at} << 29)));
    }
    state->volumes = list;
    state->statuses = statuses;
    return state;
}

/// Notes when a widget was last painted.
class PaintWatch final : public QObject {
public:
    explicit PaintWatch(QWidget *widget) { widget->installEventFilter(this); }

    /// Runs the main loop until the widget has been painted since `begin`; how long after it that was.
    double secondsFrom(steady_clock::time_point begin)
    {
        m_painted = false;
        while (!m_painted) {
            QCoreApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents);
        }
        return std::chrono::duration<double>(steady_clock::now() - begin).count();
    }

protected:
    bool eventFilter(QObject *, QEvent *event) override
    {
        m_painted = m_painted || event->type() == QEvent::Paint;
        return false;
    }

private:
    bool m_painted = false;
};

/// The times of one benchmark. The median is the figure to read: on a busy machine single samples hold other programs'
/// turns.
class Samples {
public:
    explicit Samples(benchmark::State &run) : m_run(run) {}
    ~Samples()
    {
        std::ranges::sort(m_seconds);
        if (!m_seconds.empty()) {
            m_run.counters["median_ms"] = m_seconds[m_seconds.size() / 2] * 1e3;
            m_run.counters["p95_ms"] = m_seconds[m_seconds.size() * 95 / 100] * 1e3;
        }
    }
    Samples(const Samples &) = delete;
    Samples &operator=(const Samples &) = delete;

    void add(double seconds)
    {
        m_seconds.push_back(seconds);
        m_run.SetIterationTime(seconds);
    }

private:
    benchmark::State &m_run;
    std::vector<double> m_seconds;
};

/// Between two keys of a fast typist more than a frame goes by; without the pause every second key would be measured
/// with the rest of its predecessor's frame.
void rest()
{
    const auto until = steady_clock::now() + 20ms;
    while (steady_clock::now() < until) {
        QCoreApplication::processEvents();
        QThread::usleep(500);
    }
}

void type(QWidget *field, QChar letter)
{
    const int key = letter == u'\b' ? static_cast<int>(Qt::Key_Backspace) : letter.toUpper().unicode();
    QCoreApplication::postEvent(field, new QKeyEvent(QEvent::KeyPress, key, Qt::NoModifier, QString(letter)));
}

const QString &typed()
{
    // A number and its taking back: from all volumes to a third of them, to one, and all the way back. Every key
    // changes what is shown; one that does not would leave nothing to paint.
    static const QString keys = QStringLiteral("1234\b\b\b\b");
    return keys;
}

class Board {
public:
    Board()
    {
        m_view.resize(boardSize);
        m_view.show();
        rest();
    }

    std::shared_ptr<AppState> state = fullState();

private:
    VolumesView m_view{state};

public:
    VolumesTable *table = m_view.findChild<VolumesTable *>();
    SearchField *search = m_view.findChild<SearchField *>();
    PaintWatch painted{table->viewport()};
};

void keystroke(benchmark::State &run)
{
    Board board;
    qsizetype at = 0;
    Samples samples(run);
    for (auto _ : run) {
        rest();
        const auto begin = steady_clock::now();
        type(board.search, typed()[at]);
        samples.add(board.painted.secondsFrom(begin));
        at = (at + 1) % typed().size();
    }
}

void firstKeystroke(benchmark::State &run)
{
    Samples samples(run);
    for (auto _ : run) {
        Board board;
        const auto begin = steady_clock::now();
        type(board.search, u'1');
        samples.add(board.painted.secondsFrom(begin));
    }
}

void scrollPage(benchmark::State &run)
{
    Board board;
    QScrollBar *bar = board.table->verticalScrollBar();
    Samples samples(run);
    for (auto _ : run) {
        rest();
        const auto begin = steady_clock::now();
        bar->setValue(bar->value() + bar->pageStep() < bar->maximum() ? bar->value() + bar->pageStep() : 0);
        samples.add(board.painted.secondsFrom(begin));
    }
}

void statusChange(benchmark::State &run)
{
    Board board;
    int percent = 0;
    Samples samples(run);
    for (auto _ : run) {
        rest();
        board.state->statuses.update([&](auto &statuses) {
            statuses[3] = params("appliance", params("online", true, "pending_bytes", 5), "offsite",
                                 params("percent", ++percent % 100));
        });
        // Where an answer of the agent sets a status, the state moves its totals along; here it has to count again.
        (void)board.state->allSynced();
        const auto begin = steady_clock::now();
        samples.add(board.painted.secondsFrom(begin));
    }
}

void refreshedList(benchmark::State &run)
{
    Board board;
    const Records one = board.state->volumes();
    Records other;
    for (const Record &volume : one) {
        other.append(volume);
    }
    bool odd = false;
    Samples samples(run);
    for (auto _ : run) {
        rest();
        odd = !odd;
        Records next = odd ? other : one;
        next[2]["size_bytes"] = std::int64_t{odd ? 7 : 8} << 30;
        const auto begin = steady_clock::now();
        board.state->volumes = next;
        samples.add(board.painted.secondsFrom(begin));
    }
}

/// Ten thousand texts by seven, filtered by folded keys.
class PlainModel final : public QAbstractTableModel {
public:
    PlainModel()
    {
        for (int at = 0; at < volumes; ++at) {
            m_names.push_back(nameOf(at));
            m_keys.push_back(searchKey(nameOf(at)));
        }
        filter({});
    }

    void filter(const QString &query)
    {
        beginResetModel();
        const QString key = searchKey(query);
        m_shown.clear();
        for (int at = 0; at < volumes; ++at) {
            if (m_keys[static_cast<std::size_t>(at)].contains(key)) {
                m_shown.push_back(at);
            }
        }
        endResetModel();
    }

    [[nodiscard]] int rowCount(const QModelIndex &) const override { return static_cast<int>(m_shown.size()); }
    [[nodiscard]] int columnCount(const QModelIndex &) const override { return 7; }
    [[nodiscard]] QVariant data(const QModelIndex &index, int role) const override
    {
        if (role != Qt::DisplayRole) {
            return {};
        }
        const auto volume = static_cast<std::size_t>(m_shown[static_cast<std::size_t>(index.row())]);
        return index.column() == 0 ? m_names[volume] : QStringLiteral("100 GB");
    }

private:
    std::vector<QString> m_names;
    std::vector<QString> m_keys;
    std::vector<int> m_shown;
};

class PlainTable {
public:
    PlainTable()
    {
        table.verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
        table.verticalHeader()->setDefaultSectionSize(40);
        table.verticalHeader()->hide();
        table.setModel(&model);
        table.resize(boardSize.width(), 628);
        table.show();
        rest();
    }

    PlainModel model;
    QTableView table;
    PaintWatch painted{table.viewport()};
};

void floorKeystroke(benchmark::State &run)
{
    PlainTable plain;
    QString query;
    qsizetype at = 0;
    Samples samples(run);
    for (auto _ : run) {
        rest();
        const auto begin = steady_clock::now();
        if (typed()[at] == u'\b') {
            query.chop(1);
        } else {
            query += typed()[at];
        }
        plain.model.filter(query);
        samples.add(plain.painted.secondsFrom(begin));
        at = (at + 1) % typed().size();
    }
}

void floorScrollPage(benchmark::State &run)
{
    PlainTable plain;
    plain.table.setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
    QScrollBar *bar = plain.table.verticalScrollBar();
    Samples samples(run);
    for (auto _ : run) {
        rest();
        const auto begin = steady_clock::now();
        bar->setValue(bar->value() + bar->pageStep() < bar->maximum() ? bar->value() + bar->pageStep() : 0);
        samples.add(plain.painted.secondsFrom(begin));
    }
}

void floorOneRow(benchmark::State &run)
{
    PlainTable plain;
    Samples samples(run);
    for (auto _ : run) {
        rest();
        const auto begin = steady_clock::now();
        Q_EMIT plain.model.dataChanged(plain.model.index(2, 0), plain.model.index(2, 6));
        samples.add(plain.painted.secondsFrom(begin));
    }
}

BENCHMARK(floorKeystroke)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(120);
BENCHMARK(keystroke)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(120);
BENCHMARK(firstKeystroke)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(10);
BENCHMARK(floorScrollPage)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(100);
BENCHMARK(scrollPage)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(100);
BENCHMARK(floorOneRow)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(100);
BENCHMARK(statusChange)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(100);
BENCHMARK(refreshedList)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(50);

} // namespace

int main(int argc, char **argv)
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
    }
    QApplication application(argc, argv);
    applyHouseLook(application);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
