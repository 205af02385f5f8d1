#pragma once

#include "ui/View.h"

namespace kelvar {

/// Forms: what Qt Designer writes, read at run time.
///
/// A form is looked for in the folder that is asked for, else in the one that the environment
/// variable KELVAR_INTERFACE_DIR names, else among those that are built in. A form from a folder
/// that is missing or cannot be read is replaced by the built-in one of its name, with a log line.
///
/// A widget named as a property of the owner that takes a view (an outlet) is put there. One whose
/// dynamic property "action" is a selector of the owner calls it when it is used, with itself as
/// the argument. What an action throws ends there, with a log line: event loops do not carry
/// exceptions.
class InterfaceFile {
 public:
  InterfaceFile() = delete;

  static bool exists(const QString& name, const QString& folder);
  /// Null when it cannot be read.
  static ViewRef load(const QString& name, const QString& folder, Object& owner);
};

}  // namespace kelvar
