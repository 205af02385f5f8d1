#pragma once

#include <QString>
#include <memory>

#include "ui/View.h"

namespace kelvar {

/// What shows one form: loads it when its view is first asked for and connects it to itself.
///
/// A class derived from this and from `Object` describes its outlets as properties and its actions
/// as operations with one argument, the sender. See `InterfaceFile` for how a form names them.
/// Main thread only.
class KELVAR_EXPORT ViewController {
 public:
  virtual ~ViewController();

  /// The name of the form, without ".ui".
  QString nibName() const { return nibName_; }

  /// Loaded by the first call, which then runs `viewDidLoad`. The widget belongs to its parent
  /// widget once it has one, until then to the controller. Null when the form cannot be read, with
  /// a log line, and once the parent has deleted it.
  QWidget* view();
  ViewRef viewObject();
  bool isViewLoaded() const { return view_ != nullptr; }

  virtual void viewDidLoad();

 protected:
  /// Without a name, the form is the one that is called as the class. `bundle` is the folder that
  /// it lies in, none for where `InterfaceFile` looks.
  ViewController(const QString& nibName, const QString& bundle);

 private:
  QString nibName_;
  QString bundle_;
  ViewRef view_;
};

}  // namespace kelvar
