#include "host/render/SymbolLayout.h"

#include <algorithm>
#include <cmath>
#include <vector>

#include "host/render/Resizing.h"
#include "host/render/TextShape.h"

namespace kelvar::render {
namespace {

/// A layer along the axis, before and after.
struct Item {
  SketchJson* layer;
  double start, length;
  double newLength;
  double end() const { return start + length; }
};

class Axis {
 public:
  explicit Axis(bool isDown) : isDown_(isDown) {}

  Item itemOf(SketchJson* layer) const {
    const QRectF frame = rectIn(*layer, "frame");
    const double start = isDown_ ? frame.y() : frame.x();
    const double length = isDown_ ? frame.height() : frame.width();
    return {layer, start, length, newLengthOf(*layer, length)};
  }

  void place(SketchJson* layer, double start, double length) const {
    SketchJson& frame = (*layer)["frame"];
    frame[isDown_ ? "y" : "x"] = start;
    frame[isDown_ ? "height" : "width"] = length;
  }

 private:
  double newLengthOf(const SketchJson& layer, double length) const {
    if (!flagIn(layer, "isVisible", true)) {
      return flagIn(layer, "preservesSpaceWhenHidden") ? length : 0;
    }
    if (classOf(layer) != u"text" || !flagIn(layer, kHasForeignFrame)) return length;
    const TextBox box = readTextBox(layer);
    const bool grows = isDown_ ? box.behaviour != TextBox::Behaviour::Fixed
                               : box.behaviour == TextBox::Behaviour::AutoWidth;
    if (!grows) return length;
    const QSizeF size = shapeText(readTextRuns(layer), box).size;
    return std::ceil(isDown_ ? size.height() : size.width());
  }

  bool isDown_;
};

/// Moves the items, sorted by their start, and returns by how much the whole grows. Items beside
/// one another on the axis move together; what is hidden takes the gap behind it along.
double moveApart(const Axis& axis, const std::vector<Item>& items) {
  double shift = 0;
  for (size_t first = 0; first < items.size();) {
    size_t next = first;
    double end = items[first].end(), newEnd = items[first].start;
    for (; next < items.size() && (next == first || items[next].start < end - 1e-6); ++next) {
      const Item& item = items[next];
      end = std::max(end, item.end());
      if (item.newLength > 0) newEnd = std::max(newEnd, item.start + item.newLength);
      axis.place(item.layer, item.start + shift, item.newLength);
    }
    const bool isGone = newEnd == items[first].start;
    const double after = isGone && next < items.size() ? items[next].start : end;
    shift += newEnd - after;
    first = next;
  }
  return shift;
}

}  // namespace

void layOut(SketchJson* master) {
  const SketchJson& layout = memberOf(*master, "groupLayout");
  const auto layers = master->find("layers");
  if (classOf(layout) != u"MSImmutableInferredGroupLayout" || layers == master->end()) return;
  const Axis axis(integerIn(layout, "axis") == 1);
  std::vector<Item> items, spanning;
  double start = 1e9, end = -1e9;
  for (SketchJson& layer : *layers) {
    if (!layer.is_object()) continue;
    items.push_back(axis.itemOf(&layer));
    start = std::min(start, items.back().start);
    end = std::max(end, items.back().end());
  }
  const bool changes = std::any_of(items.begin(), items.end(),
                                   [](const Item& item) { return item.newLength != item.length; });
  if (!changes) return;
  const auto spansAll = [&](const Item& item) { return item.start <= start && item.end() >= end; };
  if (items.size() > 1) {
    std::copy_if(items.begin(), items.end(), std::back_inserter(spanning), spansAll);
    std::erase_if(items, spansAll);
  }
  std::stable_sort(items.begin(), items.end(),
                   [](const Item& a, const Item& b) { return a.start < b.start; });
  const double growth = moveApart(axis, items);
  for (const Item& item : spanning) axis.place(item.layer, item.start, item.length + growth);
  const Item whole = axis.itemOf(master);
  axis.place(master, whole.start, std::max(0.0, whole.length + growth));
}

}  // namespace kelvar::render
