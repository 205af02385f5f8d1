#include "mockup/LayerSettings.h"

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
T valueOr(const QVariantMap& map, const QString& key, T fallback) {
  return map.contains(key) ? fromVariant<T>(map.value(key)).value_or(fallback) : fallback;
}

}  // namespace

std::optional<LayerSettings> LayerSettings::of(const SketchLayer& layer) {
  const QVariantMap map = layer.userInfo(kKey);
  if (map.isEmpty()) return std::nullopt;
  const double quality = valueOr(map, kQuality, 1.0);
  return LayerSettings{.artboard = valueOr(map, kArtboard, QString()),
                       .options = {.quality = quality > 0 ? quality : 1,
                                   .rotation = int(valueOr(map, kRotation, uint64_t{0}) % 4),
                                   .flipped = valueOr(map, kFlip, false),
                                   .includedInArtboards = valueOr(map, kIncludeInArtboards, true)},
                       .image = valueOr(map, kImage, QString())};
}

void LayerSettings::rememberOn(SketchLayer& layer) const {
  QVariantMap map{{kQuality, options.scale()},
                  {kRotation, qulonglong(options.rotation % 4)},
                  {kFlip, options.flipped},
                  {kIncludeInArtboards, options.includedInArtboards}};
  if (!artboard.isNull()) map.insert(kArtboard, artboard);
  if (!image.isNull()) map.insert(kImage, image);
  layer.setUserInfo(kKey, map);
}

void LayerSettings::forgetOn(SketchLayer& layer) { layer.setUserInfo(kKey, {}); }

}  // namespace kelvar
