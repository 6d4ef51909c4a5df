// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "boards/operator/recordrows.h"
#include "ui/lists/cellrow.h"
#include "ui/lists/longlist.h"

#include <QTimer>

#include <functional>
#include <memory>

class QBoxLayout;

namespace quillfen {

class AgentLabel;
class Card;
class SearchField;
class StateText;

/// A row that can show any record of its list.
class RecordRow : public CellRow {
    Q_OBJECT

public:
    using CellRow::CellRow;
    virtual void fill(const Record &record) = 0;
};

/// A card with a list of records: its title and filter in the band, captions that sort, and rows. As high as its rows
/// up to the room there is, from where on it scrolls by itself; rows that are not in view do not exist.
class RecordList final : public QWidget, private RowSource {
    Q_OBJECT

public:
    struct Setup {
        QString title;
        QString filter; ///< the filter's placeholder; no filter and no captions when empty
        QString empty;  ///< what stands there while there are no records
        int rowHeight = 44;
        std::vector<Column> columns;     ///< the last one is the buttons'
        std::vector<RecordField> fields; ///< of the columns, in their order
        std::function<RecordRow *(std::shared_ptr<const std::vector<Column>>)> makeRow;
    };

    explicit RecordList(Setup setup, QWidget *parent = nullptr);
    ~RecordList() override;

    /// Where further controls of the band stand, right of the filter.
    [[nodiscard]] QBoxLayout *band() const;
    void focusSearch();

    /// Shows these records, of them those that are `wanted`. `known` is false while the agent has not answered yet.
    void setRecords(const Records &records, bool known, const RecordRows::Wanted &wanted = {});
    /// Fills the rows in view anew: something beside their records has changed.
    void refill();
    /// How high the whole card can be; at least three rows always show.
    void setRoom(int height);

Q_SIGNALS:
    /// The card has become higher or lower.
    void heightChanged();

private:
    [[nodiscard]] int rowCount() const override;
    [[nodiscard]] QString rowKey(int row) const override;
    [[nodiscard]] QWidget *makeRow() override;
    void fillRow(QWidget *widget, int row) override;

    void build();
    void showRows(LongList::Place place);
    void fit();

    Setup m_setup;
    std::shared_ptr<const std::vector<Column>> m_columns;
    RecordRows m_rows;
    Card *m_card;
    SearchField *m_search;
    ColumnHeader *m_header;
    LongList *m_list;
    QWidget *m_note;
    StateText *m_waiting;
    AgentLabel *m_empty;
    bool m_known = false;
    int m_room = 0;
    QTimer m_idle; ///< makes the search ready while nothing else is to be done
};

} // namespace quillfen
