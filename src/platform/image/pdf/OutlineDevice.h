#pragma once

#include <SplashOutputDev.h>

#include "platform/image/renderer/PageOutlines.h"

namespace kelvar {

/// Keeps the outlines that a page fills, glyphs among them. The glyphs are those that Poppler's own
/// painter would fill: its Qt painter rounds them to a 64th of an em where a PDF scales a font of
/// size 1, as those of Sketch do.
class OutlineDevice : public SplashOutputDev {
 public:
  OutlineDevice();

  void startPage(int page, GfxState* state, XRef* xref) override;
  void drawChar(GfxState* state, double x, double y, double dx, double dy, double originX,
                double originY, CharCode code, int bytes, const Unicode* text,
                int textLength) override;
  bool beginType3Char(GfxState* state, double x, double y, double dx, double dy, CharCode code,
                      const Unicode* text, int textLength) override;
  void fill(GfxState* state) override;
  void eoFill(GfxState* state) override;
  void stroke(GfxState* state) override;
  bool useTilingPatternFill() override { return false; }
  bool useShadedFills(int) override { return false; }
  void drawImageMask(GfxState*, Object*, Stream*, int, int, bool, bool, bool) override;
  void drawImage(GfxState*, Object*, Stream*, int, int, GfxImageColorMap*, bool, const int*,
                 bool) override;
  void drawMaskedImage(GfxState*, Object*, Stream*, int, int, GfxImageColorMap*, bool, Stream*, int,
                       int, bool, bool) override;
  void drawSoftMaskedImage(GfxState*, Object*, Stream*, int, int, GfxImageColorMap*, bool, Stream*,
                           int, int, GfxImageColorMap*, bool) override;

  /// Of the last page.
  const PageOutlines& page() const { return page_; }

 private:
  void addFill(GfxState* state, Qt::FillRule rule);

  PageOutlines page_;
};

}  // namespace kelvar
