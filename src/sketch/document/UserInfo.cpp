#include "sketch/document/UserInfo.h"

namespace kelvar {
namespace {

constexpr const char* kUserInfo = "userInfo";

}  // namespace

QVariantMap userInfoOf(const SketchJson& owner, const QString& identifier) {
  const SketchJson& all = get(owner, kUserInfo);
  return variantFromSketchJson(get(all, identifier.toUtf8().constData())).toMap();
}

void setUserInfo(SketchJson* owner, const QString& identifier, const QVariantMap& values) {
  SketchJson& all = (*owner)[kUserInfo];
  if (!all.is_object()) all = SketchJson::object();
  if (values.isEmpty()) {
    all.erase(identifier.toStdString());
    if (all.empty()) owner->erase(kUserInfo);
  } else {
    all[identifier.toStdString()] = sketchJsonFromVariant(values);
  }
}

}  // namespace kelvar
