#include "sketch/render/text/FontWidthCalibration.h"

#include <algorithm>
#include <cmath>

#include "sketch/document/Layer.h"
#include "sketch/document/SketchDocument.h"
#include "sketch/document/SketchJson.h"
#include "sketch/render/text/FontMatcher.h"
#include "sketch/render/text/FrameFit.h"
#include "sketch/render/text/TextLayout.h"

namespace kelvar::render {
namespace {

/// Sampling more texts does not improve the mean: frames are rounded to whole units.
constexpr int kMaxTexts = 400;
/// Beyond these, a frame was not made for its text.
constexpr double kMaxSpacing = 0.05;
constexpr double kMinStretch = 0.7, kMaxStretch = 1.4;

class Calibrator {
 public:
  void addTexts(const Layer& layer) {
    if (texts_ >= kMaxTexts) return;
    if (layer.properties().kind == LayerKind::Text) addText(layer.json());
    for (const auto& child : layer.children()) addTexts(*child);
  }

  FontWidthCalibrations calibrations() const {
    FontWidthCalibrations calibrations;
    for (auto sum = sums_.begin(); sum != sums_.end(); ++sum) {
      const double missing = sum->sketchWidth - sum->width;
      if (matchFont(sum.key()).isInstalled) {
        calibrations[sum.key()] = {missing / sum->ems, 1};
        continue;
      }
      const double most = kMaxFallbackSpacing * sum->width;
      const double spaced = std::clamp(missing, -most, most);
      calibrations[sum.key()] = {spaced / sum->ems, sum->sketchWidth / (sum->width + spaced)};
    }
    return calibrations;
  }

 private:
  struct Sum {
    double sketchWidth = 0, width = 0;
    double ems = 0;  ///< Sizes times characters.
  };

  void addText(const SketchJson& layer) {
    TextBox box = readTextBox(layer);
    if (box.behavior != TextBox::Behavior::AutoWidth || !(box.size.width() > 1)) return;
    const TextRuns runs = readTextRuns(layer);
    if (runs.runs.size() != 1 || runs.text.size() < 3 || runs.text.contains(u'\n')) return;
    ++texts_;
    box.fitsText = false;
    const CharacterStyle& style = runs.runs[0].style;
    const double width = layoutText(runs, box).size.width();
    const double sketchWidth = box.size.width() - 0.5;  // A frame is rounded up.
    if (!(width > 0)) return;
    const double stretch = sketchWidth / width;
    const bool isPlausible = matchFont(style.font).isInstalled
                                 ? std::abs(stretch - 1) < kMaxSpacing
                                 : stretch > kMinStretch && stretch < kMaxStretch;
    if (!isPlausible) return;
    Sum& sum = sums_[style.font];
    sum.sketchWidth += sketchWidth;
    sum.width += width;
    sum.ems += style.size * double(runs.text.size());
  }

  QHash<QString, Sum> sums_;
  int texts_ = 0;
};

}  // namespace

FontWidthCalibrations calibrateFontWidths(const SketchDocument& document) {
  Calibrator calibrator;
  for (const SketchLayerRef& page : document.pages()) calibrator.addTexts(page->node());
  return calibrator.calibrations();
}

}  // namespace kelvar::render
