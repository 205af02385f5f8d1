#pragma once

#include "ui/View.h"

namespace kelvar {

class NSWindow;
using NSWindowRef = std::shared_ptr<NSWindow>;

/// A window that shows one view. It is kept while it is visible; a script may drop it.
///
/// Lengths are points; a frame's origin is at the bottom left of the screen. Main thread only.
class KELVAR_EXPORT NSWindow : public Object {
 public:
  static const ClassInfo& staticClassInfo();
  const ClassInfo& classInfo() const override { return staticClassInfo(); }

  /// Bits of the style; others have no meaning here.
  enum Style { kTitled = 1, kClosable = 2, kMiniaturizable = 4, kResizable = 8 };

  /// A hidden window with an empty view. Throws what `View::setFrame` throws.
  template <class W>
  static std::shared_ptr<W> make(const QRectF& content, int styleMask) {
    auto window =
        std::make_shared<W>(View::adopt(new QWidget, {{0, 0}, content.size()}), flagsOf(styleMask));
    window->attach();
    return window;
  }
  /// Use `make` or `forContent`.
  NSWindow(ViewRef content, Qt::WindowFlags flags) : content_(std::move(content)), flags_(flags) {}

  /// The window of a top-level widget: the known one, or a new one if the widget is visible; or
  /// null.
  static NSWindowRef of(QWidget* widget);
  /// The known window that shows the view; or null.
  static NSWindowRef withContent(const View& view);
  /// A window for a view without a superview.
  static NSWindowRef forContent(const ViewRef& view);

  /// Never null.
  ViewRef contentView() const { return content_; }
  /// Takes the view out of where it was and gives it the window's size. Null for an empty view.
  void setContentView(const ViewRef& view);

  QString title() const;
  void setTitle(const QString& title);
  QRectF frame() const;
  void setFrame(const QRectF& frame);
  void setContentSize(const QSizeF& size);
  /// In the middle of the screen.
  void center();

  /// The view that has the focus when the window appears; null for the first one that can.
  ViewRef initialFirstResponder() const { return initialFirstResponder_.lock(); }
  void setInitialFirstResponder(const ViewRef& view) { initialFirstResponder_ = view; }
  /// Gives a view of the window the focus; null takes it away. Returns whether that was possible.
  bool makeFirstResponder(const ViewRef& view);

  bool isVisible() const;
  void show();
  void hide();

 private:
  static Qt::WindowFlags flagsOf(int styleMask);

  QWidget* widget() const { return content_->widget(); }
  /// Makes the content's widget known as this window's.
  void attach();

  ViewRef content_;
  Qt::WindowFlags flags_;
  std::weak_ptr<View> initialFirstResponder_;
};

/// A window as it is called for panels.
class KELVAR_EXPORT NSPanel : public NSWindow {
 public:
  using NSWindow::NSWindow;
  static const ClassInfo& staticClassInfo();
  const ClassInfo& classInfo() const override { return staticClassInfo(); }
};

}  // namespace kelvar
