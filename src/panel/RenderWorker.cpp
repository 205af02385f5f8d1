#include "panel/RenderWorker.h"

#include <utility>

namespace kelvar::cli {
namespace {

RenderWorker::Frame drawFrame(const std::shared_ptr<Mockup>& mockup, const Arrangement& arrangement,
                              const std::stop_token& stop) {
  RenderWorker::Frame frame{.mockup = mockup, .arrangement = arrangement};
  if (mockup->canChangeShapes()) {
    Arrangement bare = arrangement;
    bare.shapes.clear();
    const Mockup::Drawing background = mockup->draw(bare, Mockup::Purpose::Window, stop);
    if (background.image) frame.background = (*background.image)->pixels();
  }
  const Mockup::Drawing drawing = mockup->draw(arrangement, Mockup::Purpose::Window, stop);
  frame.image =
      drawing.image.map([](const ImageRef& image) { return ImagePyramid(image->pixels()); });
  frame.shapeProblems = drawing.shapeProblems;
  return frame;
}

}  // namespace

RenderWorker::RenderWorker() { pool_.setMaxThreadCount(1); }

RenderWorker::~RenderWorker() { stop(-1); }

bool RenderWorker::stop(int milliseconds) {
  pool_.clear();
  waiting_.reset();
  everything_.request_stop();
  drawing_.request_stop();
  return pool_.waitForDone(milliseconds);
}

void RenderWorker::draw(const std::shared_ptr<Mockup>& mockup, const Arrangement& arrangement) {
  const bool followsMouse = mockup == latest_ && mockup->canChangeShapes();
  if (isDrawing_ && !followsMouse) drawing_.request_stop();
  latest_ = mockup;
  waiting_ = Request{mockup, arrangement};
  if (!isDrawing_) start();
}

void RenderWorker::start() {
  const Request request = *std::exchange(waiting_, std::nullopt);
  isDrawing_ = true;
  drawing_ = std::stop_source();
  run(
      [request, stop = drawing_.get_token()] {
        return drawFrame(request.mockup, request.arrangement, stop);
      },
      [this](const Frame& frame) { finish(frame); });
}

void RenderWorker::finish(const Frame& frame) {
  isDrawing_ = false;
  const bool isCurrent = !drawing_.stop_requested();
  if (waiting_) start();
  if (isCurrent && onDrawn) onDrawn(frame);
}

}  // namespace kelvar::cli
