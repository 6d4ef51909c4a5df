// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "state/operations.h"

#include <algorithm>
#include <utility>

namespace quillfen {

std::uint64_t Operations::begin(std::string method, QString title, std::string progressEvent)
{
    RunningOperation operation{++m_lastId, std::move(method), std::move(title), now(), std::move(progressEvent), {}};
    running.update([&](QList<RunningOperation> &all) { all.append(std::move(operation)); });
    return m_lastId;
}

void Operations::end(std::uint64_t id)
{
    running.update([id](QList<RunningOperation> &all) {
        all.removeIf([id](const RunningOperation &operation) { return operation.id == id; });
    });
}

void Operations::progress(std::string_view event, const QString &message)
{
    const auto isMeant = [event](const RunningOperation &operation) { return operation.progressEvent == event; };
    if (message.isEmpty() || std::ranges::none_of(running(), isMeant)) {
        return;
    }
    running.update([&](QList<RunningOperation> &all) {
        for (RunningOperation &operation : all) {
            if (isMeant(operation)) {
                operation.lastLine = message;
            }
        }
    });
}

const RunningOperation *Operations::find(std::string_view method) const
{
    const QList<RunningOperation> &all = running();
    const auto found = std::ranges::find(all, method, &RunningOperation::method);
    return found == all.end() ? nullptr : &*found;
}

} // namespace quillfen
