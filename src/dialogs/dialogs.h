// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>
#include <QStringList>

#include <optional>

class QWidget;

/// Questions that stop their caller until the user has answered, while the rest of the program goes on beneath them:
/// read the state afresh afterwards. Main thread only. Each stands over the window of `parent` (the active window
/// without one) as a window of its own. Texts may hold pieces from the agent: they are plain text and never widen the
/// dialog.
namespace quillfen {

/// Whether a question's verb destroys something, and is shown so.
enum class Destructive { No, Yes };

/// True when the user chose `verb`; false for "Cancel", Esc, a closed window, or a parent destroyed meanwhile.
[[nodiscard]] bool confirm(QWidget *parent, const QString &title, const QString &text, const QString &verb,
                           Destructive destructive);

/// True when the user chose `verb` and had typed `word`, exactly. There is no second try.
[[nodiscard]] bool typedConfirm(QWidget *parent, const QString &title, const QString &text, const QString &word,
                                const QString &verb);

/// Shows a secret that is shown only once. "I have saved it" is the only way out: neither Esc nor the window manager
/// nor the end of `parent` closes it, since the secret would be lost.
void showSecret(QWidget *parent, const QString &what, const QString &secret);

/// The text of the field when the user chose `verb`, as it was typed; nothing for any other outcome.
[[nodiscard]] std::optional<QString> askText(QWidget *parent, const QString &title, const QString &text,
                                             const QString &initial, const QString &verb,
                                             const QString &placeholder = {});

/// The texts of several fields, one below the other, each with the placeholder that names it; as they were typed, when
/// the user chose `verb`, and nothing for any other outcome.
[[nodiscard]] std::optional<QStringList> askTexts(QWidget *parent, const QString &title, const QString &text,
                                                  const QStringList &placeholders, const QString &verb);

} // namespace quillfen
