#pragma once

#include <QGuiApplication>
#include <optional>

namespace kelvar {

/// Creates an offscreen application for its own lifetime, unless there already is an application.
/// Text requires fonts, and without a GUI application, Qt aborts the process when they are used. If
/// there is a plain QCoreApplication, none is created, and this object converts to false. Create on
/// the main thread, or on any thread if there is an application.
class OffscreenGuiApplication {
 public:
  OffscreenGuiApplication() {
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
