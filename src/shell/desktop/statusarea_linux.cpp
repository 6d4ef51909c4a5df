// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "desktop/sessionbus.h"
#include "shell/process/buswatch.h"
#include "shell/window/platform.h"
#include "ui/system/x11selection_linux.h"

#include <QTimer>

#include <memory>

using namespace std::chrono_literals;

namespace quillfen::platform {

namespace {

// A desktop without a D-Bus status area may have the older one of X11, which is only asked for when login is over: an
// icon that is made before the D-Bus one has come up keeps to X11 for good.
constexpr auto loginTime = 10s;

} // namespace

void watchStatusArea(QObject &context, const std::function<void(MenuBy)> &appeared, const std::function<void()> &gone)
{
    BusWatch *watch = nullptr;
    const auto isTaken = std::make_shared<bool>(false); // by the older one, which the icon then keeps to
    // Without an address the bus library would start a bus of its own, which takes long and leads nowhere.
    if (sessionBusExists()) {
        watch = new BusWatch(&context);
        QObject::connect(watch, &BusWatch::appeared, &context, [appeared, isTaken] {
            if (!*isTaken) {
                appeared(MenuBy::Desktop);
            }
        });
        QObject::connect(watch, &BusWatch::gone, &context, [gone, isTaken] {
            if (!*isTaken) {
                gone();
            }
        });
    }
    QTimer::singleShot(loginTime, &context, [appeared, watch, isTaken] {
        const bool onBus = watch != nullptr && watch->isThere();
        if (!onBus && selectionHasOwner("_NET_SYSTEM_TRAY_S0").value_or(false)) {
            *isTaken = true;
            appeared(MenuBy::Program);
        }
    });
}

} // namespace quillfen::platform
