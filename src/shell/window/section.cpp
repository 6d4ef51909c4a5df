// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "shell/window/section.h"

#include <QCoreApplication>

#include <algorithm>

namespace quillfen {

namespace {

struct Entry {
    const char *title;
    Icon icon;
};

constexpr std::array<Entry, allSections.size()> entries{{
    {QT_TRANSLATE_NOOP("Section", "Volumes"), Icon::Drive},
    {QT_TRANSLATE_NOOP("Section", "Time travel"), Icon::ClockBack},
    {QT_TRANSLATE_NOOP("Section", "History policy"), Icon::CalendarClock},
    {QT_TRANSLATE_NOOP("Section", "Get a copy of my data"), Icon::Box},
    {QT_TRANSLATE_NOOP("Section", "Account & engine"), Icon::PersonCircle},
    {QT_TRANSLATE_NOOP("Section", "Operator"), Icon::ServerRack},
    {QT_TRANSLATE_NOOP("Section", "Advanced"), Icon::Terminal},
}};

const Entry &entryOf(Section section)
{
    return entries.at(static_cast<std::size_t>(section));
}

template <typename Predicate>
std::optional<Section> firstSection(Predicate &&matches)
{
    const auto *found = std::find_if(allSections.begin(), allSections.end(), std::forward<Predicate>(matches));
    return found == allSections.end() ? std::nullopt : std::optional(*found);
}

} // namespace

QString rawTitle(Section section)
{
    return QString::fromUtf8(entryOf(section).title);
}

std::optional<Section> sectionTitled(const QString &title)
{
    return firstSection([&](Section section) { return rawTitle(section) == title; });
}

QString displayTitle(Section section)
{
    return QCoreApplication::translate("Section", entryOf(section).title);
}

Icon sectionIcon(Section section)
{
    return entryOf(section).icon;
}

Section initialSection(const std::optional<QString> &wish)
{
    if (!wish) {
        return Section::Volumes;
    }
    const QString start = wish->toLower();
    return firstSection([&](Section section) { return rawTitle(section).toLower().startsWith(start); })
        .value_or(Section::Volumes);
}

} // namespace quillfen
