// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "ui/text/label.h"

namespace quillfen {

/// At most `longest` (above zero) UTF-16 units of a text that may come from the agent, cut where no character is torn
/// apart, with nothing invisible left.
[[nodiscard]] inline QString shortened(const QString &text, qsizetype longest)
{
    if (text.size() <= longest) {
        return madeVisible(text);
    }
    const qsizetype end = text.at(longest - 1).isHighSurrogate() ? longest - 1 : longest;
    return madeVisible(text.left(end) + u'…');
}

/// `text`, which may come from the agent, as a painted line of a component shows it: cut far beyond what such a line
/// can hold, so that nothing longer is ever measured.
[[nodiscard]] inline QString lineOfAgentText(const QString &text)
{
    return shortened(text, 1024);
}

} // namespace quillfen
