#pragma once

#include <QStringList>
#include <QVariant>
#include <functional>
#include <memory>
#include <utility>
#include <vector>

#include "runtime/DelegateFunction.h"
#include "runtime/Sentence.h"
#include "runtime/ValueType.h"

namespace kelvar {

// clang-format off
/// What scripts know about a delegate, a struct of `DelegateFunction` members: its name and, by
/// selector, the operations that it may implement.
///
/// A delegate is described once, beside the struct's own code, and found through the properties
/// that take it. Each operation says when it is called and, if it returns something, what the
/// answer means:
///
///     const DelegateInfo& DoorDelegate::staticDelegateInfo() {
///       static const DelegateInfo kDelegate =
///           DelegateInfoBuilder<DoorDelegate>("DoorDelegate")
///               .operation("doorDidClose:", &DoorDelegate::doorDidClose,
///                          "Called after the door has closed.")
///               .operation("doorShouldOpen:", &DoorDelegate::doorShouldOpen,
///                          "Called before the door opens.", "False keeps the door closed.");
///       return kDelegate;
///     }
///
/// The sender's class then describes a property "delegate" of type `std::weak_ptr<DoorDelegate>`.
// clang-format on
class KELVAR_EXPORT DelegateInfo {
 public:
  /// Implements one operation. Objects among the arguments arrive as `ObjectRef`.
  using Handler = std::function<QVariant(const QVariantList& arguments)>;
  /// Whether the delegate implements an operation at the moment.
  using Condition = std::function<bool()>;

  struct Operation {
    QString selector;
    std::vector<ValueType> parameters;
    ValueType result;
    /// Makes the member of `delegate` call the handler; an empty handler clears the member. A
    /// result of the wrong type becomes a default-constructed one. Without a condition, the
    /// operation is always implemented.
    void implement(void* delegate, const Handler& handler,
                   const Condition& isImplemented = {}) const {
      setMember(delegate, handler, isImplemented);
    }
    std::function<void(void*, const Handler&, const Condition&)> setMember;
    /// When the operation is called.
    const char* when;
    /// What the result means; empty for operations without one.
    const char* answer;
  };

  const QString& name() const { return name_; }
  /// In the order of the description.
  const std::vector<Operation>& operations() const { return operations_; }

  /// A delegate that implements nothing yet.
  std::shared_ptr<void> make() const { return make_(); }
  /// Wraps a delegate from `make` for use as a property's value. Properties hold it weakly.
  QVariant toVariant(const std::shared_ptr<void>& delegate) const { return toVariant_(delegate); }
  /// The delegate in a property's value; null for none.
  std::shared_ptr<void> fromVariant(const QVariant& delegate) const {
    return fromVariant_(delegate);
  }

  /// Wraps an object whose class implements the delegate's interface; invalid for any other.
  QVariant fromObject(const ObjectRef& object) const { return fromObject_(object); }
  /// The object that a property's value holds as its delegate; null if it is not an object.
  ObjectRef toObject(const QVariant& delegate) const { return toObject_(delegate); }

 private:
  template <class D, class Interface>
  friend class DelegateInfoBuilder;

  QString name_;
  std::vector<Operation> operations_;
  std::shared_ptr<void> (*make_)() = nullptr;
  QVariant (*toVariant_)(const std::shared_ptr<void>& delegate) = nullptr;
  std::shared_ptr<void> (*fromVariant_)(const QVariant& delegate) = nullptr;
  QVariant (*fromObject_)(const ObjectRef& object) = nullptr;
  ObjectRef (*toObject_)(const QVariant& delegate) = nullptr;
};

/// Builds a `DelegateInfo`. Where properties take an `Interface` that objects may implement, `D` is
/// the implementation of it that calls its `DelegateFunction` members.
template <class D, class Interface = D>
class DelegateInfoBuilder {
 public:
  explicit DelegateInfoBuilder(const char* name) {
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
        // An object that is its own delegate is referenced there without being owned.
        const auto held = delegate.value<std::shared_ptr<Interface>>();
        if (auto* const object = dynamic_cast<Object*>(held.get()))
          return object->weak_from_this().lock();
      }
      return ObjectRef();
    };
  }

  operator DelegateInfo() && { return std::move(info_); }

  template <class... A>
  DelegateInfoBuilder&& operation(const char* selector, DelegateFunction<void(A...)> D::*member,
                                  Sentence when) && {
    return add(selector, member, when.text(), "");
  }

  template <class R, class... A>
  DelegateInfoBuilder&& operation(const char* selector, DelegateFunction<R(A...)> D::*member,
                                  Sentence when, Sentence answer) && {
    return add(selector, member, when.text(), answer.text());
  }

 private:
  static constexpr bool kIsInterface = !std::is_same_v<D, Interface>;

  template <class R, class... A>
  DelegateInfoBuilder&& add(const char* selector, DelegateFunction<R(A...)> D::*member,
                            const char* when, const char* answer) {
    const auto setMember = [member](void* delegate, const DelegateInfo::Handler& handler,
                                    const DelegateInfo::Condition& isImplemented) {
      DelegateFunction<R(A...)>& function = static_cast<D*>(delegate)->*member;
      function = {};
      if (!handler) return;
      const auto call = [handler](A... arguments) -> R {
        const QVariant result = handler({argumentToVariant(arguments)...});
        if constexpr (!std::is_void_v<R>) {
          return fromVariant<std::decay_t<R>>(result).value_or(std::decay_t<R>{});
        }
      };
      function = DelegateFunction<R(A...)>(call, isImplemented);
    };
    info_.operations_.push_back({QString::fromLatin1(selector),
                                 {valueType<std::decay_t<A>>()...},
                                 valueType<std::decay_t<R>>(),
                                 setMember,
                                 when,
                                 answer});
    return std::move(*this);
  }

  DelegateInfo info_;
};

}  // namespace kelvar
