#pragma once

#include <QVariant>
#include <memory>
#include <unordered_map>

#include "scripting/Boxed.h"

namespace kelvar {

/// The boxes that scripts hold, so that reading a property twice gives the same object: an equal
/// URL or color, or the same image, has the same box for as long as somebody holds it.
class BoxTable {
 public:
  /// Null for a type that is not boxed.
  ObjectRef boxFor(const QVariant& value);
  /// A box that was not made here.
  void add(const std::shared_ptr<Boxed>& box);

 private:
  std::shared_ptr<Boxed> find(const QVariant& value, size_t identity) const;

  std::unordered_multimap<size_t, std::weak_ptr<Boxed>> boxes_;
  size_t sizeToClean_ = 64;
};

}  // namespace kelvar
