#pragma once

#include <QVariant>

namespace kelvar {

/// Lets go of what a container held, after the containers that are being let go of already. An
/// archive of a few bytes an object makes chains of any length, and destructors that call one
/// another along such a chain would use up the stack.
void releaseInTurn(QVariant&& values);

/// The same for a list or a map, which is empty afterwards.
template <class Container>
void releaseInTurn(Container* values) {
  QVariant released(*values);
  values->clear();  // Else this would be the last reference, not the one that waits for its turn.
  releaseInTurn(std::move(released));
}

}  // namespace kelvar
