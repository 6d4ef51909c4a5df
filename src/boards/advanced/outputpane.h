// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "outputsearch.h"
#include "outputtext.h"

#include <QByteArray>
#include <QWidget>

#include <memory>
#include <optional>

namespace quillfen {

class Button;
class Label;
class OutputView;
class SearchField;

/// An answer with what can be done with it: searched and copied. Large ones are searched beside the window.
class OutputPane final : public QWidget {
    Q_OBJECT

public:
    explicit OutputPane(QWidget *parent = nullptr);

    void setText(const std::shared_ptr<const OutputText> &text);
    void focusSearch();

private:
    struct Search {
        QByteArray words;
        std::size_t from = 0;
        SearchDirection direction = SearchDirection::Forward;
    };

    void typed();
    void go(SearchDirection direction);
    void ask(Search search);
    void begin();
    void found(const std::shared_ptr<const OutputText> &text, const Search &search, const OutputMatch &match);

    OutputView *m_view;
    SearchField *m_field;
    Label *m_count;
    Button *m_previous;
    Button *m_next;
    Button *m_copy;
    QWidget *m_tools;
    std::optional<Search> m_wanted; ///< waits until the search that runs is through
    bool m_searching = false;
};

} // namespace quillfen
