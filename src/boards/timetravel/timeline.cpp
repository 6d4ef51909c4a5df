// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "boards/timetravel/timeline.h"

#include "boards/timetravel/timelinestrip.h"
#include "ui/layout.h"
#include "ui/text/label.h"
#include "ui/theme.h"

#include <QBoxLayout>

namespace quillfen {

namespace {

/// Where the hint's first sentence ends.
constexpr int hintWidth = 500;

} // namespace

Timeline::Timeline(QWidget *parent) : QWidget(parent), m_strip(new TimelineStrip(span))
{
    auto *const caption = new Label(tr("Timeline"), Type::Caption, Theme::dMuted);
    auto *const hint = new Label(tr("Every second for the last hour, then minutes, hours and days, as set in "
                                    "History policy. Drag to choose a moment."),
                                 Type::Caption, Theme::dText);
    hint->setWrap(hintWidth);
    const QMargins beside(overhang, 0, overhang, 0);
    setLayout(column({row({caption}, 0, beside), m_strip, row({hint, Stretch{}}, 0, beside)}));
    connect(m_strip, &TimelineStrip::momentChanged, this, &Timeline::momentChanged);
}

Instant Timeline::moment() const
{
    return m_strip->moment();
}

void Timeline::setPoints(const RestorePoints &points)
{
    m_strip->setPoints(points);
}

void Timeline::setMoment(Instant moment)
{
    m_strip->setMoment(moment);
}

void Timeline::catchUp()
{
    m_strip->catchUp();
}

} // namespace quillfen
