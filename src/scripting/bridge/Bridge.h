#pragma once

#include <utility>

#include "scripting/bridge/ClassBridge.h"
#include "scripting/bridge/DelegateBindings.h"
#include "scripting/bridge/EngineContext.h"
#include "scripting/bridge/GraphConverter.h"
#include "scripting/bridge/NativeFunctions.h"
#include "scripting/bridge/ProtocolBindings.h"
#include "scripting/bridge/SelectorFunctions.h"
#include "scripting/bridge/ValueConverter.h"
#include "scripting/bridge/WrapperTable.h"

namespace kelvar {

/// Our classes, objects and values in a script: joins the parts of the bridge, each of which uses
/// only those before it. Main thread.
class Bridge {
 public:
  /// `enter` runs every call into the script that does not come from the script itself, and handles
  /// what it throws.
  Bridge(JSGlobalContextRef context, SelectorFunctions::Enter enter)
      : context_(context),
        wrappers_(
            context_, [this](const ClassInfo& info) { return classes_.instancePrototype(info); },
            [this](JSObjectRef self, const ClassInfo& info, const QString& name, JSValueRef value) {
              return classes_.setMember(self, info, name, value);
            }),
        values_(context_, wrappers_),
        functions_(context_, values_, std::move(enter)),
        delegates_(context_, wrappers_, values_, functions_),
        protocols_(functions_, wrappers_),
        graphs_(context_, values_),
        classes_(context_, wrappers_, values_, delegates_, protocols_, graphs_),
        native_(context_, wrappers_, classes_) {}
  Bridge(const Bridge&) = delete;
  Bridge& operator=(const Bridge&) = delete;

  const EngineContext& context() const { return context_; }
  const ValueConverter& values() const { return values_; }
  ClassBridge& classes() { return classes_; }

  /// Releases what the bridge holds of the script. Only the destructor may follow, after the
  /// context has been released.
  void close() {
    wrappers_.close();
    delegates_.close();
    protocols_.close();
    graphs_.close();
  }

  /// To be called between two turns of the event loop.
  void collect() {
    wrappers_.collect();
    delegates_.collect();
    protocols_.collect();
    graphs_.collect();
  }

 private:
  const EngineContext context_;
  WrapperTable wrappers_;
  const ValueConverter values_;
  const SelectorFunctions functions_;
  DelegateBindings delegates_;
  ProtocolBindings protocols_;
  GraphConverter graphs_;
  ClassBridge classes_;
  const NativeFunctions native_;
};

}  // namespace kelvar
