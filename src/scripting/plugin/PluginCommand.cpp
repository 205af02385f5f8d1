#include "scripting/plugin/PluginCommand.h"

#include <QFileInfo>

#include "platform/plist/Json.h"
#include "runtime/ClassInfo.h"
#include "scripting/plugin/PluginBundle.h"
#include "sketch/classes/MSDocumentData.h"

namespace kelvar {

using namespace Qt::StringLiterals;

namespace {

[[noreturn]] void fail(const QString& message) {
  throw std::invalid_argument(message.toStdString());
}

QString ownIdentifier(const PluginCommand& self) {
  if (!self.owner().isEmpty()) return self.owner();
  fail(u"the plug-in's manifest has no \"identifier\" to keep values under"_s);
}

/// A layer or a document, which keep a dictionary for each plug-in.
class Owner {
 public:
  /// Scripts also pass a document's data. `key` is for the message.
  Owner(const QVariant& owner, const QString& key) {
    const ObjectRef object = owner.value<ObjectRef>();
    layer_ = std::dynamic_pointer_cast<SketchLayer>(object);
    document_ = std::dynamic_pointer_cast<SketchDocument>(object);
    if (const auto data = std::dynamic_pointer_cast<MSDocumentData>(object)) {
      document_ = data->documentRef();
    }
    if (layer_ || document_) return;
    fail(u"the value \"%1\" belongs to a layer or a document, and this is neither"_s.arg(key));
  }

  QVariantMap values(const QString& identifier) const {
    return layer_ ? layer_->userInfo(identifier) : document_->userInfo(identifier);
  }
  void setValues(const QString& identifier, const QVariantMap& values) {
    if (layer_) return layer_->setUserInfo(identifier, values);
    document_->setUserInfo(identifier, values);
  }

 private:
  SketchLayerRef layer_;
  SketchDocumentRef document_;
};

QVariant valueOnFor(const PluginCommand&, const QString& key, const QVariant& owner,
                    const QString& identifier) {
  return Owner(owner, key).values(identifier).value(key);
}

/// None removes the value.
void setValueOnFor(PluginCommand&, const QVariant& value, const QString& key, const QVariant& on,
                   const QString& identifier) {
  Owner owner(on, key);
  QVariantMap values = owner.values(identifier);
  if (!value.isValid() || value.isNull()) {
    values.remove(key);
  } else if (Json::isValidObject(QVariantMap{{key, value}})) {
    values.insert(key, value);
  } else {
    fail(
        u"the value \"%1\" cannot be kept in a document: only strings, numbers, booleans, lists "
        u"and dictionaries can"_s.arg(key));
  }
  owner.setValues(identifier, values);
}

QVariant valueOn(const PluginCommand& self, const QString& key, const QVariant& owner) {
  return valueOnFor(self, key, owner, ownIdentifier(self));
}

void setValueOn(PluginCommand& self, const QVariant& value, const QString& key,
                const QVariant& owner) {
  setValueOnFor(self, value, key, owner, ownIdentifier(self));
}

}  // namespace

const ClassInfo& PluginCommand::staticClassInfo() {
  static const ClassInfo kClass =
      ClassInfoBuilder<PluginCommand>("PluginCommand")
          .property("identifier", &PluginCommand::identifier, "The command's identifier.")
          .property("name", &PluginCommand::name, "The command's name.")
          .property("pluginBundle", &PluginCommand::pluginBundle, "The plug-in.")
          .operation("valueForKey:onLayer:", valueOn,
                     "Returns a value that the plug-in has set on the layer, or nil.")
          .operation("setValue:forKey:onLayer:", setValueOn,
                     "Sets a value of the plug-in on the layer, in the document; nil removes it.")
          .operation("valueForKey:onLayer:forPluginIdentifier:", valueOnFor,
                     "Returns a value that the plug-in with this identifier has set on the layer, "
                     "or nil.")
          .operation("setValue:forKey:onLayer:forPluginIdentifier:", setValueOnFor,
                     "Sets a value on the layer as the plug-in with this identifier.")
          .operation("valueForKey:onDocument:", valueOn,
                     "Returns a value that the plug-in has set on the document, or nil.")
          .operation("setValue:forKey:onDocument:", setValueOn,
                     "Sets a value of the plug-in on the document; nil removes it.")
          .operation("valueForKey:onDocument:forPluginIdentifier:", valueOnFor,
                     "Returns a value that the plug-in with this identifier has set on the "
                     "document, or nil.")
          .operation("setValue:forKey:onDocument:forPluginIdentifier:", setValueOnFor,
                     "Sets a value on the document as the plug-in with this identifier.");
  return kClass;
}

PluginCommand::PluginCommand(const std::shared_ptr<PluginBundle>& plugin, Description description)
    : plugin_(plugin),
      description_(std::move(description)),
      owner_(plugin ? plugin->identifier() : description_.identifier) {}

PluginCommandRef PluginCommand::ofScript(const QString& path) {
  const QFileInfo file(path);
  return std::make_shared<PluginCommand>(nullptr, Description{.identifier = file.fileName(),
                                                              .name = file.completeBaseName(),
                                                              .script = path,
                                                              .handlers = {}});
}

QString PluginCommand::handlerOf(const QString& action) const {
  const auto& actions = handlers().actions;
  return actions.value(action, actions.value(action.section(u'.', 0, 0)));
}

}  // namespace kelvar
