// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "volumerows.h"

#include "keyfiles.h"

#include "state/counted.h"
#include "state/format.h"
#include "ui/text/label.h"
#include "ui/theme.h"

#include <QCoreApplication>
#include <QStringList>

namespace quillfen {

namespace {

struct Text {
    Q_DECLARE_TR_FUNCTIONS(Volumes)
};

QString shareText(const AppState &state, const Record &volume)
{
    const QString kind = madeVisible(str(volume, "presentation_type").toUpper());
    return state.mountOf(str(volume, "name")) ? Text::tr("%1 · mounted").arg(kind)
                                              : Text::tr("%1 · not mounted").arg(kind);
}

Encryption encryptionOf(const Record &volume, KeyFiles &keyFiles)
{
    if (str(volume, "encryption") != QLatin1StringView("customer")) {
        return Encryption::Off;
    }
    return keyFiles.exists(AppState::keyPath(volume)) ? Encryption::KeyHere : Encryption::KeyElsewhere;
}

} // namespace

QString usedText(const Record &status)
{
    const std::int64_t used = num(object(object(status, "sync"), "local"), "FS_USED_BYTES");
    return used < 1 ? QStringLiteral("—") : gb(used);
}

VolumeRow volumeRow(const AppState &state, const Record &volume, KeyFiles &keyFiles)
{
    const auto status = state.statuses().find(num(volume, "id"));
    const ApplianceState appliance = state.applianceState(volume);
    const OffsiteState offsite = state.offsiteState(volume);

    VolumeRow row;
    row.name = madeVisible(str(volume, "name"));
    row.size = gb(num(volume, "size_bytes"));
    row.used = usedText(status == state.statuses().end() ? object(nullptr) : status->second);
    row.share = shareText(state, volume);
    row.appliance = appliance.label;
    // Only what wants attention is coloured in this column; the Offsite column tells good from idle.
    row.applianceColour = appliance.colour == Theme::warn ? Theme::warn : Theme::text;
    row.encryption = encryptionOf(volume, keyFiles);
    row.offsite = offsite.label;
    row.offsiteColour = offsite.colour;
    return row;
}

QString encryptionText(Encryption encryption)
{
    switch (encryption) {
    case Encryption::KeyHere:
        return Text::tr("On · key here");
    case Encryption::KeyElsewhere:
        return Text::tr("On · key elsewhere");
    case Encryption::Off:
        break;
    }
    return Text::tr("Off");
}

QString columnTitle(VolumeColumn column)
{
    switch (column) {
    case VolumeColumn::Name:
        return Text::tr("Name");
    case VolumeColumn::Size:
        return Text::tr("Size");
    case VolumeColumn::Used:
        return Text::tr("Used");
    case VolumeColumn::Share:
        return Text::tr("Share");
    case VolumeColumn::Appliance:
        return Text::tr("Appliance");
    case VolumeColumn::Encryption:
        return Text::tr("Encryption");
    case VolumeColumn::Offsite:
        return Text::tr("Offsite");
    }
    return {};
}

QString cellText(const VolumeRow &row, VolumeColumn column)
{
    switch (column) {
    case VolumeColumn::Name:
        return row.name;
    case VolumeColumn::Size:
        return row.size;
    case VolumeColumn::Used:
        return row.used;
    case VolumeColumn::Share:
        return row.share;
    case VolumeColumn::Appliance:
        return row.appliance;
    case VolumeColumn::Encryption:
        return encryptionText(row.encryption);
    case VolumeColumn::Offsite:
        return row.offsite;
    }
    return {};
}

QString rowDescription(const VolumeRow &row)
{
    QStringList parts;
    for (int column = 1; column < volumeColumns; ++column) {
        const auto which = static_cast<VolumeColumn>(column);
        parts.append(columnTitle(which) + u' ' + cellText(row, which));
    }
    return parts.join(QLatin1StringView(", "));
}

QString volumesLine(qsizetype count, bool allSynced)
{
    if (count == 0) {
        return Text::tr("No volumes yet");
    }
    const QString state = allSynced ? Text::tr("all protected") : Text::tr("uploading");
    return counted(count, Text::tr("%1 volume · %2"), Text::tr("%1 volumes · %2")).arg(state);
}

QString portsText(const Record &appliance)
{
    const json::value *const ports = appliance.if_contains("ports");
    const json::array *const list = ports == nullptr ? nullptr : ports->if_array();
    if (list == nullptr) {
        return str(ports);
    }
    QStringList texts;
    for (const json::value &port : *list) {
        texts.append(str(&port));
    }
    return texts.join(QStringLiteral(", "));
}

QString copyOriginText(const Record &copy)
{
    const QString moment = str(copy, "rewind_to");
    return QCoreApplication::translate("VolumeRows", "%1 as it was %2 · fully copied")
        .arg(str(copy, "source_name"),
             moment.isEmpty() ? QCoreApplication::translate("VolumeRows", "at a chosen moment") : longDate(moment));
}

} // namespace quillfen
