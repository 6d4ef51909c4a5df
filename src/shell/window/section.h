// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "ui/paint/icons.h"

#include <QString>

#include <array>
#include <optional>

namespace quillfen {

/// The places of the main window, in the order of the sidebar.
enum class Section { Volumes, TimeTravel, Policy, Export, Account, Operator, Advanced };

inline constexpr std::array allSections{Section::Volumes, Section::TimeTravel, Section::Policy,  Section::Export,
                                        Section::Account, Section::Operator,   Section::Advanced};

/// The section's name in English, by which it is found; the same in every language.
[[nodiscard]] QString rawTitle(Section section);

/// The section whose raw title is exactly `title`.
[[nodiscard]] std::optional<Section> sectionTitled(const QString &title);

/// The section's name in the user's language.
[[nodiscard]] QString displayTitle(Section section);

[[nodiscard]] Icon sectionIcon(Section section);

/// Where the main window starts: the first section, hidden ones included, whose raw title begins with `wish` whatever
/// the case. Volumes when there is no wish or nothing begins with it; an empty wish begins everything.
[[nodiscard]] Section initialSection(const std::optional<QString> &wish);

} // namespace quillfen
