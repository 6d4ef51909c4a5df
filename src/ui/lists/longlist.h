// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "ui/theme.h"

#include <QAbstractScrollArea>
#include <QPointer>
#include <QString>

#include <map>
#include <optional>
#include <vector>

namespace quillfen {

/// What a `LongList` shows. It is asked about a row when the row comes into view.
class RowSource {
public:
    RowSource() = default;
    virtual ~RowSource() = default;
    RowSource(const RowSource &) = delete;
    RowSource &operator=(const RowSource &) = delete;

    [[nodiscard]] virtual int rowCount() const = 0;
    /// Tells a row from others when the list comes anew. Rows with equal keys are taken in their order.
    [[nodiscard]] virtual QString rowKey(int row) const = 0;
    /// The row with this key that is nearest to where it was; when it is gone, the one that has taken its place, which
    /// may be past the last. Asks row after row: a source that knows its order better finds it sooner.
    [[nodiscard]] virtual int findRow(const QString &key, int near) const;
    /// A row widget, empty yet.
    [[nodiscard]] virtual QWidget *makeRow() = 0;
    /// Has a row widget show what `row` says; it may have shown another row before.
    virtual void fillRow(QWidget *widget, int row) = 0;
};

/// A list of rows with buttons, all of one height, of any length: it keeps widgets for the rows in view and moves them
/// on as one scrolls. Item views would be as quick, but what stands in their cells is unknown to screen readers.
///
/// Up, Down, Page Up, Page Down, Home and End move the keyboard from row to row, Left and Right along a row. The row
/// with the keyboard keeps its widget even when it is scrolled out of sight, so that Enter never meets another row.
class LongList : public QAbstractScrollArea {
    Q_OBJECT

public:
    /// `source` outlives the list.
    LongList(RowSource &source, int rowHeight, const QString &accessibleName, QWidget *parent = nullptr);
    ~LongList() override;

    /// The line between two rows, on a surface that asks for another colour than the palette's line, or for none.
    void setLineColour(const QColor &colour) { m_line = colour; }
    /// Has Tab go to one row only and on from there: the one that had the keyboard last, as long as it is in view.
    void setOneTabStop();
    /// Has the list begin at its end, and stay there when rows are added while it is there.
    void setFollowsEnd() { m_followsEnd = true; }
    /// The height at which nothing is left to scroll, and that of `count` rows.
    [[nodiscard]] int fullHeight() const;
    [[nodiscard]] int heightOf(int count) const;
    /// Whole rows that fit in.
    [[nodiscard]] int rowsInView() const;

    enum class Place { Keep, Top };
    /// The rows have changed: shows them as they are now, from the top or from the row that stood there.
    void refresh(Place place = Place::Keep);
    /// Scrolls as little as is needed to show a row whole.
    void showRow(int row);
    /// The widget of a row, null while it is out of view.
    [[nodiscard]] QWidget *widgetOf(int row) const;

protected:
    void scrollContentsBy(int dx, int dy) override;
    void resizeEvent(QResizeEvent *event) override;
    bool viewportEvent(QEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    struct Shown {
        QWidget *widget = nullptr;
        QString key;
    };
    /// Where the keyboard is.
    struct Spot {
        int row = 0;
        QString key;
    };

    void fitBar();
    [[nodiscard]] bool isAtEnd() const;
    void scrollTo(bool end, const std::optional<Spot> &top, int cut);
    void adoptRows(const std::optional<Spot> &focus);
    void place();
    void put(int row, QWidget *widget);
    [[nodiscard]] QWidget *takeSpare();
    void tidySpares();
    void orderTabs();
    bool moveTabStop();
    [[nodiscard]] int topRow() const;
    [[nodiscard]] bool has(const Spot &spot, int row) const;
    [[nodiscard]] std::optional<Spot> focusSpot() const;
    [[nodiscard]] int rowOf(const QWidget *inside) const;
    void moveAlong(const QWidget *row, const QWidget *from, bool forward);
    [[nodiscard]] std::optional<int> rowAfter(int row, int key) const;
    bool moveFocus(const QWidget *from, int key);
    void focusRow(int row, const QWidget *like);
    void watch(QWidget *row);

    RowSource &m_source;
    QColor m_line = Theme::line;
    int m_rowHeight;
    std::map<int, Shown> m_shown;
    std::vector<QWidget *> m_spare;
    int m_tabStop = 0;
    bool m_oneTabStop = false;
    bool m_followsEnd = false;
    bool m_refilling = false;
};

} // namespace quillfen
