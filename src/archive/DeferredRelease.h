#pragma once

#include <QVariant>

namespace kelvar {

/// Releases a container's values after those of the containers that are already being released.
/// Even a small archive can contain a chain so long that nested destructors would overflow the
/// stack.
void releaseIteratively(QVariant&& values);

/// The same for a list or a map, which is empty afterward.
template <class Container>
void releaseIteratively(Container* values) {
  QVariant released(*values);
  values->clear();  // Otherwise, this would be the last reference, not the deferred one.
  releaseIteratively(std::move(released));
}

}  // namespace kelvar
