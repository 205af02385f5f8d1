#pragma once

#include <QMap>

#include "runtime/Object.h"
#include "sketch/document/SketchDocument.h"

namespace kelvar {

class PluginBundle;

/// A command of a plug-in: functions in one of its scripts, run by name or by the host
/// application's actions. A script without a plug-in is a command as well, which keeps its values
/// under the name of its file.
class KELVAR_EXPORT PluginCommand : public Object {
 public:
  /// The functions to call with the context. `setUp` and `tearDown` are null if the manifest does
  /// not name them: then they are "onSetUp" and "onTearDown", which need not exist.
  struct Handlers {
    QString run, setUp, tearDown;
    /// By the action's name, such as "SelectionChanged.finish".
    QMap<QString, QString> actions;
  };
  struct Description {
    /// Null for an entry that only handles actions.
    QString identifier;
    QString name;
    /// The path of the script.
    QString script;
    Handlers handlers;
  };

  static const ClassInfo& staticClassInfo();
  const ClassInfo& classInfo() const override { return staticClassInfo(); }

  PluginCommand(const std::shared_ptr<PluginBundle>& plugin, Description description);
  /// The command of a script without a plug-in.
  static std::shared_ptr<PluginCommand> ofScript(const QString& path);

  QString identifier() const { return description_.identifier; }
  QString name() const { return description_.name; }
  QString script() const { return description_.script; }
  const Handlers& handlers() const { return description_.handlers; }
  /// The function to call with the context.
  QString handler() const { return handlers().run; }
  /// Null for a script without one, and once the plug-in is gone.
  std::shared_ptr<PluginBundle> pluginBundle() const { return plugin_.lock(); }

  /// The function that handles an action; null for none. A handler of "SelectionChanged" also
  /// handles "SelectionChanged.begin" and "SelectionChanged.finish".
  QString handlerOf(const QString& action) const;

  /// What its values are kept under in documents; empty if the plug-in has no identifier.
  QString owner() const { return owner_; }

 private:
  const std::weak_ptr<PluginBundle> plugin_;
  const Description description_;
  const QString owner_;
};

using PluginCommandRef = std::shared_ptr<PluginCommand>;

}  // namespace kelvar
