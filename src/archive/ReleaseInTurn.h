#pragma once

#include <QVariant>

namespace kelvar {

/// Lets go of what a container held, after the containers that are being let go of already. An
/// archive of a few bytes an object makes chains of any length, and destructors that call one
/// another along such a chain would use up the stack.
void releaseInTurn(QVariant values);

}  // namespace kelvar
