#include "mockup/ArtboardDependencyGraph.h"

#include "sketch/document/Layer.h"

namespace kelvar {

ArtboardDependencyGraph::ArtboardDependencyGraph(const SketchDocument& document)
    : artboards_(document.artboards()) {
  for (const SketchLayerRef& artboard : artboards_) shown_.insert(artboard.get(), {});
  for (const SketchLayerRef& page : document.pages()) {
    for (const SketchLayerRef& layer : page->withDescendants()) add(document, layer);
  }
}

void ArtboardDependencyGraph::add(const SketchDocument& document, const SketchLayerRef& layer) {
  const Artboard around = layer->artboard().get();
  const auto show = [&](const SketchLayerRef& shown) {
    if (shown && shown_.contains(shown.get())) shown_[around].append(shown.get());
  };
  if (layer->kind() == u"symbolInstance") {
    show(document.symbolMaster(layer->node().properties().symbolID));
    for (const SketchJson& override : getArray(layer->node().json(), "overrideValues")) {
      if (!getString(override, "overrideName").endsWith(u"_symbolID")) continue;
      show(document.symbolMaster(getString(override, "value")));
    }
  }
  const auto settings = LayerSettings::of(*layer);
  if (!settings || settings->artboard.isNull()) return;
  if (!settings->options.includedInArtboards) {
    excluded_.append(layer);
    return;
  }
  mapped_[around].append(layer);
  for (const SketchLayerRef& artboard : artboards_) {
    if (artboard->objectID() == settings->artboard) show(artboard);
  }
}

QList<SketchLayerRef> ArtboardDependencyGraph::topologicalOrder() const {
  QSet<Artboard> seen;
  QList<Artboard> order;
  for (const SketchLayerRef& artboard : artboards_)
    findPath(nullptr, artboard.get(), &seen, &order);
  order.append(nullptr);
  QList<SketchLayerRef> layers;
  for (const Artboard artboard : order) layers += mapped_.value(artboard);
  return layers + excluded_;
}

QStringList ArtboardDependencyGraph::findCycle(const SketchLayerRef& design,
                                               const SketchLayerRef& layer) const {
  const SketchLayerRef around = layer->artboard();
  if (!around) return {};
  QSet<Artboard> seen;
  QList<Artboard> left;
  QStringList names;
  for (const Artboard artboard : findPath(around.get(), design.get(), &seen, &left)) {
    names.append(artboard->name());
  }
  return names.isEmpty() ? names : names + QStringList{design->name()};
}

QList<ArtboardDependencyGraph::Artboard> ArtboardDependencyGraph::findPath(
    Artboard to, Artboard from, QSet<Artboard>* seen, QList<Artboard>* left) const {
  // Without recursion, since the document says how long a way is.
  QList<Artboard> way;
  QList<QList<Artboard>> ahead{{from}};
  while (!ahead.isEmpty()) {
    if (ahead.last().isEmpty()) {
      ahead.removeLast();
      if (!way.isEmpty()) left->append(way.takeLast());
      continue;
    }
    const Artboard next = ahead.last().takeFirst();
    if (seen->contains(next)) continue;
    seen->insert(next);
    way.append(next);
    if (next == to) return way;
    ahead.append(shown_.value(next));
  }
  return {};
}

}  // namespace kelvar
