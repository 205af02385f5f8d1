#pragma once

#include <QVariantMap>

#include "platform/Export.h"

namespace kelvar {

/// The plug-in's Info.plist, which is compiled in, and properties of its host application. Safe
/// from any thread unless stated otherwise.
class KELVAR_EXPORT Bundle {
 public:
  Bundle() = delete;

  /// Invalid when Info.plist has no such key.
  static QVariant objectForInfoDictionaryKey(const QString& key);

  /// Properties of the host application, under the keys of its Info.plist. Empty until
  /// `setHostInformation` is called. Use on the main thread.
  static QVariantMap hostInformation();
  static void setHostInformation(const QVariantMap& information);

  /// The URL of a server that the plug-in uses, such as "https://api.example.com", without a final
  /// slash: the value of the environment variable, or else that of `key` in Info.plist. Null if
  /// there is none, as by default: then nothing may be sent.
  static QString serverAddress(const char* variable, const QString& key);
};

}  // namespace kelvar
