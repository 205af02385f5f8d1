#include <CLI/CLI.hpp>
#include <QApplication>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <string_view>

#include "analytics/finishReporting.h"
#include "cli/Command.h"
#include "cli/CommandError.h"
#include "cli/DocumentCommand.h"
#include "cli/Output.h"
#include "cli/run/DocumentOutput.h"
#include "cli/run/RunContext.h"
#include "cli/run/ScriptPermissions.h"
#include "cli/run/ScriptSession.h"
#include "cli/run/TerminalDialog.h"
#include "cli/run/runScripts.h"
#include "platform/files/FileName.h"
#include "runtime/Conversion.h"

namespace {

using namespace Qt::StringLiterals;
using kelvar::cli::CommandError;
using kelvar::cli::fail;
using kelvar::cli::misuse;
using kelvar::cli::orThrow;
using kelvar::cli::RunContext;
using kelvar::cli::sanitizeForTerminal;
using kelvar::cli::ScriptGuard;
using kelvar::cli::ScriptSession;

constexpr const char* kExplanation = R"(
Runs a script, or a command of a plug-in, with access to Kelvar's classes. Calls the script's function
onRun, or the command's handler, with the context: document, selection, command, plugin, scriptPath,
scriptURL, and arguments, which are the words after --. The program ends when nothing is pending: no
timer, no request, no window.

A script that changes the document has to save it, unless --save or -o does so at the end. With -o,
the script's own save writes there too. A script that fails saves nothing more.

A script file may do whatever you may do. A plug-in starts no programs, sends requests to the
configured servers alone, and writes only beside the document, in the current folder and in the folder
for temporary files. --allow and --deny change both; see docs/scripting.md.

What a script asks, in an alert for example, is answered by --answer, in order, or on the terminal. If
neither is there, it gets the answer that changes nothing, such as Cancel, or else fails.

Examples:
  kelvar run hello.js
  kelvar run --list plugin/Kelvar.sketchplugin
  kelvar run plugin/Kelvar.sketchplugin --command map --document app.sketch --select Screen -- Home
  kelvar run rename.js --document app.sketch --save
  kelvar run Others.sketchplugin --command export --allow write=exports --deny network
  kelvar run Others.sketchplugin --command rename --document app.sketch --answer OK --answer Screen

Ctrl-C and --timeout stop a script that runs too long. A script that uses too much memory is stopped
automatically. In both cases, the programs that it started are stopped too.
Exit status: 0 success, 1 the script failed or cannot be run, 2 usage error.)";

struct Arguments {
  std::string target;
  std::string command;
  std::string action;
  std::string document;
  std::vector<std::string> selection;
  std::vector<std::string> rest;
  kelvar::cli::DocumentOutput output;
  kelvar::cli::ScriptPermissions permissions;
  kelvar::cli::TerminalDialog dialog;
  double timeout = 0;
  bool list = false;
  bool json = false;
};

void print(const QString& line) { kelvar::cli::print(line.toUtf8()); }

void list(const kelvar::PluginBundle& plugin, bool json) {
  QJsonArray all;
  for (const kelvar::PluginCommandRef& command : plugin.commands()) {
    if (!json)
      print(sanitizeForTerminal(command->identifier()) + u'\t' +
            sanitizeForTerminal(command->name()));
    all.append(QJsonObject{{u"identifier"_s, command->identifier()},
                           {u"name"_s, command->name()},
                           {u"script"_s, command->script()},
                           {u"handler"_s, command->handler()}});
  }
  if (json) print(QString::fromUtf8(QJsonDocument(all).toJson(QJsonDocument::Compact)));
}

/// A plug-in with a single command does not require its name.
kelvar::PluginCommandRef chosenCommand(const kelvar::PluginBundle& plugin, const QString& name) {
  if (name.isEmpty() && plugin.commands().size() == 1) return plugin.commands().first();
  const kelvar::PluginCommandRef command = plugin.command(name);
  if (command) return command;
  QStringList names;
  for (const auto& each : plugin.commands()) names.append(each->identifier());
  if (names.isEmpty()) misuse(u"the plug-in has no command, only handlers of actions (--action)"_s);
  misuse(name.isEmpty() ? u"--command is missing; the plug-in has %1"_s.arg(names.join(u", "))
                        : u"the plug-in has no command %1, only %2"_s.arg(name, names.join(u", ")));
}

void checkAction(const kelvar::PluginBundle& plugin, const QString& name) {
  if (name.isEmpty() || !plugin.listeners(name).isEmpty()) return;
  const QStringList all = plugin.actions();
  misuse(u"the plug-in handles no action %1"_s.arg(name) +
         (all.isEmpty() ? QString() : u", only "_s + all.join(u", ")));
}

/// Null without --document.
kelvar::SketchDocumentRef chosenDocument(Arguments& arguments) {
  if (!arguments.document.empty()) return arguments.output.open(arguments.document);
  if (!arguments.selection.empty()) misuse(u"--select needs a --document"_s);
  return nullptr;
}

QVariantList chosenLayers(const kelvar::SketchDocumentRef& document, const Arguments& arguments) {
  QVariantList selection;
  for (const std::string& each : arguments.selection) {
    const QString name = QString::fromStdString(each);
    const QList<kelvar::SketchLayerRef> found = document->layersNamed(name);
    if (found.isEmpty()) fail(u"the document has no layer \"%1\""_s.arg(name));
    for (const auto& layer : found) {
      document->select(layer);
      selection.append(kelvar::toVariant(layer));
    }
  }
  return selection;
}

