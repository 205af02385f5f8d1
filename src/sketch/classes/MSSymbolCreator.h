#pragma once

#include "runtime/ClassInfo.h"
#include "sketch/document/SketchDocument.h"

namespace kelvar {

/// Makes symbols of layers, and finds the page that symbols are put on.
class MSSymbolCreator {
 public:
  MSSymbolCreator() = delete;
  static const ClassInfo& staticClassInfo();

  /// The first page that is called "Symbols"; null if there is none.
  static SketchLayerRef symbolsPage(const SketchDocument& document);
  /// The same; one is added after the other pages if there is none. The open page stays open.
  static SketchLayerRef symbolsPageOrNew(SketchDocument& document);

  /// Moves layers of one parent into a new symbol, which is put to the right of what is on its
  /// page, and puts an instance in their place. Returns the instance.
  static SketchLayerRef fromLayers(const QVariant& layers, const QString& name, bool onSymbolsPage);
};

}  // namespace kelvar
