#include "sketch/render/paint/BlendMode.h"

namespace kelvar::render {

std::optional<QPainter::CompositionMode> compositionOf(BlendMode mode) {
  switch (mode) {
    case BlendMode::Normal:
      return QPainter::CompositionMode_SourceOver;
    case BlendMode::Darken:
      return QPainter::CompositionMode_Darken;
    case BlendMode::Multiply:
      return QPainter::CompositionMode_Multiply;
    case BlendMode::ColorBurn:
      return QPainter::CompositionMode_ColorBurn;
    case BlendMode::Lighten:
      return QPainter::CompositionMode_Lighten;
    case BlendMode::Screen:
      return QPainter::CompositionMode_Screen;
    case BlendMode::ColorDodge:
      return QPainter::CompositionMode_ColorDodge;
    case BlendMode::Overlay:
      return QPainter::CompositionMode_Overlay;
    case BlendMode::SoftLight:
      return QPainter::CompositionMode_SoftLight;
    case BlendMode::HardLight:
      return QPainter::CompositionMode_HardLight;
    case BlendMode::Difference:
      return QPainter::CompositionMode_Difference;
    case BlendMode::Exclusion:
      return QPainter::CompositionMode_Exclusion;
    case BlendMode::PlusLighter:
      return QPainter::CompositionMode_Plus;
    default:
      return {};
  }
}

}  // namespace kelvar::render
