#include "app/panel/BackgroundDrawing.h"

#include <utility>

namespace kelvar::app {
namespace {

BackgroundDrawing::Result drawNow(const std::shared_ptr<Mockup>& mockup,
                                  const Arrangement& arrangement, const std::stop_token& stop) {
  BackgroundDrawing::Result result{mockup, arrangement, {}, {}, {}, {}};
  if (mockup->canChangeShapes()) {
    Arrangement bare = arrangement;
    bare.shapes.clear();
    const Mockup::Drawing ground = mockup->draw(bare, Mockup::Purpose::Window, stop);
    if (ground.picture) result.ground = ground.picture->pixels();
  }
  const Mockup::Drawing drawing = mockup->draw(arrangement, Mockup::Purpose::Window, stop);
  if (drawing.picture) result.picture = PicturePyramid(drawing.picture->pixels());
  result.problem = drawing.problem;
  result.shapeProblems = drawing.shapeProblems;
  return result;
}

}  // namespace

BackgroundDrawing::BackgroundDrawing() { pool_.setMaxThreadCount(1); }

BackgroundDrawing::~BackgroundDrawing() { stop(-1); }

bool BackgroundDrawing::stop(int milliseconds) {
  pool_.clear();
  waiting_.reset();
  everything_.request_stop();
  drawing_.request_stop();
  return pool_.waitForDone(milliseconds);
}

void BackgroundDrawing::draw(const std::shared_ptr<Mockup>& mockup,
                             const Arrangement& arrangement) {
  const bool movesUnderTheHand = mockup == latest_ && mockup->canChangeShapes();
  if (isDrawing_ && !movesUnderTheHand) drawing_.request_stop();
  latest_ = mockup;
  waiting_ = Request{mockup, arrangement};
  if (!isDrawing_) start();
}

void BackgroundDrawing::start() {
  const Request request = *std::exchange(waiting_, std::nullopt);
  isDrawing_ = true;
  drawing_ = std::stop_source();
  run([request,
       stop = drawing_.get_token()] { return drawNow(request.mockup, request.arrangement, stop); },
      [this](const Result& result) { finish(result); });
}

void BackgroundDrawing::finish(const Result& result) {
  isDrawing_ = false;
  const bool isWanted = !drawing_.stop_requested();
  if (waiting_) start();
  if (isWanted && didDraw) didDraw(result);
}

}  // namespace kelvar::app
