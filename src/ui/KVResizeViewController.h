#pragma once

#include "ui/KVViewController.h"

namespace kelvar {

/// The row of a layer in a wide layout, on one line: its form is "KVResizeViewController".
class KELVAR_EXPORT KVResizeViewController : public KVViewController {
 public:
  static const ClassInfo& staticClassInfo();
  const ClassInfo& classInfo() const override { return staticClassInfo(); }

  /// Null if there is no such form.
  static std::shared_ptr<KVResizeViewController> initWithNibName(const QString& nibName = {},
                                                                 const QString& bundle = {});

  /// Use `initWithNibName`.
  KVResizeViewController(const QString& nibName, const QString& bundle);

  void viewDidLoad() override;
};

}  // namespace kelvar
