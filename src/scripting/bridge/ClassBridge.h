#pragma once

#include <QHash>
#include <QStringList>
#include <vector>

#include "runtime/ClassInfo.h"
#include "scripting/bridge/DelegateBindings.h"
#include "scripting/bridge/EngineContext.h"
#include "scripting/bridge/GraphConverter.h"
#include "scripting/bridge/ProtocolBindings.h"
#include "scripting/bridge/ValueConverter.h"
#include "scripting/bridge/WrapperTable.h"

namespace kelvar {

/// Described classes as a script sees them: objects with the classes' operations, and prototypes
/// with those of their instances. No class is known here by name: everything comes from the
/// descriptions. Main thread.
class ClassBridge {
 public:
  ClassBridge(const EngineContext& context, WrapperTable& wrappers, const ValueConverter& values,
              DelegateBindings& delegates, ProtocolBindings& protocols, GraphConverter& graphs);

  /// The class as an object, made when it is first requested.
  JSObjectRef classObject(const ClassInfo& info);
  /// The prototype of the class's instances, made when it is first requested.
  JSObjectRef instancePrototype(const ClassInfo& info);
  /// Assigns a member of an instance. Returns false for one that no operation sets.
  bool setMember(JSObjectRef self, const ClassInfo& info, const QString& name, JSValueRef value);
  /// A function that performs a class operation.
  JSObjectRef functionOf(const ClassInfo& info, const ClassInfo::Operation& operation);

  /// Stores what a delegate threw while an operation that the script called was running; the
  /// operation's caller throws it once that returns. No delegate may be called until then.
  void setPendingException(JSValueRef value);
  bool hasPendingException() const { return pendingException_ != nullptr; }

 private:
  using Call = EngineContext::Call;
  using Function = EngineContext::Function;
  /// Operations with the same name in scripts, by ascending number of arguments.
  using Candidates = std::vector<const ClassInfo::Operation*>;

  struct ClassObjects {
    JSObjectRef classObject = nullptr;
    /// Prototypes of instances, and of what `alloc` returns.
    JSObjectRef instance = nullptr;
    JSObjectRef allocated = nullptr;
    /// What assigns the members of instances.
    QHash<QString, Function> setters;
  };

  JSObjectRef makePrototype(const ClassInfo& info, ClassInfo::Kind kind);
  void define(JSObjectRef target, const QString& name, Function body, JSValueRef set) const;
  void defineOperations(JSObjectRef target, const ClassInfo& info, ClassInfo::Kind kind);
  void defineClassBasics(JSObjectRef target, const ClassInfo& info);
  void defineObjectBasics(JSObjectRef target);
  Function setter(const ClassInfo& info, ClassInfo::Kind kind, const QString& name);
  Function method(const ClassInfo& info, ClassInfo::Kind kind, const QString& name,
                  Candidates candidates);
  JSObjectRef missingMemberProxy(const ClassInfo& info, ClassInfo::Kind kind);

  ObjectRef objectBehind(JSObjectRef self, const ClassInfo& info, const QString& name) const;
  JSValueRef initialize(const ClassInfo& info, const ClassInfo::Operation& operation,
                        const Call& call);
  JSValueRef invoke(const ClassInfo& info, const ClassInfo::Operation& operation, const Call& call,
                    const ObjectRef& self);
  QVariantList argumentsOf(const ClassInfo& info, const ClassInfo::Operation& operation,
                           const Call& call);
  QString placeOf(const ClassInfo& info, const ClassInfo::Operation& operation,
                  const Call& call) const;
  QVariant asNumberOrText(JSValueRef value, const ValueType& type) const;
  QVariant argumentOf(JSValueRef value, const ValueType& type);
  QVariant objectFor(JSValueRef value, const ClassInfo& info, const ValueType* type);
  QVariant objectsFor(JSValueRef list, const ClassInfo& info);
  QVariant perform(const ClassInfo::Operation& operation, Object* self,
                   const QVariantList& arguments);

  const EngineContext& context_;
  WrapperTable& wrappers_;
  const ValueConverter& values_;
  DelegateBindings& delegates_;
  ProtocolBindings& protocols_;
  GraphConverter& graphs_;
  QHash<const ClassInfo*, ClassObjects> classObjects_;
  JSValueRef pendingException_ = nullptr;
};

}  // namespace kelvar
