#include "sketch/classes/MSDocumentData.h"

#include "sketch/classes/MSAssetCollection.h"
#include "sketch/classes/MSForeignSymbol.h"
#include "sketch/classes/MSSymbolCreator.h"
#include "sketch/classes/SharedStyles.h"
#include "sketch/classes/withDocumentLayers.h"

namespace kelvar {
namespace {

using Data = MSDocumentData;

const ClassInfo::Registration kRegistered(&MSDocumentData::staticClassInfo);

template <const char* const& kind>
std::shared_ptr<SharedStyles> sharedStyles(const Data& self) {
  return std::make_shared<SharedStyles>(self.documentRef(), kind);
}
template <const char* const& kind>
ModelPartRef styleWithID(const Data& self, const QString& objectID) {
  return sharedStyles<kind>(self)->withID(objectID);
}
template <const char* const& kind>
QVariantList allSharedStyles(const Data& self) {
  return sharedStyles<kind>(self)->withForeign();
}

ClassInfoBuilder<Data> withStyles(ClassInfoBuilder<Data> builder) {
  return std::move(builder)
      .operation("layerStyles", sharedStyles<SharedStyles::kOfLayers>,
                 "Returns the shared styles of layers.")
      .operation("layerTextStyles", sharedStyles<SharedStyles::kOfTexts>,
                 "Returns the shared styles of texts.")
      .operation("layerStyleWithID:", styleWithID<SharedStyles::kOfLayers>,
                 "Returns the shared style of layers with this identifier, or nil.")
      .operation("textStyleWithID:", styleWithID<SharedStyles::kOfTexts>,
                 "Returns the shared style of texts with this identifier, or nil.")
      .operation(
          "allLayerStyles", allSharedStyles<SharedStyles::kOfLayers>,
          "Returns the shared styles of layers as an ordinary list, also those of libraries.")
      .operation(
          "allTextStyles", allSharedStyles<SharedStyles::kOfTexts>,
          "Returns the shared styles of texts as an ordinary list, also those of libraries.");
}

ClassInfoBuilder<Data> withSymbols(ClassInfoBuilder<Data> builder) {
  return std::move(builder)
      .operation(
          "localSymbols", [](const Data& self) { return symbolMasters(self.document()); },
          "Returns the symbol masters, in the order of the pages.")
      .operation(
          "foreignSymbols", [](const Data& self) { return foreignSymbolsOf(self.documentRef()); },
          "Returns the symbols of libraries that the document uses.")
      .operation(
          "symbolsPage",
          [](const Data& self) { return MSSymbolCreator::symbolsPage(self.document()); },
          "Returns the page Symbols, or nil.")
      .operation(
          "symbolsPageOrCreateIfNecessary",
          [](Data& self) { return MSSymbolCreator::symbolsPageOrNew(self.document()); },
          "Returns the page Symbols, which is added if there is none.");
}

}  // namespace

QVariantList symbolMasters(const SketchDocument& document) {
  QList<SketchLayerRef> masters = document.artboards();
  masters.removeIf([](const auto& layer) { return !layer->isSymbolMaster(); });
  return MSLayerArray::toList(masters);
}

SketchLayerRef layerWithID(const SketchDocument& document, const QString& objectID) {
  const QList<SketchLayerRef> found = document.layersNamed(objectID);
  return !found.isEmpty() && found.first()->objectID() == objectID ? found.first() : nullptr;
}

const ClassInfo& MSDocumentData::staticClassInfo() {
  static const ClassInfo kClass =
      withDocumentLayers(withStyles(withSymbols(ClassInfoBuilder<Data>("MSDocumentData"))))
          .property(
              "pages",
              [](const Data& self) { return MSLayerArray::toList(self.document().pages()); },
              "The pages in order.")
          .operation(
              "addPage:",
              [](Data& self, const SketchLayerRef& page) {
                if (!page || !page->isPage()) raise(QStringLiteral("addPage: takes an MSPage"));
                return self.document().addPage(page);
              },
              "Puts a new page after the others and returns it.")
          .operation(
              "removePage:",
              [](Data& self, const SketchLayerRef& page) {
                orRaise(self.document().removePage(page));
              },
              "Removes a page, which must not be the only one.")
          .operation(
              "assets",
              [](const Data& self) {
                return std::make_shared<MSAssetCollection>(self.documentRef());
              },
              "Returns the colors and gradients that the document offers.");
  return kClass;
}

}  // namespace kelvar
