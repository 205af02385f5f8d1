#include "archive/ValueClasses.h"

#include "archive/HRCoder.h"
#include "platform/plist/PropertyListForms.h"
#include "runtime/ClassInfo.h"

namespace kelvar {
namespace {

const QString kClassKey = QString::fromLatin1(HRCoderClassNameKey);
const QString kTimeKey = QStringLiteral("NS.time");
const QString kAddressKey = QStringLiteral("NS.relative");

/// Values have no object, but a class needs a type to describe.
struct Date {};
struct Url {};
struct Null {};

QVariant decodeDate(Coder& coder) {
  if (!coder.containsValueForKey(kTimeKey)) return {};
  const QDateTime date = dateFromReferenceSeconds(coder.decodeDouble(kTimeKey));
  return date.isValid() ? QVariant(date) : QVariant();
}

QVariant decodeUrl(Coder& coder) {
  const QUrl url(coder.decodeObject(kAddressKey).toString(), QUrl::StrictMode);
  return url.isValid() ? QVariant(url) : QVariant();
}

const ClassInfo& dateClass() {
  static const ClassInfo kClass = ClassInfoBuilder<Date>("NSDate").decodable(decodeDate);
  return kClass;
}

const ClassInfo& urlClass() {
  static const ClassInfo kClass = ClassInfoBuilder<Url>("NSURL").decodable(decodeUrl);
  return kClass;
}

const ClassInfo& nullClass() {
  static const ClassInfo kClass = ClassInfoBuilder<Null>("NSNull").decodable(
      [](Coder&) { return QVariant::fromValue(nullptr); });
  return kClass;
}

const ClassInfo::Registration kRegistered[] = {
    ClassInfo::Registration(&dateClass),
    ClassInfo::Registration(&urlClass),
    ClassInfo::Registration(&nullClass),
};

}  // namespace

QVariantMap encodedDate(const QDateTime& date) {
  return {{kClassKey, dateClass().name()}, {kTimeKey, referenceSeconds(date)}};
}

QVariantMap encodedUrl(const QUrl& url) {
  return {{kClassKey, urlClass().name()}, {kAddressKey, QString::fromUtf8(url.toEncoded())}};
}

QVariantMap encodedNull() { return {{kClassKey, nullClass().name()}}; }

}  // namespace kelvar
