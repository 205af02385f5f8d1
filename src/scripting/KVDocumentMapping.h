#pragma once

#include "host/SketchDocument.h"

namespace kelvar {

/// Mapping onto layers of a document, for scripts: what `kelvar map --document` and `kelvar
/// refresh` do. Each throws with the sentence that says why it cannot; the document is then to be
/// left.
class KELVAR_EXPORT KVDocumentMapping {
 public:
  KVDocumentMapping() = delete;
  static const ClassInfo& theClass();

  /// Maps an artboard onto a layer and remembers it there. What `settings` leaves out ("quality",
  /// "rotation", "flipped", "included") stays as the layer remembers it.
  static void mapArtboard(const SketchLayerRef& artboard, const SketchLayerRef& ontoLayer,
                          const SketchDocumentRef& inDocument, const QVariantMap& settings);
  /// What the layer remembers: the settings and "artboard", the identifier. None for a layer that
  /// no design was mapped onto.
  static QVariant settingsOfLayer(const SketchLayerRef& layer);
  /// Maps every remembered artboard again. The layers, in the order in which they were mapped.
  static QVariantList refreshDocument(const SketchDocumentRef& document);
  /// Writes the document, with a new preview of its open page.
  static void saveDocument(const SketchDocumentRef& document, const QString& toFile);
};

}  // namespace kelvar
