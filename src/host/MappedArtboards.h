#pragma once

#include <QHash>

#include "host/LayerSettings.h"
#include "host/SketchDocument.h"

namespace kelvar {

/// Which artboards of a document show which others, by way of designs that are mapped onto their
/// layers and of symbols, and in which order they have to be mapped again.
///
/// A layer that is not included in artboards shows nothing of its design where its own artboard is
/// a design, and so does not count. Sees the document as it is when it is made.
class KELVAR_EXPORT MappedArtboards {
 public:
  explicit MappedArtboards(const SketchDocument& document);

  /// The layers onto which an artboard was mapped, each before those whose designs show it.
  QList<SketchLayerRef> layersInOrder() const;

  /// The names of the artboards from `design` to the one around `layer` and to `design` again, if
  /// mapping that design onto that layer closes a circle; otherwise empty.
  QStringList circle(const SketchLayerRef& design, const SketchLayerRef& layer) const;

 private:
  using Artboard = const SketchLayer*;
  void add(const SketchDocument& document, const SketchLayerRef& layer);
  /// The artboards from `from` to `to`, each of which shows the next, without those that were seen
  /// before; empty when there is no such way. Then all to which there are ways have been `left`,
  /// each after those that it shows.
  QList<Artboard> wayTo(Artboard to, Artboard from, QSet<Artboard>* seen,
                        QList<Artboard>* left) const;

  /// Keeps who is pointed to.
  QList<SketchLayerRef> artboards_;
  QHash<Artboard, QList<Artboard>> shown_;
  /// By the artboard around them, the null one for none.
  QHash<Artboard, QList<SketchLayerRef>> mapped_;
  QList<SketchLayerRef> excluded_;
};

}  // namespace kelvar
