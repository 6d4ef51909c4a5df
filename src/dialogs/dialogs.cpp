// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "dialogs/dialogs.h"

#include "desktop/clipboard.h"
#include "dialogs/alertdialog.h"
#include "dialogs/secretwell.h"
#include "ui/controls/textfield.h"

#include <QCoreApplication>

namespace quillfen {

namespace {

constexpr int wordFieldWidth = 200;
constexpr int nameFieldWidth = 260;
constexpr int wellWidth = 430;

struct Dialogs {
    Q_DECLARE_TR_FUNCTIONS(Dialogs)
};

/// "Cancel" and the verb, which is the default.
void addAnswers(AlertDialog &dialog, const QString &verb, Destructive destructive)
{
    Button *cancel = dialog.addButton(Dialogs::tr("Cancel"), SecondaryButtonStyle{});
    QObject::connect(cancel, &QAbstractButton::clicked, &dialog, &QDialog::reject);
    const ButtonStyle style =
        destructive == Destructive::Yes ? ButtonStyle(DangerDefaultButtonStyle{}) : ButtonStyle(PrimaryButtonStyle{});
    Button *answer = dialog.addDefaultButton(verb, style);
    QObject::connect(answer, &QAbstractButton::clicked, &dialog, &QDialog::accept);
}

} // namespace

bool confirm(QWidget *parent, const QString &title, const QString &text, const QString &verb, Destructive destructive)
{
    AlertDialog dialog(parent, title);
    dialog.addText(text);
    addAnswers(dialog, verb, destructive);
    return dialog.ask();
}

bool typedConfirm(QWidget *parent, const QString &title, const QString &text, const QString &word, const QString &verb)
{
    const QString request = Dialogs::tr("Type %1 to continue.").arg(word);
    AlertDialog dialog(parent, title);
    dialog.addText(text);
    dialog.addText(request); // apart, so that no length of the text hides it
    const TextField *field = dialog.addField(wordFieldWidth, request);
    addAnswers(dialog, verb, Destructive::Yes);
    // Compared at the moment of the choice: what is typed after it comes too late.
    bool matches = false;
    QObject::connect(&dialog, &QDialog::accepted, &dialog, [&] { matches = field->text() == word; });
    return dialog.ask() && matches;
}

void showSecret(QWidget *parent, const QString &what, const QString &secret)
{
    AlertDialog dialog(parent, Dialogs::tr("Your %1").arg(what));
    dialog.insist();
    dialog.addText(Dialogs::tr("Shown once. Without it the data cannot be read, by anyone."));
    dialog.addBody(new SecretWell(what, secret, wellWidth));
    Button *saved = dialog.addButton(Dialogs::tr("I have saved it"), SecondaryButtonStyle{});
    QObject::connect(saved, &QAbstractButton::clicked, &dialog, &QDialog::accept);
    Button *copy = dialog.addDefaultButton(Dialogs::tr("Copy"), PrimaryButtonStyle{});
    QObject::connect(copy, &QAbstractButton::clicked, &dialog, [&secret] { copySecret(secret); });
    [[maybe_unused]] const bool saidSo = dialog.ask(); // the only way out
}

std::optional<QString> askText(QWidget *parent, const QString &title, const QString &text, const QString &initial,
                               const QString &verb, const QString &placeholder)
{
    AlertDialog dialog(parent, title);
    dialog.addText(text);
    const TextField *field = dialog.addField(nameFieldWidth, title, initial, placeholder);
    addAnswers(dialog, verb, Destructive::No);
    if (!dialog.ask()) {
        return std::nullopt;
    }
    return field->text();
}

std::optional<QStringList> askTexts(QWidget *parent, const QString &title, const QString &text,
                                    const QStringList &placeholders, const QString &verb)
{
    AlertDialog dialog(parent, title);
    dialog.addText(text);
    QList<const TextField *> fields;
    for (const QString &placeholder : placeholders) {
        fields.append(dialog.addField(nameFieldWidth, placeholder, {}, placeholder));
    }
    addAnswers(dialog, verb, Destructive::No);
    if (!dialog.ask()) {
        return std::nullopt;
    }
    QStringList texts;
    for (const TextField *const field : fields) {
        texts.append(field->text());
    }
    return texts;
}

} // namespace quillfen
