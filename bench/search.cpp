// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
//
// The Volumes board over ten thousand volumes: from a key to the painted finds, a page of scrolling, a render after one
// status has changed. The floor is a bare QTableView over a model that filters the same names and has nothing to
// derive.
#include "baretable.h"
#include "widgetmain.h"

#include "boards/volumes/volumestable.h"
#include "boards/volumes/volumesview.h"
#include "state/appstate.h"
#include "state/searchkey.h"
#include "ui/controls/searchfield.h"

#include <QApplication>
#include <QScrollBar>
#include <QTableView>

#include <benchmark/benchmark.h>

#include <algorithm>
#include <chrono>

namespace {

using namespace quillfen;
using namespace quillfen::bench;
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

BareModel bareModel()
{
    std::vector<QString> names;
    std::vector<QString> keys;
    for (int at = 0; at < volumes; ++at) {
        names.push_back(nameOf(at));
        keys.push_back(searchKey(nameOf(at)));
    }
    return {std::move(keys), 7, [names = std::move(names)](int volume, int column) {
                return column == 0 ? names[static_cast<std::size_t>(volume)] : QStringLiteral("100 GB");
            }};
}

constexpr int bareRow = 40;
constexpr QSize bareSize(boardSize.width(), 628);

void floorKeystroke(benchmark::State &run)
{
    BareModel model = bareModel();
    BareTable plain(model, bareRow, bareSize);
    typeInto(run, plain);
}

void floorScrollPage(benchmark::State &run)
{
    BareModel model = bareModel();
    BareTable plain(model, bareRow, bareSize);
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
    BareModel model = bareModel();
    BareTable plain(model, bareRow, bareSize);
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
    return quillfen::bench::measureWidgets(argc, argv);
}
