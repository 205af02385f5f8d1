#include "platform/image/pdf/OutlineDevice.h"

#include <GfxState.h>
#include <splash/SplashFont.h>
#include <splash/SplashPath.h>

#include <QPainterPathStroker>
#include <algorithm>
#include <memory>

namespace kelvar {
namespace {

/// What Poppler paints on; nothing reads it.
SplashColor blank = {255, 255, 255, 0};

constexpr int kInvisible = 3;

QColor colorOf(const GfxRGB& rgb, double opacity) {
  const auto part = [](GfxColorComp value) {
    return std::clamp(float(colToDbl(value)), 0.0F, 1.0F);
  };
  return QColor::fromRgbF(part(rgb.r), part(rgb.g), part(rgb.b),
                          std::clamp(float(opacity), 0.0F, 1.0F));
}

QColor fillColorOf(GfxState* state) {
  GfxRGB rgb;
  state->getFillRGB(&rgb);
  return colorOf(rgb, state->getFillOpacity());
}

QPainterPath pathOf(SplashPath* glyph, const QPointF& at) {
  QPainterPath path;
  const auto point = [&](int i, unsigned char* flags) {
    double x = 0, y = 0;
    glyph->getPoint(i, &x, &y, flags);
    return at + QPointF(x, y);
  };
  unsigned char flags = 0, ignored = 0;
  for (int i = 0; i < glyph->getLength(); ++i) {
    const QPointF to = point(i, &flags);
    if (flags & splashPathFirst) {
      path.moveTo(to);
    } else if ((flags & splashPathCurve) && i + 2 < glyph->getLength()) {
      path.cubicTo(to, point(i + 1, &ignored), point(i + 2, &ignored));
      i += 2;
    } else {
      path.lineTo(to);
    }
  }
  return path;
}

QPainterPath pathOf(GfxState* state) {
  QPainterPath path;
  const GfxPath* const source = state->getPath();
  for (int i = 0; i < source->getNumSubpaths(); ++i) {
    const GfxSubpath* const part = source->getSubpath(i);
    const auto point = [&](int j) {
      double x = 0, y = 0;
      state->transform(part->getX(j), part->getY(j), &x, &y);
      return QPointF(x, y);
    };
    path.moveTo(point(0));
    for (int j = 1; j < part->getNumPoints(); ++j) {
      if (part->getCurve(j) && j + 2 < part->getNumPoints()) {
        path.cubicTo(point(j), point(j + 1), point(j + 2));
        j += 2;
      } else {
        path.lineTo(point(j));
      }
    }
    if (part->isClosed()) path.closeSubpath();
  }
  return path;
}

}  // namespace

OutlineDevice::OutlineDevice() : SplashOutputDev(splashModeMono8, 4, false, blank) {
  setFreeTypeHinting(false, false);
}

void OutlineDevice::startPage(int page, GfxState* state, XRef* xref) {
  SplashOutputDev::startPage(page, state, xref);
  page_ = {{state->getPageWidth(), state->getPageHeight()}, {}, false};
}

void OutlineDevice::drawChar(GfxState* state, double x, double y, double dx, double dy,
                             double originX, double originY, CharCode code, int bytes,
                             const Unicode* text, int textLength) {
  // Chooses the font.
  SplashOutputDev::drawChar(state, x, y, dx, dy, originX, originY, code, bytes, text, textLength);
  if (state->getRender() == kInvisible) return;
  SplashFont* const font = getCurrentFont();
  const std::unique_ptr<SplashPath> glyph(font ? font->getGlyphPath(int(code)) : nullptr);
  if (!glyph) {
    page_.isIncomplete = true;
    return;
  }
  double atX = 0, atY = 0;
  state->transform(x - originX, y - originY, &atX, &atY);
  QPainterPath path = pathOf(glyph.get(), {atX, atY});
  path.setFillRule(Qt::WindingFill);
  if (!path.isEmpty()) page_.shapes.append({path, fillColorOf(state), atX, atY});
}

bool OutlineDevice::beginType3Char(GfxState*, double, double, double, double, CharCode,
                                   const Unicode*, int) {
  page_.isIncomplete = true;
  return true;
}

void OutlineDevice::addFill(GfxState* state, Qt::FillRule rule) {
  QPainterPath path = pathOf(state);
  path.setFillRule(rule);
  page_.shapes.append({path, fillColorOf(state)});
}

void OutlineDevice::fill(GfxState* state) { addFill(state, Qt::WindingFill); }
void OutlineDevice::eoFill(GfxState* state) { addFill(state, Qt::OddEvenFill); }

void OutlineDevice::stroke(GfxState* state) {
  QPainterPathStroker stroker;
  stroker.setWidth(state->getTransformedLineWidth());
  GfxRGB rgb;
  state->getStrokeRGB(&rgb);
  page_.shapes.append(
      {stroker.createStroke(pathOf(state)), colorOf(rgb, state->getStrokeOpacity())});
}

void OutlineDevice::drawImageMask(GfxState*, Object*, Stream*, int, int, bool, bool, bool) {
  page_.isIncomplete = true;
}

void OutlineDevice::drawImage(GfxState*, Object*, Stream*, int, int, GfxImageColorMap*, bool,
                              const int*, bool) {
  page_.isIncomplete = true;
}

void OutlineDevice::drawMaskedImage(GfxState*, Object*, Stream*, int, int, GfxImageColorMap*, bool,
                                    Stream*, int, int, bool, bool) {
  page_.isIncomplete = true;
}

void OutlineDevice::drawSoftMaskedImage(GfxState*, Object*, Stream*, int, int, GfxImageColorMap*,
                                        bool, Stream*, int, int, GfxImageColorMap*, bool) {
  page_.isIncomplete = true;
}

}  // namespace kelvar
