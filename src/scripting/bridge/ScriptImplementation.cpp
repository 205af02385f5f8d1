#include "scripting/bridge/ScriptImplementation.h"

#include <QCoreApplication>
#include <QThread>
#include <utility>

#include "platform/Log.h"

namespace kelvar {
namespace {

bool isMainThread() {
  const QCoreApplication* const application = QCoreApplication::instance();
  return !application || QThread::currentThread() == application->thread();
}

}  // namespace

ScriptImplementation::ScriptImplementation(std::shared_ptr<Script> script, JSObjectRef object)
    : script_(std::move(script)), object_(object) {
  JSValueProtect(script_->functions->context(), object_);
}

ScriptImplementation::~ScriptImplementation() {
  const std::lock_guard lock(script_->mutex);
  if (script_->functions) script_->released.push_back(object_);
}

bool ScriptImplementation::respondsTo(const QString& selector) const {
  return isMainThread() && script_->functions && script_->functions->has(object_, selector);
}

QVariant ScriptImplementation::call(const QString& selector, const QVariantList& arguments,
                                    const ValueType& result) const {
  if (isMainThread() && script_->functions) {
    return script_->functions->call(object_, selector, arguments, result);
  }
  logLine(u"%@ was not called: its script has ended or runs on another thread", {selector});
  return {};
}

JSObjectRef ScriptImplementation::objectBehind(const Object* object, JSContextRef context) {
  const auto* const implemented = dynamic_cast<const Implemented*>(object);
  if (!implemented) return nullptr;
  const auto* const found =
      dynamic_cast<const ScriptImplementation*>(implemented->implementation().get());
  const bool isOurs = found && found->script_->functions &&
                      JSContextGetGlobalContext(found->script_->functions->context()) ==
                          JSContextGetGlobalContext(context);
  return isOurs ? found->object_ : nullptr;
}

}  // namespace kelvar
