#pragma once

#include <QObject>
#include <QThreadPool>
#include <functional>
#include <memory>
#include <optional>
#include <stop_token>

#include "app/panel/PicturePyramid.h"
#include "host/Mockup.h"

namespace kelvar::app {

/// Does the work of a window that must not wait for it, in turn, on one thread of its own.
///
/// A drawing that is still waiting when the next is asked for is left out. One that is being made
/// is stopped, unless the next is of the same mockup and its corners can be dragged: then it is
/// finished and shown, so that something moves under the hand. Made and called on the main thread,
/// where the answers arrive; after stop() none does.
class BackgroundDrawing {
 public:
  struct Result {
    std::shared_ptr<Mockup> mockup;
    Arrangement arrangement;
    PicturePyramid picture;
    /// The picture without any design, where shapes can be changed.
    QImage ground;
    QString problem;
    QMap<QString, QString> shapeProblems;
  };

  BackgroundDrawing();
  /// Stops and waits.
  ~BackgroundDrawing();

  /// A drawing is ready. The last one when not isBusy().
  std::function<void(const Result&)> didDraw;

  void draw(const std::shared_ptr<Mockup>& mockup, const Arrangement& arrangement);
  bool isBusy() const { return isDrawing_ || waiting_; }

  /// Drops what waits and stops what is under way, for good. False where that has not ended within
  /// so many milliseconds; -1 waits for it.
  bool stop(int milliseconds);
  /// For work that can be stopped.
  std::stop_token stopToken() const { return everything_.get_token(); }

  /// `work` in its turn; then what it returned, on the main thread.
  template <typename Work, typename Done>
  void run(Work work, Done done) {
    pool_.start([this, work = std::move(work), done = std::move(done)] {
      auto answer = work();
      const auto tell = [this, done, answer = std::move(answer)] {
        if (!everything_.stop_requested()) done(answer);
      };
      QMetaObject::invokeMethod(&answers_, tell, Qt::QueuedConnection);
    });
  }

 private:
  struct Request {
    std::shared_ptr<Mockup> mockup;
    Arrangement arrangement;
  };

  void start();
  void finish(const Result& result);

  bool isDrawing_ = false;
  /// Stops the drawing that is being made.
  std::stop_source drawing_;
  std::stop_source everything_;
  std::shared_ptr<Mockup> latest_;
  std::optional<Request> waiting_;
  /// What is posted to it goes with it.
  QObject answers_;
  QThreadPool pool_;
};

}  // namespace kelvar::app
