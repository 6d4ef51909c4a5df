// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "boards/export/exportmodel.h"

#include "state/action.h"
#include "state/ask.h"
#include "state/recordlists.h"
#include "state/start.h"

#include <algorithm>
#include <utility>

namespace quillfen {

using namespace std::chrono_literals;

namespace {

/// The options of an answer, without what is no option.
Records optionsOf(const Record &answer)
{
    const json::value *const listed = answer.if_contains("options");
    const json::array *const list = listed == nullptr ? nullptr : listed->if_array();
    Records options;
    if (list == nullptr) {
        return options;
    }
    for (const json::value &option : *list) {
        if (option.is_object()) {
            options.append(option.get_object());
        }
    }
    return options;
}

void begin(Published<QSet<std::int64_t>> &running, std::int64_t id)
{
    running.update([id](QSet<std::int64_t> &ids) { ids.insert(id); });
}

void end(Published<QSet<std::int64_t>> &running, std::int64_t id)
{
    running.update([id](QSet<std::int64_t> &ids) { ids.remove(id); });
}

} // namespace

ExportModel::ExportModel(std::shared_ptr<AppState> state) : m_state(std::move(state)) {}

const Record *ExportModel::selectedVolume() const
{
    const std::optional<std::int64_t> id = selected();
    return id ? recordWithId(m_state->volumes(), *id) : nullptr;
}

bool ExportModel::canRequest() const
{
    return selected().has_value() && (delivery() == Delivery::Link || !options().isEmpty());
}

void ExportModel::chooseVolume(std::int64_t id)
{
    if (selected() == id) {
        return;
    }
    selected = id;
    forgetPrices();
    start(loadOptions());
}

void ExportModel::chooseDelivery(Delivery chosen)
{
    delivery = chosen;
    if (chosen == Delivery::Media) {
        start(loadOptions());
    }
}

void ExportModel::chooseRegion(const QString &chosen)
{
    if (region() == chosen) {
        return;
    }
    region = chosen;
    forgetPrices();
    start(loadOptions());
}

void ExportModel::forgetPrices()
{
    options = Records();
    retrieval = QString();
}

void ExportModel::follow()
{
    if (m_known && m_seen == m_state->volumes.version()) {
        return;
    }
    m_seen = m_state->volumes.version();
    std::vector<std::int64_t> ids = idsOf(m_state->volumes());
    if (selectedVolume() == nullptr) {
        selected = ids.empty() ? std::nullopt : std::optional(ids.front());
        forgetPrices();
    }
    std::ranges::sort(ids);
    if (m_known != ids) {
        m_known = std::move(ids);
        start(reload());
    } else if (m_rounds == 0) {
        followUnderway();
    }
}

/// The toast of a request promises that its link appears, and the agent does not tell when.
void ExportModel::followUnderway()
{
    std::vector<std::int64_t> underway;
    for (const auto &[id, copy] : exports()) {
        if (isUnderway(copy)) {
            underway.push_back(id);
        }
    }
    if (!underway.empty()) {
        start(loadCopies(underway));
    }
}

QCoro::Task<> ExportModel::reload()
{
    const auto self = shared_from_this();
    co_await loadOptions();
    co_await load();
}

QCoro::Task<> ExportModel::loadOptions()
{
    const auto self = shared_from_this();
    const std::optional<std::int64_t> id = selected();
    const std::uint64_t generation = ++m_prices;
    if (!id) {
        co_return;
    }
    const json::object request = params("volume_id", *id, "region", region());
    const std::optional<json::value> answer = co_await answerOrNothing(m_state, "export.media", request);
    if (generation != m_prices) {
        co_return;
    }
    // Without prices the board goes on waiting for them.
    const Record &answered = object(answer ? &*answer : nullptr);
    const Records offered = optionsOf(answered);
    const bool isOffered =
        std::ranges::any_of(offered, [this](const Record &option) { return str(option, "medium") == medium(); });
    if (!isOffered) {
        medium = offered.isEmpty() ? QString() : str(offered.constFirst(), "medium");
    }
    options = offered;
    retrieval = downloadText(object(answered, "retrieval"));
}

QCoro::Task<> ExportModel::load()
{
    const auto self = shared_from_this();
    const std::vector<std::int64_t> ids = idsOf(m_state->volumes());
    forgetCopiesBeyond(ids);
    co_await loadCopies(ids);
}

QCoro::Task<> ExportModel::loadCopies(std::vector<std::int64_t> ids)
{
    const auto self = shared_from_this();
    const std::uint64_t generation = ++m_copies;
    ++m_rounds;
    for (const std::int64_t id : ids) {
        std::optional<Record> copy = co_await askForCopy(id);
        if (generation != m_copies) {
            break;
        }
        keepCopy(id, std::move(copy));
    }
    --m_rounds;
}

QCoro::Task<std::optional<Record>> ExportModel::askForCopy(std::int64_t id)
{
    const auto self = shared_from_this();
    const json::object request = params("volume_id", id);
    // A volume whose copy cannot be learnt is left out.
    std::optional<json::value> answer = co_await answerOrNothing(m_state, "volumes.export", request, 30s);
    std::optional<Record> copy;
    if (answer && answer->is_object()) {
        copy = takeObject(std::move(*answer));
    }
    co_return copy;
}

void ExportModel::keepCopy(std::int64_t id, std::optional<Record> copy)
{
    const auto known = exports().find(id);
    const bool same = known == exports().end() ? !copy : copy == known->second;
    if (same) {
        return;
    }
    exports.update([id, &copy](Copies &copies) {
        if (copy) {
            copies.insert_or_assign(id, *std::move(copy));
        } else {
            copies.erase(id);
        }
    });
}

void ExportModel::forgetCopiesBeyond(const std::vector<std::int64_t> &ids)
{
    const QSet<std::int64_t> there(ids.begin(), ids.end());
    const bool allThere = std::ranges::all_of(exports(), [&](const auto &each) { return there.contains(each.first); });
    if (!allThere) {
        exports.update([&](Copies &copies) {
            std::erase_if(copies, [&](const auto &each) { return !there.contains(each.first); });
        });
    }
}

QCoro::Task<> ExportModel::request()
{
    const auto self = shared_from_this();
    const std::optional<std::int64_t> id = selected();
    if (!canRequest() || requesting().contains(*id)) {
        co_return;
    }
    const bool shipped = delivery() == Delivery::Media;
    Action action = calling("volumes.export.set",
                            shipped ? params("volume_id", *id, "delivery", wireName(delivery()), "medium", medium(),
                                             "region", region(), "address", address())
                                    : params("volume_id", *id, "delivery", wireName(delivery())),
                            300s);
    action.done = saying(shipped ? tr("Order placed. Quillfen confirms the price by e-mail before anything ships.")
                                 : tr("Copy requested. The vault is packing it; the download link appears under Recent "
                                      "copies and you are e-mailed when it is ready."));
    action.refresh = false;
    begin(requesting, *id);
    co_await perform(m_state, action);
    end(requesting, *id);
    co_await load();
}

QCoro::Task<> ExportModel::remove(std::int64_t id)
{
    const auto self = shared_from_this();
    if (removing().contains(id)) {
        co_return;
    }
    Action action = calling("export.remove", params("volume_id", id), 120s);
    action.done = saying(tr("copy removed"));
    action.refresh = false;
    begin(removing, id);
    co_await perform(m_state, action);
    end(removing, id);
    co_await load();
}

} // namespace quillfen
