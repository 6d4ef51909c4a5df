// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "state/isomoment.h"

namespace quillfen {

namespace {

bool isDigit(QChar character)
{
    return character >= QLatin1Char('0') && character <= QLatin1Char('9');
}

int digitValue(QChar digit)
{
    return digit.unicode() - u'0';
}

/// Walks along a text. Once a piece did not fit, it stays failed.
class Reader final {
public:
    explicit Reader(QStringView text) : m_rest(text) {}

    [[nodiscard]] bool good() const { return m_good; }
    [[nodiscard]] bool atEnd() const { return m_rest.isEmpty(); }

    bool skip(QChar character)
    {
        const bool there = m_rest.startsWith(character);
        m_rest = m_rest.sliced(there ? 1 : 0);
        return there;
    }

    void need(QChar character) { m_good = skip(character) && m_good; }

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
        for (int weight = 10; !m_rest.isEmpty() && isDigit(m_rest.front()); weight /= 10) {
            value += digit() * weight;
        }
        return value;
    }

private:
    int digit()
    {
        m_good = m_good && !m_rest.isEmpty() && isDigit(m_rest.front());
        if (!m_good) {
            return 0;
        }
        const int value = digitValue(m_rest.front());
        m_rest = m_rest.sliced(1);
        return value;
    }

    QStringView m_rest;
    bool m_good = true;
};

std::chrono::sys_days readDate(Reader &reader, bool &valid)
{
    const int year = reader.digits(4, 9999);
    reader.need(QLatin1Char('-'));
    const int month = reader.digits(2, 12);
    reader.need(QLatin1Char('-'));
    const int day = reader.digits(2, 31);
    const std::chrono::year_month_day date(std::chrono::year(year), std::chrono::month(static_cast<unsigned>(month)),
                                           std::chrono::day(static_cast<unsigned>(day)));
    valid = date.ok();
    return date;
}

std::chrono::seconds readTime(Reader &reader)
{
    const std::chrono::hours hours(reader.digits(2, 23));
    reader.need(QLatin1Char(':'));
    const std::chrono::minutes minutes(reader.digits(2, 59));
    reader.need(QLatin1Char(':'));
    // A leap second is the first second of the next minute here.
    return hours + minutes + std::chrono::seconds(reader.digits(2, 60));
}

std::chrono::minutes readOffset(Reader &reader)
{
    const std::chrono::hours hours(reader.digits(2, 23));
    reader.skip(QLatin1Char(':'));
    return hours + std::chrono::minutes(reader.digits(2, 59));
}

} // namespace

std::optional<IsoMoment> isoMoment(QStringView text, QChar separator)
{
    Reader reader(text);
    IsoMoment moment;
    bool valid = false;
    moment.instant = readDate(reader, valid);
    reader.need(separator);
    moment.instant += readTime(reader);
    if (reader.skip(QLatin1Char('.'))) {
        moment.fraction = true;
        moment.instant += std::chrono::milliseconds(reader.fraction());
    }
    if (reader.skip(QLatin1Char('Z'))) {
        moment.zone = true;
    } else if (reader.skip(QLatin1Char('+'))) {
        moment.zone = true;
        moment.instant -= readOffset(reader);
    } else if (reader.skip(QLatin1Char('-'))) {
        moment.zone = true;
        moment.instant += readOffset(reader);
    }
    return valid && reader.good() && reader.atEnd() ? std::optional(moment) : std::nullopt;
}

} // namespace quillfen
