// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "boards/volumes/iscsimodel.h"

#include <QWidget>

#include <memory>
#include <optional>

class QBoxLayout;

namespace quillfen {

class AgentLabel;
class Button;
class Hairline;
class KV;
class Label;
class Segmented;
class TextField;
class Toggle;

/// How other machines reach an iSCSI volume: target and portal, CHAP, and the commands for their systems.
class IscsiCard final : public QWidget {
    Q_OBJECT

public:
    explicit IscsiCard(std::shared_ptr<AppState> state, QWidget *parent = nullptr);
    ~IscsiCard() override;

    /// Shows another volume, or none while the card is hidden; the secret is hidden again.
    void setVolume(std::optional<std::int64_t> id);

protected:
    void resizeEvent(QResizeEvent *event) override;

private:
    [[nodiscard]] QWidget *portalColumn();
    [[nodiscard]] QWidget *chapColumn();
    [[nodiscard]] QWidget *secretRow();
    [[nodiscard]] QWidget *commandBlock();
    void connectActions();
    void save();
    void reveal(bool shown);
    void changeChap(bool on);
    void render();
    void renderPortal(const IscsiDetails &details);
    void renderChap(const IscsiDetails &details);
    void renderCommands(const IscsiDetails &details);
    [[nodiscard]] InitiatorSystem system() const;

    std::shared_ptr<IscsiModel> m_model;
    std::optional<std::int64_t> m_id;
    bool m_revealed = false;

    QBoxLayout *m_columns = nullptr;
    Hairline *m_between = nullptr;
    KV *m_target = nullptr;
    KV *m_portal = nullptr;
    KV *m_lun = nullptr;
    TextField *m_portalField = nullptr;
    QString m_takenPortal; ///< the saved portal as the field last took it over
    QString m_sentPortal;  ///< what the field held when it was last saved
    Button *m_save = nullptr;
    QWidget *m_addressLine = nullptr;
    AgentLabel *m_address = nullptr;
    Toggle *m_chap = nullptr;
    QWidget *m_login = nullptr;
    KV *m_user = nullptr;
    AgentLabel *m_secret = nullptr;
    Button *m_show = nullptr;
    Button *m_hide = nullptr;
    Button *m_copySecret = nullptr;
    Label *m_origin = nullptr;
    QWidget *m_notesRow = nullptr;
    AgentLabel *m_notes = nullptr;
    Segmented *m_systems = nullptr;
    Button *m_copyAll = nullptr;
    QWidget *m_well = nullptr;
    QBoxLayout *m_lines = nullptr;
    Observer m_observer;
};

} // namespace quillfen
