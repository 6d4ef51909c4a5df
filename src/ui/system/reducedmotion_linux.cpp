// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "ui/system/portalsetting.h"
#include "ui/system/systemmotion.h"

#include <QVariant>

namespace quillfen {

bool systemReducesMotion()
{
    static bool reduced = false;
    static const PortalSetting setting(QStringLiteral("org.gnome.desktop.interface"),
                                       QStringLiteral("enable-animations"), [](const QVariant &animations) {
                                           if (animations.typeId() == QMetaType::Bool) {
                                               reduced = !animations.toBool();
                                           }
                                       });
    return reduced;
}

} // namespace quillfen
