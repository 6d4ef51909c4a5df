// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "state/clock.h"

#include <QHash>
#include <QString>

namespace quillfen {

/// Knows which key files are on this computer, and asks the file system at most every two seconds about each: rows are
/// painted far more often than keys come and go. Main thread; owned by the table's model.
class KeyFiles final {
public:
    [[nodiscard]] bool exists(const QString &path);

private:
    struct Answer {
        bool exists = false;
        Instant asked;
    };
    QHash<QString, Answer> m_answers;
};

} // namespace quillfen
