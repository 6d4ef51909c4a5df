// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "state/values.h"
#include "ui/lists/longlist.h"

#include <QWidget>

#include <memory>

namespace quillfen {

/// The appliances on this computer, one row each: its container and what it does. Scrolls by itself beyond a few rows.
class ApplianceList final : public QWidget {
    Q_OBJECT

public:
    explicit ApplianceList(QWidget *parent = nullptr);
    ~ApplianceList() override;

    void setAppliances(const Records &appliances);

private:
    class Rows;

    std::unique_ptr<Rows> m_rows;
    LongList *m_list;
};

} // namespace quillfen
