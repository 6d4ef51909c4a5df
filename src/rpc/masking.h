// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>
#include <QStringList>

#include <string>
#include <string_view>

namespace quillfen {

/// A request as it may be kept and shown: what opens doors is masked.
struct MaskedLine {
    std::string line; ///< the request without its line feed; beyond 64 KiB its parameters are left out, and it says so
    QStringList secrets; ///< what was masked, to be kept out of what is said about the call; the longest first
    bool isWhole = true; ///< else the parameters are left out, and nobody knows what in them is secret
};

/// Masks every text and number that stands under the name of a secret ("code", "token", "secret", "password",
/// "passphrase", "key", also at the end of a longer name, as in "chap_secret"), at any depth; the rest stays byte by
/// byte as it was sent.
[[nodiscard]] MaskedLine masked(std::string_view requestLine);

/// The text without those of the secrets that are long enough to be told from ordinary words.
[[nodiscard]] QString without(const QStringList &secrets, QString text);

} // namespace quillfen
