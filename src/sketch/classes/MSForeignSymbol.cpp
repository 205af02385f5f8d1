#include "sketch/classes/MSForeignSymbol.h"

#include "sketch/document/DocumentFiles.h"

namespace kelvar {
namespace {

using M = Member<ModelPart>;

const ClassInfo::Registration kRegistered(&foreignSymbolClass);

SketchLayerRef masterOf(const ModelPart& self) {
  const SketchDocumentRef document = self.document();
  const size_t index = std::stoul(self.place().back());
  const std::shared_ptr<Layer> master = document->files().foreignMaster(index);
  return master ? document->symbolMaster(master->properties().symbolID) : nullptr;
}

}  // namespace

const ClassInfo& foreignSymbolClass() {
  static const ClassInfo kClass =
      ClassInfoBuilder<ModelPart>("MSForeignSymbol", ModelPart::staticClassInfo())
          .property("libraryID", M::text<"libraryID">, "The library's identifier.")
          .property("sourceLibraryName", M::text<"sourceLibraryName">, "The library's name.")
          .operation("symbolMaster", masterOf, "Returns the symbol, or nil if it is missing.");
  return kClass;
}

QVariantList foreignSymbolsOf(const SketchDocumentRef& document) {
  QVariantList symbols;
  const size_t count = getArray(document->files().document(), "foreignSymbols").size();
  for (size_t i = 0; i < count; ++i) {
    const ModelPart::Place place = ModelPart::Place("/foreignSymbols") / i;
    symbols.append(toVariant(std::make_shared<ModelPart>(foreignSymbolClass(), document, place)));
  }
  return symbols;
}

}  // namespace kelvar
