// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "plancard.h"

#include "accountrows.h"
#include "narrow.h"

#include "state/format.h"
#include "ui/accessible.h"
#include "ui/layout.h"
#include "ui/paint/iconview.h"
#include "ui/parts/bar.h"
#include "ui/parts/card.h"
#include "ui/parts/sectiontitle.h"
#include "ui/text/label.h"
#include "ui/text/type.h"
#include "ui/theme.h"

#include <QBoxLayout>
#include <QPainter>
#include <QStyle>
#include <QTextLayout>

#include <utility>

namespace quillfen {

namespace {

constexpr int accountWidth = 320;
constexpr int barHeight = 6;
constexpr QMargins inside{16, 16, 16, 16};

} // namespace

/// An amount that stands out, and what it is an amount of: one sentence to read and to hear. Wraps where it must.
class PlanCard::AmountLine final : public QWidget {
public:
    AmountLine()
    {
        QSizePolicy policy(QSizePolicy::Preferred, QSizePolicy::Minimum);
        policy.setHeightForWidth(true);
        setSizePolicy(policy);
        setRole(this, QAccessible::StaticText);
    }

    void setText(const QString &amount, const QString &of)
    {
        if (amount == m_amount && of == m_of) {
            return;
        }
        m_amount = amount;
        m_of = of;
        setAccessibleName(m_amount + m_of);
        updateGeometry();
        update();
    }

    [[nodiscard]] QSize sizeHint() const override
    {
        const int width = QFontMetrics(quillfen::font(Type::BodyMedium)).horizontalAdvance(m_amount + m_of);
        return {width, lineHeight(Type::Body)};
    }
    [[nodiscard]] QSize minimumSizeHint() const override { return {120, lineHeight(Type::Body)}; }
    [[nodiscard]] int heightForWidth(int width) const override
    {
        QTextLayout layout;
        return lay(layout, width);
    }

protected:
    void paintEvent(QPaintEvent *) override
    {
        QPainter painter(this);
        QTextLayout layout;
        lay(layout, width());
        painter.setPen(Theme::text);
        layout.draw(&painter, QPointF());
    }

private:
    int lay(QTextLayout &layout, int width) const
    {
        QTextLayout::FormatRange amount;
        amount.start = 0;
        amount.length = static_cast<int>(m_amount.size());
        amount.format.setFont(quillfen::font(Type::BodyMedium));
        amount.format.setForeground(Theme::heading);
        layout.setText(m_amount + m_of);
        layout.setFont(quillfen::font(Type::Body));
        layout.setFormats({amount});
        QTextOption option(QStyle::visualAlignment(layoutDirection(), Qt::AlignLeft) | Qt::AlignAbsolute);
        option.setTextDirection(m_of.isRightToLeft() ? Qt::RightToLeft : Qt::LeftToRight);
        layout.setTextOption(option);
        int height = 0;
        layout.beginLayout();
        for (QTextLine line = layout.createLine(); line.isValid(); line = layout.createLine()) {
            line.setLineWidth(std::max(1, width));
            line.setPosition(QPointF(0, height + (lineHeight(Type::Body) - line.height()) / 2.0));
            height += lineHeight(Type::Body);
        }
        layout.endLayout();
        return height;
    }

    QString m_amount;
    QString m_of;
};

PlanCard::PlanCard(std::shared_ptr<AppState> state, QWidget *parent)
    : QWidget(parent), m_state(std::move(state)),
      m_observer(
          {&m_state->account, &m_state->auth, &m_state->volumes}, [this] { render(); }, m_state->timing().frame)
{
    m_account = accountCard();
    m_columns = row({Item{planCard(), 1}, m_account}, 16);
    setLayout(m_columns);
    render();
}

PlanCard::~PlanCard() = default;

QWidget *PlanCard::planCard()
{
    m_plan = new AgentLabel(QString(), Type::Heading, Theme::heading);
    m_amount = new AmountLine;
    m_bar = new Bar(0, Theme::line, Theme::accent, barHeight);
    setAccessible(m_bar, QAccessible::ProgressBar, tr("Allocated"));
    auto *const body = new QWidget;
    body->setLayout(column({m_plan, Space{2}, m_amount, Space{12}, m_bar}, 0, inside));
    auto *const card = new Card;
    card->band()->addWidget(new SectionTitle(tr("Plan")));
    card->addRow(body);
    return card;
}

QWidget *PlanCard::accountCard()
{
    m_email = new AgentLabel(QString(), Type::BodyMedium, Theme::heading);
    m_email->setElideMode(Qt::ElideMiddle);
    auto *const body = new QWidget;
    body->setLayout(
        column({row({new IconView(Icon::PersonCircle, 20, Theme::text), Item{m_email, 1}}, 12), Stretch{}}, 0, inside));
    auto *const card = new Card;
    card->band()->addWidget(new SectionTitle(tr("Account")));
    card->addRow(body);
    return card;
}

void PlanCard::render()
{
    const QString allocated = gb(m_state->allocatedBytes());
    m_plan->setText(m_state->planName());
    m_amount->setText(allocated, tr(" allocated to volumes, including locked history"));
    m_bar->setFraction(allocatedShare(*m_state));
    m_bar->setValueText(tr("%1 of %2").arg(allocated, gb(m_state->capacityBytes())));
    m_email->setText(str(m_state->account(), "email"));
}

void PlanCard::resizeEvent(QResizeEvent *)
{
    const bool narrow = width() < scaled(narrowBoard);
    m_columns->setDirection(narrow ? QBoxLayout::TopToBottom : QBoxLayout::LeftToRight);
    m_account->setMinimumWidth(narrow ? 0 : accountWidth);
    m_account->setMaximumWidth(narrow ? QWIDGETSIZE_MAX : accountWidth);
}

} // namespace quillfen
