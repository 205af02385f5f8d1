#include "cli/DocumentCommand.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include "cli/CommandError.h"
#include "cli/Output.h"
#include "platform/Bundle.h"
#include "platform/files/FileName.h"

namespace kelvar::cli {

SketchDocumentRef openDocument(const std::string& path, const std::string& output) {
  const QString name = fileNameFromBytes(path);
  const SketchDocumentRef document =
      orThrow(isSameFile(name, fileNameFromBytes(output)) ? SketchDocument::openToReplace(name)
                                                          : SketchDocument::open(name));
  Bundle::setHostInformation(document->hostInformation());
  return document;
}

void printWarnings(const QStringList& warnings) {
  for (const QString& warning : warnings) printError(warning);
}

void reportMapped(const QList<SketchLayerRef>& layers) {
  QJsonArray list;
  for (const SketchLayerRef& layer : layers) {
    const auto settings = LayerSettings::of(*layer).value_or(LayerSettings());
    list.append(
        QJsonObject{{QStringLiteral("id"), layer->objectID()},
                    {QStringLiteral("name"), layer->name()},
                    {QStringLiteral("artboard"),
                     settings.artboard.isNull() ? QJsonValue() : QJsonValue(settings.artboard)},
                    {QStringLiteral("image"), settings.image}});
  }
  const QJsonObject report{{QStringLiteral("layers"), list}};
  print(QJsonDocument(report).toJson(QJsonDocument::Compact));
}

}  // namespace kelvar::cli
