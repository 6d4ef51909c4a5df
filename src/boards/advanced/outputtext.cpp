// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "outputtext.h"

#include "prettyjson.h"

#include "ui/text/label.h"

#include <algorithm>
#include <cstring>

namespace quillfen {

namespace {

/// To reach a segment up to this many are read from the mark before it.
constexpr std::size_t segmentsPerMark = 64;

bool isInside(char byte)
{
    return (static_cast<unsigned char>(byte) & 0xC0U) == 0x80U;
}

std::string visibleLines(const QString &text)
{
    std::string lines;
    for (const QString &line : text.split(u'\n')) {
        if (!lines.empty()) {
            lines += '\n';
        }
        lines += madeVisible(line).toStdString();
    }
    return lines;
}

} // namespace

OutputText::OutputText(std::string bytes, bool isJson) : m_bytes(std::move(bytes)), m_isJson(isJson)
{
    index();
}

OutputText OutputText::ofJson(const json::value &value)
{
    return {prettyLines(value), true};
}

OutputText OutputText::ofWords(const QString &text)
{
    return {visibleLines(text), false};
}

void OutputText::index()
{
    Segment segment;
    std::size_t depth = 0;
    do {
        if (m_segments % segmentsPerMark == 0) {
            m_marks.push_back({segment.next, depth});
        }
        segment = read(m_segments++, segment.next, depth);
        depth = segment.depthAfter;
        m_lines += segment.startsLine ? 1U : 0U;
        const std::size_t columns = columnsOf(bytesOf(segment));
        if (columns + indent(segment.depth, fewestColumns) > fewestColumns) {
            m_long.push_back({static_cast<std::uint32_t>(segment.number), static_cast<std::uint16_t>(columns),
                              static_cast<std::uint16_t>(std::min<std::size_t>(segment.depth, 0xFFFF))});
        }
    } while (segment.next > segment.end || segment.next < m_bytes.size());
    m_long.shrink_to_fit();
    m_marks.shrink_to_fit();
}

// In text written from JSON only an opening line ends in an opening bracket, and only a closing line begins with a
// closing one: everything else that begins or ends with either is within quotes.
OutputText::Segment OutputText::read(std::size_t number, std::size_t offset, std::size_t depth) const
{
    Segment segment;
    segment.number = number;
    segment.begin = offset;
    segment.startsLine = offset == 0 || m_bytes[offset - 1] == '\n';
    const std::size_t room = std::min(m_bytes.size() - offset, longestSegment + 1);
    const void *const feed = std::memchr(m_bytes.data() + offset, '\n', room);
    const bool endsLine = feed != nullptr || room <= longestSegment;
    if (feed != nullptr) {
        segment.end = static_cast<std::size_t>(static_cast<const char *>(feed) - m_bytes.data());
    } else {
        segment.end = offset + std::min(room, longestSegment);
        while (!endsLine && isInside(m_bytes[segment.end])) {
            --segment.end;
        }
    }
    segment.next = segment.end + (feed != nullptr ? 1U : 0U);
    segment.depth = depth;
    const std::string_view text = bytesOf(segment);
    if (m_isJson && segment.startsLine && depth > 0 && !text.empty() && (text.front() == '}' || text.front() == ']')) {
        --segment.depth;
    }
    const bool opens = m_isJson && endsLine && !text.empty() && (text.back() == '{' || text.back() == '[');
    segment.depthAfter = segment.depth + (opens ? 1U : 0U);
    return segment;
}

OutputText::Segment OutputText::segment(std::size_t number) const
{
    const Mark mark = m_marks.at(number / segmentsPerMark);
    Segment segment = read(number / segmentsPerMark * segmentsPerMark, mark.offset, mark.depth);
    while (segment.number < number) {
        segment = after(segment);
    }
    return segment;
}

OutputText::Segment OutputText::after(const Segment &segment) const
{
    return read(segment.number + 1, segment.next, segment.depthAfter);
}

OutputText::Segment OutputText::segmentAt(std::size_t offset) const
{
    const auto mark = std::prev(std::ranges::upper_bound(m_marks, offset, {}, &Mark::offset));
    const auto place = static_cast<std::size_t>(mark - m_marks.begin());
    Segment segment = read(place * segmentsPerMark, mark->offset, mark->depth);
    while (segment.next <= offset && segment.number + 1 < m_segments) {
        segment = after(segment);
    }
    return segment;
}

std::string_view OutputText::bytesOf(const Segment &segment) const
{
    return std::string_view(m_bytes).substr(segment.begin, segment.end - segment.begin);
}

QString OutputText::text(std::size_t begin, std::size_t end) const
{
    QString text;
    text.reserve(static_cast<qsizetype>((end - begin) * 5 / 4));
    for (Segment each = segmentAt(begin);; each = after(each)) {
        if (each.startsLine && each.begin >= begin && begin < end) {
            text += QString(static_cast<qsizetype>(each.depth * 2), u' ');
        }
        const std::size_t from = std::max(begin, each.begin);
        const std::size_t to = std::min(end, each.end);
        if (from < to) {
            text += QString::fromUtf8(m_bytes.data() + from, static_cast<qsizetype>(to - from));
        }
        if (each.next >= end || each.number + 1 == m_segments) {
            const bool endsWithFeed = each.next > each.end && each.next <= end;
            return endsWithFeed ? text + u'\n' : text;
        }
        if (each.next > each.end) {
            text += u'\n';
        }
    }
}

std::size_t OutputText::columnsOf(char byte) noexcept
{
    const auto value = static_cast<unsigned char>(byte);
    if (value < 0x80) {
        return 1;
    }
    // Wide characters begin at U+1100; the first byte of three tells as much, nearly.
    return value < 0xC0 ? 0 : (value < 0xE1 ? 1 : 2);
}

std::size_t OutputText::columnsOf(std::string_view text) noexcept
{
    std::size_t columns = 0;
    for (const char byte : text) {
        columns += columnsOf(byte);
    }
    return columns;
}

} // namespace quillfen
