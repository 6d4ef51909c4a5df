// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "boards/volumes/iscsimodel.h"

#include "desktop/clipboard.h"
#include "state/action.h"
#include "state/ask.h"

#include <utility>

namespace quillfen {

using namespace std::chrono_literals;

namespace {

constexpr QLatin1String secretPlaceholder("<CHAP secret>");

QString words(const char *text)
{
    return QCoreApplication::translate("IscsiModel", text);
}

std::string_view keyOf(InitiatorSystem system)
{
    return system == InitiatorSystem::Linux ? "linux" : "windows";
}

} // namespace

QString joinedPortal(const QString &address, const QString &port)
{
    if (port.isEmpty()) {
        return address;
    }
    const bool isIPv6 = address.contains(QLatin1Char(':')) && !address.startsWith(QLatin1Char('['));
    return (isIPv6 ? QStringLiteral("[%1]:%2") : QStringLiteral("%1:%2")).arg(address, port);
}

IscsiDetails iscsiDetails(const Record &info, const QString &localSecret)
{
    IscsiDetails details;
    details.target = str(info, "target");
    details.lun = str(info, "lun");
    details.chap = isTrue(info, "chap");
    details.chapUser = str(info, "chap_user");
    details.notes = str(info, "notes");
    if (const QString portal = str(info, "portal"); !portal.isEmpty()) {
        details.portal = joinedPortal(portal, str(info, "port"));
        if (!isTrue(info, "portal_is_set")) {
            details.portal += words(" (this Mac only)");
        }
    }
    if (const QString issued = str(info, "chap_password"); !issued.isEmpty()) {
        details.secret = issued;
    } else if (!localSecret.isEmpty()) {
        details.secret = localSecret;
        details.secretFromLog = true;
    }
    return details;
}

QStringList commandLines(const Record &info, InitiatorSystem system, const std::optional<QString> &secret)
{
    const json::value *const listed = object(info, "commands").if_contains(keyOf(system));
    const json::array *const commands = listed == nullptr ? nullptr : listed->if_array();
    QStringList lines;
    if (commands == nullptr) {
        return lines;
    }
    for (const json::value &command : *commands) {
        QString line = str(&command);
        if (secret) {
            line.replace(secretPlaceholder, *secret);
        }
        lines.append(line);
    }
    return lines;
}

IscsiModel::IscsiModel(std::shared_ptr<AppState> state) : m_state(std::move(state)) {}

QCoro::Task<> IscsiModel::load(std::int64_t id)
{
    const auto self = shared_from_this();
    const std::uint64_t generation = ++m_generation;
    if (std::exchange(m_shown, id) != id) {
        info = Record();
        localSecret = QString();
        savedPortal = QString();
    }
    const json::object request = params("volume_id", id);
    const std::optional<json::value> answer = co_await answerOrNothing(m_state, "volumes.iscsi", request);
    if (generation != m_generation) {
        co_return;
    }
    if (answer) {
        const Record &answered = object(&*answer);
        info = answered;
        savedPortal = isTrue(answered, "portal_is_set") ? str(answered, "portal") : QString();
    }
    if (!str(info(), "chap_password").isEmpty()) {
        co_return;
    }
    const std::optional<json::value> local = co_await answerOrNothing(m_state, "volumes.iscsi.local", request);
    const QString password = local ? str(object(&*local), "chap_password") : QString();
    if (generation == m_generation && !password.isEmpty()) {
        localSecret = password;
    }
}

QCoro::Task<> IscsiModel::save(std::int64_t id, QString portal)
{
    const auto self = shared_from_this();
    const QString trimmed = portal.trimmed();
    Action action = calling("volumes.iscsi.set", params("volume_id", id, "portal", trimmed), 60s);
    action.done = saying(trimmed.isEmpty() ? tr("Portal cleared: the target is reached from this Mac only.")
                                           : tr("Portal saved. Other machines log in to %1.").arg(trimmed));
    action.refresh = false;
    const std::optional<json::value> answer = co_await perform(m_state, action);
    if (answer && m_shown == id) {
        co_await load(id);
    }
}

QCoro::Task<> IscsiModel::setChap(std::int64_t id, bool on)
{
    const auto self = shared_from_this();
    Action action = calling("volumes.iscsi.set", params("volume_id", id, "chap", on), 90s);
    action.done = saying(on ? tr("CHAP is on again.") : tr("CHAP is off: the target is open."));
    action.refresh = false;
    const std::optional<json::value> answer = co_await perform(m_state, action);
    if (answer && m_shown == id) {
        co_await load(id);
    }
}

void IscsiModel::copy(const QString &text)
{
    copySecret(text);
    m_state->show(tr("Copied."));
}

} // namespace quillfen
