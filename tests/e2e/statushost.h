// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace quillfen::e2e {

/// A picture of a status icon, as it comes over the bus.
struct StatusPicture {
    int width = 0;
    int height = 0;
    std::vector<std::uint8_t> argb; ///< four bytes a pixel, opacity first

    [[nodiscard]] int opacity(int x, int y) const;
    bool operator==(const StatusPicture &) const = default;
};

/// An entry of a status icon's plain menu.
struct StatusEntry {
    int id = 0;
    std::string label;
    bool enabled = true;
    std::vector<StatusEntry> below;
};

/// The status area of a desktop (org.kde.StatusNotifierWatcher), for as long as this object lives; it goes as a crash
/// does. It shows nothing: tests look at its icons and use them in its place. Several may live: the first has the name,
/// the others take it over in their turn.
class StatusHost final {
public:
    /// Somebody who shows the icons may be there from the beginning or come later.
    enum class Shown { AtOnce, Later };

    explicit StatusHost(Shown shown = Shown::AtOnce);
    ~StatusHost();
    StatusHost(const StatusHost &) = delete;
    StatusHost &operator=(const StatusHost &) = delete;

    /// Somebody shows the icons from now on.
    void show();
    /// How often a program has asked whether somebody does.
    [[nodiscard]] int asked() const;

    /// The icons that are there, by the names of their owners on the bus.
    [[nodiscard]] std::vector<std::string> icons() const;
    /// How many there have been, whether they still are or not.
    [[nodiscard]] int registrations() const;
    /// Waits for the one icon; throws when there is none or more than one.
    void seeIcon() const;

    // What follows is about the one icon that is there.
    [[nodiscard]] std::string text(const std::string &property) const;
    [[nodiscard]] std::string toolTip() const;
    [[nodiscard]] std::vector<StatusPicture> pictures() const;
    /// The picture of one size; an empty one when it has none.
    [[nodiscard]] StatusPicture picture(int size) const;
    /// A click at this place.
    void click(int x, int y) const;
    /// The menu as it is when it opens.
    [[nodiscard]] std::vector<StatusEntry> menu() const;
    /// Opens the menu and chooses an entry of it or of a menu below; throws when there is no such entry.
    void choose(const std::string &label) const;

private:
    class Service;

    std::unique_ptr<Service> m_service;
};

} // namespace quillfen::e2e
