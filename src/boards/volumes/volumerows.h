// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "state/appstate.h"

#include <QColor>
#include <QString>

namespace quillfen {

class KeyFiles;

/// The columns of the volumes table, from left to right.
enum class VolumeColumn { Name, Size, Used, Share, Appliance, Encryption, Offsite };
inline constexpr int volumeColumns = 7;

/// Who can read a volume, seen from this computer.
enum class Encryption { Off, KeyHere, KeyElsewhere };

/// What one row of the volumes table says, and in which colours on a plain row.
struct VolumeRow {
    QString name;
    QString size;
    QString used;
    QString share;
    QString appliance;
    QColor applianceColour;
    Encryption encryption = Encryption::Off;
    QString offsite;
    QColor offsiteColour; ///< of the state mark too

    bool operator==(const VolumeRow &) const = default;
};

/// The row of one volume. Asks `keyFiles` about customer-held keys only. A record without fields gives a row of zeros.
[[nodiscard]] VolumeRow volumeRow(const AppState &state, const Record &volume, KeyFiles &keyFiles);

/// How many bytes the volume's file system holds, as text; a dash when unknown or nothing.
[[nodiscard]] QString usedText(const Record &status);

[[nodiscard]] QString encryptionText(Encryption encryption);
[[nodiscard]] QString columnTitle(VolumeColumn column);
[[nodiscard]] QString cellText(const VolumeRow &row, VolumeColumn column);

/// A row read aloud after its name: each column's caption and value.
[[nodiscard]] QString rowDescription(const VolumeRow &row);

/// The ports that an orphan appliance keeps, as the agent lists them.
[[nodiscard]] QString portsText(const Record &appliance);

/// What a ready copy is a copy of.
[[nodiscard]] QString copyOriginText(const Record &copy);

/// The line under the board's title.
[[nodiscard]] QString volumesLine(qsizetype count, bool allSynced);

} // namespace quillfen
