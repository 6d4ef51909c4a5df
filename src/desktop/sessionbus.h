// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

namespace quillfen {

/// Whether this session has a bus. Asking for one that is not there would start one, which takes long and leads
/// nowhere.
[[nodiscard]] bool sessionBusExists();

} // namespace quillfen
