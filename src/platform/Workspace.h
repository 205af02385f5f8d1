#pragma once

#include <QUrl>

#include "platform/Export.h"

namespace kelvar {

/// The user's desktop.
class KELVAR_EXPORT Workspace {
 public:
  Workspace() = delete;

  /// Opens an address with the user's default program for it, and says whether one was asked.
  ///
  /// Addresses come from servers, so only http, https and mailto are opened, and no mail that
  /// brings files along; the rest is refused with a log line. Wants a QGuiApplication and its
  /// thread.
  static bool openURL(const QUrl& url);
};

}  // namespace kelvar
