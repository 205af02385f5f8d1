#pragma once

#include <JavaScriptCore/JavaScript.h>

#include <QString>
#include <span>
#include <vector>

/// What the engine exports without declaring it in the headers that Debian installs.
extern "C" {
using JSShouldTerminateCallback = bool (*)(JSContextRef context, void* data);
/// Calls back after so many seconds of processor time in a script, once: whoever goes on sets the
/// limit again. True ends the script. Counts only for scripts that are begun after it is set.
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

/// A string of the engine's.
class EngineString {
 public:
  explicit EngineString(const QString& text)
      : string_(JSStringCreateWithCharacters(reinterpret_cast<const JSChar*>(text.utf16()),
                                             size_t(text.size()))) {}
  /// Takes over what the engine has made; null stands for the empty string.
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

/// Arguments that are put together one after the other. The engine's collector looks for values on
/// the stack, but not in a vector.
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
  /// To be put into another order.
  std::span<JSValueRef> values() { return values_; }

 private:
  const JSContextRef context_;
  std::vector<JSValueRef> values_;
};

}  // namespace kelvar
