// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "state/isomoment.h"

namespace quillfen {

namespace {

/// Walks along a text, of which it need not know the encoding: all that counts is ASCII. Once a piece did not fit, it
/// stays failed.
template <typename Char>
class Reader final {
public:
    explicit Reader(std::basic_string_view<Char> text) : m_at(text.data()), m_end(text.data() + text.size()) {}

    [[nodiscard]] bool good() const { return m_good; }
    [[nodiscard]] bool atEnd() const { return m_at == m_end; }

    bool skip(Char character)
    {
        const bool there = m_at != m_end && *m_at == character;
        m_at += there ? 1 : 0;
        return there;
    }

    void need(Char character) { m_good = skip(character) && m_good; }

    int digits(int width, int largest)
    {
        int value = 0;
        for (int place = 0; place < width; ++place) {
            value = value * 10 + digit();
        }
        m_good = m_good && value <= largest;
        return value;
    }

    /// The digits after the point in milliseconds; what comes after the third is skipped.
    int fraction()
    {
        int value = digit() * 100;
        for (int weight = 10; m_at != m_end && valueOf(*m_at) < 10; weight /= 10) {
            value += digit() * weight;
        }
        return value;
    }

private:
    /// 0 to 9, more for what is no digit.
    static unsigned valueOf(Char digit) { return static_cast<unsigned>(digit) - static_cast<unsigned>('0'); }

    int digit()
    {
        m_good = m_good && m_at != m_end && valueOf(*m_at) < 10;
        return m_good ? static_cast<int>(valueOf(*m_at++)) : 0;
    }

    const Char *m_at;
    const Char *m_end;
    bool m_good = true;
};

template <typename Char>
std::chrono::sys_days readDate(Reader<Char> &reader, bool &valid)
{
    const int year = reader.digits(4, 9999);
    reader.need('-');
    const int month = reader.digits(2, 12);
    reader.need('-');
    const int day = reader.digits(2, 31);
    const std::chrono::year_month_day date(std::chrono::year(year), std::chrono::month(static_cast<unsigned>(month)),
                                           std::chrono::day(static_cast<unsigned>(day)));
    valid = date.ok();
    return date;
}

template <typename Char>
std::chrono::seconds readTime(Reader<Char> &reader)
{
    const std::chrono::hours hours(reader.digits(2, 23));
    reader.need(':');
    const std::chrono::minutes minutes(reader.digits(2, 59));
    reader.need(':');
    // A leap second is the first second of the next minute here.
    return hours + minutes + std::chrono::seconds(reader.digits(2, 60));
}

template <typename Char>
std::chrono::minutes readOffset(Reader<Char> &reader)
{
    const std::chrono::hours hours(reader.digits(2, 23));
    reader.skip(':');
    return hours + std::chrono::minutes(reader.digits(2, 59));
}

template <typename Char>
std::optional<IsoMoment> readMoment(std::basic_string_view<Char> text, Char separator)
{
    Reader<Char> reader(text);
    IsoMoment moment;
    bool valid = false;
    moment.instant = readDate(reader, valid);
    reader.need(separator);
    moment.instant += readTime(reader);
    if (reader.skip('.')) {
        moment.fraction = true;
        moment.instant += std::chrono::milliseconds(reader.fraction());
    }
    if (reader.skip('Z')) {
        moment.zone = true;
    } else if (reader.skip('+')) {
        moment.zone = true;
        moment.instant -= readOffset(reader);
    } else if (reader.skip('-')) {
        moment.zone = true;
        moment.instant += readOffset(reader);
    }
    return valid && reader.good() && reader.atEnd() ? std::optional(moment) : std::nullopt;
}

} // namespace

std::optional<IsoMoment> isoMoment(std::u16string_view text, char16_t separator)
{
    return readMoment(text, separator);
}

std::optional<IsoMoment> isoMoment(std::string_view text, char separator)
{
    return readMoment(text, separator);
}

} // namespace quillfen
