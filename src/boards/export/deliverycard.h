// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "boards/export/exportmodel.h"

#include <QWidget>

#include <memory>

namespace quillfen {

class Button;
class ChoiceList;
class Label;
class RadioRow;
class Segmented;
class TextField;

/// How a copy reaches its user: as a download, or on media that are ordered with prices in sight.
class DeliveryCard final : public QWidget {
    Q_OBJECT

public:
    explicit DeliveryCard(std::shared_ptr<ExportModel> model, QWidget *parent = nullptr);

private:
    [[nodiscard]] QWidget *deliveryRows();
    [[nodiscard]] QWidget *downloadRow();
    [[nodiscard]] QWidget *mediaBlock();
    [[nodiscard]] QWidget *loadingLine();
    void connectActions();
    void render();
    void renderMedia();

    std::shared_ptr<ExportModel> m_model;
    RadioRow *m_download = nullptr;
    RadioRow *m_ship = nullptr;
    QWidget *m_downloadRow = nullptr;
    Label *m_price = nullptr;
    QWidget *m_mediaBlock = nullptr;
    QWidget *m_loading = nullptr;
    QWidget *m_well = nullptr;
    ChoiceList *m_options = nullptr;
    Segmented *m_region = nullptr;
    TextField *m_address = nullptr;
    Button *m_request = nullptr;
    Observer m_observer;
};

} // namespace quillfen
