// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "state/searchkey.h"
#include "typing.h"

#include <QAbstractTableModel>
#include <QHeaderView>
#include <QTableView>

#include <functional>
#include <utility>
#include <vector>

namespace quillfen::bench {

/// The floor of a filtered list: rows that are texts, found by their folded keys, with nothing to derive.
class BareModel final : public QAbstractTableModel {
public:
    using TextOf = std::function<QString(int row, int column)>;

    BareModel(std::vector<QString> keys, int columns, TextOf textOf)
        : m_keys(std::move(keys)), m_columns(columns), m_textOf(std::move(textOf))
    {
        filter({});
    }

    void filter(const QString &query)
    {
        beginResetModel();
        const QString key = searchKey(query);
        m_shown.clear();
        for (std::size_t at = 0; at < m_keys.size(); ++at) {
            if (m_keys[at].contains(key)) {
                m_shown.push_back(static_cast<int>(at));
            }
        }
        endResetModel();
    }

    [[nodiscard]] int rowCount(const QModelIndex &) const override { return static_cast<int>(m_shown.size()); }
    [[nodiscard]] int columnCount(const QModelIndex &) const override { return m_columns; }
    [[nodiscard]] QVariant data(const QModelIndex &index, int role) const override
    {
        if (role != Qt::DisplayRole) {
            return {};
        }
        return m_textOf(m_shown[static_cast<std::size_t>(index.row())], index.column());
    }

private:
    std::vector<QString> m_keys;
    int m_columns;
    TextOf m_textOf;
    std::vector<int> m_shown;
};

/// The model on a screen, in a plain table.
struct BareTable {
    BareTable(BareModel &rows, int rowHeight, QSize size) : model(rows)
    {
        table.verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
        table.verticalHeader()->setDefaultSectionSize(rowHeight);
        table.verticalHeader()->hide();
        table.setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
        table.setModel(&model);
        table.resize(size);
        table.show();
        rest();
    }

    BareModel &model;
    QTableView table;
    PaintWatch painted{table.viewport()};
};

/// From a key to the painted finds.
inline void typeInto(benchmark::State &run, BareTable &bare)
{
    QString query;
    qsizetype at = 0;
    Samples samples(run);
    for (auto _ : run) {
        rest();
        const auto begin = std::chrono::steady_clock::now();
        if (typed()[at] == u'\b') {
            query.chop(1);
        } else {
            query += typed()[at];
        }
        bare.model.filter(query);
        samples.add(bare.painted.secondsFrom(begin));
        at = (at + 1) % typed().size();
    }
}

} // namespace quillfen::bench
