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

/// How much closer to Sketch's another stand-in's widths must be to be taken instead of the first.
constexpr double kMinGain = 0.02;
/// For choosing a stand-in, fewer texts tell nothing, and more are not needed.
constexpr int kMinComparedTexts = 3, kMaxComparedTexts = 12;

class Calibrator {
 public:
  void addTexts(const Layer& layer) {
    if (texts_ >= kMaxTexts) return;
    if (layer.properties().kind == LayerKind::Text) addText(layer.json());
    for (const auto& child : layer.children()) addTexts(*child);
  }

  FontWidthCalibrations calibrations() const {
    FontWidthCalibrations calibrations;
    for (auto sums = sums_.begin(); sums != sums_.end(); ++sums) {
      const FontMatch match = matchFont(sums.key());
      const qsizetype nearest = nearestOf(*sums);
      const Sum& sum = (*sums)[nearest];
      if (sum.texts == 0) continue;
      const double missing = sum.sketchWidth - sum.width;
      if (match.isInstalled) {
        calibrations[sums.key()] = {missing / sum.ems, 1};
        continue;
      }
      const double most = kMaxFallbackSpacing * sum.width;
      const double spaced = std::clamp(missing, -most, most);
      calibrations[sums.key()] = {spaced / sum.ems, sum.sketchWidth / (sum.width + spaced),
                                  match.standIns.value(nearest)};
    }
    return calibrations;
  }

 private:
  struct Sum {
    double sketchWidth = 0, width = 0;
    double ems = 0;  ///< Sizes times characters.
    int texts = 0;

    double misfit() const {
      return texts >= kMinComparedTexts ? std::abs(std::log(sketchWidth / width)) : INFINITY;
    }
  };

  static qsizetype nearestOf(const QList<Sum>& sums) {
    const auto nearest = std::min_element(sums.begin(), sums.end(), [](const Sum& a, const Sum& b) {
      return a.misfit() < b.misfit();
    });
    return nearest->misfit() < sums[0].misfit() - kMinGain ? nearest - sums.begin() : 0;
  }

  void addText(const SketchJson& layer) {
    TextBox box = readTextBox(layer);
    if (box.behavior != TextBox::Behavior::AutoWidth || !(box.size.width() > 1)) return;
    const TextRuns runs = readTextRuns(layer);
    if (runs.runs.size() != 1 || runs.text.size() < 3 || runs.text.contains(u'\n')) return;
    ++texts_;
    box.fitsText = false;
    const QString& font = runs.runs[0].style.font;
    const FontMatch match = matchFont(font);
    QList<Sum>& sums = sums_[font];
    sums.resize(std::max<qsizetype>(1, match.standIns.size()));
    addWidth(runs, box, {}, match.isInstalled, &sums[0]);
    for (qsizetype i = 1; i < sums.size() && sums[0].texts <= kMaxComparedTexts; ++i) {
      addWidth(runs, box, match.standIns[i], match.isInstalled, &sums[i]);
    }
  }

  static void addWidth(const TextRuns& runs, const TextBox& box, const QString& standIn,
                       bool isInstalled, Sum* sum) {
    const CharacterStyle& style = runs.runs[0].style;
    const double width = layoutText(runs, box, {{style.font, {0, 1, standIn}}}).size.width();
    const double sketchWidth = box.size.width() - 0.5;  // A frame is rounded up.
    if (!(width > 0)) return;
    const double stretch = sketchWidth / width;
    const bool isPlausible = isInstalled ? std::abs(stretch - 1) < kMaxSpacing
                                         : stretch > kMinStretch && stretch < kMaxStretch;
    if (!isPlausible) return;
    sum->sketchWidth += sketchWidth;
    sum->width += width;
    sum->ems += style.size * double(runs.text.size());
    ++sum->texts;
  }

  /// For each font: with its match, or with each of its stand-ins.
  QHash<QString, QList<Sum>> sums_;
  int texts_ = 0;
};

}  // namespace

FontWidthCalibrations calibrateFontWidths(const SketchDocument& document) {
  Calibrator calibrator;
  for (const SketchLayerRef& page : document.pages()) calibrator.addTexts(page->node());
  return calibrator.calibrations();
}

}  // namespace kelvar::render
