// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>

#include <optional>

/// What each system does its own way; one source file a system, chosen by the build.
namespace quillfen::platform {

/// Shows a folder's contents in the file viewer.
void showFolder(const QString &path);

/// Selects a file in the file viewer.
void revealFile(const QString &path);

/// The address of the network interface `name` (IPv4, dotted), or nothing when it has none.
[[nodiscard]] std::optional<QString> interfaceAddress(const QString &name);

/// The names of the interfaces by which the local network is reached, the likeliest first.
[[nodiscard]] QStringList lanInterfaces();

} // namespace quillfen::platform
