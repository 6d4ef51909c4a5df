// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "keyfiles.h"

#include <QFileInfo>

namespace quillfen {

namespace {

using namespace std::chrono_literals;

/// A key that arrives shows up within this time of the next refresh.
constexpr auto answerLife = 2s;
/// Above this many answers the old ones go: scrolling through a long list must not collect paths for ever.
constexpr qsizetype answersKept = 1'024;

} // namespace

bool KeyFiles::exists(const QString &path)
{
    const Instant present = now();
    if (const auto known = m_answers.constFind(path); known != m_answers.cend()) {
        // A clock that was set back must not keep an answer for years.
        if (present >= known->asked && present - known->asked < answerLife) {
            return known->exists;
        }
    }
    if (m_answers.size() >= answersKept) {
        m_answers.clear();
    }
    const bool found = QFileInfo(path).isFile();
    m_answers.insert(path, {found, present});
    return found;
}

} // namespace quillfen
