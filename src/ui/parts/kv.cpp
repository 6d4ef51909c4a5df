// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "ui/parts/kv.h"

#include "ui/layout.h"
#include "ui/text/label.h"
#include "ui/theme.h"

#include <QBoxLayout>

namespace quillfen {

namespace {

constexpr int keyWidth = 104;

} // namespace

KV::KV(const QString &k, const QString &v, bool dark, QWidget *parent)
    : QWidget(parent), m_value(new AgentLabel(v, Type::Body, dark ? Theme::dBright : Theme::heading))
{
    auto *key = new AgentLabel(k, Type::Body, dark ? Theme::dText : Theme::text);
    key->setFixedWidth(scaled(keyWidth));
    setLayout(row({key, Item{m_value, 1}}, 16, {0, 4, 0, 4}));
    setMinimumHeight(scaled(28));
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
}

void KV::setValue(const QString &v)
{
    m_value->setText(v);
}

void KV::setValueType(Type type, Qt::TextElideMode elide)
{
    m_value->setType(type);
    m_value->setElideMode(elide);
}

} // namespace quillfen
