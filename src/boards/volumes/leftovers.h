// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "boards/volumes/leftoverrow.h"
#include "boards/volumes/volumesmodel.h"
#include "ui/lists/rowlist.h"

#include <QWidget>

#include <cstdint>
#include <memory>

namespace quillfen {

/// The appliances on this computer whose volume is not in the account. Hidden while there are none.
class OrphanAppliances final : public QWidget {
    Q_OBJECT

public:
    explicit OrphanAppliances(std::shared_ptr<VolumesModel> model, QWidget *parent = nullptr);

private:
    void render();
    void askToRemove(const QString &container);

    std::shared_ptr<VolumesModel> m_model;
    QWidget *m_list;
    QBoxLayout *m_layout;
    RowList<QString, OrphanRow> m_rows;
    Observer m_observer;
};

/// The copies that are ready to become volumes. Hidden while there are none.
class ReadyCopies final : public QWidget {
    Q_OBJECT

public:
    explicit ReadyCopies(std::shared_ptr<VolumesModel> model, QWidget *parent = nullptr);

private:
    void render();
    void askForName(std::int64_t id, const QString &name);
    void askToDiscard(std::int64_t id, const QString &name);

    std::shared_ptr<VolumesModel> m_model;
    QWidget *m_list;
    QBoxLayout *m_layout;
    RowList<std::int64_t, CopyRow> m_rows;
    Observer m_observer;
};

} // namespace quillfen
