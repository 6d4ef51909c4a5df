// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QCoroTask>

namespace quillfen {

/// Lets `task` run on by itself. What escapes from it is written to the log instead of vanishing. Main thread only.
void start(QCoro::Task<> task);

} // namespace quillfen
