#pragma once

#include <JavaScriptCore/JavaScript.h>

#include <QString>
#include <span>
#include <vector>

/// Functions that the engine exports but that the headers in Debian's package do not declare.
extern "C" {
using JSShouldTerminateCallback = bool (*)(JSContextRef context, void* data);
/// Calls back once, after `limit` seconds of processor time in a script; a callback that returns
/// true ends the script. Applies only to scripts that are started after it is set.
void JSContextGroupSetExecutionTimeLimit(JSContextGroupRef group, double limit,
                                         JSShouldTerminateCallback callback, void* data);
void JSReportExtraMemoryCost(JSContextRef context, size_t bytes);
void JSGlobalContextSetUnhandledRejectionCallback(JSGlobalContextRef context, JSObjectRef function,
                                                  JSValueRef* exception);

using JSWeakRef = struct OpaqueJSWeak*;
JSWeakRef JSWeakCreate(JSContextGroupRef group, JSObjectRef object);
void JSWeakRelease(JSContextGroupRef group, JSWeakRef weak);
/// Null once the object is gone.
JSObjectRef JSWeakGetObject(JSWeakRef weak);
}

namespace kelvar {

/// A string of the engine.
class EngineString {
 public:
  explicit EngineString(const QString& text)
      : string_(JSStringCreateWithCharacters(reinterpret_cast<const JSChar*>(text.utf16()),
                                             size_t(text.size()))) {}
  /// Takes ownership of a string that the engine made. Null is the empty string.
  explicit EngineString(JSStringRef made) : string_(made) {}
  ~EngineString() {
    if (string_) JSStringRelease(string_);
  }
  EngineString(const EngineString&) = delete;
  EngineString& operator=(const EngineString&) = delete;

  operator JSStringRef() const { return string_; }
  QString text() const {
    return string_ ? QString(reinterpret_cast<const QChar*>(JSStringGetCharactersPtr(string_)),
                             qsizetype(JSStringGetLength(string_)))
                   : QStringLiteral("");
  }

 private:
  JSStringRef string_;
};

/// A list of arguments that is built step by step. The engine's garbage collector finds values on
/// the stack, but not those in a vector.
class EngineArguments {
 public:
  explicit EngineArguments(JSContextRef context) : context_(context) {}
  ~EngineArguments() {
    for (const JSValueRef each : values_) JSValueUnprotect(context_, each);
  }
  EngineArguments(const EngineArguments&) = delete;
  EngineArguments& operator=(const EngineArguments&) = delete;

  void append(JSValueRef value) {
    JSValueProtect(context_, value);
    values_.push_back(value);
  }
  operator std::span<const JSValueRef>() const { return values_; }
  /// For changing their order.
  std::span<JSValueRef> values() { return values_; }

 private:
  const JSContextRef context_;
  std::vector<JSValueRef> values_;
};

}  // namespace kelvar
