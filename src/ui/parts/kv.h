// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "ui/text/type.h"

#include <QWidget>

namespace quillfen {

class AgentLabel;

/// One line of a key and its value. The value may come from the agent: it elides, the key never does.
class KV final : public QWidget {
    Q_OBJECT

public:
    KV(const QString &k, const QString &v, bool dark = false, QWidget *parent = nullptr);

    void setValue(const QString &v);
    /// `Type::Mono` and an elision in the middle suit paths and addresses.
    void setValueType(Type type, Qt::TextElideMode elide = Qt::ElideRight);

private:
    AgentLabel *m_value;
};

} // namespace quillfen
