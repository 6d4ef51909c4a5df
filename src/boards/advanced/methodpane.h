// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "advancedmodel.h"

#include <QWidget>

#include <memory>

namespace quillfen {

class AgentLabel;
class Button;
class MethodForm;
class OutputPane;
class ScrollArea;

/// The right half of the board: the picked method, the button that runs it, and what the last run came to.
class MethodPane final : public QWidget {
    Q_OBJECT

public:
    explicit MethodPane(std::shared_ptr<AdvancedModel> model, QWidget *parent = nullptr);

    /// Brings it up to date with the model. `method` is the picked one.
    void render(const AgentMethod &method);
    void focusSearch();
    void focusFirstField();
    [[nodiscard]] bool hasOutputFocus() const;

protected:
    void resizeEvent(QResizeEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void build();
    void fit();
    void run();

    std::shared_ptr<AdvancedModel> m_model;
    MethodForm *m_form;
    ScrollArea *m_scroll;
    Button *m_run;
    AgentLabel *m_status;
    OutputPane *m_output;
};

} // namespace quillfen
