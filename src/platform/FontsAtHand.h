#pragma once

#include <QGuiApplication>
#include <optional>

namespace kelvar {

/// Text needs fonts, and fonts need an application with a platform, without which Qt ends the
/// process. Where there is no application at all, one without a screen serves for the time being;
/// beside a plain QCoreApplication there is no place for one. Main thread, or any
/// other while there is an application.
class FontsAtHand {
 public:
  FontsAtHand() {
    if (!QCoreApplication::instance()) application_.emplace(count_, arguments_);
  }
  explicit operator bool() const {
    return qobject_cast<QGuiApplication*>(QCoreApplication::instance()) != nullptr;
  }

 private:
  char name_[7] = "kelvar", option_[10] = "-platform", platform_[10] = "offscreen";
  char* arguments_[4] = {name_, option_, platform_, nullptr};
  int count_ = 3;
  std::optional<QGuiApplication> application_;
};

}  // namespace kelvar