[[noreturn]] void failWith(const kelvar::ScriptError& error) {
  QString text = error.message;
  if (!error.file.isEmpty()) text += u"\n%1:%2"_s.arg(error.file).arg(error.line);
  if (!error.text.isEmpty()) text += u"\n    "_s + error.text;
  QStringList lines = kelvar::readableFileName(text).replace(u'\t', u' ').split(u'\n');
  const std::string message = lines.takeFirst().toStdString();
  throw CommandError({kelvar::Error::Kind::Io, message}, lines);
}

void run(Arguments& arguments) {
  const QString target = kelvar::fileNameFromBytes(arguments.target);
  const bool isPlugin = kelvar::isFolder(target);
  if (arguments.list && !isPlugin) misuse(u"--list takes a plug-in, which is a folder"_s);
  if (!isPlugin && !arguments.command.empty()) misuse(u"--command takes a plug-in"_s);
  if (!isPlugin && !arguments.action.empty()) misuse(u"--action takes a plug-in"_s);
  RunContext context;
  if (isPlugin) context.plugin = orThrow(kelvar::PluginBundle::open(target));
  if (arguments.list) return list(*context.plugin, arguments.json);

  const QString action = QString::fromStdString(arguments.action);
  const kelvar::PluginCommandRef command =
      isPlugin && action.isEmpty()
          ? chosenCommand(*context.plugin, QString::fromStdString(arguments.command))
          : nullptr;
  if (isPlugin) checkAction(*context.plugin, action);
  context.document = chosenDocument(arguments);
  kelvar::SketchDocument::setCurrent(context.document);
  context.selection = chosenLayers(context.document, arguments);
  for (const std::string& each : arguments.rest) {
    context.arguments.append(kelvar::fileNameFromBytes(each));
  }
  kelvar::Permissions::install(arguments.permissions.permissions(
      {.isPlugin = isPlugin,
       .target = target,
       .document = context.document ? context.document->path() : QString(),
       .output = arguments.output.path()}));

  arguments.dialog.install();

  ScriptSession session(print, std::chrono::duration<double>(arguments.timeout));
  const bool hasSucceeded = !action.isEmpty() ? runAction(session, action, context)
                            : command         ? runCommand(session, command, context)
                                              : runScript(session, target, context);
  session.close();
  if (hasSucceeded) arguments.dialog.finish();
  arguments.output.finish(hasSucceeded);
  if (context.document) kelvar::cli::printWarnings(context.document->warnings());
  if (!hasSucceeded) failWith(*session.failure());
}

/// A check as CLI11 calls it: returns the error message, empty for none.
std::string checkSeconds(const std::string& text) {
  constexpr double kMaxSeconds = 86400;
  bool isNumber = false;
  const double seconds = QByteArray::fromStdString(text).toDouble(&isNumber);
  if (isNumber && seconds > 0 && seconds <= kMaxSeconds) return {};
  return u"must be a number of seconds above 0, at most %1, not \"%2\""_s.arg(kMaxSeconds)
      .arg(QString::fromStdString(text))
      .toStdString();
}

void addOptions(CLI::App& program, Arguments* arguments) {
  program.footer(kExplanation);
  program.add_option("TARGET", arguments->target, "A script, or a plug-in's folder")->required();
  program
      .add_option("--command", arguments->command, "The identifier of the plug-in's command to run")
      ->type_name("ID");
  program
      .add_option("--action", arguments->action,
                  "Call the plug-in's handlers of this action instead, such as OpenDocument")
      ->type_name("NAME")
      ->excludes("--command");
  CLI::Option* const document =
      program.add_option("--document", arguments->document, "The Sketch document to work on")
          ->type_name("DOC");
  arguments->output.addOptions(program, document);
  program
      .add_option("--select", arguments->selection,
                  "A layer of the document, by name or identifier; may be repeated")
      ->type_name("NAME|ID")
      ->allow_extra_args(false);
  arguments->permissions.addOptions(program);
  arguments->dialog.addOptions(program);
  CLI::Option* const timeout =
      program
          .add_option("--timeout", arguments->timeout, "Stop the script after this many seconds")
          ->type_name("SECONDS")
          ->check(checkSeconds);
  CLI::Option* const list =
      program.add_flag("--list", arguments->list, "List the plug-in's commands");
  program.add_flag("--json", arguments->json, "List them as JSON")->needs(list);
  list->excludes(timeout);
}

/// Scripts without a window require no display.
void chooseScreen() {
  if (qEnvironmentVariableIsSet("DISPLAY") || qEnvironmentVariableIsSet("WAYLAND_DISPLAY")) return;
  if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
}

}  // namespace

int main(int argc, char** argv) {
  Arguments arguments;
  kelvar::cli::Command command("kelvar run", "Run a script or a command of a plug-in");
  addOptions(command.app(), &arguments);
  // Words after -- are passed to the script, even if they look like options.
  char** const end = std::find_if(argv, argv + argc,
                                  [](const char* each) { return std::string_view(each) == "--"; });
  if (end != argv + argc) arguments.rest.assign(end + 1, argv + argc);
  int noArguments = 1;
  std::unique_ptr<QApplication> application;
  const int status = command.execute(int(end - argv), argv, [&] {
    chooseScreen();
    application = std::make_unique<QApplication>(noArguments, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    const int status = kelvar::cli::Command::statusOf([&] { run(arguments); });
    if (!ScriptGuard::wasInterrupted()) kelvar::finishReporting();
    return status;
  });
  // All work is done and written. Destroying the application would take a tenth of the time that a
  // short script runs: the font database reads its configuration to release it.
  std::fflush(nullptr);
  std::_Exit(status);
}
