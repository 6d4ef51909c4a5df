// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "boards/operator/opmodel.h"

#include <QCoreApplication>

namespace quillfen {

/// The users of the service, those who wait for approval among them, and the tenants they belong to.
class OpUsersModel final : public OpModel {
    Q_DECLARE_TR_FUNCTIONS(OpUsersModel)

public:
    using OpModel::OpModel;

    Published<Records> users;
    Published<Records> tenants;

    QCoro::Task<> load() override;

    QCoro::Task<> approve(std::int64_t id);
    QCoro::Task<> reject(std::int64_t id);
    QCoro::Task<> remove(std::int64_t id);

private:
    QCoro::Task<> onUser(std::string method, std::int64_t id, QString done);
};

} // namespace quillfen
