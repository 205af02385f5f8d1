#pragma once

#include <QSizeF>
#include <QString>

#include "platform/Export.h"

namespace kelvar {

/// Facts about the machine and its system. Nothing is cached: each call asks the system again.
class KELVAR_EXPORT SystemInfo {
 public:
  SystemInfo() = delete;

  /// Language and country, as in "en-US".
  static QString locale();

  /// The name of the local time zone, as in "Europe/Berlin".
  static QString timeZone();

  struct Screen {
    /// In points.
    QSizeF size = {0, 0};
    /// Pixels per point along each axis.
    double density = 0;
  };
  /// The main screen; all 0 if there is none. Call on the main thread.
  static Screen screen();

  /// The machine's name according to its firmware, as in "ThinkPad X1"; empty if there is none.
  /// `root` is the root of the file system.
  static QString machineModel(const QString& root = QStringLiteral("/"));

  /// The processor's architecture, as in "x86_64".
  static QString architecture();

  /// For display, with the number as its second word: "Version 12 (Debian GNU/Linux 12
  /// (bookworm))".
  static QString operatingSystemVersionString();
};

}  // namespace kelvar
