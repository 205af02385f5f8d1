#pragma once

#include <QStringList>
#include <QVariant>
#include <functional>
#include <optional>
#include <tuple>
#include <utility>
#include <vector>

#include "runtime/Conversion.h"
#include "runtime/Object.h"
#include "runtime/ValueType.h"

namespace kelvar {

/// What scripts, archives and key paths know of a class: its name, how one is made, what can be
/// read and written by key, and what can be called by selector.
///
/// A class is described once, beside its code, and registered there, so that it is found by name:
///
///     const ClassInfo& KVRect::theClass() {
///       static const ClassInfo kClass = Description<KVRect>("KVRect")
///                                           .initialiser("init", [] { return
///                                           make_shared<KVRect>(); }) .property("x", &KVRect::x,
///                                           &KVRect::setX) .operation("CGRect", &KVRect::CGRect);
///       return kClass;
///     }
///     const ClassInfo::Registration kRegistered(&KVRect::theClass);
///
/// A selector is the operation's name with a colon for each argument. Arguments and results are
/// converted as `fromVariant` and `toVariant` say.
class KELVAR_EXPORT ClassInfo {
 public:
  struct Property {
    QString key;
    std::function<QVariant(const Object&)> get;
    /// Empty when it is only read. False when the value does not fit.
    std::function<bool(Object&, const QVariant&)> set;
    ValueType type;
  };

  /// Nothing when the arguments are too few, too many or do not fit. `self` is null for operations
  /// of the class.
  using Call = std::function<std::optional<QVariant>(Object* self, const QVariantList& arguments)>;

  enum class Kind { Initialiser, ClassOperation, Operation };
  struct Operation {
    Kind kind;
    QString selector;
    Call call;
    std::vector<ValueType> parameters;
    ValueType result;
  };

  /// Links a class into what `find` looks through, for as long as it lives.
  class KELVAR_EXPORT Registration {
   public:
    explicit Registration(const ClassInfo& (*theClass)());
    ~Registration();
    Registration(const Registration&) = delete;
    Registration& operator=(const Registration&) = delete;

   private:
    const ClassInfo& (*theClass_)();
  };

  /// Null when no class of that name is described. Safe from any thread.
  static const ClassInfo* find(const QString& name);

  const QString& name() const { return name_; }
  /// The class whose properties and operations this one has too; null for none.
  const ClassInfo* base() const { return base_; }

  /// The selector that sets the property `key`.
  static QString setterOf(const QString& key) {
    return QStringLiteral("set%1%2:").arg(key.first(1).toUpper(), key.sliced(1));
  }

  /// Of the class or its bases; null when there is none.
  const Property* property(const QString& key) const;
  const Operation* operation(Kind kind, const QString& selector) const;

  /// What the class itself adds to its base, in the order in which it is described. A property's
  /// accessors are among the operations.
  const std::vector<Property>& properties() const { return properties_; }
  const std::vector<Operation>& operations() const { return operations_; }

  /// Nothing when there is no such operation or the arguments do not fit it; else its result,
  /// which is invalid for none.
  std::optional<QVariant> call(Object& self, const QString& selector,
                               const QVariantList& arguments = {}) const;
  std::optional<QVariant> callClass(const QString& selector,
                                    const QVariantList& arguments = {}) const;
  /// A new object; null when there is no such initialiser or the arguments do not fit it. Those of
  /// the bases are not inherited.
  ObjectRef create(const QString& initialiser, const QVariantList& arguments = {}) const;

  /// Whether an archive may make one by the class's name.
  bool isDecodable() const { return bool(decode_); }
  /// Reads one from what `encodeWithCoder` has written; none when it cannot be read.
  QVariant decode(Coder& coder) const { return decode_ ? decode_(coder) : QVariant(); }

 private:
  template <class T, class Base>
  friend class Description;

  QString name_;
  const ClassInfo* base_ = nullptr;
  std::vector<Property> properties_;
  std::vector<Operation> operations_;
  std::function<QVariant(Coder&)> decode_;
};

/// The argument types and the result of anything that can be called.
template <class F>
struct Signature : Signature<decltype(&F::operator())> {};
template <class R, class... A>
struct Signature<R (*)(A...)> {
  using Arguments = std::tuple<std::decay_t<A>...>;
  using Result = std::decay_t<R>;
};
template <class R, class C, class... A>
struct Signature<R (C::*)(A...)> : Signature<R (*)(A...)> {};
template <class R, class C, class... A>
struct Signature<R (C::*)(A...) const> : Signature<R (*)(A...)> {};

/// Writes a `ClassInfo` down. `T` need not be an `Object` when it has class operations alone.
template <class T, class Base = Object>
class Description {
 public:
  explicit Description(const char* name) {
    info_.name_ = QString::fromLatin1(name);
    if constexpr (std::is_base_of_v<Base, T> && !std::is_same_v<Base, T>) {
      info_.base_ = &Base::theClass();
    }
  }

