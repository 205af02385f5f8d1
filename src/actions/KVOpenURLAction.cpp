#include "actions/KVOpenURLAction.h"

#include <QUrl>
#include <stdexcept>

#include "platform/Workspace.h"
#include "runtime/ClassInfo.h"

namespace kelvar {
namespace {

const ClassInfo::Registration kRegistered(&KVOpenURLAction::staticClassInfo);

/// Scripts may pass the URL as a string or as an object.
std::shared_ptr<KVOpenURLAction> openAddress(const QVariant& address) {
  if (address.typeId() == QMetaType::QUrl) {
    return KVOpenURLAction::openURL(address.toUrl().toString(QUrl::FullyEncoded));
  }
  const std::optional<QString> string = fromVariant<QString>(address);
  if (!string) throw std::invalid_argument("openURL: takes a string or an address");
  return KVOpenURLAction::openURL(*string);
}

}  // namespace

const ClassInfo& KVOpenURLAction::staticClassInfo() {
  static const ClassInfo kClass =
      ClassInfoBuilder<KVOpenURLAction, KVAction>("KVOpenURLAction")
          .initializer(
              "init", [] { return std::make_shared<KVOpenURLAction>(); },
              "Creates an action without a URL.")
          .classOperation("openURL:", openAddress,
                          "Creates an action that opens a URL, given as a string or an NSURL, with "
                          "the user's default program.");
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
