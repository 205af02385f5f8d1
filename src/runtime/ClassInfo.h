#pragma once

#include <QStringList>
#include <QVariant>
#include <functional>
#include <optional>
#include <tuple>
#include <utility>
#include <vector>

#include "runtime/Conversion.h"
#include "runtime/Implementation.h"
#include "runtime/Object.h"
#include "runtime/Sentence.h"
#include "runtime/ValueType.h"

namespace kelvar {

// clang-format off
/// What scripts, archives and key paths know about a class: its name, how to create an instance,
/// which properties it has by key, and which operations it has by selector.
///
/// A class is described once, beside its code, and registered there so that it is found by name:
///
///     const ClassInfo& KVRect::staticClassInfo() {
///       static const ClassInfo kClass =
///           ClassInfoBuilder<KVRect>("KVRect")
///               .initializer("init", [] { return std::make_shared<KVRect>(); },
///                            "Creates a rectangle of size zero at the origin.")
///               .property("x", &KVRect::x, &KVRect::setX, "Left edge.")
///               .operation("CGRect", &KVRect::CGRect, "Returns the rectangle as a structure.");
///       return kClass;
///     }
///     const ClassInfo::Registration kRegistered(&KVRect::staticClassInfo);
///
/// A selector is the operation's name with a colon for each argument. `fromVariant` and `toVariant`
/// convert arguments and results. The sentences go into the scripting reference.
// clang-format on
class KELVAR_EXPORT ClassInfo {
 public:
  struct Property {
    QString key;
    std::function<QVariant(const Object&)> get;
    /// Empty for a read-only property. Returns false for a value of the wrong type.
    std::function<bool(Object&, const QVariant&)> set;
    ValueType type;
    /// One sentence of documentation.
    const char* sentence;
  };

  /// Returns nothing for a wrong number of arguments or arguments of the wrong types. `self` is
  /// null for class operations.
  using Call = std::function<std::optional<QVariant>(Object* self, const QVariantList& arguments)>;

  enum class Kind { Initializer, ClassOperation, Operation };
  struct Operation {
    Kind kind;
    QString selector;
    Call call;
    std::vector<ValueType> parameters;
    ValueType result;
    /// One sentence of documentation; an accessor has its property's.
    const char* sentence;
  };

  /// What a script's object needs in order to stand for an object of the class.
  struct Protocol {
    /// The selectors that it must implement; it may implement others of the class.
    QStringList required;
    /// Makes the object that forwards to the implementation.
    ObjectRef (*adapt)(const ImplementationRef& implementation);
  };

  /// Makes a class known to `find` for as long as this object lives.
  class KELVAR_EXPORT Registration {
   public:
    explicit Registration(const ClassInfo& (*staticClassInfo)());
    ~Registration();
    Registration(const Registration&) = delete;
    Registration& operator=(const Registration&) = delete;

   private:
    const ClassInfo& (*staticClassInfo_)();
  };

  /// Null for an unknown name. Safe from any thread.
  static const ClassInfo* find(const QString& name);

  const QString& name() const { return name_; }
  /// The class that this one inherits properties and operations from; null for none.
  const ClassInfo* base() const { return base_; }

  /// The selector that sets the property `key`: "setKey:".
  static QString setterOf(const QString& key) {
    return QStringLiteral("set%1%2:").arg(key.first(1).toUpper(), key.sliced(1));
  }

  /// Searches the class, then its bases; null if there is none.
  const Property* property(const QString& key) const;
  const Operation* operation(Kind kind, const QString& selector) const;

  /// Without those of the base, in the order of the description. A property's accessors are among
  /// the operations.
  const std::vector<Property>& properties() const { return properties_; }
  const std::vector<Operation>& operations() const { return operations_; }

  /// Returns nothing for an unknown selector or arguments that do not match it; otherwise the
  /// result, which is invalid for none.
  std::optional<QVariant> call(Object& self, const QString& selector,
                               const QVariantList& arguments = {}) const;
  std::optional<QVariant> callClass(const QString& selector,
                                    const QVariantList& arguments = {}) const;
  /// A new object; null for an unknown initializer or arguments that do not match it. Initializers
  /// are not inherited.
  ObjectRef create(const QString& initializer, const QVariantList& arguments = {}) const;

  /// Null if only the library implements the class's operations. Not inherited.
  const Protocol* protocol() const { return protocol_ ? &*protocol_ : nullptr; }
  /// The object that a parameter of this class takes for a plain value, such as a dictionary; null
  /// for a value that has none.
  ObjectRef fromValue(const QVariant& value) const {
    return fromValue_ ? fromValue_(value) : nullptr;
  }

  /// Whether an archive may create instances by the class's name.
  bool isDecodable() const { return bool(decode_); }
  /// Decodes an instance that `encodeWithCoder` wrote; invalid if that fails.
  QVariant decode(Coder& coder) const { return decode_ ? decode_(coder) : QVariant(); }

 private:
  template <class T, class Base>
  friend class ClassInfoBuilder;

