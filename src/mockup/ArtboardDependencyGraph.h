#pragma once

#include <QHash>

#include "mockup/LayerSettings.h"
#include "sketch/document/SketchDocument.h"

namespace kelvar {

/// Which artboards of a document show which others, through symbols and through designs mapped onto
/// their layers, and the order in which to map them again.
///
/// A layer that is not included in artboards does not show its design where its own artboard is a
/// design, and so does not count. The graph is a snapshot of the document at construction.
class KELVAR_EXPORT ArtboardDependencyGraph {
 public:
  explicit ArtboardDependencyGraph(const SketchDocument& document);

  /// The layers onto which an artboard was mapped, each before those whose designs show it.
  QList<SketchLayerRef> topologicalOrder() const;

  /// If mapping `design` onto `layer` would close a cycle, the names of the artboards on it: from
  /// `design` through the artboard that contains `layer` back to `design`. Otherwise empty.
  QStringList findCycle(const SketchLayerRef& design, const SketchLayerRef& layer) const;

 private:
  using Artboard = const SketchLayer*;
  void add(const SketchDocument& document, const SketchLayerRef& layer);
  /// A path of artboards from `from` to `to`, each of which shows the next, that avoids those
  /// already in `*seen`; empty if there is none. In that case, all artboards reached have been
  /// appended to `*left`, each after those that it shows.
  QList<Artboard> findPath(Artboard to, Artboard from, QSet<Artboard>* seen,
                           QList<Artboard>* left) const;

  /// Keeps the artboards alive that the pointers refer to.
  QList<SketchLayerRef> artboards_;
  QHash<Artboard, QList<Artboard>> shown_;
  /// The mapped layers by the artboard that contains them; by null for those outside artboards.
  QHash<Artboard, QList<SketchLayerRef>> mapped_;
  QList<SketchLayerRef> excluded_;
};

}  // namespace kelvar
