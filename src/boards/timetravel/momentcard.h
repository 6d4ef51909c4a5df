// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "boards/timetravel/timetravelmodel.h"

#include <QDateTime>
#include <QWidget>

#include <memory>
#include <optional>

namespace quillfen {

class AgentLabel;
class Button;
class DateTimeField;
class Timeline;

/// The dark card on which a second is chosen, on the strip or by date and time, and opened or made a volume of.
class MomentCard final : public QWidget {
    Q_OBJECT

public:
    explicit MomentCard(std::shared_ptr<TimeTravelModel> model, QWidget *parent = nullptr);

private:
    [[nodiscard]] QWidget *build();
    void choose(const QDateTime &moment);
    void askForName();
    void render();

    std::shared_ptr<TimeTravelModel> m_model;
    AgentLabel *m_age;
    Timeline *m_timeline;
    DateTimeField *m_field;
    Button *m_open;
    Button *m_newVolume;
    std::optional<Instant> m_fieldShows; ///< nothing once the user has changed the field
    Observer m_observer;
};

} // namespace quillfen
