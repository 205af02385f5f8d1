#include "app/panel/BackgroundDrawing.h"

#include <utility>

namespace kelvar::app {
namespace {

BackgroundDrawing::Result drawNow(const std::shared_ptr<Mockup>& mockup,
                                  const Arrangement& arrangement) {
  BackgroundDrawing::Result result{mockup, arrangement, {}, {}, {}, {}};
  if (mockup->canChangeShapes()) {
    Arrangement bare = arrangement;
    bare.shapes.clear();
    const Mockup::Drawing ground = mockup->draw(bare, Mockup::Purpose::Window);
    if (ground.picture) result.ground = ground.picture->pixels();
  }
  const Mockup::Drawing drawing = mockup->draw(arrangement, Mockup::Purpose::Window);
  if (drawing.picture) result.picture = PicturePyramid(drawing.picture->pixels());
  result.problem = drawing.problem;
  result.shapeProblems = drawing.shapeProblems;
  return result;
}

}  // namespace

BackgroundDrawing::BackgroundDrawing() { pool_.setMaxThreadCount(1); }

BackgroundDrawing::~BackgroundDrawing() {
  pool_.clear();
  pool_.waitForDone();
}

void BackgroundDrawing::draw(const std::shared_ptr<Mockup>& mockup,
                             const Arrangement& arrangement) {
  latest_ = mockup;
  waiting_ = Request{mockup, arrangement};
  if (!isDrawing_) start();
}

void BackgroundDrawing::start() {
  const Request request = *std::exchange(waiting_, std::nullopt);
  isDrawing_ = true;
  run([request] { return drawNow(request.mockup, request.arrangement); },
      [this](const Result& result) { finish(result); });
}

void BackgroundDrawing::finish(const Result& result) {
  isDrawing_ = false;
  if (waiting_) start();
  if (result.mockup == latest_ && didDraw) didDraw(result);
}

}  // namespace kelvar::app
