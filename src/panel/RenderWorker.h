#pragma once

#include <QObject>
#include <QThreadPool>
#include <functional>
#include <memory>
#include <optional>
#include <stop_token>

#include "mockup/Mockup.h"
#include "panel/ImagePyramid.h"

namespace kelvar::cli {

/// Does a window's slow work on its own thread, one job at a time.
///
/// If several drawings are waiting, only the last one requested is made. A drawing in progress is
/// stopped when the next is requested, unless that is of the same mockup and its corners can be
/// dragged: then it is finished and shown, so that the image follows the mouse. Create and call it
/// on the main thread, where the results arrive; after stop(), none arrive.
class RenderWorker {
 public:
  /// A drawing for the window.
  struct Frame {
    std::shared_ptr<Mockup> mockup;
    Arrangement arrangement;
    Result<ImagePyramid> image{};
    /// The image without any design, if shapes can be changed.
    QImage background{};
    /// By the shape's id, a message for each shape that is not shown correctly.
    QMap<QString, QString> shapeProblems{};
  };

  RenderWorker();
  /// Stops and waits.
  ~RenderWorker();

  /// A drawing is ready. It is the last one if isBusy() is false.
  std::function<void(const Frame&)> onDrawn;

  void draw(const std::shared_ptr<Mockup>& mockup, const Arrangement& arrangement);
  /// Whether a drawing is in progress or waiting.
  bool isBusy() const { return isDrawing_ || waiting_; }

  /// Permanently drops waiting jobs and stops the one in progress. Returns false if that one has
  /// not ended within so many milliseconds; -1 waits without a limit.
  bool stop(int milliseconds);
  /// The token to check in work that can be stopped.
  std::stop_token stopToken() const { return everything_.get_token(); }

  /// Runs `work` after the jobs before it, then calls `done` with its result on the main thread.
  template <typename Work, typename Done>
  void run(Work work, Done done) {
    pool_.start([this, work = std::move(work), done = std::move(done)] {
      const auto deliver = [this, done, result = work()] {
        if (!everything_.stop_requested()) done(result);
      };
      QMetaObject::invokeMethod(&receiver_, deliver, Qt::QueuedConnection);
    });
  }

 private:
  struct Request {
    std::shared_ptr<Mockup> mockup;
    Arrangement arrangement;
  };

  void start();
  void finish(const Frame& frame);

  bool isDrawing_ = false;
  /// Stops the drawing in progress.
  std::stop_source drawing_;
  std::stop_source everything_;
  std::shared_ptr<Mockup> latest_;
  std::optional<Request> waiting_;
  /// Results posted to it are dropped when it is destroyed.
  QObject receiver_;
  QThreadPool pool_;
};

}  // namespace kelvar::cli
