#include "scripting/plugin/PluginBundle.h"

#include <QDir>

#include "platform/QtError.h"
#include "platform/files/File.h"
#include "platform/files/FileName.h"
#include "platform/plist/Json.h"
#include "runtime/ClassInfo.h"
#include "scripting/runtime/fileIgnoringCase.h"

namespace kelvar {

using namespace Qt::StringLiterals;

namespace {

constexpr qsizetype kMaxManifest = qsizetype{1} << 20;

QString textIn(const QVariantMap& map, const QString& key) {
  const QVariant value = map.value(key);
  return value.typeId() == QMetaType::QString && !value.toString().isEmpty() ? value.toString()
                                                                             : QString();
}

PluginCommand::Handlers handlersOf(const QVariantMap& command) {
  const QVariantMap named = command[u"handlers"_s].toMap();
  PluginCommand::Handlers handlers;
  handlers.setUp = textIn(named, u"setUp"_s);
  handlers.tearDown = textIn(named, u"tearDown"_s);
  for (const QString& each : {textIn(command, u"handler"_s), textIn(command, u"handlers"_s),
                              textIn(named, u"run"_s), u"onRun"_s}) {
    if (handlers.run.isNull()) handlers.run = each;
  }
  const QVariantMap actions = named[u"actions"_s].toMap();
  for (auto each = actions.begin(); each != actions.end(); ++each) {
    const QString handler = textIn(actions, each.key());
    if (!handler.isNull()) handlers.actions.insert(each.key(), handler);
  }
  return handlers;
}

/// Whether an entry without an identifier is one that the user cannot run anyway.
bool onlyHandlesActions(const QVariantMap& command, const PluginCommand::Handlers& handlers) {
  return !handlers.actions.isEmpty() && textIn(command, u"handler"_s).isNull() &&
         textIn(command[u"handlers"_s].toMap(), u"run"_s).isNull();
}

QVariantMap commandsByIdentifier(const PluginBundle& self) {
  QVariantMap commands;
  for (const PluginCommandRef& each : self.commands()) {
    commands.insert(each->identifier(), toVariant(each));
  }
  return commands;
}

}  // namespace

const ClassInfo& PluginBundle::staticClassInfo() {
  static const auto text = [](const char* key) {
    return [key](const PluginBundle& self) { return self.manifestText(QString::fromLatin1(key)); };
  };
  static const ClassInfo kClass =
      ClassInfoBuilder<PluginBundle>("PluginBundle")
          .property("identifier", &PluginBundle::identifier, "The plug-in's identifier.")
          .property("name", &PluginBundle::name, "The plug-in's name.")
          .property("version", &PluginBundle::version, "The plug-in's version.")
          .property("author", text("author"), "The plug-in's author.")
          .property("homepageURL", text("homepage"), "The plug-in's web page, as a string.")
          .property("compatibleVersion", text("compatibleVersion"),
                    "The version of Sketch that the plug-in requires.")
          .property("commands", commandsByIdentifier, "The commands by their identifiers.")
          .property("url", &PluginBundle::url, "The plug-in's folder.")
          .operation("urlForResourceNamed:", &PluginBundle::urlForResourceNamed,
                     "Returns a file in Contents/Resources, or nil if there is no such file.");
  return kClass;
}

Result<PluginBundleRef> PluginBundle::open(const QString& path) {
  const auto bundle = std::make_shared<PluginBundle>();
  bundle->path_ = path;
  const QString file = QDir(path).filePath(u"Contents/Sketch/manifest.json"_s);
  const Result<QByteArray> bytes = File::readAll(file, kMaxManifest);
  if (!bytes) return tl::unexpected(bytes.error());
  const Result<void> read = Json::read(*bytes).and_then(
      [&](const QVariant& manifest) { return bundle->readManifest(manifest.toMap()); });
  if (!read) return failureIn(u"%1 is not a valid plug-in manifest"_s.arg(file), read.error());
  return bundle;
}

Result<void> PluginBundle::readManifest(const QVariantMap& manifest) {
  manifest_ = manifest;
  for (const QVariant& each : manifest[u"commands"_s].toList()) {
    if (const Result<void> added = addCommand(each.toMap()); !added) return added;
  }
  if (entries_.isEmpty()) return failure(Error::Kind::Damaged, u"it has no \"commands\""_s);
  return {};
}

Result<void> PluginBundle::addCommand(const QVariantMap& command) {
  PluginCommand::Description description{.identifier = textIn(command, u"identifier"_s),
                                         .name = command[u"name"_s].toString(),
                                         .script = textIn(command, u"script"_s),
                                         .handlers = handlersOf(command)};
  const QString& identifier = description.identifier;
  const QString which = !identifier.isNull() ? u"the command "_s + identifier
                        : description.name.isEmpty()
                            ? u"a command"_s
                            : u"the command \"%1\""_s.arg(description.name);
  if (identifier.isNull() && !onlyHandlesActions(command, description.handlers)) {
    return failure(Error::Kind::Damaged, which + u" has no \"identifier\""_s);
  }
  if (description.script.isNull()) {
    return failure(Error::Kind::Damaged, which + u" has no \"script\""_s);
  }
  if (!identifier.isNull() && this->command(identifier)) {
    return failure(Error::Kind::Damaged, u"two commands are called %1"_s.arg(identifier));
  }
  add(std::move(description));
  return {};
}

void PluginBundle::add(PluginCommand::Description description) {
  const QDir scripts(QDir(path_).filePath(u"Contents/Sketch"_s));
  description.script = fileIgnoringCase(scripts.path(), description.script);
  const auto plugin = std::static_pointer_cast<PluginBundle>(shared_from_this());
  const auto command = std::make_shared<PluginCommand>(plugin, std::move(description));
  entries_.append(command);
  if (!command->identifier().isNull()) commands_.append(command);
}

QUrl PluginBundle::url() const {
  return QUrl::fromLocalFile(QDir::cleanPath(absoluteFileName(path_)));
}

QVariant PluginBundle::urlForResourceNamed(const QString& name) const {
  const QString file = QDir(absoluteFileName(path_)).filePath(u"Contents/Resources/"_s + name);
  return fileExists(file) ? QVariant(QUrl::fromLocalFile(file)) : QVariant();
}

PluginCommandRef PluginBundle::command(const QString& identifier) const {
  for (const PluginCommandRef& each : commands_) {
    if (each->identifier() == identifier) return each;
  }
  return nullptr;
}

QList<PluginCommandRef> PluginBundle::listeners(const QString& action) const {
  QList<PluginCommandRef> found;
  for (const PluginCommandRef& each : entries_) {
    if (!each->handlerOf(action).isNull()) found.append(each);
  }
  return found;
}

QStringList PluginBundle::actions() const {
  QStringList names;
  for (const PluginCommandRef& each : entries_) names += each->handlers().actions.keys();
  names.removeDuplicates();
  return names;
}

}  // namespace kelvar
