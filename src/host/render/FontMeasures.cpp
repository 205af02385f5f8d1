#include "host/render/FontMeasures.h"

#include <cmath>

#include "host/SketchDocument.h"
#include "host/SketchJson.h"
#include "host/render/FontChooser.h"
#include "host/render/TextShape.h"

namespace kelvar::render {
namespace {

/// More do not make a mean better that frames of whole units round.
constexpr int kMostTexts = 400;
/// Farther off, a frame is not that of its text.
constexpr double kMostSpacing = 0.05;
constexpr double kLeastStretch = 0.7, kMostStretch = 1.4;

class Measuring {
 public:
  void look(const SketchJson& layer) {
    if (texts_ >= kMostTexts || !layer.is_object()) return;
    if (classOf(layer) == u"text") lookAtText(layer);
    for (const SketchJson& child : listIn(layer, "layers")) look(child);
  }

  FontMeasures measures() const {
    FontMeasures measures;
    for (auto sum = sums_.begin(); sum != sums_.end(); ++sum) {
      const double missing = sum->hostWidth - sum->width;
      measures[sum.key()] = chooseFont(sum.key()).isInstalled
                                ? FontMeasure{missing / sum->ems, 1}
                                : FontMeasure{0, sum->hostWidth / sum->width};
    }
    return measures;
  }

 private:
  struct Sum {
    double hostWidth = 0, width = 0;
    double ems = 0;  ///< Sizes times characters.
  };

  void lookAtText(const SketchJson& layer) {
    TextBox box = readTextBox(layer);
    if (box.behaviour != TextBox::Behaviour::AutoWidth || !(box.size.width() > 1)) return;
    const TextRuns runs = readTextRuns(layer);
    if (runs.runs.size() != 1 || runs.text.size() < 3 || runs.text.contains(u'\n')) return;
    ++texts_;
    box.fitsText = false;
    const CharacterStyle& style = runs.runs[0].style;
    const double width = shapeText(runs, box).size.width();
    const double hostWidth = box.size.width() - 0.5;  // A frame is rounded up.
    if (!(width > 0)) return;
    const double stretch = hostWidth / width;
    const bool isBearable = chooseFont(style.font).isInstalled
                                ? std::abs(stretch - 1) < kMostSpacing
                                : stretch > kLeastStretch && stretch < kMostStretch;
    if (!isBearable) return;
    Sum& sum = sums_[style.font];
    sum.hostWidth += hostWidth;
    sum.width += width;
    sum.ems += style.size * double(runs.text.size());
  }

  QHash<QString, Sum> sums_;
  int texts_ = 0;
};

}  // namespace

FontMeasures measureFonts(const SketchDocument& document) {
  Measuring measuring;
  for (const SketchLayerRef& page : document.pages()) measuring.look(page->json());
  return measuring.measures();
}

}  // namespace kelvar::render
