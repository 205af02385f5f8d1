#pragma once

#include "ui/View.h"

namespace kelvar {

/// Loads forms, which are Qt Designer's .ui files, at run time.
///
/// Searches the requested folder, then the folder that the environment variable
/// KELVAR_INTERFACE_DIR names, then the built-in forms. A form that cannot be read is skipped, with
/// a log line.
///
/// A widget with the name of a property of the owner that takes a view (an outlet) is assigned to
/// it. A widget whose dynamic property "action" is a selector of the owner calls it when it is
/// used, with itself as the argument.
class InterfaceFile {
 public:
  InterfaceFile() = delete;

  static bool exists(const QString& name, const QString& folder);
  /// Null if there is no form that can be read.
  static ViewRef load(const QString& name, const QString& folder, Object& owner);

  /// Calls an operation of `target` with `sender`, if `target` still exists. Exceptions end here
  /// with a log line, as they must not pass through the event loop.
  static void sendAction(const std::weak_ptr<Object>& target, const QString& selector,
                         QWidget* sender);
};

}  // namespace kelvar
