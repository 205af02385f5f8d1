#pragma once

#include <QUrl>

#include "platform/Export.h"

namespace kelvar {

/// The user's desktop.
class KELVAR_EXPORT Workspace {
 public:
  Workspace() = delete;

  /// Opens a URL with the user's default program for it. Returns whether there was one.
  ///
  /// URLs come from servers, so only http, https and mailto are opened, and mailto only without
  /// attachments; others are refused with a log line, as is what `Permissions` does not allow.
  /// Requires a QGuiApplication; call on its thread.
  static bool openURL(const QUrl& url);
};

}  // namespace kelvar
