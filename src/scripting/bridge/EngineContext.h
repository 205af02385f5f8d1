#pragma once

#include <QString>
#include <QStringList>
#include <functional>
#include <initializer_list>
#include <span>
#include <stdexcept>

#include "scripting/bridge/Engine.h"

namespace kelvar {

/// An error from our code on its way to the script, where it becomes an `Error` with this message.
struct NativeError : std::runtime_error {
  /// `place` is where in a value the message applies, as steps: ".key" or "[index]".
  explicit NativeError(const QString& message, const QString& place = {})
      : std::runtime_error(textOf(message, place).toStdString()), message(message), place(place) {}

  /// The same within the part of a value that `step` leads to.
  NativeError within(const QString& step) const { return NativeError(message, step + place); }

  QString message;
  QString place;

 private:
  static QString textOf(const QString& message, const QString& place) {
    if (place.isEmpty()) return message;
    return place.sliced(place.startsWith(u'.') ? 1 : 0) + QStringLiteral(": ") + message;
  }
};

/// A value that the script threw, on its way through our code.
struct ThrownValue {
  JSValueRef value;
};

/// What the private data of every object that the bridge makes begins with. All such data must, so
/// that the kind of an object is known without a call that locks the engine.
struct EngineData {
  enum class Kind { Function, Wrapper, Class };
  Kind kind;
};

/// A script's context, with the engine's functions in terms of Qt's strings and C++ exceptions: an
/// exception of the script is a `ThrownValue` here, and any `std::exception` that leaves a function
/// made here is an `Error` there. Main thread.
class EngineContext {
 public:
  struct Call {
    JSObjectRef self;
    std::span<const JSValueRef> arguments;
  };
  using Function = std::function<JSValueRef(const Call& call)>;

  /// The context must be released before this object is destroyed.
  explicit EngineContext(JSGlobalContextRef context);
  ~EngineContext();
  EngineContext(const EngineContext&) = delete;
  EngineContext& operator=(const EngineContext&) = delete;

  operator JSContextRef() const { return context_; }
  JSContextGroupRef group() const { return JSContextGetGroup(context_); }
  JSObjectRef global() const { return JSContextGetGlobalObject(context_); }

  JSObjectRef function(Function function) const;
  /// Runs a call from the script into our code, and turns what it throws and what the permissions
  /// refuse into the script's exception.
  static void guard(JSContextRef context, JSValueRef* exception, const std::function<void()>& call);
  JSObjectRef error(const QString& message) const;
  JSValueRef string(const QString& text) const;
  JSValueRef number(double number) const { return JSValueMakeNumber(context_, number); }
  JSValueRef boolean(bool boolean) const { return JSValueMakeBoolean(context_, boolean); }
  JSValueRef undefined() const { return JSValueMakeUndefined(context_); }
  JSValueRef null() const { return JSValueMakeNull(context_); }

  /// The value converted to a string.
  QString text(JSValueRef value) const;
  /// The value as `print` shows it.
  QString described(JSValueRef value) const;
  /// The value if it is an object, null otherwise.
  JSObjectRef object(JSValueRef value) const {
    // An object is its own reference. JSValueToObject is the same, but locks the engine.
    return JSValueIsObject(context_, value) ? const_cast<JSObjectRef>(value) : nullptr;
  }
  /// The private data of an object that the bridge made; null for any other value.
  EngineData* dataOf(JSValueRef value) const {
    const JSObjectRef made = object(value);
    return made ? static_cast<EngineData*>(JSObjectGetPrivate(made)) : nullptr;
  }
  /// The value if it is a function, null otherwise.
  JSObjectRef functionOrNull(JSValueRef value) const;

  JSValueRef get(JSObjectRef object, const QString& name) const;
  void set(JSObjectRef object, const QString& name, JSValueRef value) const;
  /// Of the properties that a loop over the object sees.
  QStringList namesOf(JSObjectRef object) const;
  /// Either accessor may be null.
  void defineAccessor(JSObjectRef object, const QString& name, JSObjectRef get,
                      JSObjectRef set) const;

  JSValueRef call(JSObjectRef function, JSObjectRef self,
                  std::span<const JSValueRef> arguments) const;
  /// Calls a function of the prelude: Prelude.js and the folders foundation and host.
  JSValueRef callPrelude(const char* name, std::initializer_list<JSValueRef> arguments) const;
  JSObjectRef prelude(const char* name) const;

 private:
  struct FunctionData;

  JSObjectRef evaluateEmbedded(const char* script) const;
  static JSValueRef callFunction(JSContextRef context, JSObjectRef function, JSObjectRef self,
                                 size_t count, const JSValueRef arguments[], JSValueRef* exception);
  static void finalizeFunction(JSObjectRef function);

  const JSGlobalContextRef context_;
  JSClassRef functionClass_;
  JSObjectRef functionPrototype_ = nullptr;
  JSObjectRef prelude_ = nullptr;
};

}  // namespace kelvar
