// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "localagent/world/views.h"
#include "localagent/methods/subjects.h"

namespace quillfen::localagent {

namespace {

json::value list(const Call &call)
{
    return viewRecords(call.world, volumeOf(call.world, call.params.whole("volume_id")).id);
}

void open(const Call &call, const Done &done)
{
    openView(call.world,
             {call.params.whole("volume_id"), call.params.text("timestamp"), call.params.optionalText("name")}, done);
}

void close(const Call &call, const Done &done)
{
    releaseView(call.world, call.params.whole("volume_id"), call.params.text("name"), done);
}

} // namespace

std::vector<Method> viewMethods()
{
    return {
        {.name = "volumes.views",
         .http = "GET",
         .path = "/v1/volumes/{volume_id}/views",
         .parameters = {volumeId()},
         .summary = "The seconds of a volume's past that are open to look at.",
         .handler = list},
        {.name = "views.open",
         .http = "POST",
         .path = "/v1/volumes/{volume_id}/views",
         .parameters = {volumeId(),
                        {.name = "timestamp", .summary = "the second to open, in ISO 8601"},
                        {.name = "name",
                         .required = false,
                         .summary = "the view's name; made from its second without"}},
         .summary = "Opens a second of a volume's past, to be read only.",
         .handler = open},
        {.name = "views.close",
         .http = "DELETE",
         .path = "/v1/volumes/{volume_id}/views/{name}",
         .parameters = {volumeId(), {.name = "name", .summary = "the view's name, as volumes.views tells it"}},
         .summary = "Releases a view.",
         .handler = close},
    };
}

} // namespace quillfen::localagent
