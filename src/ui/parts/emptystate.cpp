// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "ui/parts/emptystate.h"

#include "ui/controls/buttons.h"
#include "ui/layout.h"
#include "ui/text/label.h"
#include "ui/theme.h"

#include <QBoxLayout>
#include <QPainter>

namespace quillfen {

namespace {

constexpr int pictureSize = 48;
constexpr int gap = 16;
constexpr int widestLine = 760;

/// Lifts the group above the middle, where the eye looks for it.
constexpr int lift = 96;

class Picture final : public QWidget {
public:
    explicit Picture(Icon icon) : m_icon(icon) { setFixedSize(pictureSize, pictureSize); }

protected:
    void paintEvent(QPaintEvent *) override
    {
        QPainter painter(this);
        paintIcon(painter, m_icon, rect(), Theme::muted);
    }

private:
    Icon m_icon;
};

} // namespace

EmptyState::EmptyState(Icon icon, const QString &line, const QString &buttonText, QWidget *parent)
    : QWidget(parent), m_line(new AgentLabel(line, Type::SectionMedium, Theme::heading))
{
    m_line->setAlignment(Qt::AlignHCenter | Qt::AlignTop);
    m_line->setMaximumLines(3);
    m_line->setMaximumWidth(scaled(widestLine));
    QBoxLayout *parts = column({Stretch{}, Item{new Picture(icon), 0, Qt::AlignHCenter}, Space{gap},
                                row({Stretch{}, Item{m_line, 1000}, Stretch{}}, 0)},
                               0, {20, 0, 20, lift});
    if (!buttonText.isEmpty()) {
        auto *button = new Button(buttonText, SecondaryButtonStyle{.height = 36});
        connect(button, &QAbstractButton::clicked, this, &EmptyState::activated);
        parts->addSpacing(gap);
        parts->addWidget(button, 0, Qt::AlignHCenter);
    }
    parts->addStretch(1);
    setLayout(parts);
}

void EmptyState::setLine(const QString &line)
{
    m_line->setText(line);
}

} // namespace quillfen
