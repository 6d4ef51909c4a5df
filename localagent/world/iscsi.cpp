// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "localagent/world/iscsi.h"

#include "localagent/world/appliances.h"

#include <algorithm>
#include <cctype>

namespace quillfen::localagent {

namespace {

constexpr int port = 3260;
constexpr const char *ownAddress = "127.0.0.1";
constexpr const char *secretPlace = "<CHAP secret>";

void requireTarget(const Volume &volume)
{
    if (volume.share != "iscsi") {
        throw Refusal(Refusal::Kind::Conflict, volume.name + " is not an iSCSI volume.");
    }
}

void requirePortal(std::string_view portal)
{
    const auto allowed = [](char letter) {
        return std::isalnum(static_cast<unsigned char>(letter)) != 0 || letter == '.' || letter == '-' || letter == ':';
    };
    // One colon makes a port of what follows; an IPv6 address has more.
    if (portal.size() > 253 || !std::all_of(portal.begin(), portal.end(), allowed) ||
        std::count(portal.begin(), portal.end(), ':') == 1) {
        throw Refusal(Refusal::Kind::Bad, "The portal is an address or a host name without a port, like 192.168.1.20.");
    }
}

std::string targetOf(const Volume &volume)
{
    return "iqn.2026-02.quillfen:" + slugOf(volume.name);
}

std::string hostOf(const Target &target)
{
    const std::string host = target.portal.empty() ? ownAddress : target.portal;
    return host.find(':') == std::string::npos ? host : "[" + host + "]";
}

json::array linuxCommands(const Volume &volume)
{
    const std::string portal = hostOf(volume.target) + ":" + std::to_string(port);
    const std::string node = "sudo iscsiadm -m node -T " + targetOf(volume);
    json::array lines = {"sudo iscsiadm -m discovery -t sendtargets -p " + portal};
    if (volume.target.chap) {
        lines.emplace_back(node + " -o update -n node.session.auth.authmethod -v CHAP");
        lines.emplace_back(node + " -o update -n node.session.auth.username -v " + slugOf(volume.name));
        lines.emplace_back(node + " -o update -n node.session.auth.password -v " + secretPlace);
    }
    lines.emplace_back(node + " -p " + portal + " --login");
    return lines;
}

json::array windowsCommands(const Volume &volume)
{
    const std::string host = volume.target.portal.empty() ? ownAddress : volume.target.portal;
    const std::string login = volume.target.chap ? " -AuthenticationType ONEWAYCHAP -ChapUsername " +
                                                       slugOf(volume.name) + " -ChapSecret \"" + secretPlace + "\""
                                                 : "";
    return {"Start-Service MSiSCSI", "New-IscsiTargetPortal -TargetPortalAddress " + host,
            "Connect-IscsiTarget -NodeAddress " + targetOf(volume) + " -IsPersistent $true" + login};
}

} // namespace

json::object iscsiRecord(const World &, const Volume &volume)
{
    requireTarget(volume);
    const Target &target = volume.target;
    json::object record = {
        {"target", targetOf(volume)},
        {"portal", target.portal.empty() ? std::string(ownAddress) : target.portal},
        {"port", port},
        {"lun", 1},
        {"portal_is_set", !target.portal.empty()},
        {"chap", target.chap},
        {"notes",
         "One initiator at a time: this target is not a cluster filesystem. Log out of the other machine before "
         "logging in from a new one."},
        {"commands", json::object{{"linux", linuxCommands(volume)}, {"windows", windowsCommands(volume)}}},
    };
    if (target.chap) {
        record["chap_user"] = slugOf(volume.name);
        if (target.secretIssued) {
            record["chap_password"] = target.secret;
        }
    }
    return record;
}

std::string localSecret(const Volume &volume)
{
    requireTarget(volume);
    const bool here = volume.appliance != Appliance::None && volume.appliance != Appliance::Elsewhere;
    return here && volume.target.chap ? volume.target.secret : std::string();
}

void changeTarget(World &world, VolumeId id, const std::optional<std::string> &portal, std::optional<bool> chap)
{
    Volume &volume = idleVolumeOf(world, id);
    requireTarget(volume);
    if (portal) {
        requirePortal(*portal);
    }
    volume.target.portal = portal.value_or(volume.target.portal);
    volume.target.chap = chap.value_or(volume.target.chap);
}

} // namespace quillfen::localagent
