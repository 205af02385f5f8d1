#pragma once

#include "actions/KVAction.h"

namespace kelvar {

/// Opens a URL with the user's default program; see `Workspace` for the URLs that are opened.
class KELVAR_EXPORT KVOpenURLAction : public KVAction {
 public:
  static const ClassInfo& staticClassInfo();
  const ClassInfo& classInfo() const override { return staticClassInfo(); }

  static std::shared_ptr<KVOpenURLAction> openURL(const QString& urlString);

  /// False if the string is not a valid URL or there is no program to open it.
  bool exec() override;

 private:
  QString urlString_;
};

}  // namespace kelvar
