// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "boards/operator/opmodel.h"

#include <QCoreApplication>

namespace quillfen {

/// The copies and media orders that operators pack and ship.
class OpExportsModel final : public OpModel {
    Q_DECLARE_TR_FUNCTIONS(OpExportsModel)

public:
    using OpModel::OpModel;

    Published<Records> jobs;

    QCoro::Task<> load() override;

    /// Carrier and tracking number may be empty.
    QCoro::Task<> ship(std::int64_t id, const QString &carrier, const QString &tracking);
    QCoro::Task<> remove(std::int64_t id);
};

} // namespace quillfen
