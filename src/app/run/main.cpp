#include <unistd.h>

#include <CLI/CLI.hpp>
#include <QApplication>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QScopeGuard>
#include <algorithm>
#include <csignal>
#include <cstdio>
#include <string_view>
#include <thread>

#include "analytics/finishReporting.h"
#include "app/DocumentCommand.h"
#include "app/Failure.h"
#include "app/Output.h"
#include "app/StandardError.h"
#include "app/run/endDescendants.h"
#include "host/SketchDocument.h"
#include "platform/FileName.h"
#include "platform/TryThread.h"
#include "platform/hasAddressSpace.h"
#include "runtime/Conversion.h"
#include "scripting/PluginBundle.h"
#include "scripting/ScriptRuntime.h"

namespace {

using namespace Qt::StringLiterals;
using kelvar::ScriptRuntime;
using kelvar::app::Failure;
using kelvar::app::printable;

constexpr const char* kExplanation = R"(
Runs a script, or a command of a plug-in, with Kelvar's classes. The script's function onRun, or the
command's handler, is called with the context: document, selection, command, plugin, scriptPath and
arguments, which are what follows --. The program ends when nothing is pending any more: no timer, no
request, no window.

Examples:
  kelvar run hello.js
  kelvar run --list plugin/Kelvar.sketchplugin
  kelvar run plugin/Kelvar.sketchplugin --command map --document app.sketch --select Screen -- Home

A script that does not end is stopped with Ctrl-C or --timeout, one that takes too much memory by
itself, and the programs that it has started with it.
Exit status: 0 done, 1 the script failed or cannot be run, 2 misuse.)";

/// The most memory that a script may have the program take, less where the machine has little.
constexpr size_t kMostMemory = size_t{4} << 30;

/// What the engine starts at once, beside the guard; it breaks off where it gets none.
constexpr int kEngineThreads = 4;
/// What it reserves at once, nearly all of it never used.
constexpr size_t kEngineSpace = size_t{6} << 30;

/// For the signal handler, while a script runs.
std::atomic<ScriptRuntime*> running = nullptr;
std::atomic<bool> wasInterrupted = false;
/// Set by whichever ends the script, itself or the guard; the other one then lets it.
std::atomic_flag hasEnded;

struct Arguments {
  std::string target;
  std::string command;
  std::string document;
  std::vector<std::string> selection;
  std::vector<std::string> rest;
  double timeout = 0;
  bool list = false;
  bool json = false;
};

[[noreturn]] void fail(const QString& sentence) {
  throw Failure(Failure::kFailed, printable(sentence));
}
[[noreturn]] void misuse(const QString& sentence) {
  throw Failure(Failure::kMisuse, printable(sentence));
}

void print(const QString& line) { kelvar::app::print(line.toUtf8()); }

/// The first Ctrl-C ends the script in good order, a second one the program.
void interrupt(int) {
  std::signal(SIGINT, SIG_DFL);
  wasInterrupted = true;
  if (ScriptRuntime* const runtime = running.load()) runtime->interrupt();
}

size_t mostMemory() {
  const size_t all = size_t(sysconf(_SC_PHYS_PAGES)) * size_t(sysconf(_SC_PAGESIZE));
  return std::min(kMostMemory, all / 2);
}

/// Ends the program, unless the script has just ended by itself.
void endNow(const QString& sentence) {
  if (hasEnded.test_and_set()) return;
  std::fprintf(stderr, "kelvar: %s\n", qUtf8Printable(sentence));
  kelvar::app::endDescendants();
  std::_Exit(Failure::kFailed);
}

/// Ends the program where the engine cannot be interrupted, in one long call that takes more and
/// more memory, or more time than the timeout (0 for none) and a second.
void guard(size_t memory, double timeout) {
  using Clock = std::chrono::steady_clock;
  const auto end = Clock::now() + std::chrono::duration<double>(timeout + 1);
  std::thread([=] {
    const auto page = size_t(sysconf(_SC_PAGESIZE));
    while (!hasEnded.test()) {
      std::this_thread::sleep_for(std::chrono::milliseconds(20));
      if (timeout > 0 && Clock::now() > end) {
        return endNow(u"the script did not end within %1 s"_s.arg(timeout));
      }
      QFile file(u"/proc/self/statm"_s);
      if (!file.open(QIODevice::ReadOnly)) return;
      if (file.readAll().split(' ').value(1).toULongLong() * page < memory) continue;
      return endNow(u"the script uses more than %1 MB of memory"_s.arg(memory >> 20));
    }
  }).detach();
}

