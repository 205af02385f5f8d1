#pragma once

#include <QVariant>
#include <memory>
#include <type_traits>
#include <utility>

#include "runtime/Conversion.h"
#include "runtime/ValueType.h"

namespace kelvar {

/// Operations by selector that are implemented outside of the library, by a script's object.
class KELVAR_EXPORT Implementation {
 public:
  virtual ~Implementation();

  virtual bool respondsTo(const QString& selector) const = 0;
  /// Calls an operation, whose result must be of the given type. Invalid if there is no such
  /// operation or it fails, which the implementation reports to the script.
  virtual QVariant call(const QString& selector, const QVariantList& arguments,
                        const ValueType& result) const = 0;
};

using ImplementationRef = std::shared_ptr<const Implementation>;

/// Base of the adapters: a protocol has one, a class that derives from the protocol's class and
/// from this one and forwards each operation. Main thread.
class KELVAR_EXPORT Implemented {
 public:
  explicit Implemented(ImplementationRef implementation)
      : implementation_(std::move(implementation)) {}
  virtual ~Implemented();

  const ImplementationRef& implementation() const { return implementation_; }

 protected:
  bool respondsTo(const char* selector) const {
    return implementation_->respondsTo(QString::fromLatin1(selector));
  }

  /// A result of the wrong type, or of a call that failed, becomes a default-constructed one.
  template <class R = void, class... A>
  R call(const char* selector, const A&... arguments) const {
    const QVariant result = implementation_->call(
        QString::fromLatin1(selector), {argumentToVariant(arguments)...}, valueType<R>());
    if constexpr (!std::is_void_v<R>) return fromVariant<R>(result).value_or(R{});
  }

 private:
  const ImplementationRef implementation_;
};

}  // namespace kelvar
