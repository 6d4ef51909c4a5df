// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "localagent/methods/subjects.h"
#include "localagent/world/copies.h"
#include "localagent/world/points.h"
#include "localagent/world/records.h"

namespace quillfen::localagent {

namespace {

std::string listPoints(const Call &call)
{
    return pointsText(call.world, volumeOf(call.world, call.params.whole("volume_id")));
}

json::value listCopies(const Call &call)
{
    return copyRecords(call.world, volumeOf(call.world, call.params.whole("volume_id")).id);
}

void restore(const Call &call, const Done &done)
{
    startCopy(call.world, call.params.whole("volume_id"), call.params.text("timestamp"),
              call.params.text("recovery_name"), done);
}

json::value discard(const Call &call)
{
    discardCopy(call.world, call.params.whole("recovery_id"));
    return json::object{{"deleted", true}};
}

json::value promote(const Call &call)
{
    return volumeRecord(call.world,
                        promoteCopy(call.world, call.params.whole("recovery_id"), call.params.text("new_name")));
}

Parameter recoveryId()
{
    return {
        .name = "recovery_id", .type = Type::Whole, .summary = "the copy's id, as recoveries.list_for_volume tells it"};
}

} // namespace

std::vector<Method> historyMethods()
{
    return {
        {.name = "restore_points.list",
         .http = "GET",
         .path = "/v1/volumes/{volume_id}/restore-points",
         .parameters = {volumeId()},
         .summary = "The points of time a volume can be taken back to.",
         .handler = listPoints},
        {.name = "recoveries.list_for_volume",
         .http = "GET",
         .path = "/v1/volumes/{volume_id}/recoveries",
         .parameters = {volumeId()},
         .summary = "The copies made from a volume's past.",
         .handler = listCopies},
        {.name = "restore.start",
         .http = "POST",
         .path = "/v1/volumes/{volume_id}/recoveries",
         .parameters = {volumeId(),
                        {.name = "timestamp", .summary = "the second to copy, in ISO 8601"},
                        {.name = "recovery_name", .summary = "the copy's name"}},
         .summary = "Begins a writable copy of a volume as it was at a second of its past.",
         .handler = restore},
        {.name = "recovery.promote",
         .http = "POST",
         .path = "/v1/recoveries/{recovery_id}/promote",
         .parameters = {recoveryId(), {.name = "new_name", .summary = "the new volume's name"}},
         .summary = "Makes a copy that is ready a volume of its own.",
         .handler = promote},
        {.name = "recovery.delete",
         .http = "DELETE",
         .path = "/v1/recoveries/{recovery_id}",
         .parameters = {recoveryId()},
         .summary = "Deletes a copy. The volume it was made from is untouched.",
         .handler = discard},
    };
}

} // namespace quillfen::localagent
