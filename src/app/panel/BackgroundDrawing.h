#pragma once

#include <QObject>
#include <QThreadPool>
#include <functional>
#include <memory>
#include <optional>

#include "app/panel/PicturePyramid.h"
#include "host/Mockup.h"

namespace kelvar::app {

/// Does the work of a window that must not wait for it, in turn, on one thread of its own.
///
/// A drawing that is still waiting when the next is asked for is left out. One that is being made
/// is finished and shown, so that something moves while a corner is dragged, unless it is of
/// another mockup than the last one asked for. Made and called on the main thread, where the
/// answers arrive; after the destructor none does.
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
  /// Waits for what is under way, and drops the rest.
  ~BackgroundDrawing();

  /// A drawing is ready. The last one when not isBusy().
  std::function<void(const Result&)> didDraw;

  void draw(const std::shared_ptr<Mockup>& mockup, const Arrangement& arrangement);
  bool isBusy() const { return isDrawing_ || waiting_; }

  /// `work` in its turn; then what it returned, on the main thread.
  template <typename Work, typename Done>
  void run(Work work, Done done) {
    pool_.start([this, work = std::move(work), done = std::move(done)] {
      auto answer = work();
      QMetaObject::invokeMethod(
          &answers_, [done, answer = std::move(answer)] { done(answer); }, Qt::QueuedConnection);
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
  std::shared_ptr<Mockup> latest_;
  std::optional<Request> waiting_;
  /// What is posted to it goes with it.
  QObject answers_;
  QThreadPool pool_;
};

}  // namespace kelvar::app
