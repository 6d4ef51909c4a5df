// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "boards/timetravel/pastrow.h"
#include "boards/timetravel/timetravelmodel.h"
#include "ui/lists/rowlist.h"

#include <QWidget>

#include <memory>
#include <utility>

namespace quillfen {

class RestorePointsList;
class SectionTitle;

/// Rows are told apart by name or id, and by their place among those that share it: agents may repeat themselves.
template <typename Id>
using PastKey = std::pair<Id, int>;

/// The open views of the volume that is shown.
class OpenViewsCard final : public QWidget {
    Q_OBJECT

public:
    explicit OpenViewsCard(std::shared_ptr<TimeTravelModel> model, QWidget *parent = nullptr);

private:
    void render();
    [[nodiscard]] OpenViewRow *makeRow();

    std::shared_ptr<TimeTravelModel> m_model;
    QWidget *m_none;
    QWidget *m_waiting;
    QWidget *m_list;
    QBoxLayout *m_layout;
    RowList<PastKey<QString>, OpenViewRow> m_rows;
    Observer m_observer;
};

/// The new volumes in the making. Hidden while there are none.
class NewVolumesCard final : public QWidget {
    Q_OBJECT

public:
    explicit NewVolumesCard(std::shared_ptr<TimeTravelModel> model, QWidget *parent = nullptr);

private:
    void render();
    [[nodiscard]] NewVolumeRow *makeRow();
    void askForName(const RecoveryRow &recovery);
    void askToDiscard(const RecoveryRow &recovery);

    std::shared_ptr<TimeTravelModel> m_model;
    QWidget *m_list;
    QBoxLayout *m_layout;
    RowList<PastKey<std::int64_t>, NewVolumeRow> m_rows;
    Observer m_observer;
};

/// The restore points, counted and listed.
class RestorePointsCard final : public QWidget {
    Q_OBJECT

public:
    explicit RestorePointsCard(std::shared_ptr<TimeTravelModel> model, QWidget *parent = nullptr);

private:
    void render();

    std::shared_ptr<TimeTravelModel> m_model;
    SectionTitle *m_title;
    QWidget *m_none;
    QWidget *m_waiting;
    RestorePointsList *m_points;
    Observer m_observer;
};

} // namespace quillfen
