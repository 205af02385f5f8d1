#pragma once

#include "platform/image/BezierPath.h"
#include "sketch/classes/ModelPart.h"
#include "sketch/document/SketchLayer.h"

namespace kelvar {

/// The classes that layers have in scripts, by the names that the host's scripts know. Instances
/// are `SketchLayer`s.

/// The class of a kind of layer; that of all layers for an unknown kind.
const ClassInfo& layerClassOf(LayerKind kind);

const ClassInfo& layerClass();
const ClassInfo& styledLayerClass();
const ClassInfo& groupClass();
const ClassInfo& pageClass();
const ClassInfo& artboardClass();
const ClassInfo& symbolMasterClass();
const ClassInfo& shapeGroupClass();
const ClassInfo& shapeLayerClass();
const ClassInfo& rectangleClass();
const ClassInfo& ovalClass();
const ClassInfo& triangleClass();
const ClassInfo& polygonClass();
const ClassInfo& starClass();
const ClassInfo& textLayerClass();
const ClassInfo& bitmapLayerClass();
const ClassInfo& symbolInstanceClass();
const ClassInfo& sliceClass();
const ClassInfo& hotspotClass();
const ClassInfo& exportOptionsClass();
const ClassInfo& exportFormatClass();

/// Creates a layer of this kind that is in no document.
SketchLayerRef newLayerOfKind(const char* kind, const QRectF& frame);

template <Key kind>
SketchLayerRef newLayer() {
  return newLayerOfKind(kind.text, {0, 0, 100, 100});
}
template <Key kind>
SketchLayerRef newLayerWithFrame(const QRectF& frame) {
  return newLayerOfKind(kind.text, frame);
}

/// The layer as a reference that can be passed on.
SketchLayerRef refTo(const SketchLayer& layer);
/// The outline of a shape, or of all shapes of a shape group, in its own coordinates.
BezierPath outlineOf(const SketchLayer& layer);
/// The same in its parent's coordinates; the second as if it were neither rotated nor
/// mirrored.
BezierPath pathInParent(const SketchLayer& layer);
BezierPath pathInFrame(const SketchLayer& layer);
/// What the layer covers on its page, with borders and shadows.
QRectF coveredOnPage(const SketchLayer& layer);
/// Raises for nil; `what` is the operation.
const SketchLayerRef& orRaiseMissing(const SketchLayerRef& layer, const char* what);
/// A new instance of a symbol, in its size, which is in no document.
SketchLayerRef newInstanceOf(const SketchLayer& master);
/// Inserts a layer and raises what prevents it.
void insertOrRaise(SketchLayer& group, const SketchLayerRef& layer, qsizetype index);

}  // namespace kelvar
