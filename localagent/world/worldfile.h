// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "localagent/world/fields.h"
#include "localagent/world/world.h"

#include <string>
#include <string_view>
#include <vector>

namespace quillfen::localagent {

/// The names of the worlds that are built in.
[[nodiscard]] std::vector<std::string> worldNames();

/// The text of a built-in world, or of the world file at that path. Throws WorldError when there is neither.
[[nodiscard]] std::string readWorld(const std::string &nameOrPath);

// A world file is a JSON object (comments are allowed) with these entries, all of which may be left out:
//   agent_version, upload_mb_per_second, copy_mb_per_second
//   account   {signed_in, is_admin, email, tenant, plan, state, capacity_gb, used_codes [], expired_codes []}
//   engine    {exists, status "Running"|"Stopped", memory, disk, docker, limactl}
//   preflight [{name, ok, info, fix}]
//   volumes   [{id, name, size_gb, share "smb"|"nfs"|"iscsi", created, used_gb, cache_gb, pending_gb, mounted,
//               encryption "customer", key "here"|"elsewhere", key_volume,
//               points {count, oldest, pinned [{at, label}]}, policy "720,24,7,4,6,1",
//               appliance {state "none"|"online"|"connecting"|"stopped"|"elsewhere", since, online_at, resumes},
//               iscsi {portal, chap, secret, secret_issued}}]
//   generate  {volumes, mounted}
//   views     [{volume_id, name, at, open, mounted}]
//   copies    [{id, volume_id, name, rewind_to, size_gb, state, hydration_pct}]
//   exports   [{volume_id, state, delivery "link"|"media", medium, carrier, region, link, expires, error,
//               retrieval_note, tracking}]
//   service   {…}: what operators see, see servicefile.h
//   orphans   [{container, up, since, ports}]
//   tokens    [{label, created, expires}]
// Sizes are GB of 2^30 bytes; moments are relative to the start of the agent ("-3h", "-90d", "+10m", "now").

/// Fills a fresh `world` from the JSON `text` and makes real what is real of it (key files, mount folders). Moments in
/// the text are relative to the world's clock. Throws WorldError, or Refusal when a file or folder cannot be made.
void loadWorld(World &world, std::string_view text);

} // namespace quillfen::localagent
