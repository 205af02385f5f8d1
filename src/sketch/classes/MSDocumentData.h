#pragma once

#include "sketch/document/SketchDocument.h"

namespace kelvar {

/// What the host's scripts call the data of a document: its pages, symbols and layers.
class KELVAR_EXPORT MSDocumentData : public Object {
 public:
  static const ClassInfo& staticClassInfo();
  const ClassInfo& classInfo() const override { return staticClassInfo(); }

  explicit MSDocumentData(SketchDocumentRef document) : document_(std::move(document)) {}
  SketchDocument& document() const { return *document_; }
  const SketchDocumentRef& documentRef() const { return document_; }

 private:
  const SketchDocumentRef document_;
};

}  // namespace kelvar
