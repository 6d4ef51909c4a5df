// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "shell/process/wish.h"

#include <QObject>

#include <memory>

namespace quillfen {

/// How a start of the program ended up.
enum class Claim {
    First,      ///< no other client runs in this session: this one is it
    HandedOver, ///< the one that runs has taken the wish
    Unanswered, ///< one runs, but did not take the wish
};

/// A way by which a second start reaches the first.
class Door : public QObject {
    Q_OBJECT

public:
    using QObject::QObject;

    /// Makes this process the one that others reach, or brings `wish` to the one that is. Wishes that come in later are
    /// signalled once the event loop runs.
    [[nodiscard]] virtual Claim claim(const Wish &wish) = 0;

Q_SIGNALS:
    void wished(const quillfen::Wish &wish);
};

namespace platform {

/// The door of this desktop; null where the system itself keeps to one process. Needs no application object, so that a
/// second start does not spend the time that one takes.
[[nodiscard]] std::unique_ptr<Door> makeDoor();

} // namespace platform

} // namespace quillfen
