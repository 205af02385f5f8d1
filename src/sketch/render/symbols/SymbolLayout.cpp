#include "sketch/render/symbols/SymbolLayout.h"

#include <algorithm>
#include <cmath>
#include <vector>

#include "sketch/render/symbols/Resizing.h"
#include "sketch/render/text/TextLayout.h"

namespace kelvar::render {
namespace {

/// On nested instances.
constexpr const char* kGrowth = "kelvar.growth";

bool keepsItsPlace(const SketchJson& hidden) {
  return getBool(hidden, "preservesSpaceWhenHidden") ||
         getBool(get(hidden, "flexItem"), "preserveSpaceWhenHidden");
}

/// What a replaced text takes up where its frame grows with it; a frame that does not grow, and any
/// other layer's, is as it is.
QSizeF sizeOf(const SketchJson& layer) {
  const QSizeF size = getRect(layer, "frame").size();
  const SketchJson& growth = get(layer, kGrowth);
  if (growth.is_object()) return size + getRect(layer, kGrowth).size();
  if (classOf(layer) != u"text" || !getBool(layer, kHasForeignFrame)) return size;
  const TextBox box = readTextBox(layer);
  if (box.behavior == TextBox::Behavior::Fixed) return size;
  const QSizeF taken = layoutText(readTextRuns(layer), box).size;
  return {box.behavior == TextBox::Behavior::AutoWidth ? std::ceil(taken.width()) : size.width(),
          std::ceil(taken.height())};
}

/// A layer along the axis, before and after.
struct Item {
  SketchJson* layer;
  double start, length;
  double newLength;
  double end() const { return start + length; }
};

/// One of the two ways that a layout runs.
class Axis {
 public:
  explicit Axis(const SketchJson& layout)
      : isDown_(getInt(layout, "axis", getInt(layout, "flexDirection")) == 1) {}

  /// `before` is the layer's frame before what is in it was laid out.
  Item itemOf(SketchJson* layer, const QRectF& before) const {
    double newLength = along(sizeOf(*layer));
    if (!getBool(*layer, "isVisible", true)) newLength = keepsItsPlace(*layer) ? newLength : 0;
    return {layer, isDown_ ? before.y() : before.x(), along(before.size()), newLength};
  }

  /// A group of another length takes along what is in it.
  void place(const Item& item, double start, double length, bool stretches) const {
    const QSizeF before = getRect(*item.layer, "frame").size();
    SketchJson& frame = (*item.layer)["frame"];
    frame[isDown_ ? "y" : "x"] = start;
    frame[isDown_ ? "height" : "width"] = length;
    if (stretches) resizeLayers(item.layer, before, getRect(*item.layer, "frame").size());
  }

  double along(const QSizeF& size) const { return isDown_ ? size.height() : size.width(); }

 private:
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
      axis.place(item, item.start + shift, item.newLength, false);
    }
    const bool isGone = newEnd == items[first].start;
    const double after = isGone && next < items.size() ? items[next].start : end;
    shift += newEnd - after;
    first = next;
  }
  return shift;
}

/// Lets the container grow from its layout's anchor, but not beyond its limits.
void grow(SketchJson* container, const Axis& axis, double growth) {
  const SketchJson& layout = get(*container, "groupLayout");
  const QRectF frame = getRect(*container, "frame");
  const Item whole = axis.itemOf(container, frame);
  double length = std::max({0.0, getNumber(layout, "minSize"), whole.length + growth});
  if (const double most = getNumber(layout, "maxSize"); most > 0) length = std::min(length, most);
  const double anchor = std::clamp(getInt(layout, "layoutAnchor"), 0, 2) / 2.0;
  const bool isMaster = classOf(*container) != u"group";
  const double start = whole.start - (isMaster ? 0 : anchor * (length - whole.length));
  axis.place(whole, start, length, false);
}

using Children = std::vector<std::pair<SketchJson*, QRectF>>;

