// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "boards/policy/policytiers.h"

#include "state/values.h"
#include "ui/controls/logscale.h"

#include <QCoreApplication>
#include <QStringList>

#include <algorithm>
#include <cmath>

namespace quillfen {

using namespace Qt::StringLiterals;

namespace {

struct Text {
    Q_DECLARE_TR_FUNCTIONS(Policy)
};

constexpr double minute = 60;
constexpr double hour = 60 * minute;
constexpr double day = 24 * hour;
constexpr double year = 365 * day;
/// What one of a tier's numbers stands for, in seconds.
constexpr std::array<double, tierCount> unitSeconds{minute, hour, day, 7 * day, year / 12, year};
/// The longest span there is to choose: the end of the scale.
constexpr double scaleEnd = 10 * year;

std::array<Tier, tierCount> writtenTiers()
{
    const QString none = Text::tr("not kept");
    return {{{Text::tr("every second"),
              Text::tr("minutes"),
              {{{0, none},
                {60, Text::tr("1 hour")},
                {360, Text::tr("6 hours")},
                {720, Text::tr("12 hours")},
                {1440, Text::tr("24 hours")},
                {2880, Text::tr("48 hours")}}}},
             {Text::tr("every minute"),
              Text::tr("hours"),
              {{{0, none},
                {6, Text::tr("6 hours")},
                {12, Text::tr("12 hours")},
                {24, Text::tr("24 hours")},
                {48, Text::tr("2 days")},
                {72, Text::tr("3 days")}}}},
             {Text::tr("every hour"),
              Text::tr("days"),
              {{{0, none},
                {1, Text::tr("1 day")},
                {3, Text::tr("3 days")},
                {7, Text::tr("7 days")},
                {14, Text::tr("14 days")},
                {30, Text::tr("30 days")}}}},
             {Text::tr("every day"),
              Text::tr("weeks"),
              {{{0, none},
                {1, Text::tr("1 week")},
                {2, Text::tr("2 weeks")},
                {4, Text::tr("4 weeks")},
                {8, Text::tr("8 weeks")},
                {12, Text::tr("12 weeks")}}}},
             {Text::tr("every week"),
              Text::tr("months"),
              {{{0, none},
                {1, Text::tr("1 month")},
                {3, Text::tr("3 months")},
                {6, Text::tr("6 months")},
                {12, Text::tr("12 months")},
                {24, Text::tr("24 months")}}}},
             {Text::tr("every month"),
              Text::tr("years"),
              {{{0, none},
                {1, Text::tr("1 year")},
                {2, Text::tr("2 years")},
                {3, Text::tr("3 years")},
                {5, Text::tr("5 years")},
                {10, Text::tr("10 years")}}}}}};
}

std::array<Plan, planCount> writtenPlans()
{
    return {{{Text::tr("Light"),
              Text::tr("An hour of per-second history. For data that is reproducible."),
              {60, 12, 3, 1, 1, 0}},
             {Text::tr("Standard"),
              Text::tr("Half a day of per-second history, a day of per-minute, a week of per-hour. Right for most "
                       "volumes."),
              standardPolicy},
             {Text::tr("Extended"),
              Text::tr("Two days of per-second history and a month of per-hour. For changes that might go unnoticed "
                       "for weeks."),
              {2880, 72, 30, 12, 12, 3}}}};
}

/// One piece of the agent's text; -1 for what is no number.
std::int64_t parsedNumber(const QString &piece)
{
    bool isNumber = false;
    const double number = piece.trimmed().toDouble(&isNumber);
    return isNumber && std::isfinite(number) ? truncated(number) : -1;
}

} // namespace

const Tier &tierAt(std::size_t index)
{
    static const std::array<Tier, tierCount> tiers = writtenTiers();
    return tiers.at(index);
}

const Plan &planAt(std::size_t index)
{
    static const std::array<Plan, planCount> plans = writtenPlans();
    return plans.at(index);
}

std::optional<std::size_t> planOf(const Policy &values)
{
    for (std::size_t index = 0; index < planCount; ++index) {
        if (planAt(index).values == values) {
            return index;
        }
    }
    return std::nullopt;
}

QString planName(const Policy &values)
{
    if (const std::optional<std::size_t> plan = planOf(values)) {
        return planAt(*plan).name;
    }
    return values == Policy{} ? Text::tr("No history") : Text::tr("Custom");
}

QString spanText(std::size_t tier, std::int64_t number)
{
    if (number == 0) {
        return u"—"_s;
    }
    const auto &choices = tierAt(tier).choices;
    const auto *const choice = std::ranges::find(choices, number, &TierChoice::number);
    return choice != choices.end() ? choice->label : u"%1 %2"_s.arg(QString::number(number), tierAt(tier).unit);
}

QString policyWords(const Policy &values)
{
    QStringList parts;
    for (std::size_t tier = 0; tier < tierCount; ++tier) {
        const QString &label = tierAt(tier).label;
        parts << (values.at(tier) == 0 ? u"%1 %2"_s.arg(label, tierAt(tier).choices.front().label)
                                       : Text::tr("%1 for %2").arg(label, spanText(tier, values.at(tier))));
    }
    return parts.join(u", "_s);
}

double reachShare(std::size_t tier, std::int64_t number)
{
    return number <= 0 ? 0.0 : LogScale(scaleEnd).share(static_cast<double>(number) * unitSeconds.at(tier));
}

std::optional<Policy> parsedPolicy(const QString &text)
{
    const QStringList pieces = text.split(u',', Qt::SkipEmptyParts);
    if (pieces.size() != static_cast<qsizetype>(tierCount)) {
        return std::nullopt;
    }
    Policy values{};
    std::ranges::transform(pieces, values.begin(), parsedNumber);
    const bool whole = std::ranges::all_of(values, [](std::int64_t number) { return number >= 0; });
    return whole ? std::optional(values) : std::nullopt;
}

QString wireForm(const Policy &values)
{
    QStringList numbers;
    for (const std::int64_t number : values) {
        numbers << QString::number(number);
    }
    return numbers.join(u',');
}

} // namespace quillfen
