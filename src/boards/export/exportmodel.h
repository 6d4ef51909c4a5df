// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "boards/export/exportrows.h"
#include "state/appstate.h"

#include <QCoreApplication>
#include <QCoroTask>
#include <QSet>

#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <vector>

namespace quillfen {

/// What the board for copies knows and can do: composes one request, shows what it would cost, and follows the latest
/// copy of each volume. Prices never belong to another volume or region than the chosen one. Main thread.
class ExportModel final : public std::enable_shared_from_this<ExportModel> {
    Q_DECLARE_TR_FUNCTIONS(ExportModel)

public:
    using Copies = std::map<std::int64_t, Record>;

    explicit ExportModel(std::shared_ptr<AppState> state);

    Published<std::optional<std::int64_t>> selected; ///< the volume to copy
    Published<Delivery> delivery{Delivery::Link};
    Published<QString> region{QStringLiteral("US")};
    Published<QString> medium;
    Published<QString> address;
    Published<Records> options;   ///< the media, priced for the chosen volume and region
    Published<QString> retrieval; ///< what a download costs; empty until that is known
    Published<Copies> exports;    ///< the latest copy of each volume that has one
    Published<QSet<std::int64_t>> requesting;
    Published<QSet<std::int64_t>> removing;

    [[nodiscard]] AppState &state() noexcept { return *m_state; }
    /// The record of the chosen volume; null when there is none.
    [[nodiscard]] const Record *selectedVolume() const;
    /// A volume is chosen, and what its copy costs can be seen where it costs something to ship.
    [[nodiscard]] bool canRequest() const;

    void chooseVolume(std::int64_t id);
    void chooseDelivery(Delivery chosen);
    void chooseRegion(const QString &chosen);

    /// Looks whether the list of volumes has changed since the last look: another set of volumes is loaded, a copy that
    /// is being made is asked about again.
    void follow();
    /// Prices, then copies.
    QCoro::Task<> reload();
    QCoro::Task<> loadOptions();
    QCoro::Task<> load();

    QCoro::Task<> request();
    QCoro::Task<> remove(std::int64_t id);

private:
    void forgetPrices();
    void followUnderway();
    void keepCopy(std::int64_t id, std::optional<Record> copy);
    void forgetCopiesBeyond(const std::vector<std::int64_t> &ids);
    QCoro::Task<> loadCopies(std::vector<std::int64_t> ids);
    QCoro::Task<std::optional<Record>> askForCopy(std::int64_t id);

    std::shared_ptr<AppState> m_state;
    std::optional<std::vector<std::int64_t>> m_known; ///< the volumes' ids at the last look, ascending
    std::uint64_t m_seen = 0;                         ///< the version of the list of volumes at the last look
    std::uint64_t m_prices = 0;                       ///< grows with every question for prices: late answers are told
    std::uint64_t m_copies = 0;                       ///< … and with every round of questions for copies
    int m_rounds = 0;                                 ///< of questions for copies that are under way
};

} // namespace quillfen
