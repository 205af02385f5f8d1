#pragma once

#include <QList>
#include <functional>
#include <memory>
#include <stdexcept>
#include <type_traits>
#include <utility>

#include "platform/Export.h"

namespace kelvar {

/// What a broadcast ends in that nobody understands.
class KELVAR_EXPORT UnrecognizedOperation : public std::logic_error {
 public:
  UnrecognizedOperation();
  ~UnrecognizedOperation() override;
};

/// Sends one call to every element of a list that understands it, in the list's order:
///
///   each(trackers)(&Tracker::track, name, properties);
///
/// An element understands an operation when its type implements the class that declares it; the
/// others are skipped, null ones too. The call is made on a copy of the list, so a receiver may
/// change its owner's. Arguments reach every element unmoved, results are dropped, and what a
/// receiver throws ends the broadcast. `Element` needs a virtual function.
template <class Element>
class Each {
 public:
  using Array = QList<std::shared_ptr<Element>>;

  explicit Each(Array array) { setArray(std::move(array)); }

  const Array& array() const { return array_; }
  void setArray(Array array) { array_ = std::move(array); }

  /// Whether some element understands the operation, or it is the proxy's own.
  template <class Interface, class Operation>
  bool respondsTo(Operation Interface::*) const {
    return std::is_same_v<Interface, Each> || firstResponder<Interface>() != nullptr;
  }

  /// Throws `UnrecognizedOperation` when nobody understands the operation, so that no call to an
  /// empty list passes for done.
  template <class Interface, class Operation, class... Arguments>
  void operator()(Operation Interface::*operation, const Arguments&... arguments) const {
    if (!firstResponder<Interface>()) throw UnrecognizedOperation();
    forward(operation, arguments...);
  }

  /// The same, but nobody at all is no error.
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
