#pragma once

#include "sketch/document/SketchDocument.h"

namespace kelvar {

/// The colors and gradients that a document offers, in the forms of all versions: plain ones, and
/// since Sketch 53 ones with names, beside which the plain ones are kept.
class KELVAR_EXPORT MSAssetCollection : public Object {
 public:
  static const ClassInfo& staticClassInfo();
  const ClassInfo& classInfo() const override { return staticClassInfo(); }

  explicit MSAssetCollection(SketchDocumentRef document) : document_(std::move(document)) {}
  const SketchDocumentRef& document() const { return document_; }

 private:
  const SketchDocumentRef document_;
};

/// A color or gradient with a name. Instances are `ModelPart`s.
const ClassInfo& colorAssetClass();
const ClassInfo& gradientAssetClass();

}  // namespace kelvar
