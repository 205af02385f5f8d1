#include "host/render/TextShape.h"

#include <QGlyphRun>
#include <QHash>
#include <QRawFont>
#include <QSet>
#include <QTextLayout>
#include <QtEndian>
#include <algorithm>
#include <cmath>

#include "host/SketchJson.h"
#include "host/render/FontChooser.h"
#include "host/render/GlyphWeight.h"
#include "host/render/Resizing.h"
#include "host/render/TextPath.h"

namespace kelvar::render {
namespace {

using namespace Qt::StringLiterals;
using Alignment = ParagraphStyle::Alignment;

/// Text is laid out this many times as large as it is drawn: fonts have whole pixel sizes, and
/// advances are kept in 64ths of a pixel.
constexpr double kZoom = 16;
constexpr double kMostSize = 4000;
constexpr double kEndless = 1'000'000;
/// The platform's own tab stops.
constexpr double kTabDistance = 28;
/// Widths of a font's versions differ by less than this part.
constexpr double kMostSpacing = 0.05;

/// Heights above and below the baseline and between lines, in document units; rounded as the
/// design's platform rounds them.
struct LineMetrics {
  double ascent = 0, descent = 0, leading = 0;
  double height() const { return ascent + descent + leading; }
};

/// The painter's own numbers come now from one of a font's tables, now from another.
LineMetrics metricsOf(const QRawFont& font, double size, bool asOnWindows) {
  const QByteArray table = font.fontTable(asOnWindows ? "OS/2" : "hhea");
  const qsizetype start = asOnWindows ? 74 : 4;
  double ascent = font.ascent() / kZoom, descent = font.descent() / kZoom, leading = 0;
  if (table.size() >= start + 6 && font.unitsPerEm() > 0) {
    const auto at = [&](qsizetype i) {
      return qFromBigEndian<qint16>(table.constData() + start + 2 * i) * size / font.unitsPerEm();
    };
    ascent = at(0);
    descent = asOnWindows ? at(1) : -at(1);
    leading = asOnWindows ? 0 : at(2);
  }
  return {std::round(ascent), std::round(descent), std::max(0.0, std::round(leading))};
}

LineMetrics metricsOf(const FontMetrics& known, double size) {
  return {std::round(known.ascent * size), std::round(known.descent * size),
          std::round(known.leading * size)};
}

/// A run with its font, as laid out.
struct FontRun {
  qsizetype start = 0, length = 0;
  CharacterStyle style;
  QFont font;
  LineMetrics metrics;
  double underlinePosition = 0, lineThickness = 0, xHeight = 0;
  double boldness = 0;  ///< Moves outlines outwards.
  double spacing = 0;   ///< After each character, beside its kerning.
  /// A font whose glyphs are drawn in place of those of `font`, and which stands for which.
  QRawFont outlines = {};
  QHash<quint32, quint32> twins = {};
};

/// Sets the glyphs to be drawn for the characters of `text`. Ligatures stay as they are.
void setOutlines(const QString& family, const QString& text, FontRun* run) {
  QFont font = run->font;
  font.setFamily(family);
  run->outlines = QRawFont::fromFont(font);
  const QRawFont laidOut = QRawFont::fromFont(run->font);
  const QSet<QChar> characters(text.begin(), text.end());
  for (const QChar c : characters) {
    const quint32 from = laidOut.glyphIndexesForString(c).value(0);
    const quint32 to = run->outlines.glyphIndexesForString(c).value(0);
    if (from != 0 && to != 0) run->twins.insert(from, to);
  }
}

QString withCase(const QString& text, CharacterStyle::Case letters) {
  if (letters == CharacterStyle::Case::AsTyped) return text;
  const QString changed = letters == CharacterStyle::Case::Upper ? text.toUpper() : text.toLower();
  // Runs count characters: one that becomes two ("ß") is left alone.
  if (changed.size() == text.size()) return changed;
  QString kept;
  for (const QChar c : text) {
    const QString one =
        letters == CharacterStyle::Case::Upper ? QString(c).toUpper() : QString(c).toLower();
    kept += one.size() == 1 ? one : QString(c);
  }
  return kept;
}

class Typesetter {
 public:
  Typesetter(const TextRuns& runs, const TextBox& box, const FontMeasures& measures) : box_(box) {
    if (!box.path.isEmpty()) path_.emplace(box.path);
    for (const TextRun& run : runs.runs) addRun(run, runs.text, measures);
    text_.replace(QChar::CarriageReturn, QChar::LineFeed);
  }

