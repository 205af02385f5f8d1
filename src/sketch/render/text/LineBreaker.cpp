#include "sketch/render/text/LineBreaker.h"

#include <algorithm>

namespace kelvar::render {
namespace {

using Alignment = ParagraphStyle::Alignment;

constexpr double kEndless = 1'000'000;
/// The tab stops of Sketch's platform.
constexpr double kTabDistance = 28;

QTextOption optionOf(const ParagraphStyle& style, const TextBox& box) {
  QTextOption option;
  option.setUseDesignMetrics(true);
  option.setTabStopDistance(kTabDistance * kLayoutScale);
  QList<qreal> tabs;
  for (const double tab : style.tabs) tabs.append(tab * kLayoutScale);
  if (!tabs.isEmpty()) option.setTabArray(tabs);
  option.setWrapMode(box.breaksLines() ? QTextOption::WrapAtWordBoundaryOrAnywhere
                                       : QTextOption::ManualWrap);
  option.setAlignment(style.alignment == Alignment::Justified && box.breaksLines()
                          ? Qt::AlignJustify
                          : Qt::AlignLeft | Qt::AlignAbsolute);
  return option;
}

QList<QTextLayout::FormatRange> formatsOf(const ItemizedText& text, qsizetype start,
                                          qsizetype end) {
  QList<QTextLayout::FormatRange> formats;
  text.forEachItem(start, end, [&](const TextItem& item, qsizetype at, qsizetype length) {
    QTextCharFormat format;
    format.setFont(item.font);
    formats.append({int(at - start), int(length), format});
  });
  return formats;
}

double indentOf(const ParagraphStyle& style, bool isFirst) {
  return std::max(0.0, isFirst ? style.firstIndent : style.indent);
}

double rightIndentOf(const ParagraphStyle& style, const TextBox& box) {
  return style.tail > 0 ? std::max(0.0, box.size.width() - style.tail) : -style.tail;
}

void addLines(const TextBox& box, double widthRatio, BrokenParagraph* paragraph) {
  const ParagraphStyle& style = paragraph->firstItem.style.paragraph;
  const double rightIndent = rightIndentOf(style, box);
  QTextLayout& layout = *paragraph->layout;
  layout.beginLayout();
  for (QTextLine line = layout.createLine(); line.isValid(); line = layout.createLine()) {
    const double indent = indentOf(style, paragraph->lines.empty());
    const double available = box.size.width() - indent - rightIndent;
    line.setLineWidth(box.breaksLines() ? std::max(1.0, available / widthRatio * kLayoutScale + 1)
                                        : kEndless);
    paragraph->lines.push_back({line, 0, 0, 0, indent, rightIndent});
  }
  layout.endLayout();
  for (BrokenLine& broken : paragraph->lines) {
    broken.start = paragraph->start + broken.line.textStart();
    broken.length = broken.line.textLength();
    broken.width = broken.line.naturalTextWidth() / kLayoutScale;
  }
}

BrokenParagraph breakParagraph(const ItemizedText& text, const TextBox& box, qsizetype start,
                               qsizetype end) {
  const qsizetype last = std::max<qsizetype>(0, text.text.size() - 1);
  BrokenParagraph paragraph{start, end, text.itemAt(std::min(start, last)), false, nullptr, {}};
  const QString characters = text.text.mid(start, end - start);
  paragraph.isRightToLeft = characters.isRightToLeft();
  paragraph.layout = std::make_unique<QTextLayout>(characters, paragraph.firstItem.font);
  paragraph.layout->setFormats(formatsOf(text, start, end));
  paragraph.layout->setTextOption(optionOf(paragraph.firstItem.style.paragraph, box));
  addLines(box, text.widthRatio, &paragraph);
  return paragraph;
}

}  // namespace

std::vector<BrokenParagraph> breakLines(const ItemizedText& text, const TextBox& box) {
  std::vector<BrokenParagraph> paragraphs;
  for (qsizetype start = 0; start <= text.text.size();) {
    qsizetype end = text.text.indexOf(QChar::LineFeed, start);
    if (end < 0) end = text.text.size();
    paragraphs.push_back(breakParagraph(text, box, start, end));
    start = end + 1;
  }
  return paragraphs;
}

}  // namespace kelvar::render
