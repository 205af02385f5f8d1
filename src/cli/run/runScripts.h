#pragma once

#include <QString>

#include "cli/run/RunContext.h"
#include "cli/run/ScriptSession.h"

namespace kelvar::cli {

/// These run scripts to their end, until nothing is pending, and return false if one failed. They
/// throw a `CommandError` if a function that the manifest names is missing.

/// Evaluates a script and calls its `onRun`, if there is one.
bool runScript(ScriptSession& session, const QString& script, const RunContext& run);

/// Runs a plug-in's command between the actions that happen around it: the plug-in is started, the
/// document is opened, the layers are selected; then the document is closed and the plug-in shut
/// down.
bool runCommand(ScriptSession& session, const PluginCommandRef& command, const RunContext& run);

/// Calls the handlers of an action.
bool runAction(ScriptSession& session, const QString& action, const RunContext& run);

}  // namespace kelvar::cli