kelvar::PluginBundleRef openPlugin(const QString& path) {
  QString error;
  const kelvar::PluginBundleRef plugin = kelvar::PluginBundle::open(path, &error);
  if (!plugin) fail(error);
  return plugin;
}

void list(const kelvar::PluginBundle& plugin, bool json) {
  QJsonArray all;
  for (const kelvar::PluginCommandRef& command : plugin.commands()) {
    if (!json) print(printable(command->identifier()) + u'\t' + printable(command->name()));
    all.append(QJsonObject{{u"identifier"_s, command->identifier()},
                           {u"name"_s, command->name()},
                           {u"script"_s, command->script()},
                           {u"handler"_s, command->handler()}});
  }
  if (json) print(QString::fromUtf8(QJsonDocument(all).toJson(QJsonDocument::Compact)));
}

/// The one that is meant; a plug-in's only one needs no name.
kelvar::PluginCommandRef chosenCommand(const kelvar::PluginBundle& plugin, const QString& name) {
  if (name.isEmpty() && plugin.commands().size() == 1) return plugin.commands().first();
  const kelvar::PluginCommandRef command = plugin.command(name);
  if (command) return command;
  QStringList names;
  for (const auto& each : plugin.commands()) names.append(each->identifier());
  misuse(name.isEmpty() ? u"--command is missing; the plug-in has %1"_s.arg(names.join(u", "))
                        : u"the plug-in has no command %1, only %2"_s.arg(name, names.join(u", ")));
}

/// Null without --document.
kelvar::SketchDocumentRef chosenDocument(const Arguments& arguments) {
  if (!arguments.document.empty()) return kelvar::app::openDocument(arguments.document);
  if (!arguments.selection.empty()) misuse(u"--select needs a --document"_s);
  return nullptr;
}

QVariantList chosenLayers(const kelvar::SketchDocumentRef& document, const Arguments& arguments) {
  QVariantList selection;
  for (const std::string& each : arguments.selection) {
    const QString name = QString::fromStdString(each);
    const QList<kelvar::SketchLayerRef> found = document->layersNamed(name);
    if (found.isEmpty()) fail(u"the document has no layer \"%1\""_s.arg(name));
    for (const auto& layer : found) selection.append(kelvar::toVariant(layer));
  }
  return selection;
}

[[noreturn]] void tell(const ScriptRuntime::Failure& failure) {
  QString told = failure.message;
  if (!failure.file.isEmpty()) told += u"\n%1:%2"_s.arg(failure.file).arg(failure.line);
  if (!failure.text.isEmpty()) told += u"\n    "_s + failure.text;
  QStringList lines = told.replace(u'\t', u' ').split(u'\n');
  for (QString& line : lines) line = printable(line);
  throw Failure(Failure::kFailed, lines.join(u'\n'));
}

/// A script by itself needs no function.
bool callHandler(ScriptRuntime& runtime, const kelvar::PluginCommandRef& command,
                 const QVariantMap& context) {
  const QString handler = command ? command->handler() : u"onRun"_s;
  if (runtime.hasFunction(handler)) return runtime.call(handler, {context});
  if (command) {
    fail(u"%1 has no function %2 for the command %3"_s.arg(command->script(), handler,
                                                           command->identifier()));
  }
  return true;
}

/// False when the script failed.
bool runScript(ScriptRuntime& runtime, const QString& script,
               const kelvar::PluginCommandRef& command, const QVariantMap& context) {
  running = &runtime;
  const auto end = qScopeGuard([] {
    running = nullptr;
    while (hasEnded.test_and_set()) pause();  // The guard is about to end the program.
  });
  std::signal(SIGINT, interrupt);
  runtime.setGlobal(u"context"_s, context);
  return runtime.evaluateFile(script) && callHandler(runtime, command, context) && runtime.run();
}

