#pragma once

#include "ui/KVViewController.h"

namespace kelvar {

/// The same row in a second layout, in one line: its form is "KVResizeViewController".
class KELVAR_EXPORT KVResizeViewController : public KVViewController {
 public:
  static const ClassInfo& theClass();
  const ClassInfo& classInfo() const override { return theClass(); }

  /// Null when there is no such form.
  static std::shared_ptr<KVResizeViewController> initWithNibName(const QString& nibName = {},
                                                                 const QString& bundle = {});

  /// Use `initWithNibName`.
  KVResizeViewController(const QString& nibName, const QString& bundle);

  void viewDidLoad() override;
};

}  // namespace kelvar
