#pragma once

#include <functional>
#include <type_traits>
#include <utility>

namespace kelvar {

/// One optional operation of a delegate: a function, tested right before each call.
///
/// Assigned like a `std::function`. A script's object gains and loses functions while it is a
/// delegate; a condition then tells whether there is one at the moment.
template <class Signature>
class DelegateFunction;

template <class R, class... A>
class DelegateFunction<R(A...)> {
 public:
  using Call = std::function<R(A...)>;
  using Condition = std::function<bool()>;

  DelegateFunction() = default;
  template <class F>
  requires(!std::is_same_v<std::decay_t<F>, DelegateFunction> && std::is_constructible_v<Call, F>)
      DelegateFunction(F&& call)
      : call_(std::forward<F>(call)) {}
  /// Without a condition, the operation is always implemented.
  DelegateFunction(Call call, Condition isImplemented)
      : call_(std::move(call)), isImplemented_(std::move(isImplemented)) {}

  explicit operator bool() const { return call_ && (!isImplemented_ || isImplemented_()); }
  R operator()(A... arguments) const { return call_(std::forward<A>(arguments)...); }

 private:
  Call call_;
  Condition isImplemented_;
};

}  // namespace kelvar
