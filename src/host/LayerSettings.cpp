#include "host/LayerSettings.h"

#include "runtime/Conversion.h"

namespace kelvar {
namespace {

const auto kKey = QStringLiteral("io.kelvarlabs.kelvar");
const auto kArtboard = QStringLiteral("artboard");
const auto kQuality = QStringLiteral("quality");
const auto kRotation = QStringLiteral("rotation");
const auto kFlip = QStringLiteral("flip");
const auto kIncludeInArtboards = QStringLiteral("includeInArtboards");
const auto kImage = QStringLiteral("image");

template <class T>
T valueOr(const QVariantMap& map, const QString& key, T otherwise) {
  return map.contains(key) ? fromVariant<T>(map.value(key)).value_or(otherwise) : otherwise;
}

}  // namespace

std::optional<LayerSettings> LayerSettings::of(const SketchLayer& layer) {
  const QVariantMap map = layer.userInfo(kKey);
  if (map.isEmpty()) return std::nullopt;
  const double quality = valueOr(map, kQuality, 1.0);
  return LayerSettings{.artboard = valueOr(map, kArtboard, QString()),
                       .quality = quality > 0 ? quality : 1,
                       .rotation = valueOr(map, kRotation, uint64_t{0}) % 4,
                       .isFlipped = valueOr(map, kFlip, false),
                       .isIncludedInArtboards = valueOr(map, kIncludeInArtboards, true),
                       .image = valueOr(map, kImage, QString())};
}

void LayerSettings::rememberOn(SketchLayer& layer) const {
  QVariantMap map{{kQuality, quality},
                  {kRotation, qulonglong(rotation % 4)},
                  {kFlip, isFlipped},
                  {kIncludeInArtboards, isIncludedInArtboards}};
  if (!artboard.isNull()) map.insert(kArtboard, artboard);
  if (!image.isNull()) map.insert(kImage, image);
  layer.setUserInfo(kKey, map);
}

void LayerSettings::forgetOn(SketchLayer& layer) { layer.setUserInfo(kKey, {}); }

}  // namespace kelvar
