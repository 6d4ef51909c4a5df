// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <deque>
#include <string>

namespace quillfen::localagent {

/// What one client still has to receive.
class OutQueue final {
public:
    enum class Flushed { All, Some, Failed };

    [[nodiscard]] bool empty() const { return m_lines.empty(); }
    [[nodiscard]] std::size_t bytes() const { return m_bytes; }

    void push(std::string line);

    /// Writes as much as the non-blocking `descriptor` takes.
    [[nodiscard]] Flushed flush(int descriptor);

private:
    std::deque<std::string> m_lines;
    std::size_t m_sent = 0; ///< of the first line
    std::size_t m_bytes = 0;
};

} // namespace quillfen::localagent