  /// `extraSpacing` is added after each character.
  TextShape set(double extraSpacing = 0) {
    shape_.areas.clear();
    lines_.clear();
    for (FontRun& run : runs_) space(&run, run.style.kerning + run.spacing + extraSpacing);
    double y = 0;
    for (qsizetype start = 0; start <= text_.size();) {
      qsizetype end = text_.indexOf(QChar::LineFeed, start);
      if (end < 0) end = text_.size();
      y = setParagraph(start, end, y);
      start = end + 1;
    }
    shape_.size.setHeight(y);
    alignLines();
    if (path_) return shape_;
    moveDown(y);
    fitInk();
    return shape_;
  }

  /// Changes widths by as little as gives the text as many lines as its frame says that it had;
  /// not at all where that would take too much.
  TextShape setInLines(const TextShape& first) {
    const qsizetype wanted = recordedLines();
    if (wanted == 0 || wanted == lines_.size()) return first;
    const double before = widths_, step = lines_.size() > wanted ? -0.01 : 0.01;
    const int mostSteps = shape_.missingFonts.isEmpty() ? 4 : 12;
    for (int i = 1; i <= mostSteps; ++i) {
      widths_ = before * (1 + i * step);
      const TextShape shape = set();
      if (lines_.size() == wanted) return shape;
    }
    return first;
  }

  /// What to add after each character for the widest line to be as wide as the frame, which was
  /// made to fit it: another version of a font has other widths. 0 where it is, but for rounding,
  /// or where that would not help.
  double spacingToFit() const {
    if (breaksLines() || !box_.fitsText || lines_.isEmpty()) return 0;
    const Line& widest =
        *std::max_element(lines_.begin(), lines_.end(),
                          [](const Line& a, const Line& b) { return a.width < b.width; });
    const double missing = box_.size.width() - widest.width;
    const bool isRounding = missing > -0.1 && missing <= 1;
    const bool isFarOff = std::abs(missing) > kMostSpacing * widest.width;
    if (isRounding || isFarOff || widest.length < 2) return 0;
    return (missing - 0.5) / double(widest.length);
  }

 private:
  /// A line's glyphs from x = 0, to be moved once all widths are known.
  struct Line {
    qsizetype firstArea, lastArea;
    qsizetype length;  ///< Characters.
    double width;
    Alignment alignment;
    double indent, rightIndent;
  };

  /// 0 where the frame does not tell.
  qsizetype recordedLines() const {
    if (box_.behaviour != TextBox::Behaviour::AutoHeight || !box_.fitsText || lines_.isEmpty()) {
      return 0;
    }
    const double lines = box_.size.height() * double(lines_.size()) / shape_.size.height();
    const double whole = std::round(lines);
    const bool isWhole = std::abs(lines - whole) < 0.2 && whole < 1000;
    return isWhole ? qsizetype(whole) : 0;
  }

  void addRun(const TextRun& run, const QString& text, const FontMeasures& measures) {
    const ChosenFont chosen = chooseFont(run.style.font);
    if (!chosen.isInstalled && !shape_.missingFonts.contains(run.style.font)) {
      shape_.missingFonts.append(run.style.font);
    }
    const double size = std::clamp(run.style.size, 1 / kZoom, kMostSize);
    FontRun fontRun{run.start, run.length, run.style, chosen.font, {}};
    if (run.style.weight > 0) fontRun.font.setWeight(QFont::Weight(run.style.weight));
    fontRun.font.setPixelSize(std::max(1, int(std::lround(size * kZoom))));
    const QRawFont raw = QRawFont::fromFont(fontRun.font);
    fontRun.metrics = chosen.metrics.areKnown() ? metricsOf(chosen.metrics, size)
                                                : metricsOf(raw, size, box_.hasOldLineSpacing);
    fontRun.underlinePosition = raw.underlinePosition() / kZoom;
    fontRun.lineThickness = std::max(raw.lineThickness() / kZoom, size / 20);
    fontRun.xHeight = raw.xHeight() / kZoom;
    fontRun.boldness = chosen.boldness * size;
    if (breaksLines() || !box_.fitsText) {
      const FontMeasure measure = measures.value(run.style.font);
      fontRun.spacing = measure.spacing * size;
      if (runs_.isEmpty()) widths_ = measure.stretch;
    }
    const QString characters = withCase(text.mid(run.start, run.length), run.style.letters);
    if (!chosen.outlines.isEmpty()) setOutlines(chosen.outlines, characters, &fontRun);
    runs_.append(fontRun);
    text_ += characters;
  }

  /// Letters that are spaced are not joined.
  static void space(FontRun* run, double spacing) {
    if (spacing == 0 && run->style.ligatures) return;
    run->font.setLetterSpacing(QFont::AbsoluteSpacing, spacing != 0 ? spacing * kZoom : 1e-2);
  }

