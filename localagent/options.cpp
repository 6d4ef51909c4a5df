// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "options.h"

#include "localagent/wire/socketpath.h"
#include "localagent/world/worldfile.h"

#include <pwd.h>
#include <unistd.h>

#include <charconv>
#include <cstdlib>
#include <functional>
#include <unordered_map>

namespace quillfen::localagent {

namespace {

std::string userHome()
{
    if (const char *home = std::getenv("HOME"); home && *home != '\0') {
        return home;
    }
    const passwd *user = ::getpwuid(::getuid());
    return user ? user->pw_dir : "/";
}

template <typename Number>
Number number(std::string_view text, const char *option)
{
    Number value = {};
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error != std::errc() || end != text.data() + text.size()) {
        throw UsageError(std::string(option) + " needs a number, not \"" + std::string(text) + "\"");
    }
    return value;
}

double speedOf(std::string_view text)
{
    const double speed = number<double>(text, "--speed");
    if (!(speed >= 0.001 && speed <= 1e6)) {
        throw UsageError("--speed needs a number from 0.001 to 1000000");
    }
    return speed;
}

PointsForm formOf(std::string_view text)
{
    if (text == "points") {
        return PointsForm::Points;
    }
    if (text == "recovery_points") {
        return PointsForm::RecoveryPoints;
    }
    if (text == "raw") {
        return PointsForm::Raw;
    }
    throw UsageError("--restore-points-form is points, recovery_points or raw");
}

using Take = std::function<void(Options &, const std::string &)>;

const std::unordered_map<std::string_view, Take> &valueOptions()
{
    static const std::unordered_map<std::string_view, Take> options = {
        {"--socket", [](Options &to, const std::string &text) { to.socket = text; }},
        {"--home", [](Options &to, const std::string &text) { to.home = text; }},
        {"--world", [](Options &to, const std::string &text) { to.world = text; }},
        {"--speed", [](Options &to, const std::string &text) { to.speed = speedOf(text); }},
        {"--seed", [](Options &to, const std::string &text) { to.seed = number<std::uint64_t>(text, "--seed"); }},
        {"--restore-points-form", [](Options &to, const std::string &text) { to.pointsForm = formOf(text); }},
        {"--delay", [](Options &to, const std::string &text) { to.faults.addDelay(text); }},
        {"--fail", [](Options &to, const std::string &text) { to.faults.addFailure(text); }},
        {"--drop", [](Options &to, const std::string &text) { to.faults.methods[text].drop = true; }},
        {"--silent", [](Options &to, const std::string &text) { to.faults.methods[text].silent = true; }},
        {"--drop-after",
         [](Options &to, const std::string &text) { to.faults.dropAfter = parseSeconds(text, "--drop-after"); }},
        {"--stop-reading",
         [](Options &to, const std::string &text) { to.faults.stopReading = parseSeconds(text, "--stop-reading"); }},
    };
    return options;
}

std::string worldList()
{
    std::string list;
    for (const std::string &name : worldNames()) {
        list += (list.empty() ? "" : ", ") + name;
    }
    return list;
}

} // namespace

Options parseOptions(const std::vector<std::string> &arguments)
{
    Options options;
    options.socket = defaultSocketPath();
    options.home = userHome();
    for (std::size_t at = 0; at < arguments.size(); ++at) {
        const std::string &argument = arguments[at];
        const std::size_t equals = argument.find('=');
        const std::string name = argument.substr(0, equals);
        if (name == "--help" || name == "-h") {
            options.action = Options::Action::Help;
        } else if (name == "--version") {
            options.action = Options::Action::Version;
        } else if (name == "--garbage") {
            options.faults.garbage = true;
        } else if (const auto option = valueOptions().find(name); option == valueOptions().end()) {
            throw UsageError("unknown option " + argument);
        } else if (equals != std::string::npos) {
            option->second(options, argument.substr(equals + 1));
        } else if (at + 1 < arguments.size()) {
            option->second(options, arguments[++at]);
        } else {
            throw UsageError(name + " needs a value");
        }
    }
    return options;
}

std::string helpText()
{
    return R"(Usage: quillfen-localagent [OPTION…]

Quillfen's local agent: a small world of volumes behind a Unix socket, for trying out and testing the client.
It runs in the foreground until SIGTERM or Ctrl+C.

  --socket PATH          listen here instead of where the client looks by itself ($QUILL_AGENT_SOCKET,
                         $XDG_RUNTIME_DIR/quillfen/agent.sock, $TMPDIR/quillfen-UID/quillfen/agent.sock)
  --home DIR             keep mount folders (Quillfen) and keys (.quill) in this folder instead of the user's home
  --world NAME|FILE      what there is: a world file, or one of
                         )" +
           worldList() + R"(
                         (everyday, unless told otherwise)
  --speed X              run the world's clock X times as fast (1)
  --seed N               make generated volumes, keys and secrets from this number (1)
  --restore-points-form FORM
                         answer restore_points.list as points, recovery_points or raw (points)
  --help, --version

Trouble on request. METHOD is a method's name, or * for all that have no switch of their own. Repeatable:
  --delay METHOD=SECONDS  wait before working on it
  --fail METHOD=CODE[:STATUS]:MESSAGE
                          answer it with this error
  --drop METHOD           end the connection it comes on
  --silent METHOD         never answer it
For every connection:
  --drop-after SECONDS    end it after so long
  --stop-reading SECONDS  stop reading from it after so long
  --garbage               send a line of rubbish before every answer
The method localagent.fault does the same while the agent runs.

Exit status: 0 after SIGTERM or Ctrl+C, 1 when the agent cannot start, 2 for a wrong command line.
)";
}

} // namespace quillfen::localagent
