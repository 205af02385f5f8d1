#include "app/DocumentCommand.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <cstdio>

#include "app/Failure.h"
#include "app/Output.h"
#include "platform/Bundle.h"
#include "platform/FileName.h"

namespace kelvar::app {

SketchDocumentRef openDocument(const std::string& path, const std::string& output) {
  QString error;
  const QString name = fileNameFromBytes(path);
  const SketchDocumentRef document = isSameFile(name, fileNameFromBytes(output))
                                         ? SketchDocument::openToReplace(name, &error)
                                         : SketchDocument::open(name, &error);
  if (!document) throw Failure(Failure::kFailed, error);
  Bundle::setHostInformation(document->hostInformation());
  return document;
}

void tellWarnings(const QStringList& warnings) {
  for (const QString& warning : warnings) {
    std::fprintf(stderr, "kelvar: %s\n", qUtf8Printable(printable(warning)));
  }
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

}  // namespace kelvar::app
