// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "boards/export/exportview.h"

#include "boards/export/choicelist.h"
#include "boards/export/deliverycard.h"
#include "desktop/fileviewer.h"
#include "state/format.h"
#include "state/start.h"
#include "ui/layout.h"
#include "ui/paint/iconview.h"
#include "ui/parts/boardframe.h"
#include "ui/parts/card.h"
#include "ui/parts/sectiontitle.h"
#include "ui/text/label.h"
#include "ui/theme.h"

#include <QBoxLayout>
#include <QUrl>

#include <utility>
#include <vector>

namespace quillfen {

using namespace Qt::StringLiterals;

namespace {

constexpr int volumeRowHeight = 39; // and a hairline
constexpr int mostVolumes = 7;
constexpr int noteLines = 4;

struct ShownCopy {
    std::int64_t id = 0;
    ExportRow row;
};

/// The copies that are not removed, in the order of their volumes.
std::vector<ShownCopy> shownCopies(const ExportModel::Copies &copies, const Records &volumes)
{
    std::vector<ShownCopy> shown;
    if (copies.empty()) {
        return shown;
    }
    for (const Record &volume : volumes) {
        const std::int64_t id = num(volume, "id");
        if (const auto copy = copies.find(id); copy != copies.end() && !isRemoved(copy->second)) {
            shown.push_back({id, exportRow(str(volume, "name"), copy->second)});
        }
    }
    return shown;
}

} // namespace

ExportView::ExportView(std::shared_ptr<AppState> state, QWidget *parent)
    : Board(parent), m_model(std::make_shared<ExportModel>(std::move(state))),
      m_frame(new BoardFrame(tr("Get a copy of my data"))), m_copyLayout(column({})), m_rows(m_copyLayout),
      m_observer(
          {&m_model->state().volumes, &m_model->selected, &m_model->exports, &m_model->removing}, [this] { render(); },
          m_model->state().timing().frame)
{
    m_frame->setSubtitle(tr("A full copy of a volume as it is now, yours to keep outside Quillfen."));
    m_model->follow();
    m_frame->body()->addWidget(volumeCard());
    m_frame->body()->addWidget(new DeliveryCard(m_model));
    m_frame->body()->addWidget(recentCopies());
    auto *const command = new AgentLabel(u"quill export unpack <file> --into <folder>   # unpacks a downloaded copy"_s,
                                         Type::Mono, Theme::text);
    command->setMaximumLines(2); // half a command is of no use
    m_frame->body()->addLayout(column({command}, 0, QMargins{16, 0, 16, 0}));
    setLayout(column({Item{m_frame, 1}}));
    render();
}

QWidget *ExportView::volumeCard()
{
    m_volumes = new ChoiceList(tr("Volume"), volumeRowHeight, mostVolumes);
    m_note = new AgentLabel(QString(), Type::Body, Theme::text);
    m_note->setMaximumLines(noteLines);
    m_noteRow = new QWidget;
    m_noteRow->setLayout(row({Item{new IconView(Icon::Key, 18, Theme::text), 0, Qt::AlignTop}, Item{m_note, 1}}, 12,
                             QMargins{16, 12, 16, 12}));
    m_volumeCard = new Card;
    m_volumeCard->addRow(m_volumes);
    m_volumeCard->addRow(m_noteRow);
    connect(m_volumes, &ChoiceList::chosen, this, [this](int index) {
        const Records &volumes = m_model->state().volumes();
        if (index >= 0 && index < volumes.size()) {
            m_model->chooseVolume(num(volumes.at(index), "id"));
        }
    });
    return m_volumeCard;
}

QWidget *ExportView::recentCopies()
{
    m_copies = new QWidget;
    m_copies->setLayout(m_copyLayout);
    m_noCopies = new QWidget;
    m_noCopies->setMinimumHeight(scaled(48));
    m_noCopies->setLayout(
        row({new Label(tr("None yet."), Type::Body, Theme::text), Stretch{}}, 0, QMargins{16, 0, 16, 0}));
    auto *const card = new Card;
    card->band()->addWidget(new SectionTitle(tr("Recent copies")));
    card->addRow(m_copies);
    card->addRow(m_noCopies);
    return card;
}

void ExportView::reload()
{
    start(m_model->reload());
}

void ExportView::render()
{
    m_model->follow();
    renderVolumes();
    renderCopies();
}

void ExportView::renderVolumes()
{
    const Records volumes = m_model->state().volumes();
    m_volumes->setChoices(static_cast<int>(volumes.size()), [volumes](int index) {
        const Record &volume = volumes.at(index);
        return Choice{str(volume, "name"), {}, gb(num(volume, "size_bytes"))};
    });
    const Record *const selected = m_model->selectedVolume();
    m_volumes->setCurrent(selected == nullptr ? -1
                                              : static_cast<int>(selected - m_model->state().volumes().constData()));
    m_volumeCard->setVisible(!volumes.isEmpty());
    const QString note = selected == nullptr ? QString() : encryptionNote(*selected);
    m_note->setText(note);
    m_noteRow->setVisible(!note.isEmpty());
}

void ExportView::renderCopies()
{
    const std::vector<ShownCopy> shown = shownCopies(m_model->exports(), m_model->state().volumes());
    m_rows.sync(
        shown, [](const ShownCopy &copy) { return copy.id; },
        [this](const ShownCopy &copy) { return makeRow(copy.id); },
        [this](RecentCopyRow *row, const ShownCopy &copy) {
            row->setCopy(copy.row);
            row->setRemoving(m_model->removing().contains(copy.id));
        });
    m_copies->setVisible(!shown.empty());
    m_noCopies->setVisible(shown.empty());
}

RecentCopyRow *ExportView::makeRow(std::int64_t id)
{
    ExportModel *const model = m_model.get();
    auto *const row = new RecentCopyRow;
    connect(row, &RecentCopyRow::opened, this, [row] { openLink(QUrl(row->link(), QUrl::StrictMode)); });
    connect(row, &RecentCopyRow::removed, this, [model, id] { start(model->remove(id)); });
    return row;
}

} // namespace quillfen
