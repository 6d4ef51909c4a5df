// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "shell/process/launch.h"

#include <QCoreApplication>

using namespace Qt::StringLiterals;

namespace quillfen {

namespace {

QString tr(const char *text)
{
    return QCoreApplication::translate("Launch", text);
}

} // namespace

LaunchOptions launchOptionsFrom(const QStringList &arguments)
{
    LaunchOptions options;
    for (qsizetype i = 1; i < arguments.size() && !options.problem; ++i) {
        const QString &argument = arguments[i];
        if (argument == "--help"_L1 || argument == "-h"_L1) {
            options.help = true;
        } else if (argument == "--version"_L1) {
            options.version = true;
        } else if (argument == "--enroll"_L1) {
            ++i;
        } else if (argument == "--tour"_L1 && i + 1 < arguments.size()) {
            options.tourFolder = arguments[++i];
        } else if (argument == "--tour"_L1) {
            options.problem = tr("--tour needs the folder for its pictures.");
        } else if (argument == "--new-volume"_L1) {
            options.newVolume = true;
        } else if (argument == "--time-travel"_L1) {
            options.timeTravel = true;
        } else if (argument == "--background"_L1) {
            options.background = true;
        } else if (argument == "--quit-on-close"_L1) {
            options.quitOnClose = true;
        } else if (argument == "--reverse"_L1 || argument == "-reverse"_L1) {
            // Qt reads it, and lays everything out from right to left.
        } else if (isProductLink(argument)) {
            options.links.append(argument);
        } else if (argument.startsWith(u'-')) {
            options.problem = tr("Unknown option: %1").arg(argument.section(u'=', 0, 0)); // what follows may be a code
        } else {                                                                          // so may this
            options.problem = tr("Unexpected argument number %1").arg(i);
        }
    }
    return options;
}

Wish wishOf(const LaunchOptions &options, const QStringList &arguments)
{
    Wish wish;
    wish.show = !options.background;
    wish.code = pendingEnrolFrom(arguments).value_or(QString());
    wish.links = options.links;
    if (options.newVolume) {
        wish.action = QLatin1StringView(action::newVolume);
    } else if (options.timeTravel) {
        wish.action = QLatin1StringView(action::timeTravel);
    }
    wish.activationToken = qEnvironmentVariable("XDG_ACTIVATION_TOKEN");
    wish.startupId = qEnvironmentVariable("DESKTOP_STARTUP_ID");
    return wish;
}

QString helpText()
{
    return tr("Usage: quillfen [options] [quillfen: link]\n"
              "\n"
              "Quillfen, the desktop client: volumes on this computer whose every second is kept offsite.\n"
              "\n"
              "Options:\n"
              "  --enroll CODE    sign this computer in with an enrolment code or link\n"
              "  --new-volume     begin with the sheet for a new volume\n"
              "  --time-travel    begin on the section Time travel\n"
              "  --background     start without showing the window\n"
              "  --quit-on-close  end with the window instead of living on in the status area\n"
              "  --tour FOLDER    show every screen, leave a picture of each in FOLDER, and end\n"
              "  --version        print the version\n"
              "  --help           print this help\n"
              "\n"
              "One client runs in a session: started again, it hands its options to the one that runs.\n"
              "\n"
              "Environment:\n"
              "  QUILL_AGENT_SOCKET       where the agent listens\n"
              "  QUILLFEN_START_SECTION   the beginning of the title of the section to start on, or \"newvolume\"\n");
}

std::optional<QString> pendingEnrolFrom(const QStringList &arguments)
{
    const qsizetype option = arguments.indexOf("--enroll"_L1, 1);
    if (option < 0 || option + 1 >= arguments.size()) {
        return std::nullopt;
    }
    return arguments[option + 1];
}

std::optional<QString> startSectionWish()
{
    constexpr auto name = "QUILLFEN_START_SECTION";
    return qEnvironmentVariableIsSet(name) ? std::optional(qEnvironmentVariable(name)) : std::nullopt;
}

bool asksForNewVolume(const std::optional<QString> &wish)
{
    return wish == "newvolume"_L1;
}

bool isProductLink(const QString &link)
{
    return link.startsWith("quillfen:"_L1, Qt::CaseSensitive);
}

} // namespace quillfen
