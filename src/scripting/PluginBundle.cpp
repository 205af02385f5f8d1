#include "scripting/PluginBundle.h"

#include <QDir>

#include "platform/FileName.h"
#include "platform/Json.h"
#include "platform/WholeFile.h"
#include "runtime/ClassInfo.h"

namespace kelvar {

using namespace Qt::StringLiterals;

namespace {

constexpr qsizetype kMaxManifest = qsizetype{1} << 20;

/// The function for the command itself, beside those for what happens in the host.
QString handlerOf(const QVariantMap& command) {
  const QVariant handlers = command[u"handlers"_s];
  for (const QVariant& each : {command[u"handler"_s], handlers, handlers.toMap()[u"run"_s]}) {
    if (each.typeId() == QMetaType::QString && !each.toString().isEmpty()) return each.toString();
  }
  return u"onRun"_s;
}

}  // namespace

const ClassInfo& PluginCommand::theClass() {
  static const ClassInfo kClass = Description<PluginCommand>("PluginCommand")
                                      .property("identifier", &PluginCommand::identifier)
                                      .property("name", &PluginCommand::name);
  return kClass;
}

const ClassInfo& PluginBundle::theClass() {
  static const ClassInfo kClass =
      Description<PluginBundle>("PluginBundle")
          .property("identifier", &PluginBundle::identifier)
          .property("name", &PluginBundle::name)
          .property("version", &PluginBundle::version)
          .property("url", &PluginBundle::url)
          .operation("urlForResourceNamed:", &PluginBundle::urlForResourceNamed);
  return kClass;
}

PluginBundleRef PluginBundle::open(const QString& path, QString* error) {
  const auto bundle = std::make_shared<PluginBundle>();
  bundle->path_ = path;
  const QString file = QDir(path).filePath(u"Contents/Sketch/manifest.json"_s);
  QByteArray bytes;
  if (!WholeFile::read(file, kMaxManifest, &bytes, error)) return nullptr;
  QString problem;
  const QVariant manifest = Json::read(bytes, &problem);
  if (manifest.isValid()) problem = bundle->readManifest(manifest.toMap());
  if (problem.isEmpty()) return bundle;
  *error = u"%1 is no plug-in's manifest: %2"_s.arg(file, problem);
  return nullptr;
}

/// What is wrong with it, if anything.
QString PluginBundle::readManifest(const QVariantMap& manifest) {
  identifier_ = manifest[u"identifier"_s].toString();
  name_ = manifest[u"name"_s].toString();
  version_ = manifest[u"version"_s].toString();
  const QDir scripts(QDir(path_).filePath(u"Contents/Sketch"_s));
  for (const QVariant& each : manifest[u"commands"_s].toList()) {
    const QVariantMap command = each.toMap();
    const QString identifier = command[u"identifier"_s].toString();
    const QString script = command[u"script"_s].toString();
    if (identifier.isEmpty()) {
      const QString name = command[u"name"_s].toString();
      return (name.isEmpty() ? u"a command"_s : u"the command \"%1\""_s.arg(name)) +
             u" has no \"identifier\""_s;
    }
    if (script.isEmpty()) return u"the command %1 has no \"script\""_s.arg(identifier);
    if (this->command(identifier)) return u"two commands are called %1"_s.arg(identifier);
    commands_.append(std::make_shared<PluginCommand>(identifier, command[u"name"_s].toString(),
                                                     scripts.filePath(script), handlerOf(command)));
  }
  return commands_.isEmpty() ? u"it has no \"commands\""_s : QString();
}

QVariant PluginBundle::urlForResourceNamed(const QString& name) const {
  const QString file = QDir(path_).filePath(u"Contents/Resources/"_s + name);
  return fileExists(file) ? QVariant(QUrl::fromLocalFile(file)) : QVariant();
}

PluginCommandRef PluginBundle::command(const QString& identifier) const {
  for (const PluginCommandRef& each : commands_) {
    if (each->identifier() == identifier) return each;
  }
  return nullptr;
}

}  // namespace kelvar
