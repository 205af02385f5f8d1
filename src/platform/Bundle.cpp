#include "platform/Bundle.h"

#include "InfoPlist.h"
#include "platform/plist/PropertyList.h"

namespace kelvar {
namespace {

QVariantMap& hostInformationSlot() {
  static QVariantMap information;
  return information;
}

}  // namespace

QVariant Bundle::objectForInfoDictionaryKey(const QString& key) {
  static const QVariantMap kInformation = [] {
    const QByteArray bytes = QByteArray::fromRawData(kInfoPlist, sizeof kInfoPlist - 1);
    const Result<QVariant> information = PropertyList::read(bytes);
    Q_ASSERT_X(information, "Info.plist", information.error().message.c_str());
    return information->toMap();
  }();
  return kInformation.value(key);
}

QVariantMap Bundle::hostInformation() { return hostInformationSlot(); }

void Bundle::setHostInformation(const QVariantMap& information) {
  hostInformationSlot() = information;
}

QString Bundle::serverAddress(const char* variable, const QString& key) {
  QString address = qEnvironmentVariable(variable);
  if (address.isEmpty()) address = objectForInfoDictionaryKey(key).toString();
  while (address.endsWith(u'/')) address.chop(1);
  return address.isEmpty() ? QString() : address;
}

}  // namespace kelvar