  const FontRun& runAt(qsizetype position) const {
    const auto after =
        std::upper_bound(runs_.begin(), runs_.end(), position,
                         [](qsizetype at, const FontRun& run) { return at < run.start; });
    return after == runs_.begin() ? runs_.first() : *(after - 1);
  }

  /// Calls `use(run, start, length)` for each piece of a run between two positions.
  template <class Use>
  void eachRun(qsizetype start, qsizetype end, const Use& use) const {
    for (const FontRun& run : runs_) {
      const qsizetype from = std::max(start, run.start);
      const qsizetype to = std::min(end, run.start + run.length);
      if (from < to) use(run, from, to - from);
    }
  }

  bool breaksLines() const { return box_.behaviour != TextBox::Behaviour::AutoWidth; }

  /// Returns where the next paragraph begins.
  double setParagraph(qsizetype start, qsizetype end, double y) {
    const FontRun& first = runAt(std::min(start, std::max<qsizetype>(0, text_.size() - 1)));
    QTextLayout layout(text_.mid(start, end - start), first.font);
    QList<QTextLayout::FormatRange> formats;
    eachRun(start, end, [&](const FontRun& run, qsizetype at, qsizetype length) {
      QTextCharFormat format;
      format.setFont(run.font);
      formats.append({int(at - start), int(length), format});
    });
    layout.setFormats(formats);
    QTextOption option;
    option.setUseDesignMetrics(true);
    option.setTabStopDistance(kTabDistance * kZoom);
    QList<qreal> tabs;
    for (const double tab : first.style.paragraph.tabs) tabs.append(tab * kZoom);
    if (!tabs.isEmpty()) option.setTabArray(tabs);
    option.setWrapMode(breaksLines() ? QTextOption::WrapAtWordBoundaryOrAnywhere
                                     : QTextOption::ManualWrap);
    option.setAlignment(first.style.paragraph.alignment == Alignment::Justified && breaksLines()
                            ? Qt::AlignJustify
                            : Qt::AlignLeft | Qt::AlignAbsolute);
    layout.setTextOption(option);
    breakLines(first.style.paragraph, &layout);
    Alignment alignment = first.style.paragraph.alignment;
    if (alignment == Alignment::Natural || alignment == Alignment::Justified) {
      alignment =
          text_.mid(start, end - start).isRightToLeft() ? Alignment::Right : Alignment::Left;
    }
    if (start > 0) y += first.style.paragraph.spacingBefore;
    for (int i = 0; i < layout.lineCount(); ++i) {
      y = addLine(layout.lineAt(i), start, alignment, first, y);
    }
    return end < text_.size() ? y + first.style.paragraph.spacing : y;
  }

  static double indentOf(const ParagraphStyle& paragraph, bool isFirst) {
    return std::max(0.0, isFirst ? paragraph.firstIndent : paragraph.indent);
  }

  double rightIndentOf(const ParagraphStyle& paragraph) const {
    return paragraph.tail > 0 ? std::max(0.0, box_.size.width() - paragraph.tail) : -paragraph.tail;
  }

  void breakLines(const ParagraphStyle& paragraph, QTextLayout* layout) const {
    layout->beginLayout();
    for (bool isFirst = true;; isFirst = false) {
      QTextLine line = layout->createLine();
      if (!line.isValid()) break;
      const double room =
          box_.size.width() - indentOf(paragraph, isFirst) - rightIndentOf(paragraph);
      line.setLineWidth(breaksLines() ? std::max(1.0, room / widths_ * kZoom + 1) : kEndless);
    }
    layout->endLayout();
  }

  double addLine(const QTextLine& line, qsizetype paragraph, Alignment alignment,
                 const FontRun& first, double y) {
    const qsizetype start = paragraph + line.textStart(), end = start + line.textLength();
    LineMetrics metrics;
    eachRun(start, end, [&](const FontRun& run, qsizetype, qsizetype) {
      metrics.ascent = std::max(metrics.ascent, run.metrics.ascent);
      metrics.descent = std::max(metrics.descent, run.metrics.descent);
      metrics.leading = std::max(metrics.leading, run.metrics.leading);
    });
    if (start == end) metrics = first.metrics;
    const double height = lineHeight(metrics.height(), runAt(start).style.paragraph);
    const double baseline = y + baselineIn(height, metrics);
    if (lines_.isEmpty()) {
      firstBaseline_ = baseline;
      if (path_) pathStart_ = path_->nearestTo({0, baseline});
    }
    const qsizetype firstArea = shape_.areas.size();
    addGlyphs(line, paragraph, baseline);
    const ParagraphStyle& style = first.style.paragraph;
    lines_.append({firstArea, shape_.areas.size(), end - start, line.naturalTextWidth() / kZoom,
                   alignment, indentOf(style, line.lineNumber() == 0), rightIndentOf(style)});
    return y + height + style.lineSpacing;
  }

