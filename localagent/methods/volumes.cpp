// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "localagent/world/volumes.h"
#include "localagent/methods/subjects.h"
#include "localagent/world/records.h"

namespace quillfen::localagent {

namespace {

json::value list(const Call &call)
{
    return volumeRecords(call.world);
}

json::value status(const Call &call)
{
    return statusRecord(call.world, volumeOf(call.world, call.params.whole("volume_id")));
}

json::value create(const Call &call)
{
    const Params &params = call.params;
    const NewVolume wanted{params.text("name"), params.whole("size_bytes"),
                           params.optionalText("presentation_type").value_or("smb"),
                           params.optionalText("encryption") == "customer"};
    return volumeRecord(call.world, createVolume(call.world, wanted));
}

void resize(const Call &call, const Done &done)
{
    resizeVolume(call.world, call.params.whole("volume_id"), call.params.whole("size_bytes"), done);
}

void remove(const Call &call, const Done &done)
{
    removeVolume(call.world, call.params.whole("volume_id"), done);
}

Parameter sizeBytes()
{
    return {.name = "size_bytes", .type = Type::Whole, .summary = "bytes, at least 1 GB (2^30)"};
}

} // namespace

std::vector<Method> volumeMethods()
{
    return {
        {.name = "volumes.list",
         .http = "GET",
         .path = "/v1/volumes",
         .summary = "The account's volumes.",
         .handler = list},
        {.name = "volumes.status",
         .http = "GET",
         .path = "/v1/volumes/{volume_id}/status",
         .parameters = {volumeId()},
         .summary = "What a volume holds and how much of it is in the vault.",
         .handler = status},
        {.name = "volumes.create",
         .http = "POST",
         .path = "/v1/volumes",
         .parameters = {{.name = "name", .summary = "unique, at most 64 bytes; it is the folder's name too"},
                        sizeBytes(),
                        {.name = "presentation_type",
                         .required = false,
                         .summary = "how the volume is shared; smb when left out",
                         .oneOf = {"smb", "nfs", "iscsi"}},
                        {.name = "encryption",
                         .required = false,
                         .summary = "customer: with a key that only the user holds",
                         .oneOf = {"vault", "customer"}}},
         .summary = "Creates a volume within what the plan has left.",
         .handler = create},
        {.name = "volumes.resize",
         .http = "PATCH",
         .path = "/v1/volumes/{volume_id}",
         .parameters = {volumeId(), sizeBytes()},
         .summary = "Resizes a volume; a mounted one comes back mounted.",
         .handler = resize},
        {.name = "volumes.remove",
         .http = "DELETE",
         .path = "/v1/volumes/{volume_id}",
         .parameters = {volumeId()},
         .summary = "Unmounts a volume, removes its appliance once the last writes are in the vault, and deletes it.",
         .handler = remove},
    };
}

} // namespace quillfen::localagent
