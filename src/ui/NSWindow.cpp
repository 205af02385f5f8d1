#include "ui/NSWindow.h"

#include <QEvent>
#include <QHash>
#include <QScreen>
#include <QSet>
#include <stdexcept>

#include "runtime/ClassInfo.h"
#include "ui/keyViews.h"

namespace kelvar {
namespace {

const ClassInfo::Registration kRegistered(&NSWindow::staticClassInfo);
const ClassInfo::Registration kPanelRegistered(&NSPanel::staticClassInfo);

QHash<const QWidget*, std::weak_ptr<NSWindow>>& windows() {
  static QHash<const QWidget*, std::weak_ptr<NSWindow>> kWindows;
  return kWindows;
}

QSet<NSWindowRef>& visibleWindows() {
  static QSet<NSWindowRef> kVisible;
  return kVisible;
}

/// Lets go of a window that was hidden, by the user or by the program.
class HideFilter : public QObject {
 public:
  explicit HideFilter(QWidget* widget) : QObject(widget) { widget->installEventFilter(this); }

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override {
    if (watched == parent() && event->type() == QEvent::Hide && !event->spontaneous()) {
      // Later: the widget is still being hidden.
      QMetaObject::invokeMethod(this, &HideFilter::release, Qt::QueuedConnection);
    }
    return false;
  }

