// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "state/appstate.h"

#include <QColor>
#include <QString>

#include <optional>

namespace quillfen {

/// What the card of one volume says and offers.
struct VolumeCard {
    enum class Protection { Protected, Pending };

    QString name;
    Protection protection = Protection::Pending;
    QString protectionText;
    QString applianceText;

    bool isIscsi = false; ///< served to other machines: no mount actions, the iSCSI card instead
    bool offersStart = false;
    bool offersMount = false;
    bool isMounted = false;
    QString mountPath; ///< where it is mounted, or would be
    QString mountLine; ///< the same as it is shown
    QString folder;    ///< the same for the file viewer, which knows no "~"

    QString cache;
    QString waiting;

    bool hasOwnKey = false; ///< a key that only the user holds
    bool keyHere = false;
    QString keyPath;  ///< whole, for opening
    QString keyTitle; ///< whether the key is on this computer
    QString keyFile;  ///< as it is shown, under "~"
    QString keyNote;  ///< what follows the file

    bool operator==(const VolumeCard &) const = default;
};

/// The card of one volume. Asks the file system for its key file.
[[nodiscard]] VolumeCard volumeCard(const AppState &state, const Record &volume);

/// The first volume with this id; null when it is gone.
[[nodiscard]] const Record *volumeWithId(const AppState &state, std::int64_t id);

/// The whole GB of a volume, as its size is asked for.
[[nodiscard]] std::int64_t wholeGB(const Record &volume);

/// The size that was typed, when it is one that can be asked for: a whole number from 1 up, other than `current`.
[[nodiscard]] std::optional<std::int64_t> typedSize(const QString &text, std::int64_t current);

} // namespace quillfen
