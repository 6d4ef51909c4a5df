// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "boards/volumes/leftovers.h"

#include "boards/volumes/volumerows.h"
#include "dialogs/dialogs.h"
#include "state/start.h"
#include "ui/layout.h"
#include "ui/parts/card.h"
#include "ui/parts/sectiontitle.h"
#include "ui/text/label.h"
#include "ui/theme.h"

#include <QBoxLayout>

#include <utility>

namespace quillfen {

namespace {

constexpr int textWidth = 728;

QWidget *explanation(const QString &text)
{
    auto *const label = new Label(text, Type::Body, Theme::text);
    label->setWrap(textWidth);
    auto *const row = new QWidget;
    // The stretch keeps the label at its widest; its height follows from that and not from the card's width.
    row->setLayout(quillfen::row({Item{label, 1000}, Stretch{}}, 0, QMargins{16, 12, 16, 12}));
    return row;
}

} // namespace

OrphanAppliances::OrphanAppliances(std::shared_ptr<VolumesModel> model, QWidget *parent)
    : QWidget(parent), m_model(std::move(model)), m_list(new QWidget), m_layout(column({})), m_rows(m_layout),
      m_observer(
          {&m_model->state()->orphans}, [this] { render(); }, m_model->state()->timing().frame)
{
    m_list->setLayout(m_layout);
    auto *const card = new Card;
    card->band()->addWidget(new SectionTitle(tr("Appliances with no volume in this account")));
    card->addRow(explanation(tr("Left behind by a delete from the dashboard, the CLI, another computer or an older app "
                                "(or another account's). They keep their ports, so a new volume given one of them "
                                "cannot start. Remove stops each patiently: its last writes reach the vault first.")));
    card->addRow(m_list);
    setLayout(column({card}));
    render();
}

void OrphanAppliances::render()
{
    const Records &orphans = m_model->state()->orphans();
    setVisible(!orphans.isEmpty());
    m_rows.sync(
        orphans, [](const Record &appliance) { return str(appliance, "container"); },
        [this](const Record &appliance) {
            const QString container = str(appliance, "container");
            auto *const row = new OrphanRow;
            connect(row, &OrphanRow::removed, this, [this, container] { askToRemove(container); });
            return row;
        },
        [](OrphanRow *row, const Record &appliance) {
            row->setAppliance(str(appliance, "container"), str(appliance, "status"), portsText(appliance));
        });
}

void OrphanAppliances::askToRemove(const QString &container)
{
    const std::shared_ptr<VolumesModel> model = m_model;
    const bool agreed =
        confirm(this, tr("Remove %1?").arg(container),
                tr("Its volume is not in this account. The appliance is stopped patiently (its last writes reach the "
                   "vault) and removed from this Mac; its cached state stays."),
                tr("Remove"), Destructive::Yes);
    if (agreed) {
        start(model->removeOrphan(container));
    }
}

ReadyCopies::ReadyCopies(std::shared_ptr<VolumesModel> model, QWidget *parent)
    : QWidget(parent), m_model(std::move(model)), m_list(new QWidget), m_layout(column({})), m_rows(m_layout),
      m_observer(
          {&m_model->state()->readyCopies}, [this] { render(); }, m_model->state()->timing().frame)
{
    m_list->setLayout(m_layout);
    auto *const card = new Card;
    card->band()->addWidget(new SectionTitle(tr("Copies ready to become volumes")));
    card->addRow(m_list);
    setLayout(column({card}));
    render();
}

void ReadyCopies::render()
{
    const Records &copies = m_model->state()->readyCopies();
    setVisible(!copies.isEmpty());
    m_rows.sync(
        copies, [](const Record &copy) { return num(copy, "recovery_id"); },
        [this](const Record &copy) {
            const std::int64_t id = num(copy, "recovery_id");
            auto *const row = new CopyRow;
            connect(row, &CopyRow::promoted, this, [this, id, row] { askForName(id, row->name()); });
            connect(row, &CopyRow::discarded, this, [this, id, row] { askToDiscard(id, row->name()); });
            return row;
        },
        [](CopyRow *row, const Record &copy) { row->setCopy(str(copy, "name"), copyOriginText(copy)); });
}

void ReadyCopies::askForName(std::int64_t id, const QString &name)
{
    const std::shared_ptr<VolumesModel> model = m_model;
    const std::optional<QString> chosen =
        askText(this, tr("Make %1 a volume?").arg(name),
                tr("It becomes an ordinary volume with its own history from now on. Click Mount on it afterwards to "
                   "start it on this Mac."),
                name, tr("Create volume"));
    if (chosen) {
        start(model->promoteCopy(id, *chosen));
    }
}

void ReadyCopies::askToDiscard(std::int64_t id, const QString &name)
{
    const std::shared_ptr<VolumesModel> model = m_model;
    const bool agreed = confirm(this, tr("Discard %1?").arg(name),
                                tr("The copy is deleted. The original volume and its history are untouched."),
                                tr("Discard"), Destructive::Yes);
    if (agreed) {
        start(model->discardCopy(id));
    }
}

} // namespace quillfen
