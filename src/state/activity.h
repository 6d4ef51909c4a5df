// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "state/clock.h"
#include "state/published.h"

#include <QList>
#include <QString>

#include <chrono>
#include <cstdint>
#include <deque>
#include <optional>
#include <string>
#include <string_view>

namespace quillfen {

/// A call that an action has made, for as long as its answer is awaited.
struct RunningCall {
    std::uint64_t id = 0;
    std::string method;
    QString title;      ///< what is going on, in words; empty for what does not take long
    std::string line{}; ///< the request as it went over the wire, secrets masked
    Instant since{};
    std::string progressEvent{};                   ///< the event whose messages are about it; none when empty
    QString lastLine{};                            ///< what the agent last said about it
    std::optional<Instant> saidAt{};               ///< when it said that
    std::chrono::steady_clock::time_point begun{}; ///< `since` for measuring: nobody sets this clock
};

/// Something that was said or done.
struct ActivityEntry {
    enum class Kind { Notice, Done, Failed };

    std::uint64_t number = 0; ///< grows from entry to entry
    Kind kind = Kind::Notice;
    Instant at{};         ///< when it was said; of a call, when it ended
    QString words{};      ///< the notice; of a call, what was said of its outcome, if anything
    QString title{};      ///< of a call that takes long: what was going on
    std::string method{}; ///< of a call
    std::string line{};   ///< of a call: the request as it went over the wire, secrets masked
    std::chrono::milliseconds took{};
    std::optional<std::int64_t> code{}; ///< of a failure
};

/// What was said to the user in this run of the program, and what actions asked of the agent: the running calls,
/// whichever board began them, and the past. Main thread only.
class Activity final {
public:
    /// As much as is kept of the past; what is older gives way.
    static constexpr std::size_t mostEntries = 10'000;

    Published<QList<RunningCall>> running;     ///< in the order of their beginnings
    Published<std::deque<ActivityEntry>> past; ///< the oldest first

    /// How a call went.
    struct Outcome {
        QString words; ///< may be empty
        bool failed = false;
        std::optional<std::int64_t> code{};
    };

    /// Notes a call that begins; its id and its time are given here. Answers the id under which to end it.
    [[nodiscard]] std::uint64_t begin(RunningCall call);
    void end(std::uint64_t id, Outcome outcome);
    /// Notes what was said to the user.
    void noticed(const QString &words);
    /// The agent has sent a message with this event; an empty one tells nothing.
    void progress(std::string_view event, const QString &message);

    /// The first call with a title that runs this method; null when none does.
    [[nodiscard]] const RunningCall *find(std::string_view method) const;

private:
    void keep(ActivityEntry entry);

    std::uint64_t m_lastId = 0;
    std::uint64_t m_lastNumber = 0;
};

} // namespace quillfen
