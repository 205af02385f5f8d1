#pragma once

#include <QVariant>

#include "runtime/ValueType.h"
#include "scripting/bridge/EngineContext.h"
#include "scripting/bridge/WrapperTable.h"

namespace kelvar {

/// Converts values between scripts and our code. Objects become wrappers, boxed values their
/// objects, and structures objects of Prelude.js. Main thread.
class ValueConverter {
 public:
  /// Also adds our methods to the script's strings, bytes and lists.
  ValueConverter(const EngineContext& context, WrapperTable& wrappers);

  /// Throws `NativeError` for a type that scripts do not know.
  JSValueRef toScript(const QVariant& value) const;
  /// Throws `NativeError` for a value that cannot be converted. `type`, if it is known, tells
  /// structures from dictionaries.
  QVariant toNative(JSValueRef value, const ValueType* type = nullptr) const;
  /// Whether it is a list, a dictionary or bytes, and no object of a class.
  bool isContainer(JSObjectRef object) const;
  JSObjectRef newDictionary() const;
  /// What kind of value it is, for error messages: "string", "list", "KVRect".
  QString kindOf(JSValueRef value) const;

 private:
  void extendValues() const;
  void shuffleList(JSObjectRef list) const;
  JSValueRef integerToScript(qlonglong integer) const;
  JSValueRef integerToScript(qulonglong integer) const;
  JSValueRef bytesToScript(const QByteArray& bytes) const;
  JSValueRef structToScript(const QVariant& value) const;
  JSValueRef listToScript(const QVariantList& list) const;
  JSValueRef mapToScript(const QVariantMap& map) const;
  JSValueRef objectToScript(const QVariant& value) const;

  /// A list or dictionary that is being converted.
  struct Level {
    JSObjectRef container;
    const Level* outer;
    int depth;
  };

  static Level enter(JSObjectRef container, const Level* outer);
  QVariant toNative(JSValueRef value, const ValueType* type, const Level* outer) const;
  QVariant integerToNative(JSValueRef value) const;
  QVariant objectToNative(JSObjectRef object, const ValueType* type, const Level* outer) const;
  QVariant wrapperToNative(JSObjectRef wrapper) const;
  QVariant dateToNative(JSObjectRef date) const;
  QVariant bytesToNative(JSObjectRef bytes) const;
  QVariant structToNative(JSObjectRef object, QMetaType type) const;
  QVariant listToNative(JSObjectRef list, const Level* outer) const;
  QVariant mapToNative(JSObjectRef map, const Level* outer) const;
  double member(JSObjectRef structure, const char* name) const;

  const EngineContext& context_;
  WrapperTable& wrappers_;
};

}  // namespace kelvar
