// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "localagent/world/fields.h"
#include "localagent/world/world.h"

#include <optional>
#include <string>

namespace quillfen::localagent {

// Views: seconds of a volume's past that can be looked at. The engine serves them; mounted, each is a folder beside the
// volume's own that nobody can write into.

/// What opening a view needs to know. Without a name it gets one from its moment.
struct ViewWish {
    VolumeId volume = 0;
    std::string timestamp;
    std::optional<std::string> name;
};

/// Opens a view, or opens it again; when the volume is mounted on this computer, the view is mounted too. The same
/// second without a name is the same view. Throws a Refusal.
void openView(World &world, const ViewWish &wish, const Done &done);

/// Releases a view: its mount goes, and so does the view.
void releaseView(World &world, VolumeId id, const std::string &name, const Done &done);

/// Mounts an open view. One that is mounted already stays as it is. Throws a Refusal that says what has to happen
/// first.
const Mount &attachView(World &world, VolumeId id, const std::string &name);

/// The engine serves nothing any more: every view is closed and can be opened again.
void closeViews(World &world);
/// Takes the mounts of a volume's views away.
void detachViews(World &world, VolumeId id);
/// The volume goes, and its views with it.
void dropViews(World &world, VolumeId id);

/// {"views": [{"name", "open", "point_in_time"}]}
[[nodiscard]] json::object viewRecords(const World &world, VolumeId id);

/// Fills the world from the entries of a world file: {volume_id, name, at, open, mounted}.
void loadViews(World &world, const std::vector<Fields> &views);

} // namespace quillfen::localagent
