#include "ui/WrappedText.h"

#include <algorithm>

namespace kelvar {

WrappedText::WrappedText(const QString& text, const QFont& font, double width)
    : layout_(QString(text).replace(u'\n', QChar::LineSeparator), font) {
  QTextOption option;
  option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
  layout_.setTextOption(option);
  layout_.beginLayout();
  for (QTextLine line = layout_.createLine(); line.isValid(); line = layout_.createLine()) {
    line.setLeadingIncluded(true);
    line.setLineWidth(std::max(width, 1.0));
    line.setPosition({0, height_});
    height_ += line.height();
  }
  layout_.endLayout();
}

}  // namespace kelvar