void layOutAlong(SketchJson* container, const Children& children, const std::stop_token& stop) {
  const Axis axis(get(*container, "groupLayout"));
  std::vector<Item> items, spanning;
  double start = 1e9, end = -1e9;
  for (const auto& [layer, before] : children) {
    if (stop.stop_requested()) return;
    items.push_back(axis.itemOf(layer, before));
    start = std::min(start, items.back().start);
    end = std::max(end, items.back().end());
  }
  const bool changes = std::any_of(items.begin(), items.end(), [](const Item& item) {
    return std::abs(item.newLength - item.length) > 1e-6;
  });
  if (!changes) return;
  const auto spansAll = [&](const Item& item) { return item.start <= start && item.end() >= end; };
  if (items.size() > 1) {
    std::copy_if(items.begin(), items.end(), std::back_inserter(spanning), spansAll);
    std::erase_if(items, spansAll);
  }
  std::stable_sort(items.begin(), items.end(),
                   [](const Item& a, const Item& b) { return a.start < b.start; });
  const double growth = moveApart(axis, items);
  for (const Item& item : spanning) axis.place(item, item.start, item.length + growth, true);
  grow(container, axis, growth);
}

/// Replaced texts grow from the side that they are aligned to.
void growText(SketchJson* layer) {
  const QRectF frame = getRect(*layer, "frame");
  const QSizeF size = sizeOf(*layer);
  if (classOf(*layer) != u"text" || size == frame.size()) return;
  const auto alignment = readTextRuns(*layer).runs[0].style.paragraph.alignment;
  const double more = size.width() - frame.width();
  const double left = alignment == ParagraphStyle::Alignment::Right    ? more
                      : alignment == ParagraphStyle::Alignment::Center ? more / 2
                                                                       : 0;
  setRect(layer, "frame", {frame.topLeft() - QPointF(left, 0), size});
}

/// A group without a layout is as large as what is in it.
void fit(SketchJson* group, const Children& children, const std::stop_token& stop) {
  QRectF before, after;
  for (const auto& [layer, frame] : children) {
    if (stop.stop_requested()) return;
    growText(layer);
    before |= frame;
    after |= getRect(*layer, "frame");
  }
  if (before == after) return;
  const QRectF frame = getRect(*group, "frame");
  setRect(group, "frame",
          frame.adjusted(after.left() - before.left(), after.top() - before.top(),
                         after.right() - before.right(), after.bottom() - before.bottom()));
  const QPointF shift = before.topLeft() - after.topLeft();
  for (const auto& [layer, unused] : children) {
    setRect(layer, "frame", getRect(*layer, "frame").translated(shift));
  }
}

/// What is in it first. A group without a layout is fitted only where that moves what is around it.
void layOutWithin(SketchJson* container, bool isInLayout, const std::stop_token& stop) {
  const auto layers = container->find("layers");
  if (layers == container->end() || !layers->is_array() || stop.stop_requested()) return;
  const bool isLayout = hasSmartLayout(*container);
  Children children;
  for (SketchJson& layer : *layers) {
    if (!layer.is_object()) continue;
    children.emplace_back(&layer, getRect(layer, "frame"));
    if (classOf(layer) == u"group") layOutWithin(&layer, isInLayout || isLayout, stop);
  }
  if (isLayout) {
    layOutAlong(container, children, stop);
  } else if (isInLayout) {
    fit(container, children, stop);
  }
}

}  // namespace

bool hasSmartLayout(const SketchJson& container) {
  const QString kind = classOf(get(container, "groupLayout"));
  return kind == u"MSImmutableInferredGroupLayout" || kind == u"MSImmutableFlexGroupLayout";
}

void setSizeDelta(const QSizeF& growth, SketchJson* instance) {
  const QSizeF sum = getRect(*instance, kGrowth).size() + growth;
  if (!sum.isNull()) (*instance)[kGrowth] = {{"width", sum.width()}, {"height", sum.height()}};
}

void applySmartLayout(SketchJson* container, const std::stop_token& stop) {
  layOutWithin(container, false, stop);
}

}  // namespace kelvar::render
