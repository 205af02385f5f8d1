#include "runtime/ClassInfo.h"

#include <algorithm>
#include <mutex>

namespace kelvar {
namespace {

using StaticClassInfo = const ClassInfo& (*)();

/// Holds functions rather than descriptions, so that descriptions are built at the first lookup.
struct Registry {
  std::mutex mutex;
  std::vector<StaticClassInfo> classes;
};

Registry& registry() {
  static Registry kRegistry;
  return kRegistry;
}

template <class List, class Matches>
auto* firstOf(const List& list, Matches matches) {
  const auto found = std::find_if(list.begin(), list.end(), matches);
  return found == list.end() ? nullptr : &*found;
}

}  // namespace

ClassInfo::Registration::Registration(StaticClassInfo staticClassInfo)
    : staticClassInfo_(staticClassInfo) {
  const std::lock_guard lock(registry().mutex);
  registry().classes.push_back(staticClassInfo);
}

ClassInfo::Registration::~Registration() {
  const std::lock_guard lock(registry().mutex);
  std::erase(registry().classes, staticClassInfo_);
}

const ClassInfo* ClassInfo::find(const QString& name) {
  const std::lock_guard lock(registry().mutex);
  const StaticClassInfo* const found =
      firstOf(registry().classes,
              [&](StaticClassInfo staticClassInfo) { return staticClassInfo().name() == name; });
  return found ? &(*found)() : nullptr;
}

const ClassInfo::Property* ClassInfo::property(const QString& key) const {
  const auto found = firstOf(properties_, [&](const Property& each) { return each.key == key; });
  return found || !base_ ? found : base_->property(key);
}

const ClassInfo::Operation* ClassInfo::operation(Kind kind, const QString& selector) const {
  const auto found = firstOf(operations_, [&](const Operation& each) {
    return each.kind == kind && each.selector == selector;
  });
  return found || !base_ ? found : base_->operation(kind, selector);
}

std::optional<QVariant> ClassInfo::call(Object& self, const QString& selector,
                                        const QVariantList& arguments) const {
  const Operation* const found = operation(Kind::Operation, selector);
  return found ? found->call(&self, arguments) : std::nullopt;
}

std::optional<QVariant> ClassInfo::callClass(const QString& selector,
                                             const QVariantList& arguments) const {
  const Operation* const found = operation(Kind::ClassOperation, selector);
  return found ? found->call(nullptr, arguments) : std::nullopt;
}

ObjectRef ClassInfo::create(const QString& initializer, const QVariantList& arguments) const {
  // An inherited initializer would create an instance of the base.
  const Operation* const found = firstOf(operations_, [&](const Operation& each) {
    return each.kind == Kind::Initializer && each.selector == initializer;
  });
  return found ? found->call(nullptr, arguments).value_or(QVariant()).value<ObjectRef>() : nullptr;
}

}  // namespace kelvar
