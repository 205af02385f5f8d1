#pragma once

#include <QVariantMap>
#include <memory>
#include <optional>

namespace kelvar {

/// What is told about an event: anything that JSON can hold, by name. Nothing is not the same as
/// an empty map.
using Properties = std::optional<QVariantMap>;

/// A map that whoever made it and whoever was given it change together; null for none.
using SharedProperties = std::shared_ptr<QVariantMap>;

}  // namespace kelvar
