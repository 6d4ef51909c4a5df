// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "boards/export/exportrows.h"

#include "state/appstate.h"
#include "state/format.h"

#include <QCoreApplication>
#include <QFileInfo>

#include <cmath>

namespace quillfen {

using namespace Qt::StringLiterals;

namespace {

struct Text {
    Q_DECLARE_TR_FUNCTIONS(Export)
};

QString deliveryText(const Record &copy)
{
    QStringList parts;
    if (str(copy, "delivery") == wireName(Delivery::Media)) {
        parts << Text::tr("%1 to %2").arg(str(copy, "medium"), str(copy, "region"));
    }
    if (const QString until = str(copy, "expires_at"); !until.isEmpty()) {
        parts << Text::tr("available until %1").arg(longDate(until));
    }
    return parts.join(u" · "_s);
}

QStringList notesOf(const Record &copy)
{
    QStringList notes{str(copy, "retrieval_note"), str(copy, "key_note")};
    if (const QString tracking = str(copy, "tracking"); !tracking.isEmpty()) {
        notes << Text::tr("tracking %1").arg(tracking);
    }
    notes.removeAll(QString());
    return notes;
}

} // namespace

QString wireName(Delivery delivery)
{
    return delivery == Delivery::Media ? u"media"_s : u"link"_s;
}

MediaRow mediaRow(const Record &option)
{
    const QString name = str(option, "name");
    const std::int64_t units = num(option, "units");
    return {.medium = str(option, "medium"),
            .title = units >= 2 ? u"%1 × %2"_s.arg(name, QString::number(units)) : name,
            .caption = Text::tr("media %1 · packing %2 · work %3 · shipping %4")
                           .arg(str(option, "media_cost"), str(option, "packing"), str(option, "work"),
                                str(option, "shipping"))};
}

QString downloadText()
{
    return Text::tr("Ready within the hour for most volumes; the link works for 48 hours. ");
}

QString downloadText(const Record &retrieval)
{
    const double total = str(retrieval, "total").toDouble();
    if (!std::isfinite(total) || total <= 0) {
        return downloadText() + Text::tr("Free at this size.");
    }
    return downloadText() +
           Text::tr("Retrieval $%1 (free up to %2 GB).")
               .arg(QString::number(total, 'f', 2), QString::number(num(retrieval, "free_bytes") >> 30));
}

QString encryptionNote(const Record &volume)
{
    if (str(volume, "encryption") != "customer"_L1) {
        return {};
    }
    return Text::tr("%1 is encrypted. Its copy opens only with its key file, %2. Without it nobody can read it, "
                    "Quillfen included.")
        .arg(str(volume, "name"), QFileInfo(AppState::keyPath(volume)).fileName());
}

ExportRow exportRow(const QString &volumeName, const Record &copy)
{
    ExportRow row;
    row.name = volumeName;
    row.state = str(copy, "state");
    row.delivery = deliveryText(copy);
    row.error = str(copy, "error");
    row.notes = notesOf(copy);
    row.link = str(copy, "link");
    if (!row.error.isEmpty() || row.state == "failed"_L1) {
        row.tone = ExportRow::Tone::Bad;
    } else if (row.state == "ready"_L1) {
        row.tone = ExportRow::Tone::Good;
    }
    return row;
}

bool isRemoved(const Record &copy)
{
    return str(copy, "state") == "removed"_L1;
}

bool isUnderway(const Record &copy)
{
    const QString state = str(copy, "state");
    return state != "removed"_L1 && state != "failed"_L1 && state != "expired"_L1 && str(copy, "error").isEmpty() &&
           str(copy, "link").isEmpty() && str(copy, "tracking").isEmpty();
}

} // namespace quillfen
