#pragma once

#include <QList>
#include <QUrl>
#include <optional>

#include "runtime/Object.h"

namespace kelvar {

/// A command of a plug-in: a function in one of its scripts.
class KELVAR_EXPORT PluginCommand : public Object {
 public:
  static const ClassInfo& theClass();
  const ClassInfo& classInfo() const override { return theClass(); }

  PluginCommand(const QString& identifier, const QString& name, const QString& script,
                const QString& handler)
      : identifier_(identifier), name_(name), script_(script), handler_(handler) {}

  QString identifier() const { return identifier_; }
  QString name() const { return name_; }
  /// The path of its script.
  QString script() const { return script_; }
  /// The function that is called with the context.
  QString handler() const { return handler_; }

 private:
  const QString identifier_, name_, script_, handler_;
};

using PluginCommandRef = std::shared_ptr<PluginCommand>;
class PluginBundle;
using PluginBundleRef = std::shared_ptr<PluginBundle>;

/// A plug-in for the host: a folder with Contents/Sketch/manifest.json and the scripts that it
/// names.
class KELVAR_EXPORT PluginBundle : public Object {
 public:
  static const ClassInfo& theClass();
  const ClassInfo& classInfo() const override { return theClass(); }

  /// Null, and `*error` says why, when it cannot be read.
  static PluginBundleRef open(const QString& path, QString* error);

  QString identifier() const { return identifier_; }
  QString name() const { return name_; }
  QString version() const { return version_; }
  QUrl url() const { return QUrl::fromLocalFile(path_); }
  /// A file in Contents/Resources; none when there is no such file.
  QVariant urlForResourceNamed(const QString& name) const;

  const QList<PluginCommandRef>& commands() const { return commands_; }
  /// Null for an identifier that no command has.
  PluginCommandRef command(const QString& identifier) const;

 private:
  QString readManifest(const QVariantMap& manifest);

  QString path_, identifier_, name_, version_;
  QList<PluginCommandRef> commands_;
};

}  // namespace kelvar
