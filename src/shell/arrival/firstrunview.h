// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "shell/arrival/firstrunmodel.h"
#include "ui/lists/rowlist.h"

#include <QWidget>

#include <memory>

namespace quillfen {

class Button;
class CheckRow;
class InlineError;
class TextField;
class Toggle;

/// The screen of a computer that is not signed in: the form that signs it in, and what the engine needs of it.
class FirstRunView final : public QWidget {
    Q_OBJECT

public:
    FirstRunView(std::shared_ptr<AppState> state, std::shared_ptr<FirstRunModel> model, QWidget *parent = nullptr);
    ~FirstRunView() override;

protected:
    void showEvent(QShowEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;

private:
    [[nodiscard]] QWidget *form();
    [[nodiscard]] QWidget *checksCard();
    [[nodiscard]] SignInForm edited() const;
    void submit();
    void render();
    void takeCode();

    std::shared_ptr<AppState> m_state;
    std::shared_ptr<FirstRunModel> m_model;
    TextField *m_code = nullptr;
    Toggle *m_selfHosted = nullptr;
    TextField *m_api = nullptr;
    Button *m_signIn = nullptr;
    InlineError *m_error = nullptr;
    QBoxLayout *m_rowsLayout = nullptr;
    std::unique_ptr<RowList<std::pair<QString, int>, CheckRow>> m_rows;
    QString m_takenCode; ///< the model's code as the field last took it over
    bool m_hasAppeared = false;
    Observer m_observer;
};

} // namespace quillfen
