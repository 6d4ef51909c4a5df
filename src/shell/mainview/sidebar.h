// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "shell/window/section.h"
#include "state/published.h"

#include <QWidget>

#include <memory>
#include <vector>

namespace quillfen {

class AppState;
class SidebarEntry;

/// The sections that `state` offers, in the order of the sidebar: all but Operator, which is for operators only.
[[nodiscard]] std::vector<Section> offeredSections(const AppState &state);

/// The dark column at the left: brand, sections, and what the program knows about plan, account and engine.
class Sidebar final : public QWidget {
    Q_OBJECT

public:
    explicit Sidebar(std::shared_ptr<AppState> state, QWidget *parent = nullptr);

    /// Marks `section` as the one that is shown; nothing is marked while its entry is hidden.
    void setSection(Section section);

Q_SIGNALS:
    void sectionChosen(quillfen::Section section);
    void aboutRequested();
    void shortcutsRequested();
    void activityRequested();

protected:
    void paintEvent(QPaintEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void render();
    [[nodiscard]] bool step(int key);
    [[nodiscard]] QWidget *createEntries();
    [[nodiscard]] SidebarEntry *entryOf(Section section) const;

    std::shared_ptr<AppState> m_state;
    QWidget *m_top; ///< the brand, below what the window's controls need
    std::vector<SidebarEntry *> m_entries;
    Section m_section = Section::Volumes;
    Observer m_observer;
};

} // namespace quillfen
