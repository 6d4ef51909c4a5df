// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "methodpane.h"

#include "methodform.h"
#include "outputpane.h"
#include "runwords.h"

#include "dialogs/dialogs.h"
#include "state/start.h"
#include "ui/accessible.h"
#include "ui/controls/buttons.h"
#include "ui/layout.h"
#include "ui/parts/scrollarea.h"
#include "ui/text/label.h"
#include "ui/theme.h"

#include <QApplication>
#include <QBoxLayout>
#include <QEvent>
#include <QPointer>

#include <algorithm>
#include <utility>

namespace quillfen {

namespace {

constexpr int top = 40;
constexpr int bottom = 24;
constexpr int gap = 12;
constexpr int barRoom = 12; ///< for the form's scroll bar, out of the margin
constexpr int runWidth = 88;
constexpr int leastOutput = 190;

} // namespace

MethodPane::MethodPane(std::shared_ptr<AdvancedModel> model, QWidget *parent)
    : QWidget(parent), m_model(std::move(model)), m_form(new MethodForm), m_scroll(new ScrollArea),
      m_run(new Button(tr("Run"), PrimaryButtonStyle{})), m_status(new AgentLabel({}, Type::Caption, Theme::text)),
      m_output(new OutputPane)
{
    build();
    connect(m_form, &MethodForm::fieldEdited, this, [this](const QString &parameter, const QString &text) {
        m_model->typeField(m_form->method().name, parameter, text);
    });
    connect(m_form, &MethodForm::jsonEdited, this,
            [this](const QString &text) { m_model->typeJson(m_form->method().name, text); });
    connect(m_form, &MethodForm::submitted, this, &MethodPane::run);
    connect(m_run, &QAbstractButton::clicked, this, &MethodPane::run);
}

void MethodPane::build()
{
    m_form->setContentsMargins(isRightToLeft() ? QMargins(barRoom, 0, 0, 0) : QMargins(0, 0, barRoom, 0));
    m_scroll->setWidget(m_form);
    m_form->setAutoFillBackground(false); // the scroll area turned it on
    m_form->installEventFilter(this);
    m_run->setMinimumWidth(scaled(runWidth));
    setRole(m_status, QAccessible::AlertMessage);
    auto *const below = column({Space{gap}, row({m_run, Item{m_status, 1}}, gap), Space{gap}, Item{m_output, 1}}, 0,
                               {0, 0, barRoom, 0});
    auto *const all = column({m_scroll}, 0, {24, top, 16, bottom});
    all->addLayout(below, 1);
    setLayout(all);
}

// The form is as high as it wants to be, as long as enough is left for the output; beyond that it scrolls.
void MethodPane::fit()
{
    const int width = m_scroll->viewport()->width();
    const int wanted = m_form->hasHeightForWidth() ? m_form->heightForWidth(width) : m_form->sizeHint().height();
    const int room = height() - top - bottom - 2 * gap - m_run->sizeHint().height() - leastOutput;
    m_scroll->setFixedHeight(std::clamp(wanted, 0, std::max(room, leastOutput)));
}

void MethodPane::resizeEvent(QResizeEvent *event)
{
    QWidget::resizeEvent(event);
    fit();
}

bool MethodPane::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::LayoutRequest) {
        fit();
    }
    return QWidget::eventFilter(watched, event);
}

void MethodPane::render(const AgentMethod &method)
{
    const ConsoleSession &session = m_model->session();
    m_form->setMethod(method, m_model->inputs(method.name));
    m_run->setRunning(session.running().contains(method.name));
    const QString status = statusLine(session);
    if (status != m_status->text()) {
        m_status->setText(status);
        announce(m_status, status);
    }
    m_output->setText(session.outcome().text);
}

void MethodPane::focusSearch()
{
    m_output->focusSearch();
}

void MethodPane::focusFirstField()
{
    m_form->firstField()->setFocus(Qt::TabFocusReason);
}

bool MethodPane::hasOutputFocus() const
{
    return m_output->isAncestorOf(QApplication::focusWidget());
}

void MethodPane::run()
{
    const AgentMethod method = m_form->method();
    if (m_model->session().running().contains(method.name)) {
        return;
    }
    const json::object request = requestOf(method, m_form->inputs());
    // The board may go while the question is open, and takes the answer "no" along.
    const std::shared_ptr<AdvancedModel> model = m_model;
    const bool wanted =
        !isDestructive(method) ||
        confirm(this, tr("Run %1?").arg(method.name),
                tr("This operation removes or destroys something. The API's own safeguards still apply."), tr("Run"),
                Destructive::Yes);
    if (wanted) {
        start(model->run(method.name, request));
    }
}

} // namespace quillfen
