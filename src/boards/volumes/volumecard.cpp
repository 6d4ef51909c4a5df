// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "boards/volumes/volumecard.h"

#include "state/format.h"
#include "state/recordlists.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>

#include <limits>

namespace quillfen {

namespace {

constexpr int bitsPerGB = 30;

QString words(const char *text)
{
    return QCoreApplication::translate("VolumeCard", text);
}

/// A path under the home directory, as people write it.
QString underTilde(const QString &path)
{
    const QString home = QDir::homePath();
    return path.startsWith(home + QLatin1Char('/')) ? QLatin1Char('~') + path.sliced(home.size()) : path;
}

void describeMount(VolumeCard &card, const AppState &state)
{
    const std::optional<QString> mount = state.mountOf(card.name);
    card.isMounted = mount.has_value();
    const QString usual = QStringLiteral("~/Quillfen/") + card.name;
    // An agent may leave out where it has mounted a volume: then it is where volumes are.
    card.mountPath = mount && !mount->isEmpty() ? *mount : usual;
    card.mountLine = mount ? card.mountPath : words("%1 (when mounted)").arg(usual);
    const bool underHome = card.mountPath.startsWith(QLatin1String("~/"));
    card.folder = underHome ? QDir::homePath() + card.mountPath.sliced(1) : card.mountPath;
}

void describeKey(VolumeCard &card, const Record &volume)
{
    card.hasOwnKey = str(volume, "encryption") == QLatin1String("customer");
    if (!card.hasOwnKey) {
        return;
    }
    card.keyPath = AppState::keyPath(volume);
    card.keyHere = QFileInfo(card.keyPath).isFile();
    card.keyTitle = card.keyHere ? words("Encrypted with a key only you hold · key on this Mac")
                                 : words("Encrypted with a key only you hold · key is NOT on this Mac");
    card.keyFile = underTilde(card.keyPath);
    const QString keyVolume = str(volume, "key_volume");
    if (!keyVolume.isEmpty() && keyVolume != card.name) {
        card.keyNote = words(" (the key of %1, which this copy was made from)").arg(keyVolume);
    }
    card.keyNote += words(" · back it up somewhere that is not this Mac; without it nobody can read this volume, "
                          "Quillfen included.");
}

} // namespace

VolumeCard volumeCard(const AppState &state, const Record &volume)
{
    VolumeCard card;
    card.name = str(volume, "name");
    card.isIscsi = str(volume, "presentation_type") == QLatin1String("iscsi");

    const OffsiteState offsite = state.offsiteState(volume);
    card.protection = offsite.complete ? VolumeCard::Protection::Protected : VolumeCard::Protection::Pending;
    card.protectionText = offsite.complete ? words("Protected") : offsite.label;
    const ApplianceState appliance = state.applianceState(volume);
    card.applianceText = words("appliance %1").arg(appliance.label);

    describeMount(card, state);
    card.offersStart = !appliance.running;
    card.offersMount = appliance.running && !card.isMounted && !card.isIscsi;

    const auto status = state.statuses().find(num(volume, "id"));
    const Record &sync = status == state.statuses().end() ? object(nullptr) : object(status->second, "sync");
    card.cache = gb(num(sync, "cache_bytes"));
    card.waiting = gb(num(sync, "pending_bytes"));

    describeKey(card, volume);
    return card;
}

const Record *volumeWithId(const AppState &state, std::int64_t id)
{
    return recordWithId(state.volumes(), id);
}

std::int64_t wholeGB(const Record &volume)
{
    return num(volume, "size_bytes") >> bitsPerGB;
}

std::optional<std::int64_t> typedSize(const QString &text, std::int64_t current)
{
    constexpr std::int64_t most = std::numeric_limits<std::int64_t>::max() >> bitsPerGB;
    bool isNumber = false;
    const std::int64_t size = text.trimmed().toLongLong(&isNumber);
    if (!isNumber || size < 1 || size > most || size == current) {
        return std::nullopt;
    }
    return size;
}

} // namespace quillfen
