// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "state/appstate.h"

#include <QString>

namespace quillfen {

/// What the row of a token says.
struct TokenTexts {
    QString id;
    QString label; ///< as the account has it
    QString shown; ///< as it is displayed
    QString created;
    QString expires;
};

/// What the engine card says, and which of its buttons it offers.
struct EngineTexts {
    enum class Offer { SetUp, Start, Stop };

    QString status;
    bool exists = false;
    bool running = false;
    Offer offer = Offer::SetUp;
    QString memory;
    QString disk;
    QString docker;
    QString engine;
};

/// The tokens of `computer` itself are shown by what uses them, every other label as it is.
[[nodiscard]] QString tokenLabel(const QString &label, const QString &computer);

[[nodiscard]] TokenTexts tokenTexts(const Record &token, const QString &computer);

/// A button whose action runs stays in its place until that has ended, whatever the engine says meanwhile.
[[nodiscard]] EngineTexts engineTexts(const Record &engine, const Activity &activity);

/// Whether an appliance of this status runs.
[[nodiscard]] bool isUp(const QString &status);

/// The account's volumes are on their way to be destroyed, unless it is recovered.
[[nodiscard]] bool isClosing(const Record &account);

/// How much of the bought capacity is allocated, 0 while it is not known.
[[nodiscard]] double allocatedShare(const AppState &state);

} // namespace quillfen
