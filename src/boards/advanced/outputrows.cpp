// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "outputrows.h"

#include <algorithm>
#include <numeric>
#include <utility>

namespace quillfen {

namespace {

/// The first place in `text` that is at least so many columns from its beginning.
std::size_t placeAtColumn(std::string_view text, std::size_t column)
{
    std::size_t at = 0;
    for (std::size_t passed = 0; at < text.size(); ++at) {
        const std::size_t width = OutputText::columnsOf(text[at]);
        if (passed >= column && width > 0) {
            break;
        }
        passed += width;
    }
    return at;
}

} // namespace

OutputRows::OutputRows(std::shared_ptr<const OutputText> text, std::size_t columns)
    : m_text(std::move(text)), m_columns(std::max(columns, OutputText::fewestColumns))
{
    m_extra.reserve(m_text->longSegments().size());
    std::size_t extra = 0;
    for (const OutputText::Long &segment : m_text->longSegments()) {
        extra += partsOf(segment) - 1;
        m_extra.push_back(static_cast<std::uint32_t>(extra));
    }
}

std::size_t OutputRows::room(std::size_t depth) const noexcept
{
    return m_columns - OutputText::indent(depth, m_columns);
}

std::size_t OutputRows::partsOf(const OutputText::Long &segment) const noexcept
{
    const std::size_t width = room(segment.depth);
    return std::max<std::size_t>(1, (segment.columns + width - 1) / width);
}

std::size_t OutputRows::count() const noexcept
{
    return m_text->segments() + (m_extra.empty() ? 0 : m_extra.back());
}

std::size_t OutputRows::firstRowOf(std::size_t segment) const
{
    const auto &segments = m_text->longSegments();
    const auto at = std::ranges::lower_bound(segments, segment, {}, &OutputText::Long::number) - segments.begin();
    return segment + (at == 0 ? 0 : m_extra[static_cast<std::size_t>(at) - 1]);
}

OutputRows::Row OutputRows::row(std::size_t row) const
{
    // Among the long segments the last that begins at or above the row: what comes after it has one row each.
    const auto &segments = m_text->longSegments();
    const auto firstRow = [&](std::size_t at) { return segments[at].number + (at == 0 ? 0 : m_extra[at - 1]); };
    std::size_t below = 0;
    for (std::size_t above = segments.size(); below < above;) {
        const std::size_t middle = std::midpoint(below, above);
        if (firstRow(middle) <= row) {
            below = middle + 1;
        } else {
            above = middle;
        }
    }
    if (below == 0) {
        return part(m_text->segment(row), 0);
    }
    const std::size_t at = below - 1;
    const std::size_t parts = partsOf(segments[at]);
    const std::size_t within = row - firstRow(at);
    if (within < parts) {
        return part(m_text->segment(segments[at].number), within);
    }
    return part(m_text->segment(segments[at].number + within - parts + 1), 0);
}

OutputRows::Row OutputRows::after(const Row &row) const
{
    return row.part + 1 < row.parts ? part(row.segment, row.part + 1) : part(m_text->after(row.segment), 0);
}

OutputRows::Row OutputRows::part(const OutputText::Segment &segment, std::size_t part) const
{
    const std::string_view text = m_text->bytesOf(segment);
    const std::size_t width = room(segment.depth);
    Row row;
    row.segment = segment;
    row.part = part;
    row.begin = segment.begin;
    row.end = segment.end;
    row.indent = OutputText::indent(segment.depth, m_columns);
    if (text.size() > width) {
        row.parts = std::max<std::size_t>(1, (OutputText::columnsOf(text) + width - 1) / width);
        row.begin = segment.begin + placeAtColumn(text, part * width);
        row.end = segment.begin + placeAtColumn(text, (part + 1) * width);
    }
    return row;
}

OutputRows::Place OutputRows::placeOf(std::size_t offset) const
{
    const OutputText::Segment segment = m_text->segmentAt(offset);
    const std::string_view text = m_text->bytesOf(segment);
    const std::size_t width = room(segment.depth);
    const std::size_t within = std::min(offset - segment.begin, text.size());
    const std::size_t columns = OutputText::columnsOf(text);
    const std::size_t last = columns == 0 ? 0 : (columns - 1) / width;
    const std::size_t number = std::min(OutputText::columnsOf(text.substr(0, within)) / width, last);
    const std::size_t begin = part(segment, number).begin - segment.begin;
    return {firstRowOf(segment.number) + number, OutputText::columnsOf(text.substr(begin, within - begin))};
}

std::size_t OutputRows::offsetAt(std::size_t at, std::size_t column) const
{
    const Row found = row(std::min(at, count() - 1));
    const std::string_view text =
        m_text->bytesOf(found.segment).substr(found.begin - found.segment.begin, found.end - found.begin);
    return found.begin + placeAtColumn(text, column);
}

} // namespace quillfen
