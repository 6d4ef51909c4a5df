// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "state/clock.h"
#include "state/published.h"

#include <QList>
#include <QString>

#include <cstdint>
#include <string>
#include <string_view>

namespace quillfen {

/// Work of the agent that may take an hour, for as long as its answer is awaited.
struct RunningOperation {
    std::uint64_t id = 0;
    std::string method;
    QString title; ///< what is going on, in words
    Instant since;
    std::string progressEvent; ///< the event whose messages are about it; none when empty
    QString lastLine;          ///< what the agent last said about it
};

/// The operations that run now, whichever board began them. Main thread only.
class Operations final {
public:
    Published<QList<RunningOperation>> running; ///< in the order of their beginnings

    /// Answers the id under which to end it.
    [[nodiscard]] std::uint64_t begin(std::string method, QString title, std::string progressEvent);
    void end(std::uint64_t id);
    /// The agent has sent a message with this event; an empty one tells nothing.
    void progress(std::string_view event, const QString &message);

    /// The first that runs this method; null when none does.
    [[nodiscard]] const RunningOperation *find(std::string_view method) const;

private:
    std::uint64_t m_lastId = 0;
};

} // namespace quillfen
