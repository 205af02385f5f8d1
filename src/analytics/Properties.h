#pragma once

#include <QVariantMap>
#include <memory>
#include <optional>

namespace kelvar {

/// Properties of an event by name: anything that JSON can hold. No value is not the same as an
/// empty map.
using Properties = std::optional<QVariantMap>;

/// A map shared by reference: changes by the creator and by the receiver affect both. Null for
/// none.
using SharedProperties = std::shared_ptr<QVariantMap>;

}  // namespace kelvar
