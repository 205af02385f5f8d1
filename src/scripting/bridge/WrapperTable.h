#pragma once

#include <QSet>
#include <functional>
#include <list>
#include <memory>
#include <mutex>
#include <unordered_map>
#include <vector>

#include "runtime/ClassInfo.h"
#include "scripting/BoxTable.h"
#include "scripting/bridge/EngineContext.h"

namespace kelvar {

/// The script objects that stand for ours: a wrapper for each object, an object for each class.
///
/// There is one wrapper for an object at a time. It holds a reference to the object for as long as
/// the script can reach the wrapper. A wrapper whose object has a delegate is also kept alive while
/// something of ours holds the object, such as a request that is waiting for its answer, since the
/// wrapper is what keeps the delegate alive. Main thread.
class WrapperTable {
 public:
  /// Returns the prototype of a class's instances.
  using Prototype = std::function<JSObjectRef(const ClassInfo& info)>;

  /// Assigns a member of an instance; returns false if there is no such member to assign.
  using Setter = std::function<bool(JSObjectRef self, const ClassInfo& info, const QString& name,
                                    JSValueRef value)>;

  WrapperTable(const EngineContext& context, Prototype prototype, Setter setter);
  /// The context must have been released.
  ~WrapperTable();
  WrapperTable(const WrapperTable&) = delete;
  WrapperTable& operator=(const WrapperTable&) = delete;

  /// Releases what keeps script objects alive. Only the destructor may follow.
  void close();

  /// For an object of ours that forwards to a script object, that script object.
  JSObjectRef wrapper(const ObjectRef& object);
  /// The same for a value that scripts see as an object; null for any other value.
  JSObjectRef wrapperOfValue(const QVariant& value);
  /// A new wrapper without an object: what `alloc` returns.
  JSObjectRef allocate(const ClassInfo& info, JSObjectRef prototype);
  /// A new script object for the class.
  JSObjectRef makeClassObject(const ClassInfo& info);

  bool isWrapper(JSValueRef value) const { return dataOf(value) != nullptr; }
  /// The object behind a wrapper; null for any other value and for what `allocate` made.
  ObjectRef objectOf(JSValueRef value) const;
  /// The class of what `allocate` made; null for any other value.
  const ClassInfo* allocatedClassOf(JSValueRef value) const;
  /// The class behind a class's script object; null for any other value.
  const ClassInfo* classOf(JSValueRef value) const;

  /// The wrapper if the script can still reach it, or null.
  JSObjectRef existingWrapper(Object* object) const;
  /// Keeps a delegate alive for as long as the wrapper, until the same selector sets another.
  void retainDelegate(JSObjectRef wrapper, const QString& selector, JSValueRef delegate);
  /// For a wrapper with a delegate: protects it while its object has more than `references`
  /// references, including the wrapper's own.
  void protectWhileShared(JSObjectRef wrapper, long references);

  /// Between two turns: releases the objects of collected wrappers and finds out which objects may
  /// still have something to report to a delegate.
  void collect();

 private:
  struct WrapperData : EngineData {
    WrapperTable* table;
    ObjectRef object;
    /// The class of an object that is allocated but not initialized.
    const ClassInfo* allocated;
  };
  struct ClassData : EngineData {
    WrapperTable* table;
    const ClassInfo* info;
  };

  static void finalizeWrapper(JSObjectRef wrapper);
  static bool setMember(JSContextRef context, JSObjectRef wrapper, JSStringRef name,
                        JSValueRef value, JSValueRef* exception);
  static bool isInstance(JSContextRef context, JSObjectRef classObject, JSValueRef value,
                         JSValueRef* exception);

  const WrapperData* dataOf(JSValueRef value) const;
  JSObjectRef make(const ObjectRef& object, const ClassInfo* allocated, JSObjectRef prototype);
  void protect(JSObjectRef wrapper, bool isNeeded);
  void releaseFinalized();

  const EngineContext& context_;
  const Prototype prototype_;
  const Setter setter_;
  JSClassRef wrapperClass_;
  JSClassRef classClass_;
  std::list<ClassData> classes_;
  std::unordered_map<Object*, JSWeakRef> wrappers_;
  BoxTable boxes_;
  size_t wrappersMade_ = 0;
  /// Objects with a delegate, and those of their wrappers that are protected.
  QSet<Object*> delegating_;
  QSet<JSObjectRef> protected_;

  /// The engine may finalize a wrapper on any thread, but objects go on the main one.
  std::mutex finalizedMutex_;
  std::vector<std::unique_ptr<WrapperData>> finalized_;
};

/// Whether `info` is `base` or derived from it.
bool isKindOf(const ClassInfo& info, const ClassInfo& base);

}  // namespace kelvar
