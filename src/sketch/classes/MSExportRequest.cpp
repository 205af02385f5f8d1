#include "sketch/classes/MSExportRequest.h"

#include "runtime/ClassInfo.h"
#include "runtime/raise.h"
#include "sketch/classes/LayerClasses.h"

namespace kelvar {
namespace {

using namespace Qt::StringLiterals;

const ClassInfo::Registration kRegistered[] = {
    ClassInfo::Registration(&MSExportRequest::staticClassInfo),
    ClassInfo::Registration(&MSImmutableLayerAncestry::staticClassInfo)};

using Request = MSExportRequest;

QVariantList namedByID(const QVariantList& requests, const SketchLayer& layer) {
  for (const QVariant& each : requests) {
    std::static_pointer_cast<Request>(each.value<ObjectRef>())->name = layer.objectID();
  }
  return requests;
}

void requireScale(double scale) {
  if (!(scale > 0)) raise(u"scale must be above 0"_s);
}

std::shared_ptr<Request> withFormat(const SketchLayerRef& layer, const SketchJson& format) {
  constexpr int kPrefix = 1;
  const double scale = getNumber(format, "scale", 1);
  requireScale(scale);
  const QString part = getString(format, "name");
  const bool isPrefix = getInt(format, "namingScheme") == kPrefix;
  return std::make_shared<Request>(layer, scale, getString(format, "fileFormat"),
                                   isPrefix ? part + layer->name() : layer->name() + part);
}
std::shared_ptr<Request> withFormatPart(const SketchLayerRef& layer, const ModelPartRef& format) {
  return withFormat(orRaiseMissing(layer, "exportFormat:"),
                    partOfClass(format, exportFormatClass(), "exportFormat:").json());
}

QVariantList forLayerInRect(const SketchLayerRef& layer, const QRectF& rect, bool isNamedByID) {
  const QVariantList requests = MSExportRequest::forLayer(layer);
  constexpr double kTolerance = 1;
  const QRectF covered = coveredOnPage(*layer);
  if (!rect.adjusted(-kTolerance, -kTolerance, kTolerance, kTolerance).contains(covered)) {
    raise(u"\"%1\" can only be exported as a whole"_s.arg(layer->name()));
  }
  return isNamedByID ? namedByID(requests, *layer) : requests;
}

QVariantList withFormats(const SketchLayerRef& layer, const QVariantList& formats) {
  QVariantList requests;
  for (const QVariant& each : formats) {
    const auto part = std::dynamic_pointer_cast<ModelPart>(each.value<ObjectRef>());
    requests.append(toVariant(withFormatPart(layer, part)));
  }
  return requests;
}

QVariantList withFormatsNamed(const SketchLayerRef& layer, const QVariantList& formats,
                              bool isNamedByID) {
  const QVariantList requests = withFormats(layer, formats);
  return isNamedByID ? namedByID(requests, *layer) : requests;
}

}  // namespace

const ClassInfo& MSImmutableLayerAncestry::staticClassInfo() {
  using Ancestry = MSImmutableLayerAncestry;
  static const ClassInfo kClass =
      ClassInfoBuilder<Ancestry>("MSImmutableLayerAncestry")
          .initializer(
              "initWithLayer:",
              [](const SketchLayerRef& layer) {
                return std::make_shared<Ancestry>(orRaiseMissing(layer, "initWithLayer:"));
              },
              "Creates the place of a layer, for MSExportRequest.")
          .classOperation(
              "ancestryWithMSLayer:",
              [](const SketchLayerRef& layer) {
                return std::make_shared<Ancestry>(orRaiseMissing(layer, "ancestryWithMSLayer:"));
              },
              "Returns the place of a layer, for MSExportRequest.")
          .operation(
              "layer", [](const Ancestry& self) { return self.layer; }, "Returns the layer.");
  return kClass;
}

QVariantList MSExportRequest::forLayer(const SketchLayerRef& layer) {
  if (!layer) raise(u"a layer to be exported is missing"_s);
  QVariantList requests;
  const SketchJson& options = get(layer->node().json(), "exportOptions");
  for (const SketchJson& format : getArray(options, "exportFormats")) {
    requests.append(toVariant(withFormat(layer, format)));
  }
  if (requests.isEmpty()) {
    requests.append(toVariant(std::make_shared<Request>(layer, 1, u"png"_s, layer->name())));
  }
  return requests;
}

const ClassInfo& MSExportRequest::staticClassInfo() {
  static const ClassInfo kClass =
      ClassInfoBuilder<Request>("MSExportRequest")
          .classOperation("exportRequestsFromExportableLayer:", forLayer,
                          "Returns a request for each export format of a layer, or for a PNG in "
                          "its natural size.")
          .classOperation("exportRequestsFromExportableLayer:inRect:useIDForName:", forLayerInRect,
                          "Returns the same; the rectangle must contain all that the layer covers, "
                          "as a part of a layer cannot be exported.")
          .classOperation(
              "exportRequestFromLayerAncestry:exportFormat:",
              [](const std::shared_ptr<MSImmutableLayerAncestry>& ancestry,
                 const ModelPartRef& format) {
                return withFormatPart(ancestry ? ancestry->layer : nullptr, format);
              },
              "Returns a request for a layer in one format.")
          .classOperation(
              "exportRequestFromExportFormat:layer:inRect:useIDForName:",
              [](const ModelPartRef& format, const SketchLayerRef& layer, const QRectF& rect,
                 bool isNamedByID) {
                const auto request = withFormatPart(layer, format);
                forLayerInRect(layer, rect, isNamedByID);
                if (isNamedByID) request->name = layer->objectID();
                return request;
              },
              "Returns a request for a layer in one format; the rectangle must contain all that "
              "the layer covers.")
          .classOperation(
              "exportRequestsFromLayerAncestry:",
              [](const std::shared_ptr<MSImmutableLayerAncestry>& ancestry) {
                return MSExportRequest::forLayer(ancestry ? ancestry->layer : nullptr);
              },
              "Returns a request for each export format of a layer, or for a PNG in its natural "
              "size.")
          .classOperation(
              "exportRequestsFromLayerAncestry:exportFormats:",
              [](const std::shared_ptr<MSImmutableLayerAncestry>& ancestry,
                 const QVariantList& formats) {
                return withFormats(ancestry ? ancestry->layer : nullptr, formats);
              },
              "Returns a request for a layer in each of the formats.")
          .classOperation(
              "exportRequestsFromExportableLayer:exportFormats:useIDForName:", withFormatsNamed,
              "Returns a request for a layer in each of the formats, named by the layer or by its "
              "identifier.")
          .property(
              "scale", [](const Request& self) { return self.scale; },
              [](Request& self, double scale) {
                requireScale(scale);
                self.scale = scale;
              },
              "Pixels per unit.")
          .property(
              "format", [](const Request& self) { return self.format; },
              [](Request& self, const QString& format) { self.format = format; },
              "The extension of the file, such as \"png\".")
          .property(
              "name", [](const Request& self) { return self.name; },
              [](Request& self, const QString& name) { self.name = name; },
              "What the file is to be called, without its extension.");
  return kClass;
}

}  // namespace kelvar
