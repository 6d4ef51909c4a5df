// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "agentmethods.h"

#include <QAbstractListModel>
#include <QListView>

#include <vector>

namespace quillfen {

/// The methods whose names match the filter.
class MethodsListModel final : public QAbstractListModel {
    Q_OBJECT

public:
    using QAbstractListModel::QAbstractListModel;

    [[nodiscard]] int rowCount(const QModelIndex &parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;

    /// `row` must be there.
    [[nodiscard]] const AgentMethod &method(int row) const;
    [[nodiscard]] int rowOf(const QString &name) const;

    void setMethods(std::vector<AgentMethod> methods);
    void setFilter(const QString &filter);

private:
    void apply();

    std::vector<AgentMethod> m_methods;
    std::vector<QString> m_keys; ///< of the names, as a search compares them
    std::vector<std::size_t> m_shown;
    QString m_filter;
};

/// The list of methods: one is picked by a click, by the arrows or by Home and End. Paints what is visible.
class MethodsList final : public QListView {
    Q_OBJECT

public:
    explicit MethodsList(QWidget *parent = nullptr);

    [[nodiscard]] MethodsListModel &methods() noexcept { return *m_methods; }
    /// Shows which method is picked, where the list has it.
    void mark(const QString &name);
    /// Picks the first of the list, if there is one.
    void pickFirst();

Q_SIGNALS:
    /// By the user's hand.
    void picked(const QString &name);

protected:
    void currentChanged(const QModelIndex &current, const QModelIndex &previous) override;
    void keyboardSearch(const QString &search) override;

private:
    MethodsListModel *m_methods;
    bool m_marking = false;
};

} // namespace quillfen
