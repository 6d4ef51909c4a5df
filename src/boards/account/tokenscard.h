// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "accountmodel.h"
#include "accountrows.h"
#include "ui/lists/columns.h"

#include <QWidget>

#include <memory>
#include <vector>

namespace quillfen {

class LongList;

/// The account's tokens, with the buttons that make and revoke them and that let another computer in.
class TokensCard final : public QWidget {
    Q_OBJECT

public:
    explicit TokensCard(std::shared_ptr<AccountModel> model, QWidget *parent = nullptr);
    ~TokensCard() override;

private:
    class Rows;

    [[nodiscard]] QWidget *captions() const;
    void askForLabel();
    void revokeSoon(const TokenTexts &token);
    void askToRevoke(const QString &id, const QString &label);
    void render();

    std::shared_ptr<AccountModel> m_model;
    std::shared_ptr<const std::vector<Column>> m_columns;
    std::unique_ptr<Rows> m_rows;
    LongList *m_list;
    QWidget *m_captions;
    Observer m_observer;
};

} // namespace quillfen
