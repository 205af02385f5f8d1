#include "cli/map/MapStages.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include "cli/Output.h"

namespace kelvar::cli {

void MapStages::begin(Stage stage) {
  constexpr const char* kNames[] = {"reading", "warping", "writing"};
  end();
  stage_ = stage;
  progress_.setStage(kNames[stage]);
  timer_.start();
}

void MapStages::end() {
  if (timer_.isValid()) milliseconds_[stage_] = double(timer_.nsecsElapsed()) / 1e6;
}

void MapStages::report(const Image& image, const warp::Quad& corners) {
  end();
  QJsonArray points;
  for (const warp::Point& corner : corners) points.append(QJsonArray{corner.x, corner.y});
  const QJsonObject times{{QStringLiteral("read"), milliseconds_[kReading]},
                          {QStringLiteral("warp"), milliseconds_[kWarping]},
                          {QStringLiteral("write"), milliseconds_[kWriting]}};
  const QJsonObject object{
      {QStringLiteral("size"), QJsonArray{image.pixelWidth(), image.pixelHeight()}},
      {QStringLiteral("corners"), points},
      {QStringLiteral("milliseconds"), times}};
  print(QJsonDocument(object).toJson(QJsonDocument::Compact));
}

}  // namespace kelvar::cli
