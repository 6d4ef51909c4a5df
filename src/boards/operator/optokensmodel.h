// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "boards/operator/opmodel.h"

#include <QCoreApplication>

namespace quillfen {

/// Every API token of the service.
class OpTokensModel final : public OpModel {
    Q_DECLARE_TR_FUNCTIONS(OpTokensModel)

public:
    using OpModel::OpModel;

    Published<Records> tokens;
    Published<bool> showRevoked{false};

    QCoro::Task<> load() override;

    QCoro::Task<> revoke(std::int64_t id);
    /// Removes the revoked ones for good.
    QCoro::Task<> prune();
};

} // namespace quillfen
