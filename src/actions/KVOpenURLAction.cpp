#include "actions/KVOpenURLAction.h"

#include "platform/Workspace.h"
#include "runtime/ClassInfo.h"

namespace kelvar {
namespace {

const ClassInfo::Registration kRegistered(&KVOpenURLAction::theClass);

}  // namespace

const ClassInfo& KVOpenURLAction::theClass() {
  static const ClassInfo kClass =
      Description<KVOpenURLAction, KVAction>("KVOpenURLAction")
          .initialiser("init", [] { return std::make_shared<KVOpenURLAction>(); })
          .classOperation("openURL:", &KVOpenURLAction::openURL);
  return kClass;
}

std::shared_ptr<KVOpenURLAction> KVOpenURLAction::openURL(const QString& urlString) {
  const auto action = std::make_shared<KVOpenURLAction>();
  action->urlString_ = urlString;
  return action;
}

bool KVOpenURLAction::exec() {
  const QUrl url(urlString_, QUrl::StrictMode);
  return url.isValid() && Workspace::openURL(url);
}

}  // namespace kelvar
