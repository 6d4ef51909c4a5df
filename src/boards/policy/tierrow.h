// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QWidget>

#include <cstddef>
#include <cstdint>

namespace quillfen {

class AgentLabel;
class Bar;
class Picker;

/// One tier of a policy: its label, a picker of how long it is kept, and how far that reaches, drawn and in words.
class TierRow final : public QWidget {
    Q_OBJECT

public:
    explicit TierRow(std::size_t tier, QWidget *parent = nullptr);

    void setNumber(std::int64_t number);

Q_SIGNALS:
    /// The user has chosen how long this tier is kept.
    void chosen(qint64 number);

private:
    void select(std::int64_t number);

    std::size_t m_tier;
    Picker *m_picker;
    Bar *m_band;
    AgentLabel *m_span;
};

} // namespace quillfen
