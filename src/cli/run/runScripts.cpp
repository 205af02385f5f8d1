#include "cli/run/runScripts.h"

#include "cli/CommandError.h"

namespace kelvar::cli {
namespace {

using namespace Qt::StringLiterals;

bool callRequired(ScriptSession& session, const PluginCommandRef& command, const QString& function,
                  const QVariantMap& context) {
  if (session.hasFunction(command->script(), function)) {
    return session.call(command->script(), function, context);
  }
  if (session.failure()) return false;
  fail(u"%1 has no function %2 for the command %3"_s.arg(
      command->script(), function,
      command->identifier().isNull() ? command->name() : command->identifier()));
}

/// `named` is what the manifest calls the function; null if it does not.
bool callAround(ScriptSession& session, const PluginCommandRef& command, const QString& named,
                const QString& usual, const QVariantMap& context) {
  if (!named.isNull()) return callRequired(session, command, named, context);
  if (!session.hasFunction(command->script(), usual)) return !session.failure();
  return session.call(command->script(), usual, context);
}

bool callHandlers(ScriptSession& session, const PluginCommandRef& command,
                  const QVariantMap& context) {
  const PluginCommand::Handlers& handlers = command->handlers();
  return session.open(command->script(), context) &&
         callAround(session, command, handlers.setUp, u"onSetUp"_s, context) &&
         callRequired(session, command, handlers.run, context) &&
         callAround(session, command, handlers.tearDown, u"onTearDown"_s, context);
}

bool perform(ScriptSession& session, const QString& action, const RunContext& run) {
  for (const PluginCommandRef& listener : run.plugin->listeners(action)) {
    const QVariantMap context = run.of(listener, action);
    if (!session.open(listener->script(), context) ||
        !callRequired(session, listener, listener->handlerOf(action), context)) {
      return false;
    }
  }
  return true;
}

}  // namespace

bool runScript(ScriptSession& session, const QString& script, const RunContext& run) {
  const QVariantMap context = run.of(script, nullptr);
  if (!session.open(script, context)) return false;
  const bool hasHandler = session.hasFunction(script, u"onRun"_s);
  return (!hasHandler || session.call(script, u"onRun"_s, context)) && session.wait();
}

bool runCommand(ScriptSession& session, const PluginCommandRef& command, const RunContext& run) {
  const auto happens = [&](const QString& action) { return perform(session, action, run); };
  const bool hasSelection = !run.selection.isEmpty();
  return happens(u"Startup"_s) && (!run.document || happens(u"OpenDocument"_s)) &&
         (!hasSelection || happens(u"SelectionChanged.finish"_s)) &&
         callHandlers(session, command, run.of(command->script(), command)) && session.wait() &&
         (!run.document || happens(u"CloseDocument"_s)) && happens(u"Shutdown"_s) && session.wait();
}

bool runAction(ScriptSession& session, const QString& action, const RunContext& run) {
  return perform(session, action, run) && session.wait();
}

}  // namespace kelvar::cli
