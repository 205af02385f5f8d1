#pragma once

#include <QVariant>

#include "platform/Export.h"

namespace kelvar {

/// What is known about this plug-in: its Info.plist, which is built in. Safe from any thread.
class KELVAR_EXPORT Bundle {
 public:
  Bundle() = delete;

  /// Invalid when Info.plist has no such key.
  static QVariant objectForInfoDictionaryKey(const QString& key);

  /// The address of a server that the plug-in talks to, such as "https://api.example.com", without
  /// a slash at its end: what the environment variable says, otherwise what Info.plist has under
  /// `key`. Null when there is none, as by default: then nothing is to be sent.
  static QString serverAddress(const char* variable, const QString& key);
};

}  // namespace kelvar