  static double lineHeight(double natural, const ParagraphStyle& paragraph) {
    if (paragraph.lineHeightMultiple > 0) natural *= paragraph.lineHeightMultiple;
    double height = std::max(natural, paragraph.leastLineHeight);
    if (paragraph.mostLineHeight > 0) height = std::min(height, paragraph.mostLineHeight);
    return height;
  }

  double baselineIn(double height, const LineMetrics& metrics) const {
    const double spare = height - metrics.height();
    const double above = box_.hasOldLineSpacing ? spare : std::round(spare / 2);
    return above + metrics.ascent + metrics.leading;
  }

  void addGlyphs(const QTextLine& line, qsizetype paragraph, double baseline) {
    const qsizetype start = paragraph + line.textStart();
    eachRun(start, start + line.textLength(),
            [&](const FontRun& run, qsizetype at, qsizetype length) {
              TextShape::Area area{{}, run.style.color};
              const double y = baseline - run.style.baselineOffset;
              for (const QGlyphRun& glyphs : line.glyphRuns(int(at - paragraph), int(length))) {
                addGlyphRun(glyphs, line.ascent() + line.y(), y, run, &area);
              }
              if (!path_) addLinesAlong(line, run, at - paragraph, length, y, &area.path);
              area.path.setFillRule(Qt::WindingFill);
              shape_.areas.append(area);
            });
  }

  /// Where a glyph goes that would stand at `at` on a straight line.
  std::optional<QTransform> placeOf(const QPointF& at, double advance) const {
    if (!path_) return QTransform::fromTranslate(at.x(), at.y());
    const auto place = path_->placeAt(pathStart_, at.x() + advance / 2);
    if (!place) return {};
    return QTransform::fromTranslate(-advance / 2, at.y() - firstBaseline_) * *place;
  }

  void addGlyphRun(const QGlyphRun& glyphs, double layoutBaseline, double baseline,
                   const FontRun& run, TextShape::Area* area) {
    const QRawFont font = glyphs.rawFont();
    const bool hasTwins = !run.twins.isEmpty() && font.familyName() == run.font.family();
    const QList<quint32> indexes = glyphs.glyphIndexes();
    const QList<QPointF> positions = glyphs.positions();
    const QList<QPointF> advances = font.advancesForGlyphIndexes(indexes);
    // The index of coloured pictures stands for them: their own table would be copied.
    const bool isColored = !font.fontTable("CBLC").isEmpty() || !font.fontTable("COLR").isEmpty();
    for (qsizetype i = 0; i < indexes.size(); ++i) {
      const double x = positions[i].x() / kZoom;
      const double y = baseline + (positions[i].y() - layoutBaseline) / kZoom;
      const auto place = placeOf({x, y}, advances.value(i).x() / kZoom);
      if (!place) continue;
      const QTransform toText = QTransform::fromScale(1 / kZoom, 1 / kZoom) * *place;
      const quint32 twin = hasTwins ? run.twins.value(indexes[i]) : 0;
      const QPainterPath glyph =
          twin != 0 ? run.outlines.pathForGlyph(twin) : font.pathForGlyph(indexes[i]);
      if (indexes[i] == 0) shape_.lacksCharacters = true;
      if (isColored && glyph.isEmpty()) {
        area->emblems.append({font, indexes[i], font.pixelSize() / kZoom, *place});
        continue;
      }
      area->path.addPath(toText.map(reweighted(glyph, run.boldness * kZoom, font.capHeight())));
    }
  }

  static void addLinesAlong(const QTextLine& line, const FontRun& run, qsizetype at,
                            qsizetype length, double y, QPainterPath* path) {
    if (!run.style.underline && !run.style.strikethrough) return;
    const double left = line.cursorToX(int(at)) / kZoom;
    const double right =
        std::min(line.cursorToX(int(at + length)), line.naturalTextWidth()) / kZoom;
    const auto addLineAt = [&](double middle) {
      path->addRect(left, middle - run.lineThickness / 2, right - left, run.lineThickness);
    };
    if (run.style.underline) addLineAt(y + run.underlinePosition);
    if (run.style.strikethrough) addLineAt(y - run.xHeight / 2);
  }

