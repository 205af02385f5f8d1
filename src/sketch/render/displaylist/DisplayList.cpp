#include "sketch/render/displaylist/DisplayList.h"

#include <algorithm>

#include "sketch/render/LayerOutline.h"
#include "sketch/render/displaylist/LayerBounds.h"
#include "sketch/render/symbols/SymbolInstantiator.h"
#include "sketch/render/text/FontMatcher.h"

namespace kelvar::render {
namespace {

using namespace Qt::StringLiterals;

size_t valuesIn(const SketchJson& json) {
  size_t count = 1;
  if (!json.is_structured()) return count;
  for (const SketchJson& part : json) count += valuesIn(part);
  return count;
}

}  // namespace

DisplayList::DisplayList(const SketchDocument& document, const QSet<QString>& withoutImages,
                         RenderWarnings* warnings, const std::stop_token& stop)
    : document_(document),
      rules_(VersionRules::of(document.files())),
      withoutImages_(withoutImages),
      warnings_(warnings),
      stop_(stop) {}

DisplayItem DisplayList::itemOf(const Layer& layer) const { return {.layer = layer}; }

DisplayItem::List DisplayList::itemsIn(const Layer& container, const QStringList& symbolStack,
                                       int depth) const {
  DisplayItem::List items;
  items.reserve(container.children().size());
  for (const auto& layer : container.children()) {
    DisplayItem* const below = items.empty() ? nullptr : &items.back();
    items.push_back({.layer = *layer, .symbolStack = symbolStack, .depth = depth, .below = below});
    if (withoutImages_.isEmpty()) continue;
    items.back().leavesOutImages = withoutImages_.contains(layer->properties().objectID);
  }
  return items;
}

DisplayItem::List& DisplayList::contentsOf(DisplayItem* container) {
  if (!container->contents) {
    container->contents = std::make_unique<DisplayItem::List>(
        itemsIn(container->layer, container->symbolStack, container->depth + 1));
  }
  return *container->contents;
}

bool DisplayList::isRecursive(const DisplayItem& instance) {
  return instance.symbolStack.contains(instance.properties().symbolID);
}

DisplayItem* DisplayList::masterOf(DisplayItem* instance) {
  if (!instance->contents) writeOut(instance);
  return instance->contents->empty() ? nullptr : &instance->contents->front();
}

void DisplayList::writeOut(DisplayItem* instance) {
  instance->contents = std::make_unique<DisplayItem::List>();
  QStringList warnings;
  SketchJson master =
      instantiateSymbol(instance->layer.json(), document_, &layoutBudget_, &warnings, stop_);
  warnings_->add(warnings);
  if (!master.is_object()) return;
  instance->symbolValues = valuesIn(master);
  heldValues_ += instance->symbolValues;
  instance->symbol = std::make_unique<Layer>(std::move(master));
  instance->contents->push_back(
      {.layer = *instance->symbol,
       .symbolStack = instance->symbolStack + QStringList{instance->properties().symbolID},
       .depth = instance->depth,
       .leavesOutImages = instance->leavesOutImages});
}

void DisplayList::release(DisplayItem* item) {
  if (item->contents) {
    for (DisplayItem& inner : *item->contents) release(&inner);
  }
  item->contents.reset();
  heldValues_ -= item->symbolValues;
  item->symbolValues = 0;
  item->symbol.reset();
  item->outline.reset();
  item->textRuns.reset();
  item->text.reset();
}

const QRectF& DisplayList::boundsOf(DisplayItem* item) {
  if (item->bounds) return *item->bounds;
  item->bounds = QRectF();
  const LayerProperties& layer = item->properties();
  if (isStopped() || !layer.isVisible || layersLeft_ <= 0) return *item->bounds;
  QRectF content = layer.box();
  if (layer.kind == LayerKind::SymbolInstance) {
    content |= boundsOfInstance(item);
  } else if (layer.kind == LayerKind::Text) {
    content = boundsOfText(item);
  } else if (!layer.hasOutline()) {
    content |= boundsOfContents(item);
  }
  item->bounds = layer.transform.mapRect(withStyle(content, item->style()));
  return *item->bounds;
}

QRectF DisplayList::boundsOfContents(DisplayItem* container) {
  QRectF bounds;
  if (container->depth >= kMaxDepth) return bounds;
  for (DisplayItem& item : contentsOf(container)) bounds |= boundsOf(&item);
  return bounds;
}

QRectF DisplayList::boundsOfInstance(DisplayItem* instance) {
  if (isRecursive(*instance) || !takeLayer()) return {};
  DisplayItem* const master = masterOf(instance);
  const QRectF bounds = master ? boundsOfContents(master) : QRectF();
  releaseWhenFull(instance);
  const double scale = instance->properties().symbolScale;
  return scale > 0 ? QTransform::fromScale(scale, scale).mapRect(bounds) : bounds;
}

QRectF DisplayList::boundsOfText(DisplayItem* text) {
  return textBounds(text->layer, textRunsOf(text), pathUnder(text));
}

const QPainterPath& DisplayList::outlineOf(DisplayItem* item) {
  if (!item->outline) {
    QStringList warnings;
    item->outline = layerOutline(item->layer, &warnings, stop_);
    warnings_->add(warnings);
  }
  return *item->outline;
}

QPainterPath DisplayList::maskOutlineOf(DisplayItem* item) {
  const LayerProperties& layer = item->properties();
  if (layer.hasOutline() || layer.isFrame) return layer.transform.map(outlineOf(item));
  if (layer.kind == LayerKind::Text) return layer.transform.map(textOf(item).outline());
  QPainterPath box;
  box.addRect(layer.box());
  return layer.transform.map(box);
}

const TextRuns& DisplayList::textRunsOf(DisplayItem* text) {
  if (!text->textRuns) text->textRuns = readTextRuns(text->layer.json());
  return *text->textRuns;
}

QPainterPath DisplayList::pathUnder(DisplayItem* text) {
  if (!text->below || !text->properties().followsPath) return {};
  const QTransform toText =
      text->below->properties().transform * text->properties().transform.inverted();
  return toText.map(outlineOf(text->below));
}

const TextLayout& DisplayList::textOf(DisplayItem* item) {
  if (item->text) return *item->text;
  TextBox box = readTextBox(item->layer.json());
  box.path = pathUnder(item);
  if (rules_.hasWindowsLineMetrics) {
    box.metrics = box.hasOldLineSpacing ? TextBox::Metrics::Windows : TextBox::Metrics::Frame;
  }
  if (!rules_.measuresInk) box.ink = {};
  const bool frameTells = box.fitsText && box.behavior == TextBox::Behavior::AutoWidth;
  const bool isGuess =
      std::any_of(textRunsOf(item).runs.begin(), textRunsOf(item).runs.end(),
                  [](const TextRun& run) { return matchFont(run.style.font).standIns.size() > 1; });
  if ((!frameTells || isGuess) && !calibrations_) calibrations_ = calibrateFontWidths(document_);
  item->text = layoutText(textRunsOf(item), box, calibrations_.value_or(FontWidthCalibrations()));
  if (!item->text->missingFonts.isEmpty() && box.path.isEmpty()) {
    if (!previews_) previews_.emplace(document_);
    auto preview = previews_->find(textRunsOf(item), item->properties().frame);
    if (preview) item->text = std::move(*preview);
  }
  warnOfText(*item, !box.path.isEmpty());
  return *item->text;
}

void DisplayList::warnOfText(const DisplayItem& text, bool hasPath) {
  for (const QString& font : text.text->missingFonts) {
    const QString standIn = calibrations_ ? calibrations_->value(font).standIn : QString();
    warn(u"The font %1 is not installed; %2 is used instead."_s.arg(
        font, matchFont(font, standIn).font.family()));
  }
  const QString name = text.properties().name;
  for (const QString& font : text.text->incompleteFonts) {
    if (incompleteFonts_.contains(font)) continue;
    incompleteFonts_.insert(font);
    warn(u"Characters in %1, such as some of \"%2\", are missing from all installed fonts."_s.arg(
        font, name));
  }
  if (text.properties().followsPath) {
    warn((hasPath ? u"The start of \"%1\" on the path below it is a guess."_s
                  : u"There is no shape below \"%1\" for it to run along."_s)
             .arg(name));
  }
  if (std::any_of(text.textRuns->runs.begin(), text.textRuns->runs.end(),
                  [](const TextRun& run) { return run.style.hasVariations; })) {
    warn(u"Of the font variations of \"%1\", only the weight is supported."_s.arg(name));
  }
}

}  // namespace kelvar::render
