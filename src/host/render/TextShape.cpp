#include "host/render/TextShape.h"

#include <QGlyphRun>
#include <QRawFont>
#include <QTextLayout>
#include <QtEndian>
#include <algorithm>
#include <cmath>

#include "host/render/FontChooser.h"

namespace kelvar::render {
namespace {

using Alignment = ParagraphStyle::Alignment;

/// Text is laid out this many times as large as it is drawn: fonts have whole pixel sizes, and
/// advances are kept in 64ths of a pixel.
constexpr double kZoom = 16;
constexpr double kMostSize = 4000;
constexpr double kEndless = 1'000'000;

/// Heights above and below the baseline and between lines, in document units; rounded as the
/// design's platform rounds them.
struct LineMetrics {
  double ascent = 0, descent = 0, leading = 0;
  double height() const { return ascent + descent + leading; }
};

LineMetrics metricsOf(const QRawFont& font, double size) {
  double ascent = font.ascent() / kZoom, descent = font.descent() / kZoom,
         leading = font.leading() / kZoom;
  // The painter's own numbers may come from a table that other platforms do not read.
  const QByteArray table = font.fontTable("hhea");
  if (table.size() >= 10 && font.unitsPerEm() > 0) {
    const auto at = [&](int offset) {
      return qFromBigEndian<qint16>(table.constData() + offset) * size / font.unitsPerEm();
    };
    ascent = at(4);
    descent = -at(6);
    leading = at(8);
  }
  return {std::round(ascent), std::round(descent), std::max(0.0, std::round(leading))};
}

/// A run with its font, as laid out.
struct FontRun {
  qsizetype start = 0, length = 0;
  CharacterStyle style;
  QFont font;
  LineMetrics metrics;
  double underlinePosition = 0, lineThickness = 0, xHeight = 0;
};

QString withCase(const QString& text, CharacterStyle::Case letters) {
  if (letters == CharacterStyle::Case::AsTyped) return text;
  const QString changed =
      letters == CharacterStyle::Case::Upper ? text.toUpper() : text.toLower();
  // Runs count characters: one that becomes two ("ß") is left alone.
  if (changed.size() == text.size()) return changed;
  QString kept;
  for (const QChar c : text) {
    const QString one = letters == CharacterStyle::Case::Upper ? QString(c).toUpper()
                                                               : QString(c).toLower();
    kept += one.size() == 1 ? one : QString(c);
  }
  return kept;
}

class Typesetter {
 public:
  Typesetter(const TextRuns& runs, const TextBox& box) : box_(box) {
    for (const TextRun& run : runs.runs) addRun(run, runs.text);
    text_.replace(QChar::CarriageReturn, QChar::LineFeed);
  }

  TextShape set() {
    double y = 0;
    for (qsizetype start = 0; start <= text_.size();) {
      qsizetype end = text_.indexOf(QChar::LineFeed, start);
      if (end < 0) end = text_.size();
      y = setParagraph(start, end, y);
      start = end + 1;
    }
    shape_.size.setHeight(y);
    alignLines();
    moveDown(y);
    return shape_;
  }

 private:
  /// A line's glyphs from x = 0, to be moved once all widths are known.
  struct Line {
    qsizetype firstArea, lastArea;
    double width;
    Alignment alignment;
  };

  void addRun(const TextRun& run, const QString& text) {
    const ChosenFont chosen = chooseFont(run.style.font);
    if (!chosen.isInstalled && !shape_.missingFonts.contains(run.style.font)) {
      shape_.missingFonts.append(run.style.font);
    }
    const double size = std::clamp(run.style.size, 1 / kZoom, kMostSize);
    FontRun fontRun{run.start, run.length, run.style, chosen.font, {}};
    fontRun.font.setPixelSize(std::max(1, int(std::lround(size * kZoom))));
    // Letters that are spaced are not joined either.
    const double spacing = run.style.kerning * kZoom;
    if (spacing != 0 || !run.style.ligatures) {
      fontRun.font.setLetterSpacing(QFont::AbsoluteSpacing, spacing != 0 ? spacing : 1e-2);
    }
    const QRawFont raw = QRawFont::fromFont(fontRun.font);
    fontRun.metrics = metricsOf(raw, size);
    fontRun.underlinePosition = raw.underlinePosition() / kZoom;
    fontRun.lineThickness = std::max(raw.lineThickness() / kZoom, size / 20);
    fontRun.xHeight = raw.xHeight() / kZoom;
    runs_.append(fontRun);
    text_ += withCase(text.mid(run.start, run.length), run.style.letters);
  }

