#pragma once

#include "ui/View.h"

namespace kelvar {

/// Forms: what Qt Designer writes, read at run time.
///
/// A form is looked for in the folder that is asked for, then in the one that the environment
/// variable KELVAR_INTERFACE_DIR names, then among those that are built in. One that cannot be read
/// is passed over, with a log line.
///
/// A widget named as a property of the owner that takes a view (an outlet) is put there. One whose
/// dynamic property "action" is a selector of the owner calls it when it is used, with itself as
/// the argument.
class InterfaceFile {
 public:
  InterfaceFile() = delete;

  static bool exists(const QString& name, const QString& folder);
  /// Null when it cannot be read.
  static ViewRef load(const QString& name, const QString& folder, Object& owner);

  /// Calls an operation of `target` with `sender`, while `target` lives. What it throws ends here,
  /// with a log line: event loops do not carry exceptions.
  static void sendAction(const std::weak_ptr<Object>& target, const QString& selector,
                         QWidget* sender);
};

}  // namespace kelvar
