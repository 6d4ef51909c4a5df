// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
//
// The operator's tokens, twenty thousand of them: from the agent's answer to the painted list, from a key in the filter
// to the painted finds, one step of the wheel, a page, a click on a caption. The floor is a bare QTableView over a
// model that filters the same texts and has no buttons.
#include "boards/operator/oprows.h"
#include "boards/operator/recordlist.h"
#include "state/format.h"
#include "state/searchkey.h"
#include "ui/buttons.h"
#include "ui/housestyle.h"
#include "ui/label.h"
#include "ui/searchfield.h"
#include "ui/theme.h"

#include <QAbstractTableModel>
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

/// Notes when a widget was last painted.
class PaintWatch final : public QObject {
public:
    explicit PaintWatch(QWidget *widget) { widget->installEventFilter(this); }

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

/// The median is the figure to read: on a busy machine single samples hold other programs' turns.
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

void rest()
{
    const auto until = steady_clock::now() + 20ms;
    while (steady_clock::now() < until) {
        QCoreApplication::processEvents();
        QThread::usleep(500);
    }
}

const QString &typed()
{
    static const QString keys = QStringLiteral("1234\b\b\b\b");
    return keys;
}

void type(QWidget *field, QChar letter)
{
    const int key = letter == u'\b' ? static_cast<int>(Qt::Key_Backspace) : letter.toUpper().unicode();
    QCoreApplication::postEvent(field, new QKeyEvent(QEvent::KeyPress, key, Qt::NoModifier, QString(letter)));
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

/// Twenty thousand texts by five, filtered by folded keys.
class PlainModel final : public QAbstractTableModel {
public:
    explicit PlainModel(const Records &all) : m_all(all)
    {
        for (const Record &token : all) {
            m_keys.push_back(searchKey(tokenLabel(token) + u'\n' + str(token, "email")));
        }
        filter({});
    }

    void filter(const QString &query)
    {
        beginResetModel();
        const QString key = searchKey(query);
        m_shown.clear();
        for (int at = 0; at < tokens; ++at) {
            if (m_keys[static_cast<std::size_t>(at)].contains(key)) {
                m_shown.push_back(at);
            }
        }
        endResetModel();
    }

    [[nodiscard]] int rowCount(const QModelIndex &) const override { return static_cast<int>(m_shown.size()); }
    [[nodiscard]] int columnCount(const QModelIndex &) const override { return 5; }
    [[nodiscard]] QVariant data(const QModelIndex &index, int role) const override
    {
        if (role != Qt::DisplayRole) {
            return {};
        }
        const Record &token = m_all.at(m_shown[static_cast<std::size_t>(index.row())]);
        return index.column() == 0 ? tokenLabel(token) : index.column() == 1 ? str(token, "email") : QString();
    }

private:
    Records m_all;
    std::vector<QString> m_keys;
    std::vector<int> m_shown;
};

class PlainTable {
public:
    PlainTable()
    {
        table.verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
        table.verticalHeader()->setDefaultSectionSize(44);
        table.verticalHeader()->hide();
        table.setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
        table.setModel(&model);
        table.resize(cardSize.width(), 560);
        table.show();
        rest();
    }

    PlainModel model{manyTokens()};
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

void floorScrollWheel(benchmark::State &run)
{
    PlainTable plain;
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
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
    }
    QApplication application(argc, argv);
    applyHouseLook(application);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
