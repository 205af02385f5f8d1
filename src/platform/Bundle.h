#pragma once

#include <QVariantMap>

#include "platform/Export.h"

namespace kelvar {

/// What is known about this plug-in, its Info.plist, which is built in, and about its host. Safe
/// from any thread where nothing else is said.
class KELVAR_EXPORT Bundle {
 public:
  Bundle() = delete;

  /// Invalid when Info.plist has no such key.
  static QVariant objectForInfoDictionaryKey(const QString& key);

  /// What is known about the program that hosts the plug-in, under the keys of its Info.plist.
  /// Empty until `setHostInformation` was called. On the main thread.
  static QVariantMap hostInformation();
  static void setHostInformation(const QVariantMap& information);

  /// The address of a server that the plug-in talks to, such as "https://api.example.com", without
  /// a slash at its end: what the environment variable says, otherwise what Info.plist has under
  /// `key`. Null when there is none, as by default: then nothing is to be sent.
  static QString serverAddress(const char* variable, const QString& key);
};

}  // namespace kelvar
