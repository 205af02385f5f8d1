#include "host/MappedArtboards.h"

#include "host/SketchJson.h"

namespace kelvar {

MappedArtboards::MappedArtboards(const SketchDocument& document)
    : artboards_(document.artboards()) {
  for (const SketchLayerRef& artboard : artboards_) shown_.insert(artboard.get(), {});
  for (const SketchLayerRef& page : document.pages()) {
    for (const SketchLayerRef& layer : page->withDescendants()) add(document, layer);
  }
}

void MappedArtboards::add(const SketchDocument& document, const SketchLayerRef& layer) {
  const Artboard around = layer->artboard().get();
  const auto show = [&](const SketchLayerRef& shown) {
    if (shown && shown_.contains(shown.get())) shown_[around].append(shown.get());
  };
  if (layer->kind() == u"symbolInstance") {
    show(document.symbolMaster(textIn(layer->json(), "symbolID")));
    for (const SketchJson& override : listIn(layer->json(), "overrideValues")) {
      if (!textIn(override, "overrideName").endsWith(u"_symbolID")) continue;
      show(document.symbolMaster(textIn(override, "value")));
    }
  }
  const auto settings = LayerSettings::of(*layer);
  if (!settings || settings->artboard.isNull()) return;
  if (!settings->isIncludedInArtboards) {
    excluded_.append(layer);
    return;
  }
  mapped_[around].append(layer);
  for (const SketchLayerRef& artboard : artboards_) {
    if (artboard->objectID() == settings->artboard) show(artboard);
  }
}

QList<SketchLayerRef> MappedArtboards::layersInOrder() const {
  QSet<Artboard> seen;
  QList<Artboard> order;
  for (const SketchLayerRef& artboard : artboards_) visit(artboard.get(), &seen, &order);
  order.append(nullptr);
  QList<SketchLayerRef> layers;
  for (const Artboard artboard : order) layers += mapped_.value(artboard);
  return layers + excluded_;
}

void MappedArtboards::visit(Artboard artboard, QSet<Artboard>* seen, QList<Artboard>* order) const {
  if (seen->contains(artboard)) return;
  seen->insert(artboard);
  for (const Artboard shown : shown_.value(artboard)) visit(shown, seen, order);
  order->append(artboard);
}

QStringList MappedArtboards::circle(const SketchLayerRef& design,
                                    const SketchLayerRef& layer) const {
  const SketchLayerRef around = layer->artboard();
  QSet<Artboard> seen;
  QStringList way;
  if (!around || !findWay(design.get(), around.get(), &seen, &way)) return {};
  return way + QStringList{design->name()};
}

bool MappedArtboards::findWay(Artboard from, Artboard to, QSet<Artboard>* seen,
                              QStringList* way) const {
  if (seen->contains(from)) return false;
  seen->insert(from);
  way->append(from->name());
  if (from == to) return true;
  for (const Artboard shown : shown_.value(from)) {
    if (findWay(shown, to, seen, way)) return true;
  }
  way->removeLast();
  return false;
}

}  // namespace kelvar
