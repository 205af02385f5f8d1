#include "sketch/classes/MSSymbolCreator.h"

#include "runtime/raise.h"
#include "sketch/classes/GroupEditing.h"
#include "sketch/classes/LayerClasses.h"
#include "sketch/classes/MSLayerArray.h"
#include "sketch/classes/newLayerJson.h"

namespace kelvar {
namespace {

using namespace Qt::StringLiterals;
using Self = MSSymbolCreator;

const ClassInfo::Registration kRegistered(&Self::staticClassInfo);

/// Between symbols on a page.
constexpr double kGap = 100;

SketchLayerRef created(const char* kind, const QString& name, const QRectF& frame) {
  SketchJson json = newLayerJson(kind, frame);
  json["name"] = name.toStdString();
  return SketchLayer::create(std::make_unique<Layer>(std::move(json)));
}

QPointF besideContents(const SketchLayer& page) {
  if (page.children().isEmpty()) return {};
  const QRectF contents = GroupEditing::childrenRect(page);
  return {contents.right() + kGap, contents.top()};
}

}  // namespace

const ClassInfo& MSSymbolCreator::staticClassInfo() {
  static const ClassInfo kClass =
      ClassInfoBuilder<Self>("MSSymbolCreator")
          .classOperation(
              "canCreateSymbolFromLayers:",
              [](const QVariant& layers) {
                return GroupEditing::canGroup(
                    MSLayerArray::layersFrom(layers, "canCreateSymbolFromLayers:"));
              },
              "Returns whether the layers are in one group.")
          .classOperation("createSymbolFromLayers:withName:onSymbolsPage:", Self::fromLayers,
                          "Moves layers into a new symbol, on the page Symbols or on their own, "
                          "and returns the instance that is in their place.");
  return kClass;
}

SketchLayerRef MSSymbolCreator::symbolsPage(const SketchDocument& document) {
  for (const SketchLayerRef& page : document.pages()) {
    if (page->name() == u"Symbols") return page;
  }
  return nullptr;
}

SketchLayerRef MSSymbolCreator::symbolsPageOrNew(SketchDocument& document) {
  const SketchLayerRef page = symbolsPage(document);
  return page ? page : document.addPage(created("page", u"Symbols"_s, {}));
}

SketchLayerRef MSSymbolCreator::fromLayers(const QVariant& layers, const QString& name,
                                           bool onSymbolsPage) {
  if (name.isEmpty()) raise(u"a symbol needs a name"_s);
  const QList<SketchLayerRef> wanted =
      MSLayerArray::layersFrom(layers, "createSymbolFromLayers:withName:onSymbolsPage:");
  const SketchDocumentRef document = wanted.isEmpty() ? nullptr : wanted.first()->document();
  if (!document) raise(u"a symbol is made of layers of a document"_s);
  const SketchLayerRef group = GroupEditing::group(wanted);
  const SketchLayerRef page = onSymbolsPage ? symbolsPageOrNew(*document) : group->page();
  if (!page) raise(u"the layers are on no page"_s);
  const QRectF frame = group->frameRect();
  const SketchLayerRef master =
      created("symbolMaster", name, QRectF(besideContents(*page), frame.size()));
  const QList<SketchLayerRef> moved = group->children();
  for (const SketchLayerRef& layer : moved) {
    insertOrRaise(*master, layer, master->children().size());
  }
  insertOrRaise(*page, master, page->children().size());
  const SketchLayerRef instance = newInstanceOf(*master);
  instance->setFrame(KVRectFromCGRect(frame));
  insertOrRaise(*group->parent(), instance, group->parent()->children().indexOf(group));
  group->removeFromParent();
  return instance;
}

}  // namespace kelvar
