#pragma once

#include <QStringList>

namespace kelvar {

/// The artboard to show and the layers to select in a Sketch document, by name or identifier.
struct DocumentChoice {
  /// If empty, the artboard of the layers, or else the first one with a shape in perspective.
  QString artboard{};
  QStringList layers{};
  /// The artboard to show if `artboard` and `layers` are empty and the document has this one.
  QString artboardBefore{};
};

}  // namespace kelvar
