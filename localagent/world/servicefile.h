// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "localagent/world/fields.h"
#include "localagent/world/world.h"

namespace quillfen::localagent {

// The part of a world file about those who run the service, under "service":
//   hubs     [{id, name, address, life "primary"|"replica"|"building"|"registered", sold_pct, lag}]
//   promoting  the name of the hub that is being promoted and waits for its lag
//   users    [{id, email, tenant, created, state}]
//   tenants  [{name, purchased_gb, allocated_gb, state}]
//   tokens   [{id, label, email, created, expires, revoked}]
//   orders   [{id, volume, tenant, delivery "link"|"media", state, medium}]
//   generate {users, tokens, orders}
// Moments that lie ahead are written "+90d".

/// Throws WorldError.
void loadService(World &world, const Fields &fields);

} // namespace quillfen::localagent
