#include "platform/QtError.h"
#include "sketch/document/Layer.h"
#include "sketch/document/SketchDocument.h"

namespace kelvar {
namespace {

/// Maximum nesting of layers that are put into one another. Each takes two containers of JSON, of
/// which a document may have `kMaxSketchJsonDepth`.
constexpr int kMaxDepth = 200;

int depthBelow(const SketchLayer& layer) {
  int depth = 0;
  for (const SketchLayerRef& child : layer.children()) {
    depth = std::max(depth, depthBelow(*child));
  }
  return depth + 1;
}

void setNewIdentifiers(SketchJson* layer) {
  (*layer)["do_objectID"] = newObjectID();
  if (classOf(*layer) == u"symbolMaster") (*layer)["symbolID"] = newObjectID();
  const auto layers = layer->find("layers");
  if (layers == layer->end() || !layers->is_array()) return;
  for (SketchJson& child : *layers) setNewIdentifiers(&child);
}

tl::unexpected<Error> refuse(const QString& why) {
  return failure(Error::Kind::InvalidArgument, why);
}

}  // namespace

SketchLayerRef SketchLayer::create(std::unique_ptr<Layer> node) {
  return make(std::move(node), std::make_shared<bool>(false), nullptr);
}

bool SketchLayer::isGroup() const {
  const LayerProperties& layer = node_->properties();
  return layer.isArtboard() || layer.kind == LayerKind::Page || layer.kind == LayerKind::Group ||
         layer.kind == LayerKind::ShapeGroup;
}

SketchDocumentRef SketchLayer::document() const {
  const SketchLayer* root = this;
  while (const SketchLayerRef around = root->parent()) root = around.get();
  return root->document_.lock();
}

Result<void> SketchLayer::insert(const SketchLayerRef& layer, qsizetype index) {
  if (!isGroup()) return refuse(QStringLiteral("\"%1\" cannot contain layers").arg(name()));
  if (layer->isPage()) {
    return refuse(QStringLiteral("the page \"%1\" cannot be put into a layer").arg(layer->name()));
  }
  int depth = depthBelow(*layer);
  for (SketchLayerRef around = self(); around; around = around->parent(), ++depth) {
    if (around != layer) continue;
    return refuse(QStringLiteral("\"%1\" cannot be put into itself").arg(layer->name()));
  }
  if (depth > kMaxDepth) {
    return refuse(QStringLiteral("layers cannot be nested more than %1 deep").arg(kMaxDepth));
  }
  if (layer->parent() == self() && children_.indexOf(layer) < index) --index;
  layer->removeFromParent();
  const qsizetype at = std::clamp<qsizetype>(index, 0, children_.size());
  edit().insertChild(size_t(at), layer->node_);
  children_.insert(at, layer);
  layer->parent_ = self();
  layer->moveTo(isChanged_);
  if (const SketchDocumentRef document = this->document()) document->forgetSymbols();
  return {};
}

void SketchLayer::removeFromParent() {
  const SketchLayerRef around = parent();
  if (!around) return;
  const SketchDocumentRef document = this->document();
  const qsizetype index = around->children_.indexOf(self());
  around->edit().takeChild(size_t(index));
  const SketchLayerRef kept = around->children_.takeAt(index);
  parent_.reset();
  moveTo(std::make_shared<bool>(false));
  if (document) document->forgetSymbols();
}

void SketchLayer::moveTo(const std::shared_ptr<bool>& isChanged) {
  isChanged_ = isChanged;
  for (const SketchLayerRef& child : children_) child->moveTo(isChanged);
}

SketchLayerRef SketchLayer::copy() const {
  SketchJson json = node_->toJson();
  setNewIdentifiers(&json);
  return create(std::make_unique<Layer>(std::move(json)));
}

}  // namespace kelvar
