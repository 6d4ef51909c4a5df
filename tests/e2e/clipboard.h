// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <vector>

namespace quillfen::e2e {

/// What is on the desktop's clipboard, asked for as another program does that pastes; empty when there is no text.
[[nodiscard]] std::string clipboardText();

/// The forms in which the clipboard's owner offers its contents: "UTF8_STRING", "x-kde-passwordManagerHint".
[[nodiscard]] std::vector<std::string> clipboardTypes();

/// The contents in one of these forms, as bytes.
[[nodiscard]] std::string clipboardData(const std::string &type);

} // namespace quillfen::e2e
