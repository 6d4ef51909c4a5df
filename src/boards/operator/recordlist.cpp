// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "boards/operator/recordlist.h"

#include "ui/controls/searchfield.h"
#include "ui/layout.h"
#include "ui/parts/card.h"
#include "ui/parts/sectiontitle.h"
#include "ui/parts/statemark.h"
#include "ui/text/label.h"
#include "ui/theme.h"

#include <QBoxLayout>

#include <algorithm>
#include <utility>

namespace quillfen {

using namespace Qt::StringLiterals;

namespace {

constexpr int leastRows = 3;
constexpr int noteHeight = 40;
/// A part of the work that costs a small part of a frame.
constexpr qsizetype recordsAtOnce = 500;
constexpr int filterWidth = 200;
constexpr int leastFilterWidth = 96;
constexpr int filterHeight = 28; // as the buttons beside it

QStringList captionsOf(const std::vector<RecordField> &fields)
{
    QStringList captions;
    for (const RecordField &field : fields) {
        captions.append(field.caption);
    }
    return captions;
}

} // namespace

RecordList::RecordList(Setup setup, QWidget *parent)
    : QWidget(parent), m_setup(std::move(setup)),
      m_columns(std::make_shared<const std::vector<Column>>(m_setup.columns)), m_rows(m_setup.fields), m_card(new Card),
      m_search(new SearchField(m_setup.filter)), m_header(new ColumnHeader(captionsOf(m_setup.fields), m_columns)),
      m_list(new LongList(*this, m_setup.rowHeight, m_setup.title)), m_note(new QWidget),
      m_waiting(new StateText(u"…"_s, Theme::muted)), m_empty(new AgentLabel({}, Type::Body, Theme::text))
{
    build();
    showRows(LongList::Place::Top);
}

RecordList::~RecordList()
{
    delete m_list; // while the rows can still be asked about
}

void RecordList::build()
{
    const bool filtered = !m_setup.filter.isEmpty();
    m_search->setFixedHeight(scaled(filterHeight));
    m_search->setMinimumWidth(leastFilterWidth);
    m_search->setMaximumWidth(scaled(filterWidth));
    auto *const title = new SectionTitle(m_setup.title);
    m_card->band()->addWidget(title);
    m_card->band()->addStretch(1);
    m_card->band()->addWidget(m_search);
    m_note->setMinimumHeight(scaled(noteHeight));
    m_note->setLayout(column({m_waiting, m_empty}, 0, QMargins{cellRowMargin, 0, cellRowMargin, 0}));
    m_card->addRow(m_header);
    m_card->addRow(m_list);
    m_card->addRow(m_note);
    if (!filtered) {
        m_search->hide();
        m_header->hide();
    }
    setLayout(column({m_card}));

    m_idle.setInterval(0);
    connect(&m_idle, &QTimer::timeout, this, [this] {
        if (!m_rows.prepareSearch(recordsAtOnce)) {
            m_idle.stop();
        }
    });
    connect(m_search, &QLineEdit::textChanged, this, [this](const QString &text) {
        m_rows.search(text);
        showRows(LongList::Place::Top);
    });
    connect(m_header, &ColumnHeader::sorted, this, [this](int column, Sorting sorting) {
        m_rows.sort(column, sorting);
        showRows(LongList::Place::Top);
    });
}

QBoxLayout *RecordList::band() const
{
    return m_card->band();
}

void RecordList::focusSearch()
{
    m_search->setFocus(Qt::ShortcutFocusReason);
    m_search->selectAll();
}

void RecordList::setRecords(const Records &records, bool known, const RecordRows::Wanted &wanted)
{
    m_known = known;
    m_rows.setRecords(records, wanted);
    showRows(LongList::Place::Keep);
    if (!m_setup.filter.isEmpty()) {
        m_idle.start();
    }
}

void RecordList::refill()
{
    m_list->refresh();
}

void RecordList::setRoom(int height)
{
    m_room = height;
    fit();
}

void RecordList::showRows(LongList::Place place)
{
    const bool none = m_rows.count() == 0;
    m_waiting->setVisible(none && !m_known);
    m_empty->setVisible(none && m_known);
    m_empty->setText(m_rows.total() == 0 ? m_setup.empty : tr("Nothing here matches."));
    m_note->setVisible(none);
    m_list->setVisible(!none);
    fit();
    m_list->refresh(place);
}

void RecordList::fit()
{
    const int full = m_list->fullHeight();
    const int others = m_card->sizeHint().height() - (m_list->isHidden() ? 0 : m_list->height());
    const int least = std::min(full, m_list->heightOf(leastRows));
    const int wanted = std::max(least, std::min(full, m_room - others));
    if (m_list->height() != wanted || m_list->minimumHeight() != wanted) {
        m_list->setFixedHeight(wanted);
        Q_EMIT heightChanged();
    }
}

int RecordList::rowCount() const
{
    return m_rows.count();
}

QString RecordList::rowKey(int row) const
{
    return QString::number(m_rows.id(row));
}

QWidget *RecordList::makeRow()
{
    return m_setup.makeRow(m_columns);
}

void RecordList::fillRow(QWidget *widget, int row)
{
    static_cast<RecordRow *>(widget)->fill(m_rows.record(row));
}

} // namespace quillfen
