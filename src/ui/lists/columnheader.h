// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "ui/lists/columns.h"

#include <QStringList>
#include <QWidget>

#include <memory>
#include <vector>

class QAbstractButton;

namespace quillfen {

/// Which way a list is sorted by one of its columns.
enum class Sorting { None, Ascending, Descending };

/// The captions above the columns of a list. Each is a button, by pointer and by keyboard, that sorts the list:
/// upwards, downwards, and back to the order in which it came.
class ColumnHeader final : public QWidget {
    Q_OBJECT

public:
    /// A column without a caption is none to sort by.
    ColumnHeader(const QStringList &captions, std::shared_ptr<const std::vector<Column>> columns,
                 QWidget *parent = nullptr);

    [[nodiscard]] int column() const noexcept { return m_column; }
    [[nodiscard]] Sorting sorting() const noexcept { return m_sorting; }
    /// Shows that the list is sorted this way; says nothing to anybody.
    void setSorting(int column, Sorting sorting);

    [[nodiscard]] QSize sizeHint() const override;

Q_SIGNALS:
    /// The user wants the list sorted this way; the header shows it already.
    void sorted(int column, quillfen::Sorting sorting);

protected:
    void resizeEvent(QResizeEvent *event) override;

private:
    void chosen(int column);

    std::shared_ptr<const std::vector<Column>> m_columns;
    std::vector<QAbstractButton *> m_captions; ///< null where there is none
    int m_column = -1;
    Sorting m_sorting = Sorting::None;
};

} // namespace quillfen
