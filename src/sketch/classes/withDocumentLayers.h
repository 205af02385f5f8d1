#pragma once

#include "runtime/ClassInfo.h"
#include "runtime/raise.h"
#include "sketch/classes/MSDocumentData.h"
#include "sketch/classes/MSLayerArray.h"

namespace kelvar {

/// In the order of the pages.
QVariantList symbolMasters(const SketchDocument& document);
/// Null if there is none.
SketchLayerRef layerWithID(const SketchDocument& document, const QString& objectID);

inline const SketchDocument& documentIn(const SketchDocument& document) { return document; }
inline SketchDocument& documentIn(SketchDocument& document) { return document; }
inline SketchDocument& documentIn(const MSDocumentData& data) { return data.document(); }

/// What scripts find in both documents and their data.
template <class T>
ClassInfoBuilder<T> withDocumentLayers(ClassInfoBuilder<T> builder) {
  return std::move(builder)
      .property(
          "currentPage", [](const T& self) { return documentIn(self).currentPage(); },
          [](T& self, const SketchLayerRef& page) {
            orRaise(documentIn(self).setCurrentPage(page));
          },
          "The open page.")
      .operation(
          "allArtboards",
          [](const T& self) { return MSLayerArray::toList(documentIn(self).artboards()); },
          "Returns all artboards and symbol masters, in the order of the pages.")
      .operation(
          "allSymbols", [](const T& self) { return symbolMasters(documentIn(self)); },
          "Returns the symbol masters, in the order of the pages.")
      .operation(
          "symbolWithID:",
          [](const T& self, const QString& id) { return documentIn(self).symbolMaster(id); },
          "Returns the symbol master with this symbolID, or nil.")
      .operation(
          "layerWithID:",
          [](const T& self, const QString& id) { return layerWithID(documentIn(self), id); },
          "Returns the layer with this identifier, or nil.");
}

}  // namespace kelvar
