// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "outputcursor.h"

#include <QKeyEvent>

#include <algorithm>

namespace quillfen {

namespace {

/// To each side: a word of megabytes is not walked through.
constexpr std::size_t longestHalf = OutputText::longestSegment;

bool isWordByte(char byte)
{
    const auto value = static_cast<unsigned char>(byte);
    return value >= 0x80 || value == '_' || value == '-' || (value >= '0' && value <= '9') ||
           ((value | 0x20U) >= 'a' && (value | 0x20U) <= 'z');
}

std::size_t previous(const std::string &text, std::size_t at)
{
    do {
        at -= at > 0 ? 1U : 0U;
    } while (at > 0 && OutputText::columnsOf(text[at]) == 0);
    return at;
}

std::size_t next(const std::string &text, std::size_t at)
{
    do {
        at += at < text.size() ? 1U : 0U;
    } while (at < text.size() && OutputText::columnsOf(text[at]) == 0);
    return at;
}

} // namespace

std::size_t movedBy(const QKeyEvent &key, const OutputRows &rows, std::size_t from, std::size_t page)
{
    const std::string &bytes = rows.text()->bytes();
    const OutputRows::Place place = rows.placeOf(from);
    const bool whole = key.modifiers().testFlag(Qt::ControlModifier);
    const auto up = [&](std::size_t count) {
        return place.row >= count ? rows.offsetAt(place.row - count, place.column) : 0;
    };
    const auto down = [&](std::size_t count) {
        return place.row + count < rows.count() ? rows.offsetAt(place.row + count, place.column) : bytes.size();
    };
    switch (key.key()) {
    case Qt::Key_Up:
        return up(1);
    case Qt::Key_Down:
        return down(1);
    case Qt::Key_PageUp:
        return up(page);
    case Qt::Key_PageDown:
        return down(page);
    case Qt::Key_Home:
        return whole ? 0 : rows.row(place.row).begin;
    case Qt::Key_End:
        return whole ? bytes.size() : rows.row(place.row).segment.end;
    case Qt::Key_Left:
        return previous(bytes, from);
    case Qt::Key_Right:
        return next(bytes, from);
    default:
        return from;
    }
}

std::pair<std::size_t, std::size_t> wordAround(const OutputText &text, std::size_t place)
{
    const std::string &bytes = text.bytes();
    std::size_t begin = place;
    std::size_t end = place;
    while (begin > 0 && place - begin < longestHalf && isWordByte(bytes[begin - 1])) {
        --begin;
    }
    while (end < bytes.size() && end - place < longestHalf && isWordByte(bytes[end])) {
        ++end;
    }
    return {begin, end};
}

} // namespace quillfen
