#include "runtime/ClassInfo.h"
#include "ui/NSWindow.h"
#include "ui/View.h"
#include "ui/keyViews.h"

// The selectors of NSView.
namespace kelvar {
namespace {

const ClassInfo::Registration kRegistered(&View::staticClassInfo);

using Builder = ClassInfoBuilder<View>;

void setNextKeyView(View& view, const ViewRef& next) {
  if (view.widget()) setNextKeyWidget(view.widget(), next ? next->widget() : nullptr);
}

ViewRef plainView(const QRectF& frame) { return View::adopt(new QWidget, frame); }

Builder&& addGeometry(Builder&& builder) {
  return std::move(builder)
      .initializer(
          "init", [] { return plainView({}); }, "Creates an empty view of size zero.")
      .initializer(
          "initWithFrame:", [](const QRectF& frame) { return plainView(frame); },
          "Creates an empty view.")
      .property("frame", &View::frame, &View::setFrame,
                "Position and size in points, in the superview's coordinates: from its bottom "
                "left, y up.")
      .property("bounds", &View::bounds, "The view's own rectangle in points, which starts at 0.")
      .operation("setFrameOrigin:", &View::setFrameOrigin, "Moves the view.")
      .operation("setFrameSize:", &View::setFrameSize,
                 "Resizes the view; its bottom left stays where it is.")
      .property("autoresizingMask", &View::autoresizingMask, &View::setAutoresizingMask,
                "What follows when the superview is resized: a sum of `NSViewWidthSizable`, "
                "`NSViewMinYMargin` and the others; 0 for nothing.")
      .operation("fittingSize", &View::fittingSize,
                 "Returns the size in points that the contents need, at the current width if their "
                 "height depends on it.")
      .operation(
          "isFlipped", [](const View&) { return false; },
          "Returns false: y grows upward in every view.");
}

Builder&& addTree(Builder&& builder) {
  return std::move(builder)
      .operation("addSubview:", &View::addSubview,
                 "Puts a view into this one, in front of its other subviews.")
      .operation("removeFromSuperview", &View::removeFromSuperview,
                 "Takes the view out of its superview.")
      .property("superview", &View::superview, "The view that this one is in, or nil.")
      .property(
          "subviews",
          [](const View& view) {
            QVariantList subviews;
            for (const ViewRef& each : view.subviews()) subviews.append(toVariant(each));
            return subviews;
          },
          "The views in this one, from back to front.")
      .property("window", &View::window, "The window that the view is in, or nil.")
      .operation("isDescendantOf:", &View::isDescendantOf,
                 "Returns whether the view is the other one or inside it.")
      .operation("setNextKeyView:", setNextKeyView,
                 "Says which view of the window gets the focus after this one, when the window is "
                 "shown.")
      .operation("viewWithTag:", &View::viewWithTag,
                 "Returns the first of the view and those inside it with that tag, or nil.");
}

Builder&& addState(Builder&& builder) {
  return std::move(builder)
      .property("hidden", &View::isHidden, &View::setHidden,
                "Whether the view is hidden; a view without a superview is shown as a window.")
      .operation("isHidden", &View::isHidden, "Returns whether the view is hidden.")
      .operation(
          "setNeedsDisplay:",
          [](View& view, bool needs) {
            if (needs && view.widget()) view.widget()->update();
          },
          "Has the view drawn again, where it is shown.")
      .property("tag", &View::tag, &View::setTag, "A number for the owner's use.")
      .property("identifier", &View::identifier, &View::setIdentifier,
                "An identifier for the owner's use; in a form, the name that the form gives it.")
      .property("toolTip", &View::toolTip, &View::setToolTip,
                "The text that appears when the pointer rests on the view, or nil.");
}

}  // namespace

const ClassInfo& View::staticClassInfo() {
  static const ClassInfo kClass = addState(addTree(addGeometry(Builder("NSView"))));
  return kClass;
}

}  // namespace kelvar
