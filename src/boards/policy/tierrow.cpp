// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "boards/policy/tierrow.h"

#include "boards/policy/policytiers.h"
#include "ui/controls/picker.h"
#include "ui/layout.h"
#include "ui/paint/paint.h"
#include "ui/parts/bar.h"
#include "ui/text/label.h"
#include "ui/text/type.h"
#include "ui/theme.h"

#include <QBoxLayout>
#include <QPainter>

namespace quillfen {

namespace {

constexpr int rowHeight = 45;
constexpr int labelWidth = 96;
constexpr int pickerWidth = 124;
constexpr int pickerHeight = 28;
constexpr int bandHeight = 6;
constexpr int narrowestBand = 24;
constexpr int spanWidth = 76;
constexpr int gap = 12;

/// The colour of a tier beside its name, never instead of it.
class Swatch final : public QWidget {
public:
    explicit Swatch(const QColor &colour) : m_colour(colour) { setFixedSize(10, 10); }

protected:
    void paintEvent(QPaintEvent *) override
    {
        QPainter painter(this);
        paintSurface(painter, rect(), 3, m_colour);
    }

private:
    QColor m_colour;
};

} // namespace

TierRow::TierRow(std::size_t tier, QWidget *parent)
    : QWidget(parent), m_tier(tier), m_picker(new Picker(tierAt(tier).label)),
      m_band(new Bar(0, Theme::line, Theme::tierColors.at(tier), bandHeight)),
      m_span(new AgentLabel(QString(), Type::Body, Theme::heading))
{
    auto *const label = new Label(tierAt(tier).label, Type::Body, Theme::heading);
    label->setFixedWidth(scaled(labelWidth));
    for (const TierChoice &choice : tierAt(tier).choices) {
        m_picker->addItem(choice.label, QVariant::fromValue<qint64>(choice.number));
    }
    m_picker->setControlHeight(pickerHeight);
    m_picker->setFixedWidth(scaled(pickerWidth));
    m_band->setMinimumWidth(narrowestBand);
    m_band->setAccessibleName(tierAt(tier).label);
    m_span->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    m_span->setFixedWidth(scaled(spanWidth));
    setMinimumHeight(scaled(rowHeight));
    setLayout(row({new Swatch(Theme::tierColors.at(tier)), label, m_picker, Item{m_band, 1}, m_span}, gap,
                  QMargins{16, 0, 16, 0}));
    connect(m_picker, &QComboBox::activated, this,
            [this](int index) { Q_EMIT chosen(m_picker->itemData(index).toLongLong()); });
}

void TierRow::setNumber(std::int64_t number)
{
    select(number);
    const QString span = spanText(m_tier, number);
    m_band->setFraction(reachShare(m_tier, number));
    m_band->setValueText(span);
    m_span->setText(span);
}

/// A number that is none of the choices has an entry of its own for as long as it holds.
void TierRow::select(std::int64_t number)
{
    const auto choices = static_cast<int>(tierAt(m_tier).choices.size());
    const QVariant wanted = QVariant::fromValue<qint64>(number);
    int index = m_picker->findData(wanted);
    if (index < 0) {
        m_picker->addItem(spanText(m_tier, number), wanted);
        index = m_picker->count() - 1;
    }
    m_picker->setCurrentIndex(index);
    for (int other = m_picker->count() - 1; other >= choices; --other) {
        if (other != index) {
            m_picker->removeItem(other);
        }
    }
}

} // namespace quillfen
