#pragma once

#include <sys/types.h>

#include <QImage>
#include <QSizeF>
#include <chrono>
#include <string>
#include <utility>

#include "pixels/Result.h"
#include "platform/image/renderer/RendererTalk.h"

namespace kelvar {

/// Owns an open file descriptor, which child processes do not inherit. Its number is higher than
/// those of the standard streams and of a renderer's descriptors.
class OwnFile {
 public:
  OwnFile() = default;
  /// Takes ownership of `file`, which may be -1; then errno tells why.
  explicit OwnFile(int file);
  ~OwnFile() { close(); }
  OwnFile(OwnFile&& other) noexcept : file_(std::exchange(other.file_, -1)) {}
  OwnFile& operator=(OwnFile&& other) noexcept;

  explicit operator bool() const { return file_ >= 0; }
  int number() const { return file_; }
  void close();

 private:
  int file_ = -1;
};

/// A program that draws files of one format.
struct Renderer {
  const char* program;  ///< Its file name.
  const char* format;   ///< Such as "SVG", for messages.
};

/// The time and memory that drawing one file may take.
struct RendererLimits {
  std::chrono::seconds time{10};
  qint64 memory = qint64{1} << 30;  ///< In bytes, besides the image's pixels.
};

/// A renderer's process for one design. Call start() and open(), then either draw() or, as often as
/// needed, data(). The process is killed when the object is destroyed. Each call fails if the
/// design is invalid, or if the process cannot be started, exceeds its limits or ends for another
/// reason.
class RendererProcess {
 public:
  RendererProcess(const Renderer& renderer, const RendererLimits& limits)
      : renderer_(renderer), limits_(limits) {}
  ~RendererProcess();
  RendererProcess(const RendererProcess&) = delete;
  RendererProcess& operator=(const RendererProcess&) = delete;

  Result<void> start(const QByteArray& design);
  /// The number of pages and the natural size of the first one.
  Result<renderer::Report> open();
  Result<QImage> draw(const QSize& size);
  Result<QByteArray> data(const renderer::Wanted& wanted);

 private:
  using Clock = std::chrono::steady_clock;

  /// 0, or the system's error number.
  int spawn(const OwnFile& socket, const OwnFile& design);
  Result<renderer::Report> request(const renderer::Wanted& wanted);
  /// Waits for the next report. Fails unless it is of the given kind.
  Result<renderer::Report> report(renderer::Report::Kind kind);
  /// Why the process ended without a report.
  tl::unexpected<Error> unexpectedEnd();
  tl::unexpected<Error> timeExceeded() const;
  std::string format() const { return renderer_.format; }

  Renderer renderer_;
  RendererLimits limits_;
  OwnFile socket_, output_;
  pid_t child_ = 0;
};

}  // namespace kelvar
