#include "panel/RenderWorker.h"

#include <gtest/gtest.h>

#include <QTest>
#include <atomic>
#include <thread>

#include "panel/visibleChild.h"

namespace kelvar::cli {
namespace {

/// Draws the arrangement's photo "endless" until it is stopped, anything else at once.
class EndlessMockup : public Mockup {
 public:
  explicit EndlessMockup(bool canChangeShapes) : canChangeShapes_(canChangeShapes) {}

  Arrangement arrangement() const override { return {}; }
  bool canChangeShapes() const override { return canChangeShapes_; }
  void refresh(const Arrangement::Design&) override {}
  Result<void> save(const Arrangement&, const QString&) override { return {}; }

  std::atomic<bool> isDrawing = false;
  /// Ends a drawing as if it were done.
  std::atomic<bool> isDone = false;

 private:
  Drawing makeDrawing(const Arrangement& arrangement, Purpose,
                      const std::stop_token& stop) override {
    isDrawing = true;
    while (arrangement.photo == u"endless" && !stop.stop_requested() && !isDone) {
      std::this_thread::yield();
    }
    return {failure(Error::Kind::Io, "nothing to draw")};
  }
  Result<ImageRef> makeDesignImage(const Arrangement::Design&, int,
                                   const std::stop_token&) override {
    return nullptr;
  }

  bool canChangeShapes_;
};

Arrangement of(const char* photo) {
  Arrangement arrangement;
  arrangement.photo = QString::fromLatin1(photo);
  return arrangement;
}

class RenderWorkerTest : public testing::Test {
 protected:
  void SetUp() override {
    drawing_.onDrawn = [this](const RenderWorker::Frame& frame) {
      drawn_.append(frame.arrangement.photo);
    };
  }

  bool wait(const std::function<bool()>& until) { return QTest::qWaitFor(until, kMaxWait); }

  /// With its first drawing in progress.
  std::shared_ptr<EndlessMockup> drawingMockup(bool canChangeShapes) {
    auto mockup = std::make_shared<EndlessMockup>(canChangeShapes);
    drawing_.draw(mockup, of("endless"));
    EXPECT_TRUE(wait([&] { return mockup->isDrawing.load(); }));
    return mockup;
  }

  QStringList drawn_;
  RenderWorker drawing_;
};

TEST_F(RenderWorkerTest, StopsObsoleteDrawings) {
  const auto document = drawingMockup(false);
  drawing_.draw(document, of("next"));
  ASSERT_TRUE(wait([&] { return !drawing_.isBusy(); }));
  EXPECT_EQ(drawn_, QStringList({QStringLiteral("next")}));

  const auto photo = drawingMockup(true);
  drawing_.draw(std::make_shared<EndlessMockup>(true), of("another"));
  ASSERT_TRUE(wait([&] { return !drawing_.isBusy(); }));
  EXPECT_EQ(drawn_.mid(1), QStringList({QStringLiteral("another")}));
}

TEST_F(RenderWorkerTest, FinishesDrawingsWhileDragging) {
  const auto photo = drawingMockup(true);
  for (const char* step : {"left out", "last"}) {
    drawing_.draw(photo, of(step));
  }
  photo->isDone = true;
  ASSERT_TRUE(wait([&] { return !drawing_.isBusy(); }));
  EXPECT_EQ(drawn_, QStringList({QStringLiteral("endless"), QStringLiteral("last")}));
}

TEST_F(RenderWorkerTest, DropsWaitingWorkWhenStopped) {
  const auto photo = drawingMockup(true);
  int ran = 0;
  drawing_.run([&] { return ++ran; }, [](int) {});
  EXPECT_TRUE(drawing_.stop(kMaxWait));
  EXPECT_EQ(ran, 0) << "waiting work is dropped";

  RenderWorker stuck;
  std::atomic<bool> isOver = false;
  stuck.run(
      [&] {
        while (!isOver) std::this_thread::yield();
        return 0;
      },
      [](int) {});
  EXPECT_FALSE(stuck.stop(1));
  isOver = true;
}

}  // namespace
}  // namespace kelvar::cli
