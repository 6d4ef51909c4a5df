// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "shell/arrival/firstrunview.h"

#include "shell/mainview/checkrow.h"
#include "state/start.h"
#include "ui/controls/buttons.h"
#include "ui/controls/textfield.h"
#include "ui/controls/toggle.h"
#include "ui/layout.h"
#include "ui/parts/brand.h"
#include "ui/parts/card.h"
#include "ui/parts/inlineerror.h"
#include "ui/parts/scrollarea.h"
#include "ui/parts/sectiontitle.h"
#include "ui/text/label.h"
#include "ui/theme.h"

#include <QBoxLayout>
#include <QKeyEvent>
#include <QMap>

#include <utility>

namespace quillfen {

namespace {

constexpr int columnWidth = 480;
constexpr int fieldHeight = 36;
constexpr int signInWidth = 160;

} // namespace

FirstRunView::FirstRunView(std::shared_ptr<AppState> state, std::shared_ptr<FirstRunModel> model, QWidget *parent)
    : QWidget(parent), m_state(std::move(state)), m_model(std::move(model)),
      m_observer(
          {&m_state->busy, &m_model->code, &m_model->error, &m_model->checks}, [this] { render(); },
          m_state->timing().frame)
{
    auto *const page = new QWidget;
    page->setFixedWidth(scaled(columnWidth));
    page->setLayout(column({form(), Space{24}, checksCard(), Space{36}, Stretch{}}));
    auto *const centred = new QWidget;
    // Stretches and not an alignment: an aligned page would be as high as its lines are in the whole window's width.
    centred->setLayout(row({Stretch{}, page, Stretch{}}, 0, QMargins{0, 36, 0, 0}));
    auto *const scroll = new ScrollArea;
    scroll->setWidget(centred);
    scroll->standOffWindowEdge();
    setLayout(column({scroll}));
    setFocusProxy(m_code);

    connect(m_selfHosted, &QAbstractButton::toggled, this, &FirstRunView::render);
    connect(m_signIn, &QAbstractButton::clicked, this, &FirstRunView::submit);
    render();
}

FirstRunView::~FirstRunView() = default;

QWidget *FirstRunView::form()
{
    auto *const line = new Label(tr("Sign this Mac in with the enrolment code from your Download page. The code works "
                                    "once and expires after a day."),
                                 Type::Body, Theme::text);
    line->setWrap(columnWidth);
    m_code = new TextField(tr("Enrolment code or link"), tr("Enrolment code or link"), fieldHeight);
    m_selfHosted = new Toggle(tr("Self-hosted manager"));
    m_api = new TextField(tr("Control plane URL"), tr("Control plane URL"), fieldHeight);
    m_signIn = new Button(tr("Sign in"), PrimaryButtonStyle{fieldHeight});
    m_signIn->setFixedWidth(scaled(signInWidth));
    m_signIn->setDefault(true);
    m_error = new InlineError;

    auto *const block = new QWidget;
    block->setLayout(column({Item{new BrandMark(48), 0, Qt::AlignLeft}, Space{20},
                             new Label(tr("Welcome to Quillfen"), Type::Title, Theme::heading), Space{6}, line,
                             Space{20}, m_code, Space{8}, m_selfHosted, Space{8}, m_api, Space{16},
                             Item{m_signIn, 0, Qt::AlignLeft}, Space{12}, m_error}));
    return block;
}

QWidget *FirstRunView::checksCard()
{
    auto *const card = new Card;
    card->band()->addWidget(new SectionTitle(tr("This Mac")));
    auto *const line = new QWidget;
    line->setLayout(column({new Label(tr("What the engine needs. A line that is not right shows what fixes it."),
                                      Type::Body, Theme::text)},
                           0, QMargins{16, 12, 16, 12}));
    auto *const list = new QWidget;
    m_rowsLayout = column({});
    list->setLayout(m_rowsLayout);
    m_rows = std::make_unique<RowList<std::pair<QString, int>, CheckRow>>(m_rowsLayout);
    auto *const body = new QWidget;
    body->setLayout(column({line, list}));
    card->addRow(body);
    return card;
}

void FirstRunView::showEvent(QShowEvent *)
{
    if (!std::exchange(m_hasAppeared, true)) {
        start(m_model->appear());
    }
}

void FirstRunView::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
        submit();
    } else {
        QWidget::keyPressEvent(event);
    }
}

SignInForm FirstRunView::edited() const
{
    SignInForm form;
    form.code = m_code->text();
    form.selfHosted = m_selfHosted->isChecked();
    form.api = m_api->text();
    return form;
}

void FirstRunView::submit()
{
    start(m_model->signIn(edited()));
}

void FirstRunView::render()
{
    takeCode();
    const bool busy = m_state->busy();
    m_api->setVisible(m_selfHosted->isChecked());
    m_signIn->setText(busy ? tr("Signing in…") : tr("Sign in"));
    m_signIn->setRunning(busy);
    m_error->setText(m_model->error());
    m_code->setInvalid(!m_model->error().isEmpty());

    // Two checks of one name are two rows: each is known by its name and by how often that came before.
    QMap<QString, int> seen;
    m_rows->sync(
        m_model->checks(),
        [&seen](const Record &check) { return std::pair(str(check, "name"), seen[str(check, "name")]++); },
        [](const Record &) { return new CheckRow; },
        [](CheckRow *row, const Record &check) {
            row->setCheck(str(check, "name"), isTrue(check, "ok"), str(check, "info"), str(check, "fix"));
        });
}

/// A code that was handed over stands in the field, unless the user has begun to type another.
void FirstRunView::takeCode()
{
    const QString code = m_model->code();
    if (code != m_takenCode && m_code->text() == m_takenCode) {
        m_code->setText(code);
    }
    m_takenCode = code;
}

} // namespace quillfen
