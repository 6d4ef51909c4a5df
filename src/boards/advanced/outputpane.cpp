// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "outputpane.h"

#include "aside.h"
#include "outputview.h"

#include "ui/controls/buttons.h"
#include "ui/controls/searchfield.h"
#include "ui/layout.h"
#include "ui/parts/well.h"
#include "ui/text/label.h"
#include "ui/theme.h"

#include <QBoxLayout>
#include <QPointer>
#include <QShortcut>

#include <utility>

namespace quillfen {

namespace {

constexpr int compact = 28;
/// What is searched within a millisecond, before the next key.
constexpr std::size_t smallText = 256 * 1'024;

} // namespace

OutputPane::OutputPane(QWidget *parent)
    : QWidget(parent), m_view(new OutputView(tr("Output"))), m_field(new SearchField(tr("Search the output"))),
      m_count(new Label({}, Type::Caption, Theme::text)),
      m_previous(new Button(tr("Previous"), SecondaryButtonStyle{compact})),
      m_next(new Button(tr("Next"), SecondaryButtonStyle{compact})),
      m_copy(new Button(Icon::Copy, tr("Copy all"), SecondaryButtonStyle{compact})), m_tools(new QWidget)
{
    m_field->setFixedHeight(scaled(compact));
    m_field->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    m_field->setMinimumWidth(scaled(96));
    m_tools->setLayout(row({Item{m_field, 1}, m_count, m_previous, m_next, m_copy}));
    auto *const well = new Well;
    well->setLayout(column({Item{m_view, 1}}, 0, {1, 1, 1, 1}));
    setLayout(column({m_tools, Item{well, 1}}, 8));
    m_tools->hide();

    connect(m_field, &QLineEdit::textChanged, this, &OutputPane::typed);
    connect(m_field, &QLineEdit::returnPressed, this, [this] { go(SearchDirection::Forward); });
    connect(m_next, &QAbstractButton::clicked, this, [this] { go(SearchDirection::Forward); });
    connect(m_previous, &QAbstractButton::clicked, this, [this] { go(SearchDirection::Backward); });
    connect(m_copy, &QAbstractButton::clicked, m_view, &OutputView::copyAll);
    const auto onKeys = [this](const QKeySequence &keys, SearchDirection direction) {
        auto *const shortcut = new QShortcut(keys, this);
        shortcut->setContext(Qt::WidgetWithChildrenShortcut);
        connect(shortcut, &QShortcut::activated, this, [this, direction] { go(direction); });
    };
    onKeys(QKeySequence(Qt::Key_F3), SearchDirection::Forward);
    onKeys(QKeySequence(Qt::SHIFT | Qt::Key_F3), SearchDirection::Backward);
    onKeys(QKeySequence(Qt::SHIFT | Qt::Key_Return), SearchDirection::Backward);
}

void OutputPane::setText(const std::shared_ptr<const OutputText> &text)
{
    if (text == m_view->text()) {
        return;
    }
    m_view->setText(text);
    m_tools->setVisible(!text->bytes().empty());
    if (!m_field->text().isEmpty()) {
        typed();
    }
}

void OutputPane::focusSearch()
{
    if (m_tools->isHidden()) {
        m_view->setFocus(Qt::ShortcutFocusReason);
        return;
    }
    m_field->setFocus(Qt::ShortcutFocusReason);
    m_field->selectAll();
}

void OutputPane::typed()
{
    ask({m_field->text().toUtf8(), m_view->selectionBegin(), SearchDirection::Forward});
}

void OutputPane::go(SearchDirection direction)
{
    const bool forward = direction == SearchDirection::Forward;
    ask({m_field->text().toUtf8(), forward ? m_view->selectionEnd() : m_view->selectionBegin(), direction});
}

void OutputPane::ask(Search search)
{
    m_wanted = std::move(search);
    if (!m_searching) {
        begin();
    }
}

void OutputPane::begin()
{
    const Search search = *std::exchange(m_wanted, std::nullopt);
    const std::shared_ptr<const OutputText> text = m_view->text();
    const auto look = [text, search] {
        const std::string_view words(search.words.constData(), static_cast<std::size_t>(search.words.size()));
        return findIn(text->bytes(), words, search.from, search.direction);
    };
    if (text->bytes().size() <= smallText) {
        found(text, search, look());
        return;
    }
    m_searching = true;
    aside(look, [pane = QPointer(this), text, search](const OutputMatch &match) {
        if (pane) {
            pane->m_searching = false;
            pane->found(text, search, match);
        }
    });
}

void OutputPane::found(const std::shared_ptr<const OutputText> &text, const Search &search, const OutputMatch &match)
{
    if (m_wanted) {
        begin(); // the words have changed meanwhile
        return;
    }
    if (text != m_view->text()) {
        return;
    }
    if (match.count > 0) {
        m_view->select(match.begin, match.end);
        m_count->setText(tr("%1 of %2").arg(match.number).arg(match.count));
    } else {
        m_count->setText(search.words.isEmpty() ? QString() : tr("Not found"));
    }
}

} // namespace quillfen