 private:
  void release() {
    const auto* const widget = static_cast<QWidget*>(parent());
    const NSWindowRef window = windows().value(widget).lock();
    if (window && !window->isVisible()) visibleWindows().remove(window);
  }
};

template <class W>
std::shared_ptr<W> makeWindow(const QRectF& content, int styleMask, const QVariant&, bool) {
  return NSWindow::make<W>(content, styleMask);
}

template <class W, class Base>
ClassInfoBuilder<W, Base> describe(const char* name) {
  return ClassInfoBuilder<W, Base>(name)
      .initializer(
          "init", [] { return NSWindow::make<W>({}, NSWindow::kTitled); },
          "Creates a hidden window of size zero with a title bar.")
      .initializer("initWithContentRect:styleMask:backing:defer:", makeWindow<W>,
                   "Creates a hidden window with an empty view of that size; the rest of the "
                   "rectangle and the "
                   "last two arguments have no effect.");
}

}  // namespace

const ClassInfo& NSWindow::staticClassInfo() {
  using W = NSWindow;
  static const ClassInfo kClass =
      describe<W, Object>("NSWindow")
          .property("contentView", &W::contentView, &W::setContentView,
                    "The view that fills the window.")
          .property("title", &W::title, &W::setTitle, "The title of the window.")
          .property("frame", &W::frame,
                    "Position and size with the title bar in points, from the bottom left of the "
                    "screen.")
          .operation(
              "setFrame:display:",
              [](W& window, const QRectF& frame, bool) { window.setFrame(frame); },
              "Moves and resizes the window.")
          .operation("setContentSize:", &W::setContentSize, "Resizes the content view, in points.")
          .operation("center", &W::center, "Moves the window to the middle of the screen.")
          .property("initialFirstResponder", &W::initialFirstResponder,
                    &W::setInitialFirstResponder,
                    "The view that has the focus when the window appears, or nil.")
          .operation("makeFirstResponder:", &W::makeFirstResponder,
                     "Gives a view of the window the focus, or none for nil; returns whether that "
                     "was possible.")
          .property("isVisible", &W::isVisible, "Whether the window is on screen.")
          .operation(
              "makeKeyAndOrderFront:", [](W& window, const QVariant&) { window.show(); },
              "Shows the window in front of the others; the argument has no effect.")
          .operation(
              "orderFront:", [](W& window, const QVariant&) { window.show(); },
              "Shows the window in front of the others; the argument has no effect.")
          .operation(
              "orderOut:", [](W& window, const QVariant&) { window.hide(); },
              "Hides the window; the argument has no effect.")
          .operation("close", &W::hide, "Hides the window and lets go of it.");
  return kClass;
}

const ClassInfo& NSPanel::staticClassInfo() {
  static const ClassInfo kClass = describe<NSPanel, NSWindow>("NSPanel");
  return kClass;
}

NSWindowRef NSWindow::of(QWidget* widget) {
  if (!widget) return nullptr;
  NSWindowRef window = windows().value(widget).lock();
  // The known one may be of a deleted widget that had the same address.
  if (window && window->widget() == widget) return window;
  return widget->isVisible() ? forContent(View::of(widget)) : nullptr;
}

NSWindowRef NSWindow::withContent(const View& view) {
  NSWindowRef window = windows().value(view.widget()).lock();
  return window && window->content_.get() == &view ? window : nullptr;
}

NSWindowRef NSWindow::forContent(const ViewRef& view) {
  if (NSWindowRef known = withContent(*view)) return known;
  auto window = std::make_shared<NSWindow>(view, view->widget()->windowFlags() | Qt::Window);
  window->attach();
  return window;
}

Qt::WindowFlags NSWindow::flagsOf(int styleMask) {
  Qt::WindowFlags flags = Qt::Window | Qt::CustomizeWindowHint;
  flags |= styleMask & kTitled ? Qt::WindowTitleHint : Qt::FramelessWindowHint;
  if (styleMask & kClosable) flags |= Qt::WindowSystemMenuHint | Qt::WindowCloseButtonHint;
  if (styleMask & kMiniaturizable) flags |= Qt::WindowMinimizeButtonHint;
  flags |= styleMask & kResizable ? Qt::WindowMaximizeButtonHint : Qt::MSWindowsFixedSizeDialogHint;
  return flags;
}

void NSWindow::attach() {
  windows().insert(widget(), std::static_pointer_cast<NSWindow>(shared_from_this()));
  new HideFilter(widget());
}

void NSWindow::setContentView(const ViewRef& view) {
  const ViewRef content = view ? view : View::adopt(new QWidget);
  if (content == content_ || !content->widget()) return;
  const bool wasVisible = isVisible();
  const ViewRef before = std::exchange(content_, content);
  content->removeFromSuperview();
  if (const NSWindowRef other = withContent(*content)) other->setContentView(nullptr);
  if (QWidget* const old = before->widget()) {
    content->setFrame({{0, 0}, QSizeF(old->size())});
    content->widget()->setWindowTitle(old->windowTitle());
    windows().remove(old);
    old->hide();
    old->setAttribute(Qt::WA_WState_ExplicitShowHide, false);
  }
  attach();
  if (wasVisible) show();
}

QString NSWindow::title() const { return widget() ? widget()->windowTitle() : QString(); }

void NSWindow::setTitle(const QString& title) {
  if (widget()) widget()->setWindowTitle(title);
}

QRectF NSWindow::frame() const {
  if (!widget()) return {};
  const QRect frame = widget()->frameGeometry();
  const QRect screen = widget()->screen()->geometry();
  return QRectF(frame.x(), screen.y() + screen.height() - frame.y() - frame.height(), frame.width(),
                frame.height());
}

void NSWindow::setFrame(const QRectF& frame) {
  if (!widget()) return;
  const QSize decoration = widget()->frameSize() - widget()->size();
  setContentSize(frame.size() - QSizeF(decoration));
  const QRect screen = widget()->screen()->geometry();
  widget()->move(int(frame.x()), int(screen.y() + screen.height() - frame.y() - frame.height()));
}

void NSWindow::setContentSize(const QSizeF& size) { content_->setFrameSize(size); }

void NSWindow::center() {
  if (!widget()) return;
  QRect frame = widget()->frameGeometry();
  frame.moveCenter(widget()->screen()->availableGeometry().center());
  widget()->move(frame.topLeft());
}

bool NSWindow::isVisible() const { return widget() && widget()->isVisible(); }

void NSWindow::show() {
  if (!widget()) return;
  if (isVisible()) {
    widget()->raise();
  } else {
    widget()->setWindowFlags(flags_);
  }
  visibleWindows().insert(std::static_pointer_cast<NSWindow>(shared_from_this()));
  chainKeyWidgets(widget());
  widget()->show();
  widget()->activateWindow();
  if (const ViewRef first = initialFirstResponder()) makeFirstResponder(first);
}

bool NSWindow::makeFirstResponder(const ViewRef& view) {
  if (!widget()) return false;
  if (!view) {
    if (QWidget* const focused = widget()->focusWidget()) focused->clearFocus();
    return true;
  }
  if (!view->isDescendantOf(content_) || !view->widget()) return false;
  view->widget()->setFocus(Qt::OtherFocusReason);
  return true;
}

void NSWindow::hide() {
  if (widget()) widget()->hide();
}

}  // namespace kelvar
