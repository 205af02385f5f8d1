#include "sketch/render/text/TextPreviews.h"

#include <algorithm>
#include <cmath>

#include "sketch/document/SketchDocument.h"
#include "sketch/document/SketchJson.h"

namespace kelvar::render {
namespace {

constexpr int kMaxPages = 1000;
constexpr size_t kMaxValues = 1'000'000;

/// Without spaces, and with letters that are the same to a reader of the page.
QString comparable(const QString& text) {
  QString characters;
  for (const QChar c : text.normalized(QString::NormalizationForm_KC)) {
    if (!c.isSpace() && c.isPrint()) characters.append(c.toCaseFolded());
  }
  return characters;
}

/// Regardless of colors.
bool isSameStyle(const CharacterStyle& a, const CharacterStyle& b) {
  return a.font == b.font && a.size == b.size && a.kerning == b.kerning && a.letters == b.letters &&
         a.underline == b.underline && a.strikethrough == b.strikethrough &&
         a.paragraph.alignment == b.paragraph.alignment &&
         a.paragraph.minLineHeight == b.paragraph.minLineHeight &&
         a.paragraph.maxLineHeight == b.paragraph.maxLineHeight;
}

bool isSameText(const TextRuns& a, const TextRuns& b) {
  const auto isSameRun = [](const TextRun& x, const TextRun& y) {
    return x.start == y.start && x.length == y.length && isSameStyle(x.style, y.style);
  };
  return a.text == b.text &&
         std::equal(a.runs.begin(), a.runs.end(), b.runs.begin(), b.runs.end(), isSameRun);
}

bool isNear(const QSizeF& a, const QSizeF& b) {
  return std::abs(a.width() - b.width()) < 0.01 && std::abs(a.height() - b.height()) < 0.01;
}

QPointF fractionOf(const QPointF& point) {
  return {point.x() - std::floor(point.x()), point.y() - std::floor(point.y())};
}

/// Where a frame begins on its page, which covers whole units of the frame's parent. None if it is
/// not the page of such a frame.
std::optional<QPointF> originOn(const QSizeF& page, const QRectF& frame) {
  const QPointF fraction = fractionOf(frame.topLeft());
  for (const QPointF& origin : {fraction, QPointF()}) {
    if (isNear(page, {std::ceil(origin.x() + frame.width() - 1e-3),
                      std::ceil(origin.y() + frame.height() - 1e-3)})) {
      return origin;
    }
  }
  return {};
}

TextLayout layoutOf(const PageOutlines& page, const QPointF& origin, const TextRuns& runs) {
  TextLayout layout;
  layout.size = page.size;
  const QRectF visible({}, page.size);
  for (const PageOutlines::Shape& shape : page.shapes) {
    // Lines below a fixed frame are hidden.
    if (!shape.path.boundingRect().intersects(visible)) continue;
    const QColor color = runs.runs.size() == 1 ? runs.runs[0].style.color : shape.color;
    // Underlines belong to the glyphs before them.
    const bool isGlyph = !std::isnan(shape.baseline);
    const double before = layout.runs.isEmpty() ? qQNaN() : layout.runs.last().baseline;
    const double baseline = isGlyph ? shape.baseline - origin.y() : before;
    if (layout.runs.isEmpty() || layout.runs.last().color != color ||
        (isGlyph && baseline != before)) {
      layout.runs.append({{}, color, {}, baseline});
      layout.runs.last().path.setFillRule(Qt::WindingFill);
      layout.runs.last().size = runs.runs.first().style.size;
    }
    TextLayout::GlyphRun& run = layout.runs.last();
    if (isGlyph) run.outlines.append({run.path.elementCount(), shape.x - origin.x()});
    run.path.addPath(shape.path.translated(-origin));
  }
  return layout;
}

}  // namespace

void TextPreviews::load() {
  isLoaded_ = true;
  const QByteArray pdf = document_.file(QStringLiteral("text-previews/text-previews.pdf"));
  if (pdf.isEmpty()) return;
  pages_.emplace();
  if (!pages_->open(pdf)) return;
  const QByteArray metadata =
      document_.file(QStringLiteral("text-previews/text-previews-metadata.json"));
  metadata.isEmpty() ? loadFromPages() : loadFromMetadata(metadata);
}

void TextPreviews::loadFromMetadata(const QByteArray& metadata) {
  size_t valuesLeft = kMaxValues;
  const auto json = readSketchJson(metadata, &valuesLeft);
  if (!json || !json->is_object()) return;
  for (const auto& [key, value] : json->items()) {
    bool isPage = false;
    const int page = QString::fromStdString(key).toInt(&isPage);
    if (!isPage || page < 0 || page >= pages_->count() || !value.is_object()) continue;
    const QPointF size = getPoint(value, "size");
    previews_.push_back({.page = page,
                         .runs = readTextRuns({{"attributedString", get(value, "string")}}),
                         .size = {size.x(), size.y()}});
  }
}

void TextPreviews::loadFromPages() {
  for (int page = 0; page < std::min(pages_->count(), kMaxPages); ++page) {
    const auto text = pages_->text(page);
    if (!text) return;
    previews_.push_back({.page = page, .characters = comparable(*text)});
  }
}

const PageOutlines* TextPreviews::outlinesOf(Preview* preview) {
  if (!preview->outlines) {
    preview->outlines = pages_->outlines(preview->page).value_or(PageOutlines{});
  }
  return preview->outlines->shapes.isEmpty() || preview->outlines->isIncomplete
             ? nullptr
             : &*preview->outlines;
}

std::optional<TextLayout> TextPreviews::find(const TextRuns& runs, const QRectF& frame) {
  if (!isLoaded_) load();
  const QString characters = comparable(runs.text);
  for (Preview& preview : previews_) {
    const bool isSame = preview.runs
                            ? isSameText(*preview.runs, runs) && isNear(preview.size, frame.size())
                            : preview.characters == characters;
    const PageOutlines* const page = isSame ? outlinesOf(&preview) : nullptr;
    if (!page) continue;
    if (const auto origin = originOn(page->size, frame)) return layoutOf(*page, *origin, runs);
  }
  return {};
}

}  // namespace kelvar::render
