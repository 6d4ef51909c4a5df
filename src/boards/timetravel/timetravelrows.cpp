// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "boards/timetravel/timetravelrows.h"

#include "state/format.h"

#include <QCoreApplication>
#include <QDateTime>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace quillfen {

namespace {

struct Texts {
    Q_DECLARE_TR_FUNCTIONS(TimeTravelRows)
};

constexpr qsizetype shortNameLength = 12;

ViewRow::Offer offerOf(const Record &view, bool isMounted)
{
    if (isMounted) {
        return ViewRow::Offer::Show;
    }
    return isTrue(view, "open") ? ViewRow::Offer::Mount : ViewRow::Offer::OpenAgain;
}

} // namespace

ViewRow viewRow(const AppState &state, const QString &volumeName, const Record &view)
{
    ViewRow row;
    row.name = str(view, "name");
    row.timestamp = str(view, "point_in_time");
    row.origin = Texts::tr("as of %1").arg(exactDate(row.timestamp));
    const std::optional<QString> folder = state.mountOf(viewMountName(volumeName, row.name));
    row.offer = offerOf(view, folder.has_value());
    row.folder = folder.value_or(QString());
    return row;
}

RecoveryRow recoveryRow(const Record &recovery)
{
    RecoveryRow row;
    row.id = num(recovery, "id");
    row.name = str(recovery, "name");
    row.origin = Texts::tr("from %1").arg(exactDate(str(recovery, "rewind_to")));
    row.isReady = str(recovery, "state") == "ready"_L1;
    const json::value *const percent = recovery.if_contains("hydration_pct");
    if (percent != nullptr && !percent->is_null()) {
        row.percent = num(percent);
        row.origin += u" · "_s + Texts::tr("%1% copied").arg(*row.percent);
    }
    return row;
}

QString viewMountName(const QString &volumeName, const QString &viewName)
{
    return volumeName + "-view-"_L1 + viewName;
}

QString isoSecond(Instant moment)
{
    const auto seconds = std::chrono::floor<std::chrono::seconds>(moment);
    return QDateTime::fromSecsSinceEpoch(seconds.time_since_epoch().count(), Qt::UTC).toString(Qt::ISODate);
}

QString shortName(const QString &timestamp)
{
    QString digits;
    std::copy_if(timestamp.begin(), timestamp.end(), std::back_inserter(digits),
                 [](QChar sign) { return sign.isNumber(); });
    return digits.first(std::min(digits.size(), shortNameLength));
}

QString ageText(Instant moment)
{
    return ago(isoSecond(moment)) + u" · "_s + Texts::tr("1-second precision");
}

QString openedText(const json::value &answer)
{
    const Record &record = object(&answer);
    const QString mountpoint = str(record, "mountpoint");
    if (isTrue(record, "mounted") && !mountpoint.isEmpty()) {
        return Texts::tr("The view is mounted at %1 (read-only).").arg(mountpoint);
    }
    const json::value *const note = record.if_contains("note");
    const QString words = note != nullptr && note->is_string() ? str(note) : QString();
    return words.isEmpty() ? Texts::tr("The view is open.") : words;
}

QString restorePointsTitle(std::optional<std::size_t> count)
{
    return Texts::tr("Restore points (%1)").arg(count ? QString::number(*count) : u"…"_s);
}

} // namespace quillfen
