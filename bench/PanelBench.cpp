// Uses the window of `kelvar panel` with mouse and keys on an offscreen platform. Measures how long
// a change takes until its result is painted, and how long the window is unresponsive. Prints both
// for a design of 4096 by 4096 pixels at 2x on a photo of 4096 by 3072.

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QApplication>
#include <QElapsedTimer>
#include <QImage>
#include <QPainter>
#include <QTemporaryDir>
#include <QTest>
#include <algorithm>
#include <atomic>
#include <cstdio>
#include <random>
#include <thread>
#include <vector>

#include "panel/CanvasView.h"
#include "panel/PanelWindow.h"
#include "panel/visibleChild.h"
#include "ui/PopUpButton.h"

using namespace kelvar;
using namespace kelvar::cli;

namespace {

constexpr int kTimes = 9;

/// Asks the main thread every millisecond for a sign, and keeps the longest wait for one.
class Patience : public QObject {
 public:
  Patience()
      : asking_([this] {
          while (!stop_) {
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
            if (!waits_.exchange(true)) ask();
          }
        }) {}
  ~Patience() override {
    stop_ = true;
    asking_.join();
  }

  /// In milliseconds, since the last time.
  double longest() { return std::exchange(longest_, 0); }

 private:
  void ask() {
    QElapsedTimer since;
    since.start();
    QMetaObject::invokeMethod(
        this,
        [this, since] {
          longest_ = std::max(longest_, double(since.nsecsElapsed()) / 1e6);
          waits_ = false;
        },
        Qt::QueuedConnection);
  }

  std::atomic<bool> stop_ = false, waits_ = false;
  double longest_ = 0;
  std::thread asking_;
};

/// Soft colors with some grain, so that files are about as large as photos.
void writeImage(const QString& file, int width, int height, unsigned seed) {
  QImage image(width, height, QImage::Format_RGB32);
  std::minstd_rand random(seed);
  for (int y = 0; y < height; ++y) {
    auto* const row = reinterpret_cast<QRgb*>(image.scanLine(y));
    for (int x = 0; x < width; ++x) {
      const int grain = int(random() % 8);
      row[x] = qRgb(x * 200 / width + grain, y * 200 / height + grain, int(seed) * 20 + grain);
    }
  }
  image.save(file);
}

class Session {
 public:
  Session() {
    window_.resize(1240, 820);
    window_.show();
    view_ = static_cast<CanvasView*>(window_.findChild<QWidget*>(QStringLiteral("canvasView")));
  }

  bool open() {
    window_.session().open(file("photo.png"));
    window_.session().addDesigns({file("design.png")});
    return wait(
        [&] { return window_.session().model().arrangement().designs.size() == 1 && settled(); });
  }

  void drawShape() {
    for (const QPointF& corner : {QPointF(160, 180), {3970, 60}, {3810, 2950}, {280, 2800}}) {
      QTest::mouseClick(view_, Qt::LeftButton, {}, at(corner));
    }
  }

  void dragCorner() {
    const QPoint from = at({3970, 60});
    QTest::mousePress(view_, Qt::LeftButton, {}, from);
    for (int i = 0; i < 60; ++i) {
      QTest::mouseMove(view_, from + QPoint(-i, i), 8);
    }
    QTest::mouseRelease(view_, Qt::LeftButton, {}, from + QPoint(-60, 60));
    wait([&] { return settled(); });
  }

  void choose(const char* name, int item) {
    auto* const button = control<PopUpButton>(name);
    QTest::mouseClick(button, Qt::LeftButton);
    QTest::keyClick(button->view(), Qt::Key_Home);
    for (int i = 0; i < item; ++i) QTest::keyClick(button->view(), Qt::Key_Down);
    QTest::keyClick(button->view(), Qt::Key_Return);
  }

  void press(const char* name) {
    QTest::mouseClick(control<QAbstractButton>(name), Qt::LeftButton);
  }

  /// Milliseconds until what `use` asks for has been painted.
  template <class Use>
  double shows(Use use) {
    wait([&] { return !window_.session().hasMockup() || settled(); });
    QElapsedTimer since;
    since.start();
    use();
    wait([&] { return settled(); });
    QApplication::processEvents();
    return double(since.nsecsElapsed()) / 1e6;
  }

  QString file(const char* name) const { return folder_.filePath(QLatin1String(name)); }

 private:
  template <class Until>
  static bool wait(Until until) {
    QElapsedTimer since;
    since.start();
    while (!until() && since.elapsed() < kMaxWait) {
      QApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
    return until();
  }

  bool settled() {
    auto* const flip = control<QAbstractButton>("layerFlipButton");
    return window_.session().hasMockup() && !window_.session().isBusy() &&
           (!flip || flip->isEnabled());
  }

  QPoint at(const QPointF& pixel) const { return view_->viewport().toView(pixel).toPoint(); }

  template <class T>
  T* control(const char* name) {
    return visibleChild<T>(window_, name);
  }

  QTemporaryDir folder_;
  PanelWindow window_;
  CanvasView* view_ = nullptr;
};

}  // namespace

int main(int argc, char** argv) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  const QApplication application(argc, argv);
  QApplication::setDoubleClickInterval(0);
  Session session;
  writeImage(session.file("photo.png"), 4096, 3072, 1);
  writeImage(session.file("design.png"), 4096, 4096, 5);
  Patience patience;
  std::printf("%-36s %12s %14s\n", "", "shown after", "longest wait");
  const auto report = [&](const char* what, double shown) {
    std::printf("%-36s %9.0f ms %11.0f ms\n", what, shown, patience.longest());
  };
  bool isOpen = false;
  const double opened = session.shows([&] { isOpen = session.open(); });
  if (!isOpen) return 1;
  report("opening photo and design", opened);
  session.drawShape();
  session.choose("imageQualityPopupButton", 1);
  report("choosing the design, at 2x", session.shows([&] { session.choose("popupButton", 0); }));
  std::vector<double> turns;
  for (int i = 0; i < kTimes; ++i) {
    turns.push_back(session.shows([&] { session.press("layerRotateButton"); }));
  }
  std::nth_element(turns.begin(), turns.begin() + kTimes / 2, turns.end());
  report("rotating it, median", turns[kTimes / 2]);
  report("dragging a corner, 60 steps", session.shows([&] { session.dragCorner(); }));
  report("reading its file again", session.shows([&] { session.press("layerRefreshButton"); }));
  return 0;
}
