// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "agentmethods.h"

#include <QMap>
#include <QWidget>

class QGridLayout;

namespace quillfen {

class AgentLabel;
class InlineError;
class JsonEditor;
class TextField;

/// The picked method: what it is, a field for each of its parameters, and the other parameters as JSON.
class MethodForm final : public QWidget {
    Q_OBJECT

public:
    explicit MethodForm(QWidget *parent = nullptr);

    [[nodiscard]] const AgentMethod &method() const noexcept { return m_method; }
    /// Shows a method with what was typed for it before. The method that is shown already keeps its fields.
    void setMethod(const AgentMethod &method, const MethodInputs &inputs);
    /// What stands in the fields.
    [[nodiscard]] MethodInputs inputs() const;
    /// Where one begins to type.
    [[nodiscard]] QWidget *firstField() const;

Q_SIGNALS:
    void fieldEdited(const QString &parameter, const QString &text);
    void jsonEdited(const QString &text);
    /// Enter in a field, Ctrl+Enter in the editor.
    void submitted();

private:
    void addField(const MethodParameter &parameter, const QString &text);
    void clearFields();

    AgentMethod m_method;
    AgentLabel *m_name;
    AgentLabel *m_request;
    AgentLabel *m_parameters;
    QGridLayout *m_grid;
    QMap<QString, TextField *> m_fields;
    JsonEditor *m_json;
    InlineError *m_problem;
};

} // namespace quillfen
