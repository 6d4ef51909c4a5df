// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "boards/operator/promotionbanner.h"

#include "boards/operator/oprows.h"
#include "ui/controls/spinner.h"
#include "ui/layout.h"
#include "ui/paint/paint.h"
#include "ui/text/label.h"
#include "ui/theme.h"

#include <QBoxLayout>
#include <QPainter>

namespace quillfen {

namespace {

constexpr int radius = 12;
constexpr int spinnerSize = 16;
constexpr int mostLines = 3;

} // namespace

PromotionBanner::PromotionBanner(QWidget *parent)
    : QWidget(parent), m_title(new AgentLabel({}, Type::BodySemibold, Theme::heading)),
      m_detail(new AgentLabel({}, Type::Body, Theme::text))
{
    auto *const spinner = new Spinner(spinnerSize);
    spinner->setColour(Theme::warn);
    m_detail->setMaximumLines(mostLines);
    setLayout(row({spinner, m_title, Item{m_detail, 1}}, 12, QMargins{16, 11, 16, 11}));
    hide();
}

void PromotionBanner::setPromotion(const Record &promotion)
{
    const QString title = promotionTitle(promotion);
    m_title->setText(title);
    m_detail->setText(str(promotion, "detail"));
    setVisible(!title.isEmpty());
}

void PromotionBanner::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    paintSurface(painter, rect(), radius, Theme::panel2, Theme::warnBright);
}

} // namespace quillfen
