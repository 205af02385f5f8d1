#pragma once

#include <QStringList>
#include <QVariant>
#include <functional>
#include <memory>
#include <utility>
#include <vector>

#include "runtime/ValueType.h"

namespace kelvar {

/// What scripts know of a delegate, a struct of `std::function` members: its name and, by selector,
/// the operations that it may implement.
///
/// Described once, beside the struct's own code, and found through the properties that take it:
///
///     const DelegateInfo& KVVersionCheckerDelegate::theDelegate() {
///       using Self = KVVersionCheckerDelegate;
///       static const DelegateInfo kDelegate =
///       DelegateDescription<Self>("KVVersionCheckerDelegate")
///                                                 .operation("checkerDidFinish:",
///                                                            &Self::checkerDidFinish);
///       return kDelegate;
///     }
///
/// The sender's class then describes `property("delegate", &Self::delegate, &Self::setDelegate)`,
/// where the delegate is a `std::weak_ptr`.
class KELVAR_EXPORT DelegateInfo {
 public:
  /// Stands behind one operation. Objects among the arguments come as `ObjectRef`.
  using Handler = std::function<QVariant(const QVariantList& arguments)>;

  struct Operation {
    QString selector;
    std::vector<ValueType> parameters;
    ValueType result;
    /// Has the member of `delegate` call the handler; an empty one empties the member. A result
    /// that does not fit becomes the type's empty value.
    std::function<void(void* delegate, const Handler& handler)> implement;
  };

  const QString& name() const { return name_; }
  /// In the order in which they are described.
  const std::vector<Operation>& operations() const { return operations_; }

  /// A delegate that implements nothing yet.
  std::shared_ptr<void> make() const { return make_(); }
  /// One that `make` has made, in the form in which properties take it. It does not live on by
  /// being set: delegates are weak.
  QVariant toVariant(const std::shared_ptr<void>& delegate) const { return toVariant_(delegate); }
  /// The delegate that properties give; null for none.
  std::shared_ptr<void> fromVariant(const QVariant& delegate) const {
    return fromVariant_(delegate);
  }

  /// An object that is such a delegate by its class, in the form in which properties take it;
  /// invalid for any other. And the object that is the delegate; null when it is none.
  QVariant fromObject(const ObjectRef& object) const { return fromObject_(object); }
  ObjectRef toObject(const QVariant& delegate) const { return toObject_(delegate); }

 private:
  template <class D, class Interface>
  friend class DelegateDescription;

  QString name_;
  std::vector<Operation> operations_;
  std::shared_ptr<void> (*make_)() = nullptr;
  QVariant (*toVariant_)(const std::shared_ptr<void>& delegate) = nullptr;
  std::shared_ptr<void> (*fromVariant_)(const QVariant& delegate) = nullptr;
  QVariant (*fromObject_)(const ObjectRef& object) = nullptr;
  ObjectRef (*toObject_)(const QVariant& delegate) = nullptr;
};

/// What a delegate is told, as a value. An object that nobody shares comes as none.
template <class T>
QVariant argumentToVariant(const T& argument) {
  if constexpr (std::is_base_of_v<Object, T>) {
    return toVariant(std::const_pointer_cast<Object>(
        static_cast<const Object&>(argument).weak_from_this().lock()));
  } else {
    return toVariant(argument);
  }
}

/// Writes a `DelegateInfo` down. Where properties take an `Interface` that objects may implement,
/// `D` implements it by its members.
template <class D, class Interface = D>
class DelegateDescription {
 public:
  explicit DelegateDescription(const char* name) {
    info_.name_ = QString::fromLatin1(name);
    info_.make_ = []() -> std::shared_ptr<void> { return std::make_shared<D>(); };
    info_.toVariant_ = [](const std::shared_ptr<void>& delegate) {
      return QVariant::fromValue<std::shared_ptr<Interface>>(std::static_pointer_cast<D>(delegate));
    };
    info_.fromVariant_ = [](const QVariant& delegate) -> std::shared_ptr<void> {
      if constexpr (kIsInterface) {
        return std::dynamic_pointer_cast<D>(delegate.value<std::shared_ptr<Interface>>());
      } else {
        return delegate.value<std::shared_ptr<D>>();
      }
    };
    info_.fromObject_ = []([[maybe_unused]] const ObjectRef& object) {
      if constexpr (kIsInterface)
        return kelvar::toVariant(std::dynamic_pointer_cast<Interface>(object));
      return QVariant();
    };
    info_.toObject_ = []([[maybe_unused]] const QVariant& delegate) {
      if constexpr (kIsInterface) {
        // Who is its own delegate is held there without being owned.
        const auto held = delegate.value<std::shared_ptr<Interface>>();
        if (auto* const object = dynamic_cast<Object*>(held.get()))
          return object->weak_from_this().lock();
      }
      return ObjectRef();
    };
  }

  operator DelegateInfo() && { return std::move(info_); }

  template <class R, class... A>
  DelegateDescription&& operation(const char* selector, std::function<R(A...)> D::*member) && {
    const auto implement = [member](void* delegate, const DelegateInfo::Handler& handler) {
      std::function<R(A...)>& function = static_cast<D*>(delegate)->*member;
      function = nullptr;
      if (!handler) return;
      function = [handler](A... arguments) -> R {
        const QVariant result = handler({argumentToVariant(arguments)...});
        if constexpr (!std::is_void_v<R>) {
          return fromVariant<std::decay_t<R>>(result).value_or(std::decay_t<R>{});
        }
      };
    };
    info_.operations_.push_back({QString::fromLatin1(selector),
                                 {valueType<std::decay_t<A>>()...},
                                 valueType<std::decay_t<R>>(),
                                 implement});
    return std::move(*this);
  }

 private:
  static constexpr bool kIsInterface = !std::is_same_v<D, Interface>;

  DelegateInfo info_;
};

}  // namespace kelvar
