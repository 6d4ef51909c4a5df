// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "advancedview.h"

#include "methodpane.h"
#include "methodslist.h"

#include "state/start.h"
#include "ui/controls/searchfield.h"
#include "ui/layout.h"
#include "ui/paint/direction.h"
#include "ui/paint/hairline.h"
#include "ui/paint/paint.h"
#include "ui/parts/emptystate.h"
#include "ui/text/label.h"
#include "ui/theme.h"

#include <QBoxLayout>
#include <QKeyEvent>
#include <QPainter>
#include <QStackedLayout>

#include <utility>

namespace quillfen {

namespace {

constexpr int wideSide = 316;
constexpr int narrowSide = 276;
constexpr int narrowWindow = 1080;
constexpr int top = 36;
constexpr int left = 28;
constexpr int right = 16; ///< of what stands above the list; its scroll bar reaches nearer to the line

} // namespace

AdvancedView::AdvancedView(std::shared_ptr<AppState> state, QWidget *parent)
    : Board(parent), m_model(std::make_shared<AdvancedModel>(std::move(state))),
      m_line(new Label(tr("Every operation, as the quill command sees it. Pick one."), Type::Body, Theme::heading)),
      m_filter(new SearchField(tr("Filter operations"))), m_list(new MethodsList),
      m_none(new Label({}, Type::Body, Theme::text)), m_pane(new MethodPane(m_model)),
      m_hint(new EmptyState(Icon::Terminal, tr("Pick an operation to run it."))), m_right(new QStackedLayout),
      m_observer(
          {&m_model->methods, &m_model->loaded, &m_model->session().picked, &m_model->session().running,
           &m_model->session().outcome, &m_model->state().auth},
          [this] { render(); }, m_model->state().timing().frame)
{
    m_side = listSide();
    m_right->addWidget(m_hint);
    m_right->addWidget(m_pane);
    auto *const all = row({m_side}, 1);
    all->addLayout(m_right, 1);
    setLayout(all);
    connectParts();
    render();
    start(m_model->load());
}

AdvancedView::~AdvancedView() = default;

QWidget *AdvancedView::listSide()
{
    m_filter->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    m_line->setWrap(wideSide - left - right - 4);
    m_none->setWrap(wideSide - left - right);
    auto *const side = new QWidget;
    auto *const above = column({m_line, Space{12}, m_filter}, 0, {0, 0, right, 0});
    side->setLayout(column({above, Space{12}, new Hairline, m_none, Item{m_list, 1}}, 0, {left, top, 0, 0}));
    m_none->setContentsMargins(0, 12, 0, 0);
    return side;
}

void AdvancedView::connectParts()
{
    AdvancedModel *const model = m_model.get();
    connect(m_filter, &QLineEdit::textChanged, this, [this](const QString &text) {
        m_list->methods().setFilter(text);
        renderList();
    });
    connect(m_list, &MethodsList::picked, this, [model](const QString &name) { model->pick(name); });
    m_filter->installEventFilter(this);
    m_list->installEventFilter(this);
}

// From the filter straight into what it has found, and from there to the fields.
bool AdvancedView::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() != QEvent::KeyPress) {
        return Board::eventFilter(watched, event);
    }
    const int key = static_cast<QKeyEvent *>(event)->key();
    const bool enters = key == Qt::Key_Return || key == Qt::Key_Enter;
    if (watched == m_filter && (enters || key == Qt::Key_Down)) {
        if (!m_list->currentIndex().isValid()) {
            m_list->pickFirst();
        }
        m_list->setFocus(Qt::TabFocusReason);
        return true;
    }
    if (watched == m_list && enters && m_model->picked() != nullptr) {
        render();
        m_pane->focusFirstField();
        return true;
    }
    return Board::eventFilter(watched, event);
}

void AdvancedView::reload()
{
    start(m_model->load());
}

void AdvancedView::focusSearch()
{
    if (m_pane->hasOutputFocus()) {
        m_pane->focusSearch();
        return;
    }
    m_filter->setFocus(Qt::ShortcutFocusReason);
    m_filter->selectAll();
}

void AdvancedView::render()
{
    m_model->followAccount();
    renderList();
    const AgentMethod *const picked = m_model->picked();
    if (picked != nullptr) {
        m_pane->render(*picked);
    }
    m_right->setCurrentWidget(picked != nullptr ? static_cast<QWidget *>(m_pane) : m_hint);
    m_hint->setVisible(picked == nullptr);
}

void AdvancedView::renderList()
{
    if (std::exchange(m_listed, m_model->methods.version()) != m_model->methods.version()) {
        m_list->methods().setMethods(m_model->methods());
    }
    m_list->mark(m_model->session().picked());
    const bool filtered = !m_model->methods().empty();
    m_none->setText(filtered ? tr("No operation of that name.") : tr("The agent lists no operations."));
    m_none->setVisible(m_model->loaded() && m_list->methods().rowCount() == 0);
}

void AdvancedView::resizeEvent(QResizeEvent *event)
{
    Board::resizeEvent(event);
    m_side->setFixedWidth(window()->width() < narrowWindow ? narrowSide : wideSide);
}

void AdvancedView::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    const QRectF line(m_side->width(), 0, 1, height());
    paintHairline(painter, mirrored(*this, line), Theme::line);
}

} // namespace quillfen
