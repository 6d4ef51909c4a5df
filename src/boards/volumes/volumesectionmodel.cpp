// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "boards/volumes/volumesectionmodel.h"

#include "desktop/clipboard.h"
#include "state/action.h"
#include "state/format.h"

#include <QFile>
#include <QFileInfo>
#include <QStringDecoder>

#include <optional>
#include <utility>

namespace quillfen {

using namespace std::chrono_literals;

namespace {

/// Far more than a key: what is longer is no key file, and must not hold up the window.
constexpr qint64 longestKey = qint64{64} * 1024;

/// A small text file whole; nothing when it cannot be read as one. A pipe or a device would not come to an end.
std::optional<QString> textOf(const QString &path)
{
    QFile file(path);
    if (!QFileInfo(path).isFile() || !file.open(QIODevice::ReadOnly) || file.size() > longestKey) {
        return std::nullopt;
    }
    const QByteArray bytes = file.readAll();
    QStringDecoder decoder(QStringDecoder::Utf8);
    const QString text = decoder(bytes);
    if (file.error() != QFileDevice::NoError || decoder.hasError()) {
        return std::nullopt;
    }
    return text;
}

} // namespace

VolumeSectionModel::VolumeSectionModel(std::shared_ptr<AppState> state) : m_state(std::move(state)) {}

QCoro::Task<> VolumeSectionModel::show(std::int64_t id)
{
    const auto self = shared_from_this();
    const std::uint64_t generation = ++m_generation;
    if (std::exchange(m_shown, id) != id) {
        points = 0;
        oldest = QString();
    }
    RestorePoints found;
    try {
        found = co_await m_state->restorePoints(id);
    } catch (const RPCError &) {
        // Two statistics are not worth a notice: they stay as they are until the card is shown again.
        co_return;
    }
    if (generation != m_generation) {
        co_return;
    }
    points = static_cast<std::int64_t>(found.size());
    oldest = found.isEmpty() ? QString() : shortDate(found.timestamp(0));
}

QCoro::Task<> VolumeSectionModel::startAppliance(std::int64_t id, QString name)
{
    const auto self = shared_from_this();
    Action action = calling("appliance.deploy", params("volume_id", id), 600s);
    action.before = tr("Starting the appliance for %1…").arg(name);
    action.done = saying(tr("appliance for %1 started").arg(name));
    action.operation = tr("Starting the appliance for %1").arg(name);
    action.progressEvent = "appliance.progress";
    co_await perform(m_state, action);
}

QCoro::Task<> VolumeSectionModel::mount(std::int64_t id, QString name)
{
    const auto self = shared_from_this();
    mounting.update([id](QSet<std::int64_t> &ids) { ids.insert(id); });
    co_await m_state->deployAndMount(id, name);
    mounting.update([id](QSet<std::int64_t> &ids) { ids.remove(id); });
}

QCoro::Task<> VolumeSectionModel::unmount(std::int64_t id, QString name)
{
    const auto self = shared_from_this();
    Action action = calling("mount.detach", params("volume_id", id, "name", name), 300s);
    action.done = saying(tr("unmounted %1").arg(name));
    co_await perform(m_state, action);
}

QCoro::Task<> VolumeSectionModel::resize(std::int64_t id, QString name, std::int64_t from, std::int64_t to)
{
    const auto self = shared_from_this();
    const QString size = QString::number(to);
    Action action = calling("volumes.resize", params("volume_id", id, "size_bytes", to << 30), 1500s);
    action.before =
        (to > from ? tr("Growing %1 to %2 GB… the mount comes back by itself when the appliance is done.")
                   : tr("Shrinking %1 to %2 GB… the mount comes back by itself when the appliance is done."))
            .arg(name, size);
    action.done = [name, size](const json::value &answer) {
        return (isTrue(object(&answer), "remounted") ? tr("%1 is now %2 GB and mounted again.")
                                                     : tr("%1 is now %2 GB."))
            .arg(name, size);
    };
    action.operation = tr("Resizing %1").arg(name);
    action.progressEvent = "appliance.progress";
    co_await perform(m_state, action);
}

QCoro::Task<> VolumeSectionModel::remove(std::int64_t id, QString name)
{
    const auto self = shared_from_this();
    Action action = calling("volumes.remove", params("volume_id", id), 3900s);
    action.before =
        tr("Deleting %1: unmounting, then stopping its appliance once its last writes reach the vault…").arg(name);
    action.done = saying(tr("deleted %1; its appliance is removed from this Mac").arg(name));
    action.operation = tr("Deleting %1").arg(name);
    action.progressEvent = "appliance.progress";
    co_await perform(m_state, action);
}

void VolumeSectionModel::copyKey(const QString &path)
{
    const std::optional<QString> key = textOf(path);
    if (key) {
        copySecret(*key);
        m_state->show(tr("Key copied."));
    }
}

void VolumeSectionModel::timeTravel(std::int64_t id)
{
    const json::object where = params("section", "timetravel", "volume", id);
    m_state->notifications().post(Notifications::navigate, where);
}

} // namespace quillfen
