// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "methodform.h"

#include "jsoneditor.h"

#include "ui/accessible.h"
#include "ui/controls/textfield.h"
#include "ui/layout.h"
#include "ui/parts/inlineerror.h"
#include "ui/text/agenttext.h"
#include "ui/text/label.h"
#include "ui/text/tooltip.h"
#include "ui/theme.h"

#include <QBoxLayout>
#include <QGridLayout>
#include <QSignalBlocker>

namespace quillfen {

namespace {

constexpr int captionWidth = 96;
constexpr int longestField = 1'000'000; // a field's own limit would cut a pasted key in silence

} // namespace

MethodForm::MethodForm(QWidget *parent)
    : QWidget(parent), m_name(new AgentLabel({}, Type::Operation, Theme::heading)),
      m_request(new AgentLabel({}, Type::Mono, Theme::text)),
      m_parameters(new AgentLabel({}, Type::Caption, Theme::text)), m_grid(new QGridLayout), m_problem(new InlineError)
{
    const QString jsonCaption = tr("Other parameters as JSON (query for GET/DELETE, body for POST):");
    m_json = new JsonEditor(jsonCaption);
    auto *const caption = new Label(jsonCaption, Type::Body, Theme::heading);
    caption->setWrap(760);
    setRole(m_name, QAccessible::Heading);
    m_grid->setContentsMargins(0, 0, 0, 0);
    m_grid->setHorizontalSpacing(12);
    m_grid->setVerticalSpacing(8);
    m_grid->setColumnMinimumWidth(0, scaled(captionWidth));
    m_grid->setColumnStretch(1, 1);
    setLayout(column({m_name, Space{2}, m_request, Space{6}, m_parameters, Space{16}, m_grid, Space{16}, caption,
                      Space{6}, m_json, Space{6}, m_problem}));

    connect(m_json, &JsonEditor::edited, this, [this] { Q_EMIT jsonEdited(m_json->text()); });
    connect(m_json, &JsonEditor::submitted, this, &MethodForm::submitted);
    connect(m_json, &JsonEditor::problemChanged, this,
            [this] { m_problem->setText(m_json->problem() ? m_json->problem()->message : QString()); });
}

void MethodForm::setMethod(const AgentMethod &method, const MethodInputs &inputs)
{
    if (method == m_method && !m_name->text().isEmpty()) {
        return;
    }
    m_method = method;
    m_name->setText(method.name.isEmpty() ? QStringLiteral("—") : method.name);
    m_request->setText(requestLine(method));
    m_parameters->setText(parametersLine(method));
    m_parameters->setVisible(!method.parameters.empty());
    clearFields();
    for (const MethodParameter &parameter : method.parameters) {
        addField(parameter, inputs.fields.value(parameter.name));
    }
    const QSignalBlocker quiet(this); // what is put in is no edit; its problem is told all the same
    m_json->setText(inputs.json);
}

void MethodForm::addField(const MethodParameter &parameter, const QString &text)
{
    auto *const caption = new AgentLabel(parameter.name, Type::Mono, Theme::heading);
    caption->setFixedWidth(scaled(captionWidth));
    auto *const field = new TextField(lineOfAgentText(parameter.name), lineOfAgentText(parameter.kind));
    field->setFont(quillfen::font(Type::Mono));
    field->setMaxLength(longestField);
    field->setText(text);
    if (!parameter.summary.isEmpty()) {
        field->setToolTip(plainToolTip(parameter.summary));
        field->setAccessibleDescription(lineOfAgentText(parameter.summary));
    }
    const auto row = static_cast<int>(m_fields.size());
    m_grid->addWidget(caption, row, 0);
    m_grid->addWidget(field, row, 1);
    // A new widget would come last of all: Tab reaches it before the editor, after the fields before it.
    QWidget *before = m_json->previousInFocusChain();
    while (before != m_json && (before->focusPolicy() & Qt::TabFocus) == 0) {
        before = before->previousInFocusChain();
    }
    setTabOrder(before, field);
    m_fields.insert(parameter.name, field);
    const QString name = parameter.name;
    connect(field, &QLineEdit::textChanged, this,
            [this, name](const QString &typed) { Q_EMIT fieldEdited(name, typed); });
    connect(field, &QLineEdit::returnPressed, this, &MethodForm::submitted);
}

void MethodForm::clearFields()
{
    while (QLayoutItem *const item = m_grid->takeAt(0)) {
        item->widget()->hide();
        item->widget()->deleteLater();
        delete item;
    }
    m_fields.clear();
}

MethodInputs MethodForm::inputs() const
{
    MethodInputs inputs;
    for (const auto &[name, field] : m_fields.asKeyValueRange()) {
        if (!field->text().isEmpty()) {
            inputs.fields.insert(name, field->text());
        }
    }
    inputs.json = m_json->text();
    return inputs;
}

QWidget *MethodForm::firstField() const
{
    if (m_method.parameters.empty()) {
        return m_json;
    }
    return m_fields.value(m_method.parameters.front().name);
}

} // namespace quillfen
