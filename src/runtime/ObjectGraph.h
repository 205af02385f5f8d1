#pragma once

#include <QVariant>

namespace kelvar {

/// A value whose lists, dictionaries and bytes have an identity: it may contain one several times,
/// or inside of itself. They are objects of the reference containers in `archive/`.
struct ObjectGraph {
  QVariant root;
  /// Whether nobody else refers to the containers, so that they are emptied after use. A cyclic
  /// graph owns itself and would stay.
  bool isTemporary = false;
};

}  // namespace kelvar
