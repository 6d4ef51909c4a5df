// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "ui/text/label.h"

namespace quillfen {

/// The heading of a section or card, on a light or dark surface.
class SectionTitle final : public QWidget {
    Q_OBJECT

public:
    explicit SectionTitle(const QString &text, bool dark = false, QWidget *parent = nullptr);

    [[nodiscard]] const QString &text() const noexcept { return m_label->text(); }
    void setText(const QString &text);

private:
    AgentLabel *m_label;
};

} // namespace quillfen
