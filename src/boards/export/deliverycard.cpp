// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "boards/export/deliverycard.h"

#include "boards/export/choicelist.h"
#include "state/start.h"
#include "ui/accessible.h"
#include "ui/controls/buttons.h"
#include "ui/controls/radiorow.h"
#include "ui/controls/segmented.h"
#include "ui/controls/spinner.h"
#include "ui/controls/textfield.h"
#include "ui/layout.h"
#include "ui/paint/hairline.h"
#include "ui/paint/paint.h"
#include "ui/parts/card.h"
#include "ui/parts/sectiontitle.h"
#include "ui/text/label.h"
#include "ui/theme.h"

#include <QBoxLayout>
#include <QPainter>
#include <QSignalBlocker>

#include <algorithm>
#include <array>
#include <utility>

namespace quillfen {

namespace {

constexpr int rowHeight = 51; // and a hairline
/// Far more than there are kinds of media: the list never scrolls inside the board.
constexpr int mostOptions = 40;
constexpr int indent = 46; // of what belongs to a radio row
constexpr int captionWidth = 112;
constexpr int textWidth = 728;
constexpr std::array<QLatin1StringView, 3> regions{QLatin1StringView("US"), QLatin1StringView("EU"),
                                                   QLatin1StringView("other")};

/// What the options lie on.
class OptionWell final : public QWidget {
protected:
    void paintEvent(QPaintEvent *) override
    {
        QPainter painter(this);
        paintSurface(painter, rect(), 10, Theme::bg, Theme::line);
    }
};

RadioRow *deliveryRow(const QString &title, const QString &caption)
{
    auto *const row = new RadioRow(title, caption);
    row->setTitleType(Type::BodySemibold);
    row->setFixedHeight(scaled(rowHeight));
    return row;
}

Label *wrapped(const QString &text, Type type, const QColor &colour)
{
    auto *const label = new Label(text, type, colour);
    label->setWrap(textWidth);
    return label;
}

QBoxLayout *captioned(const QString &caption, QWidget *field)
{
    auto *const label = new Label(caption, Type::BodyMedium, Theme::heading);
    label->setFixedWidth(scaled(captionWidth));
    return row({label, Item{field, 1}}, 0);
}

} // namespace

DeliveryCard::DeliveryCard(std::shared_ptr<ExportModel> model, QWidget *parent)
    : QWidget(parent), m_model(std::move(model)),
      m_observer(
          {&m_model->selected, &m_model->delivery, &m_model->region, &m_model->medium, &m_model->options,
           &m_model->retrieval, &m_model->requesting},
          [this] { render(); }, m_model->state().timing().frame)
{
    auto *const card = new Card;
    card->band()->addWidget(new SectionTitle(tr("How should it reach you?")));
    card->addRow(deliveryRows());
    card->addRow(downloadRow());
    card->addRow(mediaBlock());
    m_request = new Button(QString(), PrimaryButtonStyle{});
    card->foot()->setContentsMargins(QMargins(16, 12, 16, 12));
    card->foot()->addStretch(1);
    card->foot()->addWidget(m_request);
    setLayout(column({card}));
    connectActions();
    render();
}

QWidget *DeliveryCard::deliveryRows()
{
    m_download =
        deliveryRow(tr("Download"), tr("Ready within the hour for most volumes. The link works for 48 hours."));
    m_ship = deliveryRow(tr("Ship it to me"),
                         tr("BD-R XL discs, LTO tape, SSD or hard disk. Price shown before you confirm."));
    auto *const rows = new QWidget;
    setAccessible(rows, QAccessible::Grouping, tr("How should it reach you?"));
    rows->setLayout(column({m_download, new Hairline, m_ship}));
    return rows;
}

QWidget *DeliveryCard::downloadRow()
{
    m_price = wrapped(downloadText().trimmed(), Type::Body, Theme::heading);
    m_downloadRow = new QWidget;
    m_downloadRow->setLayout(row({Item{m_price, 1000}, Stretch{}}, 0, QMargins{indent, 12, 16, 12}));
    return m_downloadRow;
}

QWidget *DeliveryCard::loadingLine()
{
    auto *const spinner = new Spinner(16);
    spinner->setColour(Theme::text);
    auto *const line = new QWidget;
    line->setMinimumHeight(scaled(40));
    line->setLayout(row({spinner, new Label(tr("Loading the options…"), Type::Body, Theme::text), Stretch{}}));
    return line;
}

QWidget *DeliveryCard::mediaBlock()
{
    m_loading = loadingLine();
    m_options = new ChoiceList(tr("Media"), rowHeight, mostOptions);
    m_options->setTitleType(Type::BodyMedium);
    m_well = new OptionWell;
    m_well->setLayout(column({m_options}, 0, QMargins{1, 1, 1, 1}));
    m_region = new Segmented(tr("Ship to"));
    for (const QString &name : {tr("United States"), tr("European Union"), tr("Elsewhere")}) {
        m_region->addPart(name);
    }
    auto *const regionLine = new QWidget;
    regionLine->setLayout(row({m_region, Stretch{}}, 0));
    m_address = new TextField(tr("Postal address"));
    auto *const note =
        wrapped(tr("The order is confirmed by e-mail with the price above; nothing is charged before that."),
                Type::Caption, Theme::text);
    m_mediaBlock = new QWidget;
    m_mediaBlock->setLayout(column({m_loading, m_well, Space{16}, captioned(tr("Ship to"), regionLine), Space{12},
                                    captioned(tr("Postal address"), m_address), Space{12},
                                    row({Item{note, 1000}, Stretch{}}, 0, QMargins{scaled(captionWidth), 0, 0, 0})},
                                   0, QMargins{indent, 16, 16, 16}));
    return m_mediaBlock;
}

void DeliveryCard::connectActions()
{
    ExportModel *const model = m_model.get();
    connect(m_download, &QAbstractButton::clicked, this, [model] { model->chooseDelivery(Delivery::Link); });
    connect(m_ship, &QAbstractButton::clicked, this, [model] { model->chooseDelivery(Delivery::Media); });
    connect(m_options, &ChoiceList::chosen, this, [model](int index) {
        if (index >= 0 && index < model->options().size()) {
            model->medium = str(model->options().at(index), "medium");
        }
    });
    connect(m_region, &Segmented::currentChanged, this,
            [model](int index) { model->chooseRegion(regions.at(static_cast<std::size_t>(index))); });
    connect(m_address, &QLineEdit::textChanged, this, [model](const QString &text) { model->address = text; });
    connect(m_request, &QAbstractButton::clicked, this, [model] { start(model->request()); });
}

void DeliveryCard::render()
{
    const bool shipped = m_model->delivery() == Delivery::Media;
    (shipped ? m_ship : m_download)->setChecked(true);
    m_downloadRow->setVisible(!shipped);
    m_mediaBlock->setVisible(shipped);
    const QString price = m_model->retrieval();
    // What is not known yet is left out, so that the line stands still when it comes.
    m_price->setText(price.isEmpty() ? downloadText().trimmed() : price);
    renderMedia();
    const std::optional<std::int64_t> id = m_model->selected();
    m_request->setText(shipped ? tr("Order the copy") : tr("Request copy"));
    m_request->setEnabled(m_model->canRequest());
    m_request->setRunning(id && m_model->requesting().contains(*id));
}

void DeliveryCard::renderMedia()
{
    const Records options = m_model->options();
    const auto chosen = std::ranges::find_if(
        options, [this](const Record &option) { return str(option, "medium") == m_model->medium(); });
    m_options->setChoices(static_cast<int>(options.size()), [options](int index) {
        const MediaRow row = mediaRow(options.at(index));
        return Choice{row.title, row.caption, {}};
    });
    m_options->setCurrent(chosen == options.end() ? -1 : static_cast<int>(chosen - options.begin()));
    m_loading->setVisible(options.isEmpty());
    m_well->setVisible(!options.isEmpty());
    const auto *const region = std::ranges::find(regions, m_model->region());
    const QSignalBlocker quiet(m_region);
    m_region->setCurrentIndex(static_cast<int>(region - regions.begin()));
}

} // namespace quillfen
