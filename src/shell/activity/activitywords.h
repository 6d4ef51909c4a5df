// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "state/activity.h"

#include <QColor>
#include <QString>

#include <chrono>
#include <vector>

namespace quillfen {

/// What a row of the activity says. Words may come from the agent; whoever paints them makes them visible.
struct ActivityRow {
    QString time;    ///< "14:03"
    QString day;     ///< "Nov 15"; empty when it is today
    QString words;   ///< what was said or what goes on, or else the method
    QString method;  ///< below the words; empty when it is the words
    QString aside;   ///< what follows the method: the code of a failure, the last line of what runs and its age
    QString outcome; ///< "Failed"
    QString lasted;  ///< below the outcome; empty for a notice
    QColor mark;     ///< of the outcome
    bool runs = false;
};

/// Everything about one of them, for who wants to know.
struct ActivityFacts {
    struct Fact {
        QString caption;
        QString value;
    };

    QString outcome;
    QColor mark;
    QString method;
    std::vector<Fact> facts; ///< when and how long
    QString words;           ///< all that was said about it, line by line
    QString line;            ///< the request; empty for a notice
};

[[nodiscard]] ActivityRow activityRow(const ActivityEntry &entry);
[[nodiscard]] ActivityRow activityRow(const RunningCall &call);
[[nodiscard]] ActivityFacts activityFacts(const ActivityEntry &entry);
[[nodiscard]] ActivityFacts activityFacts(const RunningCall &call);

/// As a screen reader reads the row: "14:03, Failed, volumes.resize, no room, 1.2 s".
[[nodiscard]] QString spokenLine(const ActivityRow &row);

/// For the clipboard: time, outcome, operation, duration, code, words and the request, nothing invisible in them but
/// the request as it was sent. Any thread.
[[nodiscard]] QString activityText(const ActivityEntry &entry);
[[nodiscard]] QString activityText(const RunningCall &call);

/// How long something took: "120 ms", "1.2 s", "3 min 4 s", "1 h 10 min".
[[nodiscard]] QString lastedWords(std::chrono::milliseconds duration);

} // namespace quillfen
