// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "shell/window/section.h"

#include <QAbstractButton>

namespace quillfen {

class HoverFade;

/// One section in the sidebar: picture, title, and a mark while it is the selected one. A page tab to assistive
/// technology. Its check is its selection; it takes focus by keyboard only.
class SidebarEntry final : public QAbstractButton {
    Q_OBJECT

public:
    explicit SidebarEntry(Section section, QWidget *parent = nullptr);

    [[nodiscard]] Section section() const noexcept { return m_section; }
    [[nodiscard]] QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    Section m_section;
    QString m_title;
    HoverFade *m_hover;
};

} // namespace quillfen
