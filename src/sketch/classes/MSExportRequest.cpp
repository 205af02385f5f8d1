#include "sketch/classes/MSExportRequest.h"

#include "runtime/ClassInfo.h"
#include "runtime/raise.h"
#include "sketch/classes/LayerClasses.h"

namespace kelvar {
namespace {

using namespace Qt::StringLiterals;

const ClassInfo::Registration kRegistered(&MSExportRequest::staticClassInfo);

QVariantList forLayerInRect(const SketchLayerRef& layer, const QRectF& rect, bool isNamedByID) {
  const QVariantList requests = MSExportRequest::forLayer(layer);
  constexpr double kTolerance = 1;
  const QRectF covered = coveredOnPage(*layer);
  if (!rect.adjusted(-kTolerance, -kTolerance, kTolerance, kTolerance).contains(covered)) {
    raise(u"\"%1\" can only be exported as a whole"_s.arg(layer->name()));
  }
  if (!isNamedByID) return requests;
  for (const QVariant& each : requests) {
    std::static_pointer_cast<MSExportRequest>(each.value<ObjectRef>())->name = layer->objectID();
  }
  return requests;
}

}  // namespace

QVariantList MSExportRequest::forLayer(const SketchLayerRef& layer) {
  if (!layer) raise(u"a layer to be exported is missing"_s);
  QVariantList requests;
  const auto add = [&](double scale, const QString& format, const QString& name) {
    requests.append(toVariant(std::make_shared<MSExportRequest>(layer, scale, format, name)));
  };
  const SketchJson& options = get(layer->node().json(), "exportOptions");
  for (const SketchJson& format : getArray(options, "exportFormats")) {
    constexpr int kPrefix = 1;
    const QString part = getString(format, "name");
    const bool isPrefix = getInt(format, "namingScheme") == kPrefix;
    add(getNumber(format, "scale", 1), getString(format, "fileFormat"),
        isPrefix ? part + layer->name() : layer->name() + part);
  }
  if (requests.isEmpty()) add(1, u"png"_s, layer->name());
  return requests;
}

const ClassInfo& MSExportRequest::staticClassInfo() {
  using Request = MSExportRequest;
  static const ClassInfo kClass =
      ClassInfoBuilder<Request>("MSExportRequest")
          .classOperation("exportRequestsFromExportableLayer:", forLayer,
                          "Returns a request for each export format of a layer, or for a PNG in "
                          "its natural size.")
          .classOperation("exportRequestsFromExportableLayer:inRect:useIDForName:", forLayerInRect,
                          "Returns the same; the rectangle must contain all that the layer covers, "
                          "as a part of a layer cannot be exported.")
          .property(
              "scale", [](const Request& self) { return self.scale; },
              [](Request& self, double scale) {
                if (!(scale > 0)) raise(u"scale must be above 0"_s);
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
