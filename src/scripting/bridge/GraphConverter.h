#pragma once

#include <QSet>
#include <QVariant>
#include <memory>
#include <unordered_map>

#include "runtime/Object.h"
#include "runtime/ObjectGraph.h"
#include "scripting/bridge/ValueConverter.h"

namespace kelvar {

/// Converts graphs, whose lists, dictionaries and bytes keep their identity: a script's list is the
/// same list of ours at each conversion, as long as both are alive, and the reverse. Main thread.
class GraphConverter {
 public:
  GraphConverter(const EngineContext& context, const ValueConverter& values)
      : context_(context), values_(values) {}
  void close();

  /// These throw what `ValueConverter` throws.
  ObjectGraph toNative(JSValueRef value);
  JSValueRef toScript(const ObjectGraph& graph);

  /// Forgets the pairs of which the script's part is gone.
  void collect();

 private:
  struct Pair {
    std::weak_ptr<Object> object;
    JSWeakRef script;
    /// Whether the script's part was there first: then ours is emptied with it, so that it does not
    /// own itself.
    bool isOfScript;
  };
  /// What one conversion has been through.
  struct Visit {
    QSet<const void*> containers;
    int depth = 0;
  };

  QVariant native(JSValueRef value, Visit& visit);
  QVariant container(JSObjectRef script, Visit& visit);
  ObjectRef known(JSObjectRef script) const;
  QVariantList elements(JSObjectRef list, Visit& visit);
  QVariantMap entries(JSObjectRef dictionary, Visit& visit);

  JSValueRef script(const QVariant& value);
  JSValueRef scriptContainer(const ObjectRef& object);
  void fill(JSObjectRef list, const QVariantList& values);
  void fill(JSObjectRef dictionary, const QVariantMap& values);

  void pair(const ObjectRef& object, JSObjectRef script, bool isOfScript);

  const EngineContext& context_;
  const ValueConverter& values_;
  std::unordered_map<const Object*, Pair> pairs_;
  std::unordered_map<JSObjectRef, const Object*> byScript_;
};

}  // namespace kelvar
