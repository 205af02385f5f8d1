#include "scripting/foundation/FoundationReference.h"

#include "scripting/bridge/EngineContext.h"

namespace kelvar {

QString FoundationReference::markdown() {
  const JSGlobalContextRef global = JSGlobalContextCreate(nullptr);
  QString page;
  {
    const EngineContext context(global);
    page = context.text(context.callPrelude("reference", {}));
    // Before the object that its functions belong to.
    JSGlobalContextRelease(global);
  }
  return page;
}

}  // namespace kelvar
