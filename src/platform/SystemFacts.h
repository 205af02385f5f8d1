#pragma once

#include <QSizeF>
#include <QString>

#include "platform/Export.h"

namespace kelvar {

/// What the system says of itself. Nothing is kept: each call asks anew.
class KELVAR_EXPORT SystemFacts {
 public:
  SystemFacts() = delete;

  /// Language and country, as in "en-US".
  static QString locale();

  /// The name of the local time zone, as in "Europe/Berlin".
  static QString timeZone();

  struct Screen {
    /// In points.
    QSizeF size = {0, 0};
    /// Pixels in a point's side.
    double density = 0;
  };
  /// The main screen; all 0 when there is none. On the main thread.
  static Screen screen();

  /// What the firmware calls the machine, as in "ThinkPad X1"; empty when it does not say. `root`
  /// is where the system's files are.
  static QString machineModel(const QString& root = QStringLiteral("/"));

  /// Of the processor, as in "x86_64".
  static QString architecture();

  /// For people, with the number as its second word: "Version 12 (Debian GNU/Linux 12 (bookworm))".
  static QString operatingSystemVersionString();
};

}  // namespace kelvar
