// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "localagent/world/exports.h"
#include "localagent/methods/subjects.h"

namespace quillfen::localagent {

namespace {

json::value show(const Call &call)
{
    return exportRecord(call.world, call.params.whole("volume_id"));
}

json::value media(const Call &call)
{
    return mediaRecord(call.world, call.params.whole("volume_id"), call.params.text("region"));
}

json::value order(const Call &call)
{
    const Params &params = call.params;
    const VolumeId id = params.whole("volume_id");
    orderExport(call.world, id,
                {params.text("delivery"), params.optionalText("medium").value_or(""),
                 params.optionalText("region").value_or("US"), params.optionalText("address").value_or("")});
    return exportRecord(call.world, id);
}

json::value remove(const Call &call)
{
    removeExport(call.world, call.params.whole("volume_id"));
    return json::object{{"removed", true}};
}

Parameter region(bool required)
{
    return {.name = "region",
            .required = required,
            .summary = "where media are shipped to",
            .oneOf = {"US", "EU", "other"}};
}

} // namespace

std::vector<Method> exportMethods()
{
    return {
        {.name = "volumes.export",
         .http = "GET",
         .path = "/v1/volumes/{volume_id}/export",
         .parameters = {volumeId()},
         .summary = "The latest full copy of a volume; null when there never was one.",
         .handler = show},
        {.name = "volumes.export.set",
         .http = "PUT",
         .path = "/v1/volumes/{volume_id}/export",
         .parameters = {volumeId(),
                        {.name = "delivery", .summary = "a download, or media by post", .oneOf = {"link", "media"}},
                        {.name = "medium", .required = false, .summary = "as export.media offers it; for media"},
                        region(false),
                        {.name = "address", .required = false, .summary = "the postal address; for media"}},
         .summary = "Has a full copy of a volume packed, for download or for shipping.",
         .handler = order},
        {.name = "export.media",
         .http = "GET",
         .path = "/v1/volumes/{volume_id}/export/media",
         .parameters = {volumeId(), region(true)},
         .summary = "What a copy of a volume can be shipped on, and what shipping or retrieving it costs.",
         .handler = media},
        {.name = "export.remove",
         .http = "DELETE",
         .path = "/v1/volumes/{volume_id}/export",
         .parameters = {volumeId()},
         .summary = "Removes the latest copy of a volume, its link included.",
         .handler = remove},
    };
}

} // namespace quillfen::localagent