  void alignLines() {
    double widest = 0;
    for (const Line& line : lines_) widest = std::max(widest, line.width + line.indent);
    // What another font was measured for would run out of its place.
    const bool isStretched = box_.fitsText && !shape_.missingFonts.isEmpty() && !breaksLines() &&
                             widest > 0 && box_.size.width() > 0;
    const double stretch =
        isStretched ? std::clamp((box_.size.width() - 0.5) / widest, 0.6, 1.5) : widths_;
    shape_.size.setWidth(widest * stretch);
    if (path_) return;
    for (const Line& line : lines_) {
      const double spare =
          box_.size.width() - line.width * stretch - line.indent - line.rightIndent;
      const double x = line.indent + (line.alignment == Alignment::Right    ? spare
                                      : line.alignment == Alignment::Center ? spare / 2
                                                                            : 0);
      const QTransform toPlace(stretch, 0, 0, 1, x, 0);
      for (qsizetype i = line.firstArea; i < line.lastArea; ++i) {
        shape_.areas[i].move(toPlace);
      }
    }
  }

  /// Puts what stands in for a missing font where the host measured the glyphs.
  void fitInk() {
    if (shape_.missingFonts.isEmpty() || !box_.fitsText || box_.ink.isEmpty()) return;
    const QRectF ink = shape_.outline().boundingRect();
    if (ink.isEmpty()) return;
    // It was measured in whole units: what could have been measured so may stay.
    const auto side = [](double got, double whole, double inwards) {
      const double in = (got - whole) * inwards;
      return in >= 0 && in < 1 ? got : whole + 0.25 * inwards;
    };
    const QRectF wanted(
        QPointF(side(ink.left(), box_.ink.left(), 1), side(ink.top(), box_.ink.top(), 1)),
        QPointF(side(ink.right(), box_.ink.right(), -1),
                side(ink.bottom(), box_.ink.bottom(), -1)));
    const double across = wanted.width() / ink.width(), down = wanted.height() / ink.height();
    const auto isBearable = [](double factor) { return factor > 0.5 && factor < 2; };
    if (!isBearable(across) || !isBearable(down)) return;
    const QTransform toPlace(across, 0, 0, down, wanted.x() - ink.x() * across,
                             wanted.y() - ink.y() * down);
    for (TextShape::Area& area : shape_.areas) area.move(toPlace);
  }

  void moveDown(double height) {
    if (box_.behaviour != TextBox::Behaviour::Fixed || box_.vertical == TextBox::Vertical::Top) {
      return;
    }
    const double spare = box_.size.height() - height;
    const double y = box_.vertical == TextBox::Vertical::Middle ? std::round(spare / 2) : spare;
    for (TextShape::Area& area : shape_.areas) area.move(QTransform::fromTranslate(0, y));
  }

  const TextBox& box_;
  std::optional<TextPath> path_;
  double pathStart_ = 0, firstBaseline_ = 0;
  double widths_ = 1;  ///< The host's over those of the font at hand.
  QString text_;
  QList<FontRun> runs_;
  QList<Line> lines_;
  TextShape shape_;
};

}  // namespace

TextBox readTextBox(const SketchJson& layer) {
  const SketchJson& style = memberOf(memberOf(layer, "style"), "textStyle");
  const int vertical =
      integerIn(style, "verticalAlignment",
                integerIn(memberOf(style, "encodedAttributes"), "textStyleVerticalAlignmentKey"));
  const bool isOld = integerIn(layer, "lineSpacingBehaviour") != 2;
  return {.size = rectIn(layer, "frame").size(),
          .behaviour = TextBox::Behaviour(std::clamp(integerIn(layer, "textBehaviour"), 0, 2)),
          .vertical = TextBox::Vertical(std::clamp(vertical, 0, 2)),
          .hasOldLineSpacing = isOld,
          .fitsText = !flagIn(layer, kHasForeignFrame),
          .path = {},
          // Old documents have the lines' extents in its place.
          .ink = isOld ? QRectF() : textRectIn(layer, "glyphBounds")};
}

void TextShape::Area::move(const QTransform& transform) {
  path = transform.map(path);
  for (Emblem& emblem : emblems) emblem.place *= transform;
}

QPainterPath TextShape::outline() const {
  QPainterPath outline;
  outline.setFillRule(Qt::WindingFill);
  for (const Area& area : areas) outline.addPath(area.path);
  return outline;
}

TextShape shapeText(const TextRuns& runs, const TextBox& box, const FontMeasures& measures) {
  Typesetter typesetter(runs, box, measures);
  const TextShape shape = typesetter.set();
  const double spacing = typesetter.spacingToFit();
  return spacing == 0 ? typesetter.setInLines(shape) : typesetter.set(spacing);
}

}  // namespace kelvar::render
