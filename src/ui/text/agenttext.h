// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "ui/text/label.h"

namespace quillfen {

/// `text`, which may come from the agent, as a painted line of a component shows it: nothing invisible left, and cut
/// far beyond what such a line can hold, so that nothing longer is ever measured.
[[nodiscard]] inline QString lineOfAgentText(const QString &text)
{
    constexpr qsizetype longest = 1024;
    return madeVisible(text.size() > longest ? text.left(longest) + u'…' : text);
}

} // namespace quillfen
