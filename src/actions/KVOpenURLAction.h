#pragma once

#include "actions/KVAction.h"

namespace kelvar {

/// Opens an address with the user's default program for it; see `Workspace` for what is opened.
class KELVAR_EXPORT KVOpenURLAction : public KVAction {
 public:
  static const ClassInfo& theClass();
  const ClassInfo& classInfo() const override { return theClass(); }

  static std::shared_ptr<KVOpenURLAction> openURL(const QString& urlString);

  /// False when the string is no address, or nothing could be asked to open it.
  bool exec() override;

 private:
  QString urlString_;
};

}  // namespace kelvar
