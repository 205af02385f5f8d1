#pragma once

#include <QString>
#include <memory>

#include "ui/View.h"

namespace kelvar {

/// Shows one form: loads it when its view is first requested, and connects it to itself.
///
/// A class derived from this and from `Object` describes its outlets as properties and its actions
/// as operations with one argument, the sender. See `InterfaceFile` for how a form names them.
/// Main thread only.
class KELVAR_EXPORT ViewController {
 public:
  virtual ~ViewController();

  /// The name of the form, without ".ui".
  QString nibName() const { return nibName_; }

  /// The first call loads the view and then calls `viewDidLoad`. The widget belongs to the
  /// controller until it has a parent widget. Null if the form cannot be read, with a log line, and
  /// after the parent has deleted it.
  QWidget* view();
  ViewRef viewObject();
  bool isViewLoaded() const { return view_ != nullptr; }

  virtual void viewDidLoad();

 protected:
  /// `bundle` is the form's folder; if null, `InterfaceFile` searches its default places.
  ViewController(const QString& nibName, const QString& bundle);

 private:
  QString nibName_;
  QString bundle_;
  ViewRef view_;
};

}  // namespace kelvar
