#pragma once

#include <sys/types.h>

#include <QImage>
#include <QSizeF>
#include <QString>
#include <chrono>
#include <utility>

#include "platform/SvgFile.h"
#include "platform/svg/SvgTalk.h"

namespace kelvar {

/// An open file that is closed with its holder and that no other program inherits. Its number is
/// beyond those that a program begins with.
class OwnFile {
 public:
  OwnFile() = default;
  /// Takes over `file`, which may be -1: then errno says why.
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

/// kelvar-svg at work on one design. To be called in this order; killed with its holder. Each call
/// gives an error when the design is at fault, when the program takes more than its limits, ends
/// otherwise, or cannot be started.
class SvgProcess {
 public:
  explicit SvgProcess(const SvgLimits& limits)
      : limits_(limits), deadline_(Clock::now() + limits.time) {}
  ~SvgProcess();
  SvgProcess(const SvgProcess&) = delete;
  SvgProcess& operator=(const SvgProcess&) = delete;

  /// None, or why it cannot.
  QString start(const QByteArray& design);
  QSizeF naturalSize(QString* error);
  QImage draw(const QSize& size, QString* error);

 private:
  using Clock = std::chrono::steady_clock;

  /// 0, or the system's number for what went wrong.
  int spawn(const OwnFile& socket, const OwnFile& design);
  /// The next report, when it is of that kind.
  svg::Report report(svg::Report::Kind kind, QString* error);
  /// Why the program said nothing more.
  QString ending();
  QString takesTooLong() const;

  SvgLimits limits_;
  Clock::time_point deadline_;
  OwnFile socket_, pixels_;
  pid_t child_ = 0;
};

}  // namespace kelvar