  QString name_;
  const ClassInfo* base_ = nullptr;
  std::vector<Property> properties_;
  std::vector<Operation> operations_;
  std::function<QVariant(Coder&)> decode_;
  std::optional<Protocol> protocol_;
  ObjectRef (*fromValue_)(const QVariant& value) = nullptr;
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

/// Builds a `ClassInfo`. `T` need not be an `Object` if it has class operations only.
template <class T, class Base = Object>
class ClassInfoBuilder {
 public:
  explicit ClassInfoBuilder(const char* name) {
    info_.name_ = QString::fromLatin1(name);
    if constexpr (std::is_base_of_v<Base, T> && !std::is_same_v<Base, T>) {
      info_.base_ = &Base::staticClassInfo();
    }
  }
  /// For one of several classes whose instances are all of type `T`.
  ClassInfoBuilder(const char* name, const ClassInfo& base) {
    info_.name_ = QString::fromLatin1(name);
    info_.base_ = &base;
  }

  operator ClassInfo() && { return std::move(info_); }

  /// `make` returns a reference to a new object, or null.
  template <class F>
  ClassInfoBuilder&& initializer(const char* selector, F make, Sentence sentence) && {
    return add<F, 0>(ClassInfo::Kind::Initializer, selector, ofClass(make), sentence);
  }

  template <class F>
  ClassInfoBuilder&& classOperation(const char* selector, F function, Sentence sentence) && {
    return add<F, 0>(ClassInfo::Kind::ClassOperation, selector, ofClass(function), sentence);
  }

  /// `function` is a member function, or a function whose first parameter is the object.
  template <class F>
  ClassInfoBuilder&& operation(const char* selector, F function, Sentence sentence) && {
    return add<F, kSelf<F>>(ClassInfo::Kind::Operation, selector, ofObject(function), sentence);
  }

  /// Also adds the accessor `key`.
  template <class Get>
  ClassInfoBuilder&& property(const char* key, Get get, Sentence sentence) && {
    const auto read = [get](const Object& self) {
      return toVariant(std::invoke(get, static_cast<const T&>(self)));
    };
    info_.properties_.push_back({QString::fromLatin1(key),
                                 read,
                                 {},
                                 valueType<typename Signature<Get>::Result>(),
                                 sentence.text()});
    return std::move(*this).operation(key, get, sentence);
  }

  /// Also adds the accessors `key` and `setKey:`.
  template <class Get, class Set>
  ClassInfoBuilder&& property(const char* key, Get get, Set set, Sentence sentence) && {
    std::move(*this).property(key, get, sentence);
    const auto call = ofObject(set);
    info_.properties_.back().set = [call](Object& self, const QVariant& value) {
      return call(&self, {value}).has_value();
    };
    const QByteArray selector = ClassInfo::setterOf(QString::fromLatin1(key)).toLatin1();
    return add<Set, kSelf<Set>>(ClassInfo::Kind::Operation, selector, call, sentence);
  }

  /// Lets archives create instances with `T::initWithCoder(Coder&)`, which returns a reference or
  /// null.
  ClassInfoBuilder&& decodable() && {
    return std::move(*this).decodable(
        [](Coder& coder) { return toVariant(ObjectRef(T::initWithCoder(coder))); });
  }
  ClassInfoBuilder&& decodable(std::function<QVariant(Coder&)> decode) && {
    info_.decode_ = std::move(decode);
    return std::move(*this);
  }

  /// Lets a script's object with these operations stand for an object of the class. `Adapter`
  /// derives from `T` and from `Implemented`.
  template <class Adapter>
  ClassInfoBuilder&& implementable(const QStringList& required) && {
    info_.protocol_ = {required, [](const ImplementationRef& implementation) -> ObjectRef {
                         return std::make_shared<Adapter>(implementation);
                       }};
    return std::move(*this);
  }

  /// Lets plain values be passed as objects of the class. The function returns null for a value
  /// that does not fit.
  ClassInfoBuilder&& convertible(ObjectRef (*fromValue)(const QVariant& value)) && {
    info_.fromValue_ = fromValue;
    return std::move(*this);
  }

 private:
  /// How many leading parameters are the object itself.
  template <class F>
  static constexpr size_t kSelf = std::is_member_function_pointer_v<F> ? 0 : 1;

  /// The first `skipped` parameters of `F` do not belong to the selector.
  template <class F, size_t skipped>
  ClassInfoBuilder&& add(ClassInfo::Kind kind, const char* selector, ClassInfo::Call call,
                         Sentence sentence) {
    using Parameters = typename Signature<F>::Arguments;
    std::vector<ValueType> parameters;
    [&]<size_t... i>(std::index_sequence<i...>) {
      (parameters.push_back(valueType<std::tuple_element_t<i + skipped, Parameters>>()), ...);
    }
    (std::make_index_sequence<std::tuple_size_v<Parameters> - skipped>());
    info_.operations_.push_back({kind, QString::fromLatin1(selector), std::move(call),
                                 std::move(parameters), valueType<typename Signature<F>::Result>(),
                                 sentence.text()});
    return std::move(*this);
  }

  /// Converts the arguments to the parameters after the first `skipped` and calls.
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
