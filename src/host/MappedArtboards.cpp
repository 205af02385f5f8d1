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
  for (const SketchLayerRef& artboard : artboards_) wayTo(nullptr, artboard.get(), &seen, &order);
  order.append(nullptr);
  QList<SketchLayerRef> layers;
  for (const Artboard artboard : order) layers += mapped_.value(artboard);
  return layers + excluded_;
}

QStringList MappedArtboards::circle(const SketchLayerRef& design,
                                    const SketchLayerRef& layer) const {
  const SketchLayerRef around = layer->artboard();
  if (!around) return {};
  QSet<Artboard> seen;
  QList<Artboard> left;
  QStringList names;
  for (const Artboard artboard : wayTo(around.get(), design.get(), &seen, &left)) {
    names.append(artboard->name());
  }
  return names.isEmpty() ? names : names + QStringList{design->name()};
}

QList<MappedArtboards::Artboard> MappedArtboards::wayTo(Artboard to, Artboard from,
                                                        QSet<Artboard>* seen,
                                                        QList<Artboard>* left) const {
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