  const FontRun& runAt(qsizetype position) const {
    const auto after = std::upper_bound(
        runs_.begin(), runs_.end(), position,
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
    option.setWrapMode(breaksLines() ? QTextOption::WrapAtWordBoundaryOrAnywhere
                                     : QTextOption::ManualWrap);
    option.setAlignment(first.style.paragraph.alignment == Alignment::Justified && breaksLines()
                            ? Qt::AlignJustify
                            : Qt::AlignLeft | Qt::AlignAbsolute);
    layout.setTextOption(option);
    breakLines(&layout);
    Alignment alignment = first.style.paragraph.alignment;
    if (alignment == Alignment::Natural || alignment == Alignment::Justified) {
      alignment = text_.mid(start, end - start).isRightToLeft() ? Alignment::Right
                                                                : Alignment::Left;
    }
    for (int i = 0; i < layout.lineCount(); ++i) {
      y = addLine(layout.lineAt(i), start, alignment, first, y);
    }
    return end < text_.size() ? y + first.style.paragraph.spacing : y;
  }

  void breakLines(QTextLayout* layout) const {
    layout->beginLayout();
    while (true) {
      QTextLine line = layout->createLine();
      if (!line.isValid()) break;
      line.setLineWidth(breaksLines() ? std::max(1.0, box_.size.width() * kZoom + 1) : kEndless);
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
    const qsizetype firstArea = shape_.areas.size();
    addGlyphs(line, paragraph, baseline);
    lines_.append({firstArea, shape_.areas.size(), line.naturalTextWidth() / kZoom, alignment});
    return y + height;
  }

  static double lineHeight(double natural, const ParagraphStyle& paragraph) {
    double height = std::max(natural, paragraph.leastLineHeight);
    if (paragraph.mostLineHeight > 0) height = std::min(height, paragraph.mostLineHeight);
    return height;
  }

  double baselineIn(double height, const LineMetrics& metrics) const {
    const double spare = height - metrics.height();
    if (box_.centresInLineHeight) return std::round(spare / 2) + metrics.ascent + metrics.leading;
    return spare + metrics.ascent + metrics.leading;
  }

  void addGlyphs(const QTextLine& line, qsizetype paragraph, double baseline) {
    const qsizetype start = paragraph + line.textStart();
    eachRun(start, start + line.textLength(), [&](const FontRun& run, qsizetype at,
                                                  qsizetype length) {
      TextShape::Area area{{}, run.style.color};
      const double y = baseline - run.style.baselineOffset;
      for (const QGlyphRun& glyphs : line.glyphRuns(int(at - paragraph), int(length))) {
        addGlyphRun(glyphs, line.ascent() + line.y(), y, &area.path);
      }
      addLinesAlong(line, run, at - paragraph, length, y, &area.path);
      area.path.setFillRule(Qt::WindingFill);
      shape_.areas.append(area);
    });
  }

  static void addGlyphRun(const QGlyphRun& glyphs, double layoutBaseline, double baseline,
                          QPainterPath* path) {
    const QRawFont font = glyphs.rawFont();
    const QList<quint32> indexes = glyphs.glyphIndexes();
    const QList<QPointF> positions = glyphs.positions();
    for (qsizetype i = 0; i < indexes.size(); ++i) {
      const double x = positions[i].x() / kZoom;
      const double y = baseline + (positions[i].y() - layoutBaseline) / kZoom;
      const QTransform toText(1 / kZoom, 0, 0, 1 / kZoom, x, y);
      path->addPath(toText.map(font.pathForGlyph(indexes[i])));
    }
  }

  static void addLinesAlong(const QTextLine& line, const FontRun& run, qsizetype at,
                            qsizetype length, double y, QPainterPath* path) {
    if (!run.style.underline && !run.style.strikethrough) return;
    const double left = line.cursorToX(int(at)) / kZoom;
    const double right = std::min(line.cursorToX(int(at + length)), line.naturalTextWidth()) / kZoom;
    const auto addLineAt = [&](double middle) {
      path->addRect(left, middle - run.lineThickness / 2, right - left, run.lineThickness);
    };
    if (run.style.underline) addLineAt(y + run.underlinePosition);
    if (run.style.strikethrough) addLineAt(y - run.xHeight / 2);
  }

  void alignLines() {
    double widest = 0;
    for (const Line& line : lines_) widest = std::max(widest, line.width);
    // What another font was measured for would run out of its place.
    const bool isStretched = box_.fitsText && !shape_.missingFonts.isEmpty() && !breaksLines() && widest > 0 &&
                             box_.size.width() > 0;
    const double stretch =
        isStretched ? std::clamp((box_.size.width() - 0.5) / widest, 0.6, 1.5) : 1;
    shape_.size.setWidth(widest * stretch);
    for (const Line& line : lines_) {
      const double spare = box_.size.width() - line.width * stretch;
      const double x = line.alignment == Alignment::Right    ? spare
                       : line.alignment == Alignment::Center ? spare / 2
                                                             : 0;
      const QTransform toPlace(stretch, 0, 0, 1, x, 0);
      for (qsizetype i = line.firstArea; i < line.lastArea; ++i) {
        shape_.areas[i].path = toPlace.map(shape_.areas[i].path);
      }
    }
  }

  void moveDown(double height) {
    if (box_.behaviour != TextBox::Behaviour::Fixed || box_.vertical == TextBox::Vertical::Top) {
      return;
    }
    const double spare = box_.size.height() - height;
    const double y = box_.vertical == TextBox::Vertical::Middle ? std::round(spare / 2) : spare;
    for (TextShape::Area& area : shape_.areas) area.path.translate(0, y);
  }

  const TextBox& box_;
  QString text_;
  QList<FontRun> runs_;
  QList<Line> lines_;
  TextShape shape_;
};

}  // namespace

QPainterPath TextShape::outline() const {
  QPainterPath outline;
  outline.setFillRule(Qt::WindingFill);
  for (const Area& area : areas) outline.addPath(area.path);
  return outline;
}

TextShape shapeText(const TextRuns& runs, const TextBox& box) { return Typesetter(runs, box).set(); }

}  // namespace kelvar::render