void run(const Arguments& arguments) {
  const QString target = kelvar::fileNameFromBytes(arguments.target);
  const bool isPlugin = kelvar::isFolder(target);
  if (arguments.list && !isPlugin) misuse(u"--list takes a plug-in, which is a folder"_s);
  if (!isPlugin && !arguments.command.empty()) misuse(u"--command takes a plug-in"_s);
  const kelvar::PluginBundleRef plugin = isPlugin ? openPlugin(target) : nullptr;
  if (arguments.list) return list(*plugin, arguments.json);

  const kelvar::PluginCommandRef command =
      plugin ? chosenCommand(*plugin, QString::fromStdString(arguments.command)) : nullptr;
  const QString script = command ? command->script() : target;
  const kelvar::SketchDocumentRef document = chosenDocument(arguments);
  QStringList rest;
  for (const std::string& each : arguments.rest) rest.append(kelvar::fileNameFromBytes(each));
  const QVariantMap context{{u"document"_s, kelvar::toVariant(document)},
                            {u"selection"_s, chosenLayers(document, arguments)},
                            {u"plugin"_s, kelvar::toVariant(plugin)},
                            {u"command"_s, kelvar::toVariant(command)},
                            {u"scriptPath"_s, kelvar::absoluteFileName(script)},
                            {u"arguments"_s, rest}};

  if (!kelvar::canHaveThreads(kEngineThreads)) {
    fail(u"scripts need threads of their own, and the system has none to give"_s);
  }
  if (!kelvar::hasAddressSpace(kEngineSpace)) {
    fail(u"scripts need 6 GiB of address space, which the system does not give (see ulimit -v)"_s);
  }
  ScriptRuntime runtime(print);
  if (arguments.timeout > 0) runtime.setTimeout(std::chrono::duration<double>(arguments.timeout));
  runtime.setMemoryLimit(mostMemory());
  kelvar::app::adoptDescendants();
  guard(mostMemory() + mostMemory() / 4, arguments.timeout);
  const bool done = runScript(runtime, script, command, context);
  if (document) kelvar::app::tellWarnings(document->warnings());
  if (runtime.isStopped()) kelvar::app::endDescendants();
  if (!done) tell(*runtime.failure());
}

/// What is wrong, or nothing.
std::string checkSeconds(const std::string& text) {
  constexpr double kMost = 86400;
  bool isNumber = false;
  const double seconds = QByteArray::fromStdString(text).toDouble(&isNumber);
  if (isNumber && seconds > 0 && seconds <= kMost) return {};
  return u"must be a number of seconds above 0, at most %1, not \"%2\""_s.arg(kMost)
      .arg(QString::fromStdString(text))
      .toStdString();
}

int parseAndRun(int argc, char** argv) {
  Arguments arguments;
  CLI::App program("Runs scripts and commands of plug-ins.", "kelvar run");
  program.footer(kExplanation);
  program.set_version_flag("--version", "kelvar " KELVAR_VERSION);
  bool verbose = false;
  program.add_flag("--verbose", verbose, "Say on standard error what is being done");
  program.add_option("TARGET", arguments.target, "A script, or a plug-in's folder")->required();
  program.add_option("--command", arguments.command, "The plug-in's command, by its identifier");
  program.add_option("--document", arguments.document, "The Sketch document to work on");
  program
      .add_option("--select", arguments.selection,
                  "A layer of the document, by name or identifier; may be given again")
      ->allow_extra_args(false);
  CLI::Option* const timeout =
      program.add_option("--timeout", arguments.timeout, "Stop after so many seconds")
          ->check(checkSeconds);
  CLI::Option* const list = program.add_flag("--list", arguments.list, "List the commands");
  program.add_flag("--json", arguments.json, "List them as JSON")->needs(list);
  list->excludes(timeout);
  // What follows -- is the script's, whatever it looks like.
  char** const end = std::find_if(argv, argv + argc,
                                  [](const char* each) { return std::string_view(each) == "--"; });
  if (end != argv + argc) arguments.rest.assign(end + 1, argv + argc);
  try {
    program.parse(int(end - argv), argv);
  } catch (const CLI::Success& success) {
    return program.exit(success);
  } catch (const CLI::ParseError& error) {
    misuse(QString::fromUtf8(error.what()) + u" (see kelvar run --help)"_s);
  }
  kelvar::app::setVerbose(verbose);
  run(arguments);
  return 0;
}

/// The exit status; what went wrong is said on standard error.
int parseRunAndTell(int argc, char** argv) {
  try {
    return parseAndRun(argc, argv);
  } catch (const Failure& failure) {
    std::fprintf(stderr, "kelvar: %s\n", failure.what());
    return failure.status();
  } catch (const std::bad_alloc&) {
    std::fprintf(stderr, "kelvar: there is too little memory\n");
    return Failure::kFailed;
  }
}

/// Scripts without a window need no screen.
void chooseScreen() {
  if (qEnvironmentVariableIsSet("DISPLAY") || qEnvironmentVariableIsSet("WAYLAND_DISPLAY")) return;
  if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
}

}  // namespace

int main(int argc, char** argv) {
  std::signal(SIGPIPE, SIG_IGN);
  std::signal(SIGXFSZ, SIG_IGN);
  kelvar::app::logToStandardError();
  chooseScreen();
  int noArguments = 1;
  QApplication application(noArguments, argv);
  QApplication::setQuitOnLastWindowClosed(false);
  const int status = parseRunAndTell(argc, argv);
  if (!wasInterrupted) kelvar::finishReporting();
  return status;
}
