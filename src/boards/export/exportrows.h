// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "state/values.h"

#include <QString>
#include <QStringList>

namespace quillfen {

/// How a copy of a volume reaches its user.
enum class Delivery { Link, Media };

/// The name of a delivery in calls.
[[nodiscard]] QString wireName(Delivery delivery);

/// What one kind of media costs, as a row says it.
struct MediaRow {
    QString medium; ///< what an order names
    QString title;
    QString caption; ///< the prices

    bool operator==(const MediaRow &) const = default;
};

[[nodiscard]] MediaRow mediaRow(const Record &option);

/// The sentence about what a download needs; with what its retrieval costs once that is known.
[[nodiscard]] QString downloadText();
[[nodiscard]] QString downloadText(const Record &retrieval);

/// Who can read the copy of a volume whose key the customer holds; empty for other volumes.
[[nodiscard]] QString encryptionNote(const Record &volume);

/// What one row of the recent copies says.
struct ExportRow {
    enum class Tone { Neutral, Good, Bad };

    QString name; ///< of the volume
    QString state;
    Tone tone = Tone::Neutral;
    QString delivery; ///< where it is shipped, and until when it is there
    QString error;
    QStringList notes;
    QString link;

    bool operator==(const ExportRow &) const = default;
};

[[nodiscard]] ExportRow exportRow(const QString &volumeName, const Record &copy);

/// A copy that was deleted; nothing is to be seen of it.
[[nodiscard]] bool isRemoved(const Record &copy);
/// A copy that is still being made: it has neither arrived, nor left, nor failed.
[[nodiscard]] bool isUnderway(const Record &copy);

} // namespace quillfen
