#pragma once

#include <QList>
#include <QUrl>

#include "pixels/Result.h"
#include "scripting/plugin/PluginCommand.h"

namespace kelvar {

using PluginBundleRef = std::shared_ptr<PluginBundle>;

/// A plug-in: a folder with Contents/Sketch/manifest.json and the scripts that this names.
class KELVAR_EXPORT PluginBundle : public Object {
 public:
  static const ClassInfo& staticClassInfo();
  const ClassInfo& classInfo() const override { return staticClassInfo(); }

  /// Opens the plug-in in the folder `path`. Fails if its manifest cannot be read or is invalid.
  static Result<PluginBundleRef> open(const QString& path);

  /// A text of the manifest, such as "author"; null if there is none.
  QString manifestText(const QString& key) const { return manifest_.value(key).toString(); }
  QString identifier() const { return manifestText(QStringLiteral("identifier")); }
  QString name() const { return manifestText(QStringLiteral("name")); }
  QString version() const { return manifestText(QStringLiteral("version")); }
  /// Absolute.
  QUrl url() const;
  /// The URL of a file in Contents/Resources; invalid if there is no such file.
  QVariant urlForResourceNamed(const QString& name) const;

  /// Those that can be run by their identifiers.
  const QList<PluginCommandRef>& commands() const { return commands_; }
  /// Null if no command has this identifier.
  PluginCommandRef command(const QString& identifier) const;

  /// The commands and other entries that handle an action, in the manifest's order.
  QList<PluginCommandRef> listeners(const QString& action) const;
  /// The names of all actions that are handled, in order.
  QStringList actions() const;

 private:
  Result<void> readManifest(const QVariantMap& manifest);
  Result<void> addCommand(const QVariantMap& command);
  void add(PluginCommand::Description description);

  QString path_;
  QVariantMap manifest_;
  QList<PluginCommandRef> commands_;
  /// Those, and the entries that only handle actions.
  QList<PluginCommandRef> entries_;
};

}  // namespace kelvar
