// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "shell/activity/activitydetail.h"

#include "boards/advanced/outputtext.h"
#include "boards/advanced/outputview.h"
#include "shell/activity/wordsview.h"
#include "ui/controls/buttons.h"
#include "ui/layout.h"
#include "ui/parts/statemark.h"
#include "ui/parts/well.h"
#include "ui/text/label.h"
#include "ui/theme.h"

#include <QBoxLayout>

#include <algorithm>

namespace quillfen {

namespace {

constexpr QMargins margins{28, 12, 28, 12};
constexpr int compact = 28;
constexpr std::size_t mostFacts = 4;
constexpr qsizetype longWords = 4'096; ///< beyond it only what is seen is laid out
constexpr int momentShare = 3;         ///< a moment is so much wider than a number
constexpr int lowestWell = 60;
constexpr int wellPadding = 22;
constexpr int mostLines = 5;           ///< of a request; more of it scrolls
constexpr qsizetype lengthOfLine = 80; ///< or so

} // namespace

ActivityDetail::ActivityDetail(QWidget *parent)
    : QWidget(parent), m_outcome(new StateText({}, Theme::muted)),
      m_method(new AgentLabel({}, Type::Mono, Theme::text)), m_words(new WordsView(tr("What was said"))),
      m_longWords(new OutputView(tr("What was said"))), m_line(new OutputView(tr("The request as it was sent"))),
      m_well(new Well)
{
    auto *const copy = new Button(Icon::Copy, tr("Copy"), SecondaryButtonStyle{compact});
    connect(copy, &QAbstractButton::clicked, this, &ActivityDetail::copyRequested);

    QBoxLayout *const cells = row({}, 12);
    for (std::size_t place = 0; place < mostFacts; ++place) {
        m_cells.push_back(createCell());
        cells->addWidget(m_cells.back().whole, place < 2 ? momentShare : 1);
    }
    m_line->setMinimumHeight(lowestWell);
    m_longWords->setMinimumHeight(lowestWell);
    m_longWords->setMaximumHeight(mostLines * lineHeight(Type::Mono) + wellPadding);
    m_well->setLayout(column({Item{m_line, 1}}, 0, {1, 1, 1, 1}));
    setLayout(column({row({m_outcome, Item{m_method, 1}, copy}, 12), Space{6}, cells, Space{4}, m_words, m_longWords,
                      Space{6}, Item{m_well, 1}},
                     0, margins));
}

ActivityDetail::Cell ActivityDetail::createCell()
{
    const Cell cell{new QWidget, new Label({}, Type::Caption, Theme::text),
                    new AgentLabel({}, Type::Body, Theme::heading)};
    cell.whole->setLayout(column({cell.caption, cell.value}));
    return cell;
}

void ActivityDetail::setFacts(const ActivityFacts &facts)
{
    m_outcome->setState(facts.outcome, facts.mark);
    m_method->setText(facts.method);
    for (std::size_t place = 0; place < m_cells.size(); ++place) {
        const Cell &cell = m_cells[place];
        const bool used = place < facts.facts.size();
        cell.whole->setVisible(used);
        if (used) {
            cell.caption->setText(facts.facts[place].caption);
            cell.value->setText(facts.facts[place].value);
        }
    }
    const bool isLong = facts.words.size() > longWords;
    m_words->setVisible(!facts.words.isEmpty() && !isLong);
    m_words->setWords(isLong ? QString() : facts.words);
    m_longWords->setVisible(isLong);
    if (isLong && facts.words != m_shownWords) {
        m_shownWords = facts.words;
        m_longWords->setText(std::make_shared<const OutputText>(OutputText::ofWords(facts.words)));
    }
    m_well->setVisible(!facts.line.isEmpty());
    if (facts.line != m_shownLine) { // a selection in it stays while the time is counted
        m_shownLine = facts.line;
        const auto lines = static_cast<int>(std::min(facts.line.size() / lengthOfLine + 1, qsizetype{mostLines}));
        m_well->setMaximumHeight(std::max(lowestWell + 2, lines * lineHeight(Type::Mono) + wellPadding));
        m_line->setText(std::make_shared<const OutputText>(OutputText::ofWords(facts.line)));
    }
}

} // namespace quillfen
