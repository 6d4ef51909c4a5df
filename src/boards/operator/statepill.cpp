// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "boards/operator/statepill.h"

#include "boards/operator/oprows.h"
#include "ui/parts/pill.h"
#include "ui/theme.h"

namespace quillfen {

Pill *statePill()
{
    return new Pill({}, Theme::panel, Theme::heading);
}

void showState(Pill *pill, const QString &state)
{
    const PillLook look = pillLook(state);
    pill->setText(state);
    pill->setColours(look.bg, look.fg);
    pill->setOutlined(look.outlined);
    pill->setVisible(!state.isEmpty());
}

} // namespace quillfen
