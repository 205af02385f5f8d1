#pragma once

#include <QList>
#include <functional>
#include <memory>
#include <stdexcept>
#include <type_traits>
#include <utility>

#include "platform/Export.h"

namespace kelvar {

/// Thrown when no element implements the operation.
class KELVAR_EXPORT UnrecognizedOperation : public std::logic_error {
 public:
  UnrecognizedOperation();
  ~UnrecognizedOperation() override;
};

/// Calls one operation on every element of a list that implements it, in the list's order:
///
///   each(trackers)(&Tracker::track, name, properties);
///
/// An element implements an operation if its type derives from the class that declares it. Other
/// elements and null are skipped. The call iterates over a copy, so receivers may change the list.
/// Arguments are passed unmoved to every element and results are dropped; an exception from a
/// receiver ends the broadcast. `Element` must have a virtual function.
template <class Element>
class Each {
 public:
  using Array = QList<std::shared_ptr<Element>>;

  explicit Each(Array array) { setArray(std::move(array)); }

  const Array& array() const { return array_; }
  void setArray(Array array) { array_ = std::move(array); }

  /// Whether any element, or the proxy itself, implements the operation.
  template <class Interface, class Operation>
  bool respondsTo(Operation Interface::*) const {
    return std::is_same_v<Interface, Each> || firstResponder<Interface>() != nullptr;
  }

  /// Throws `UnrecognizedOperation` if no element implements the operation, so that a call on an
  /// empty list does not go unnoticed.
  template <class Interface, class Operation, class... Arguments>
  void operator()(Operation Interface::*operation, const Arguments&... arguments) const {
    if (!firstResponder<Interface>()) throw UnrecognizedOperation();
    forward(operation, arguments...);
  }

  /// The same, but it is not an error if no element implements the operation.
  template <class Interface, class Operation, class... Arguments>
  void forward(Operation Interface::*operation, const Arguments&... arguments) const {
    const Array receivers = array_;
    for (const std::shared_ptr<Element>& element : receivers) {
      if (auto* const receiver = dynamic_cast<Interface*>(element.get())) {
        std::invoke(operation, *receiver, arguments...);
      }
    }
  }

 private:
  template <class Interface>
  Interface* firstResponder() const {
    for (const std::shared_ptr<Element>& element : array_) {
      if (auto* const receiver = dynamic_cast<Interface*>(element.get())) return receiver;
    }
    return nullptr;
  }

  Array array_;
};

template <class Element>
Each<Element> each(const QList<std::shared_ptr<Element>>& array) {
  return Each<Element>(array);
}

}  // namespace kelvar
