// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
//
// The operator's tokens, twenty thousand of them: from the agent's answer to the painted list, from a key in the filter
// to the painted finds, one step of the wheel, a page, a click on a caption. The floor is a bare QTableView over a
// model that filters the same texts and has no buttons.
#include "baretable.h"
#include "widgetmain.h"

#include "boards/operator/oprows.h"
#include "boards/operator/recordlist.h"
#include "state/format.h"
#include "state/searchkey.h"
#include "ui/controls/buttons.h"
#include "ui/controls/searchfield.h"
#include "ui/text/label.h"
#include "ui/theme.h"

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

constexpr int tokens = 20'000;
constexpr QSize cardSize(900, 640);

Records manyTokens()
{
    static const QStringList uses{QStringLiteral("desktop:"), QStringLiteral("backup script on "),
                                  QStringLiteral("cli:"), QStringLiteral("nas-")};
    Records list;
    for (int at = 0; at < tokens; ++at) {
        list.append(params("id", at + 1, "label", uses[at % uses.size()] + QString::number(at), "email",
                           QStringLiteral("person.%1@house-%2.example").arg(at % 7'000).arg(at % 900), "created_at",
                           QStringLiteral("2026-%1-%2T10:00:00Z").arg(1 + at % 9).arg(10 + at % 18), "expires_at",
                           "2027-03-01T10:00:00Z"));
    }
    return list;
}

/// A row as the board has it: four texts, and a button that carries the row.
class Row final : public RecordRow {
public:
    explicit Row(std::shared_ptr<const std::vector<Column>> columns) : RecordRow(std::move(columns))
    {
        for (AgentLabel *&text : m_texts) {
            text = new AgentLabel({}, Type::Body, Theme::text);
            addCell(text);
        }
        m_revoke->setControlHeight(28);
        addButton(m_revoke);
    }

    void fill(const Record &record) override
    {
        const TokenRow token = tokenRow(record);
        m_texts[0]->setText(token.label);
        m_texts[1]->setText(token.email);
        m_texts[2]->setText(token.created);
        m_texts[3]->setText(token.end);
        setRowName(token.label, QStringLiteral("%1, %2, %3").arg(token.email, token.created, token.end));
        arrange();
    }

private:
    std::array<AgentLabel *, 4> m_texts{};
    Button *m_revoke = new Button(QStringLiteral("Revoke"), DangerButtonStyle{});
};

RecordList::Setup setup()
{
    RecordList::Setup setup;
    setup.title = QStringLiteral("API tokens");
    setup.filter = QStringLiteral("Filter tokens");
    setup.columns = {{252, 150, 3}, {240, 140, 2}, {100, 84, 0}, {160, 134, 0}, {84, 74, 0}};
    setup.fields = {{QStringLiteral("Label"), tokenLabel, {}},
                    {QStringLiteral("E-mail"), [](const Record &token) { return str(token, "email"); }, {}}};
    setup.makeRow = [](std::shared_ptr<const std::vector<Column>> columns) { return new Row(std::move(columns)); };
    return setup;
}

class Tab {
public:
    explicit Tab(const Records &shown)
    {
        m_card.resize(cardSize);
        m_card.setRoom(cardSize.height());
        m_card.setRecords(shown, true);
        m_card.show();
        rest();
    }

private:
    RecordList m_card{setup()};

public:
    RecordList &card = m_card;
    LongList *list = m_card.findChild<LongList *>();
    SearchField *search = m_card.findChild<SearchField *>();
    PaintWatch painted{list->viewport()};
};

void load(benchmark::State &run)
{
    Samples samples(run);
    const Records one = manyTokens();
    const Records other = manyTokens();
    Tab tab(one);
    bool odd = false;
    for (auto _ : run) {
        rest();
        odd = !odd;
        const auto begin = steady_clock::now();
        tab.card.setRecords(odd ? other : one, true, [](const Record &token) { return !isRevoked(token); });
        samples.add(tab.painted.secondsFrom(begin));
    }
}

void firstKeystroke(benchmark::State &run)
{
    Samples samples(run);
    const Records all = manyTokens();
    for (auto _ : run) {
        Tab tab(all);
        // A person needs longer than this from the list to the first key.
        for (int turn = 0; turn < 10; ++turn) {
            rest();
        }
        const auto begin = steady_clock::now();
        type(tab.search, u'1');
        samples.add(tab.painted.secondsFrom(begin));
    }
}

void keystroke(benchmark::State &run)
{
    Tab tab(manyTokens());
    qsizetype at = 0;
    Samples samples(run);
    for (auto _ : run) {
        rest();
        const auto begin = steady_clock::now();
        type(tab.search, typed()[at]);
        samples.add(tab.painted.secondsFrom(begin));
        at = (at + 1) % typed().size();
    }
}

void scroll(benchmark::State &run, int pixels)
{
    Tab tab(manyTokens());
    QScrollBar *const bar = tab.list->verticalScrollBar();
    const int step = pixels > 0 ? pixels : bar->pageStep();
    Samples samples(run);
    for (auto _ : run) {
        rest();
        const auto begin = steady_clock::now();
        bar->setValue(bar->value() + step < bar->maximum() ? bar->value() + step : 0);
        samples.add(tab.painted.secondsFrom(begin));
    }
}

void scrollWheel(benchmark::State &run)
{
    scroll(run, 60);
}

void scrollPage(benchmark::State &run)
{
    scroll(run, 0);
}

void sortByLabel(benchmark::State &run)
{
    Tab tab(manyTokens());
    auto *const caption = tab.card.findChild<ColumnHeader *>()->findChild<QAbstractButton *>();
    Samples samples(run);
    for (auto _ : run) {
        rest();
        const auto begin = steady_clock::now();
        caption->click();
        samples.add(tab.painted.secondsFrom(begin));
    }
}

BareModel bareModel()
{
    const Records all = manyTokens();
    std::vector<QString> keys;
    for (const Record &token : all) {
        keys.push_back(searchKey(tokenLabel(token) + u'\n' + str(token, "email")));
    }
    return {std::move(keys), 5, [all](int row, int column) {
                const Record &token = all.at(row);
                return column == 0 ? tokenLabel(token) : column == 1 ? str(token, "email") : QString();
            }};
}

constexpr int bareRow = 44;
constexpr QSize bareSize(cardSize.width(), 560);

void floorKeystroke(benchmark::State &run)
{
    BareModel model = bareModel();
    BareTable plain(model, bareRow, bareSize);
    typeInto(run, plain);
}

void floorScrollWheel(benchmark::State &run)
{
    BareModel model = bareModel();
    BareTable plain(model, bareRow, bareSize);
    QScrollBar *const bar = plain.table.verticalScrollBar();
    Samples samples(run);
    for (auto _ : run) {
        rest();
        const auto begin = steady_clock::now();
        bar->setValue(bar->value() + 60 < bar->maximum() ? bar->value() + 60 : 0);
        samples.add(plain.painted.secondsFrom(begin));
    }
}

BENCHMARK(floorKeystroke)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(80);
BENCHMARK(keystroke)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(80);
BENCHMARK(firstKeystroke)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(10);
BENCHMARK(load)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(30);
BENCHMARK(floorScrollWheel)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(80);
BENCHMARK(scrollWheel)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(80);
BENCHMARK(scrollPage)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(80);
BENCHMARK(sortByLabel)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(20);

} // namespace

int main(int argc, char **argv)
{
    return quillfen::bench::measureWidgets(argc, argv);
}
