// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "accountmodel.h"
#include "accountrows.h"

#include <QWidget>

#include <memory>
#include <optional>

class QBoxLayout;

namespace quillfen {

class AgentLabel;
class ApplianceList;
class Button;
class Card;
class Hairline;
class KV;
class Label;
class Pill;

/// The engine on this computer: what it does, what it has, what runs in it, and the buttons that set it up, start it
/// and stop it.
class EngineCard final : public QWidget {
    Q_OBJECT

public:
    explicit EngineCard(std::shared_ptr<AccountModel> model, QWidget *parent = nullptr);
    ~EngineCard() override;

protected:
    void resizeEvent(QResizeEvent *event) override;

private:
    void buildBand();
    [[nodiscard]] QWidget *details();
    void buildFoot();
    void askToStop();
    void follow();
    void fitColumns();
    void render();
    void renderButtons(const EngineTexts &texts);

    std::shared_ptr<AccountModel> m_model;
    std::optional<bool> m_wasRunning;
    std::optional<QMap<QString, QString>> m_wasHere;
    QString m_wasSaid; ///< about the stop that runs
    Card *m_card = nullptr;
    Pill *m_status = nullptr;
    QBoxLayout *m_columns = nullptr;
    Hairline *m_between = nullptr;
    KV *m_memory = nullptr;
    KV *m_disk = nullptr;
    KV *m_docker = nullptr;
    KV *m_engine = nullptr;
    ApplianceList *m_appliances = nullptr;
    Label *m_note = nullptr;
    Button *m_setUp = nullptr;
    Button *m_start = nullptr;
    Button *m_stop = nullptr;
    Observer m_observer;
};

} // namespace quillfen
