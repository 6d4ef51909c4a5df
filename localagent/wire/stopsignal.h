// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "localagent/wire/descriptor.h"

#include <csignal>

namespace quillfen::localagent {

/// Turns SIGTERM and SIGINT into a descriptor that becomes readable, so that the agent ends between two pieces of work
/// and not inside one. One at a time per process; the former handlers come back with its end.
class StopSignal final {
public:
    StopSignal();
    ~StopSignal();
    StopSignal(const StopSignal &) = delete;
    StopSignal &operator=(const StopSignal &) = delete;

    [[nodiscard]] int descriptor() const { return m_read.get(); }

private:
    Descriptor m_read;
    Descriptor m_write;
    struct sigaction m_formerTerm = {};
    struct sigaction m_formerInt = {};
};

} // namespace quillfen::localagent
