#include "scripting/BoxTable.h"

#include <algorithm>

namespace kelvar {

ObjectRef BoxTable::boxFor(const QVariant& value) {
  const std::optional<size_t> identity = Boxed::identityOf(value);
  if (identity) {
    if (const auto known = find(value, *identity)) return known;
  }
  const std::shared_ptr<Boxed> made = Boxed::box(value);
  if (made) add(made);
  return made;
}

void BoxTable::add(const std::shared_ptr<Boxed>& box) {
  const QVariant value = box->value();
  const std::optional<size_t> identity = Boxed::identityOf(value);
  if (!identity || find(value, *identity)) return;
  if (boxes_.size() >= sizeToClean_) {
    std::erase_if(boxes_, [](const auto& each) { return each.second.expired(); });
    sizeToClean_ = std::max<size_t>(64, 2 * boxes_.size());
  }
  boxes_.emplace(*identity, box);
}

std::shared_ptr<Boxed> BoxTable::find(const QVariant& value, size_t identity) const {
  const auto [first, last] = boxes_.equal_range(identity);
  for (auto each = first; each != last; ++each) {
    const auto box = each->second.lock();
    if (!box) continue;
    const QVariant boxed = box->value();
    if (boxed.metaType() == value.metaType() && boxed == value) return box;
  }
  return nullptr;
}

}  // namespace kelvar
