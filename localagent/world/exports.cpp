// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "localagent/world/exports.h"

#include "localagent/world/media.h"

#include <algorithm>

namespace quillfen::localagent {

namespace {

constexpr Seconds orderTime{5};
constexpr Seconds leastPacking{5};
constexpr Seconds packingOfAGigabyte{0.1};
constexpr std::chrono::hours linkLife{48};

constexpr std::string_view tooLarge = "The volume is larger than the medium chosen; pick a larger one.";

Seconds packingTime(const Volume &volume)
{
    return leastPacking + packingOfAGigabyte * (static_cast<double>(volume.used) / static_cast<double>(gigabyte));
}

std::string keyNote(const Volume &volume, const Export &copy)
{
    if (!volume.customerKey) {
        return {};
    }
    const std::string place = copy.delivery == "link" ? "in the download" : "on the " + copy.carrier;
    return "Opens only with quill-" + keyNameOf(volume) + ".key; the key is not " + place + ".";
}

std::string tracking(World &world)
{
    std::string digits = "1Z 84W 000 0000 0000";
    std::ranges::for_each(digits.begin() + 7, digits.end(), [&world](char &sign) {
        sign = sign == '0' ? static_cast<char>('0' + world.random() % 10) : sign;
    });
    return digits;
}

/// The order as it stands, while it is the one that `life` is about; null when it was removed or its volume is gone.
Export *current(World &world, VolumeId id, std::uint64_t life)
{
    const auto found = world.state.exports.find(id);
    const bool holds =
        found != world.state.exports.end() && found->second.life == life && world.state.volumes.contains(id);
    return holds ? &found->second : nullptr;
}

void finish(World &world, const Volume &volume, Export &copy)
{
    if (copy.delivery == "link") {
        copy.state = "ready";
        copy.link = "https://copies.quillfen.example/" + randomText(world, 24);
        copy.expires = world.clock.now() + linkLife;
    } else if (volume.size > copy.room) {
        // It has grown since the order.
        copy.state = "failed";
        copy.error = tooLarge;
        return;
    } else {
        copy.state = "shipped";
        copy.tracking = tracking(world);
    }
    copy.keyNote = keyNote(volume, copy);
}

void pack(World &world, VolumeId id, std::uint64_t life)
{
    Export *const copy = current(world, id, life);
    if (copy == nullptr) {
        return;
    }
    copy->state = "packing";
    world.clock.after(packingTime(world.state.volumes.at(id)), [&world, id, life] {
        if (Export *const packed = current(world, id, life)) {
            finish(world, world.state.volumes.at(id), *packed);
        }
    });
}

MediaOffer offerFor(const Volume &volume, const ExportOrder &order)
{
    const std::vector<MediaOffer> offers = mediaOffers(volume.size, order.region);
    const auto found = std::ranges::find(offers, order.medium, &MediaOffer::medium);
    if (found != offers.end()) {
        return *found;
    }
    std::string names;
    for (const MediaOffer &offer : offers) {
        names += (names.empty() ? "" : ", ") + offer.medium;
    }
    throw Refusal(Refusal::Kind::Bad, "That medium is not shipped there. Choose one of " + names + ".");
}

void requireAddress(const std::string &address)
{
    if (address.find_first_not_of(" \t") == std::string::npos) {
        throw Refusal(Refusal::Kind::Bad, "Give the postal address that the copy goes to.");
    }
}

Export composed(const Volume &volume, const ExportOrder &order)
{
    Export copy;
    copy.delivery = order.delivery;
    if (order.delivery == "link") {
        if (const std::int64_t cents = retrievalCents(volume.size); cents > 0) {
            copy.retrievalNote = "Retrieval " + dollars(cents) + " is charged with the next invoice.";
        }
        return copy;
    }
    requireAddress(order.address);
    const MediaOffer offer = offerFor(volume, order);
    copy.medium = offer.name;
    copy.carrier = offer.carrier;
    copy.region = order.region;
    copy.address = order.address;
    copy.room = offer.room;
    return copy;
}

bool isUnderway(const Export &copy)
{
    return copy.state == "ordered" || copy.state == "packing";
}

json::object offerRecord(const MediaOffer &offer)
{
    return {{"name", offer.name},
            {"medium", offer.medium},
            {"units", offer.units},
            {"media_cost", dollars(offer.media)},
            {"packing", dollars(offer.packing)},
            {"work", dollars(offer.work)},
            {"shipping", dollars(offer.shipping)}};
}

/// A link that has run out is no link any more.
void expire(const World &world, Export &copy)
{
    if (copy.state == "ready" && world.clock.now() >= copy.expires) {
        copy.state = "expired";
        copy.link.clear();
    }
}

} // namespace

json::value exportRecord(World &world, VolumeId id)
{
    static_cast<void>(volumeOf(world, id));
    const auto found = world.state.exports.find(id);
    if (found == world.state.exports.end()) {
        return nullptr;
    }
    Export &copy = found->second;
    expire(world, copy);
    json::object record{{"state", copy.state}};
    const auto put = [&record](std::string_view key, const std::string &text) {
        if (!text.empty()) {
            record[key] = text;
        }
    };
    put("delivery", copy.delivery);
    put("medium", copy.medium);
    put("region", copy.region);
    put("link", copy.link);
    put("expires_at", copy.link.empty() ? std::string() : isoTime(copy.expires));
    put("error", copy.error);
    put("retrieval_note", copy.retrievalNote);
    put("key_note", copy.keyNote);
    put("tracking", copy.tracking);
    return record;
}

json::object mediaRecord(World &world, VolumeId id, const std::string &region)
{
    const Volume &volume = volumeOf(world, id);
    json::array options;
    for (const MediaOffer &offer : mediaOffers(volume.size, region)) {
        options.push_back(offerRecord(offer));
    }
    const double total = static_cast<double>(retrievalCents(volume.size)) / 100;
    return {{"options", std::move(options)},
            {"retrieval", json::object{{"total", total}, {"free_bytes", freeRetrieval}}}};
}

void orderExport(World &world, VolumeId id, const ExportOrder &order)
{
    const Volume &volume = idleVolumeOf(world, id);
    const auto last = world.state.exports.find(id);
    if (last != world.state.exports.end() && isUnderway(last->second)) {
        throw Refusal(Refusal::Kind::Conflict,
                      "A copy of " + volume.name + " is being packed already. Remove it to order another one.");
    }
    Export copy = composed(volume, order);
    copy.state = copy.delivery == "link" ? "packing" : "ordered";
    copy.life = (last == world.state.exports.end() ? 0 : last->second.life) + 1;
    const std::uint64_t life = copy.life;
    world.state.exports.insert_or_assign(id, std::move(copy));
    if (order.delivery == "link") {
        pack(world, id, life);
    } else {
        world.clock.after(orderTime, [&world, id, life] { pack(world, id, life); });
    }
}

void removeExport(World &world, VolumeId id)
{
    const Volume &volume = volumeOf(world, id);
    const auto found = world.state.exports.find(id);
    if (found == world.state.exports.end() || found->second.state == "removed") {
        throw Refusal(Refusal::Kind::Missing, "There is no copy of " + volume.name + " to remove.");
    }
    Export gone;
    gone.state = "removed";
    gone.life = found->second.life + 1;
    found->second = std::move(gone);
}

void loadExports(World &world, const std::vector<Fields> &exports)
{
    for (const Fields &fields : exports) {
        const VolumeId id = fields.whole("volume_id");
        const auto volume = world.state.volumes.find(id);
        if (volume == world.state.volumes.end()) {
            fields.fail("volume_id", "names no volume of this world");
        }
        Export copy;
        copy.state = fields.text("state", "ready");
        copy.delivery = fields.text("delivery", "link");
        copy.medium = fields.text("medium");
        copy.carrier = fields.text("carrier", "drive");
        copy.region = fields.text("region");
        copy.room = volume->second.size;
        if (copy.state == "ready") {
            copy.link = fields.text("link");
            copy.expires = fields.moment("expires", world.clock.now(), "+48h");
        }
        copy.error = fields.text("error");
        copy.retrievalNote = fields.text("retrieval_note");
        copy.keyNote = copy.state == "failed" ? std::string() : keyNote(volume->second, copy);
        copy.tracking = fields.text("tracking");
        world.state.exports.insert_or_assign(id, std::move(copy));
        if (isUnderway(world.state.exports.at(id))) {
            pack(world, id, 0);
        }
    }
}

} // namespace quillfen::localagent