  operator ClassInfo() && { return std::move(info_); }

  /// `make` returns a reference to a new object, or null.
  template <class F>
  Description&& initialiser(const char* selector, F make) && {
    return add<F, 0>(ClassInfo::Kind::Initialiser, selector, ofClass(make));
  }

  template <class F>
  Description&& classOperation(const char* selector, F function) && {
    return add<F, 0>(ClassInfo::Kind::ClassOperation, selector, ofClass(function));
  }

  /// A member function, or a function whose first parameter is the object.
  template <class F>
  Description&& operation(const char* selector, F function) && {
    return add<F, kSelf<F>>(ClassInfo::Kind::Operation, selector, ofObject(function));
  }

  /// Also describes the accessor `key`.
  template <class Get>
  Description&& property(const char* key, Get get) && {
    info_.properties_.push_back({QString::fromLatin1(key),
                                 [get](const Object& self) {
                                   return toVariant(std::invoke(get, static_cast<const T&>(self)));
                                 },
                                 {},
                                 valueType<typename Signature<Get>::Result>()});
    return std::move(*this).operation(key, get);
  }

  /// Also describes the accessors `key` and `setKey:`.
  template <class Get, class Set>
  Description&& property(const char* key, Get get, Set set) && {
    std::move(*this).property(key, get);
    const auto call = ofObject(set);
    info_.properties_.back().set = [call](Object& self, const QVariant& value) {
      return call(&self, {value}).has_value();
    };
    const QByteArray selector = ClassInfo::setterOf(QString::fromLatin1(key)).toLatin1();
    return add<Set, kSelf<Set>>(ClassInfo::Kind::Operation, selector, call);
  }

  /// Archives may make one with `T::initWithCoder(Coder&)`, which returns a reference or null.
  Description&& decodable() && {
    return std::move(*this).decodable(
        [](Coder& coder) { return toVariant(ObjectRef(T::initWithCoder(coder))); });
  }
  Description&& decodable(std::function<QVariant(Coder&)> decode) && {
    info_.decode_ = std::move(decode);
    return std::move(*this);
  }

 private:
  /// How many of the parameters stand for the object.
  template <class F>
  static constexpr size_t kSelf = std::is_member_function_pointer_v<F> ? 0 : 1;

  /// `skipped` parameters of `F` are none of the operation's.
  template <class F, size_t skipped>
  Description&& add(ClassInfo::Kind kind, const char* selector, ClassInfo::Call call) {
    using Parameters = typename Signature<F>::Arguments;
    std::vector<ValueType> parameters;
    [&]<size_t... i>(std::index_sequence<i...>) {
      (parameters.push_back(valueType<std::tuple_element_t<i + skipped, Parameters>>()), ...);
    }
    (std::make_index_sequence<std::tuple_size_v<Parameters> - skipped>());
    info_.operations_.push_back({kind, QString::fromLatin1(selector), std::move(call),
                                 std::move(parameters),
                                 valueType<typename Signature<F>::Result>()});
    return std::move(*this);
  }

  /// Converts the arguments from the `skipped`th parameter on and calls.
  template <size_t skipped, class F, class... Self, size_t... i>
  static std::optional<QVariant> convertAndCall(const F& function, const QVariantList& arguments,
                                                std::index_sequence<i...>, Self&... self) {
    using Parameters = typename Signature<F>::Arguments;
    if (arguments.size() != qsizetype(sizeof...(i))) return std::nullopt;
    auto converted = std::make_tuple(
        fromVariant<std::tuple_element_t<i + skipped, Parameters>>(arguments[qsizetype(i)])...);
    if (!(std::get<i>(converted).has_value() && ...)) return std::nullopt;
    using Result = decltype(std::invoke(function, self..., *std::move(std::get<i>(converted))...));
    if constexpr (std::is_void_v<Result>) {
      std::invoke(function, self..., *std::move(std::get<i>(converted))...);
      return QVariant();
    } else {
      return toVariant(std::invoke(function, self..., *std::move(std::get<i>(converted))...));
    }
  }

  template <class F>
  static ClassInfo::Call ofClass(F function) {
    constexpr size_t kCount = std::tuple_size_v<typename Signature<F>::Arguments>;
    return [function](Object*, const QVariantList& arguments) {
      return convertAndCall<0>(function, arguments, std::make_index_sequence<kCount>());
    };
  }

  template <class F>
  static ClassInfo::Call ofObject(F function) {
    constexpr size_t kCount = std::tuple_size_v<typename Signature<F>::Arguments> - kSelf<F>;
    return [function](Object* self, const QVariantList& arguments) {
      return convertAndCall<kSelf<F>>(function, arguments, std::make_index_sequence<kCount>(),
                                      static_cast<T&>(*self));
    };
  }

  ClassInfo info_;
};

}  // namespace kelvar
