// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "outputtext.h"

#include <memory>

namespace quillfen {

/// How a text falls into rows at a width. Only the long segments are looked at, so that a change of the width costs
/// milliseconds for a hundred megabytes.
class OutputRows final {
public:
    /// A piece of one segment, as wide as the view.
    struct Row {
        OutputText::Segment segment;
        std::size_t part = 0; ///< of the segment's parts
        std::size_t parts = 1;
        std::size_t begin = 0;
        std::size_t end = 0;
        std::size_t indent = 0; ///< columns
    };
    /// A place among the rows: columns are counted from the indentation on.
    struct Place {
        std::size_t row = 0;
        std::size_t column = 0;
    };

    OutputRows() : OutputRows(std::make_shared<OutputText>(), OutputText::fewestColumns) {}
    OutputRows(std::shared_ptr<const OutputText> text, std::size_t columns);

    [[nodiscard]] const std::shared_ptr<const OutputText> &text() const noexcept { return m_text; }
    [[nodiscard]] std::size_t columns() const noexcept { return m_columns; }
    [[nodiscard]] std::size_t count() const noexcept;

    /// `row` must be below `count()`.
    [[nodiscard]] Row row(std::size_t row) const;
    /// The one after; `row` must not be the last.
    [[nodiscard]] Row after(const Row &row) const;

    [[nodiscard]] Place placeOf(std::size_t offset) const;
    /// The place in the buffer that is nearest to a column of a row.
    [[nodiscard]] std::size_t offsetAt(std::size_t row, std::size_t column) const;

private:
    [[nodiscard]] std::size_t room(std::size_t depth) const noexcept;
    [[nodiscard]] std::size_t partsOf(const OutputText::Long &segment) const noexcept;
    [[nodiscard]] std::size_t firstRowOf(std::size_t segment) const;
    [[nodiscard]] Row part(const OutputText::Segment &segment, std::size_t part) const;

    std::shared_ptr<const OutputText> m_text;
    std::size_t m_columns;
    std::vector<std::uint32_t> m_extra; ///< for each long segment the rows beyond the first, its own and all before
};

} // namespace quillfen
