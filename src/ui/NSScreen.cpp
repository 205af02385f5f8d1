#include "ui/NSScreen.h"

#include <QGuiApplication>

namespace kelvar {
namespace {

const ClassInfo::Registration kRegistered(&NSScreen::staticClassInfo);

QRectF flipped(const QRect& rect) {
  const QScreen* const main = QGuiApplication::primaryScreen();
  const int bottom = main ? main->geometry().height() : 0;
  return QRectF(rect.x(), bottom - rect.y() - rect.height(), rect.width(), rect.height());
}

std::shared_ptr<NSScreen> mainScreen() {
  QScreen* const screen = QGuiApplication::primaryScreen();
  return screen ? std::make_shared<NSScreen>(screen) : nullptr;
}

QVariantList screens() {
  QVariantList all;
  for (QScreen* const each : QGuiApplication::screens()) {
    all.append(toVariant(std::make_shared<NSScreen>(each)));
  }
  return all;
}

}  // namespace

const ClassInfo& NSScreen::staticClassInfo() {
  using S = NSScreen;
  static const ClassInfo kClass =
      ClassInfoBuilder<S>("NSScreen")
          .classOperation("mainScreen", mainScreen, "Returns the main screen.")
          .classOperation("screens", screens, "Returns all screens, the main one first.")
          .operation("frame", &S::frame,
                     "Returns position and size in points, from the bottom left of the main "
                     "screen.")
          .operation("visibleFrame", &S::visibleFrame,
                     "Returns what the bars of the desktop leave of it.")
          .operation("backingScaleFactor", &S::backingScaleFactor, "Returns the pixels per point.");
  return kClass;
}

QRectF NSScreen::frame() const { return screen_ ? flipped(screen_->geometry()) : QRectF(); }

QRectF NSScreen::visibleFrame() const {
  return screen_ ? flipped(screen_->availableGeometry()) : QRectF();
}

}  // namespace kelvar
