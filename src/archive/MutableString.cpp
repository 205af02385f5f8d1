#include "archive/MutableString.h"

#include "runtime/ClassInfo.h"

namespace kelvar {
namespace {

const QString kString = QStringLiteral("NS.string");

const ClassInfo::Registration kRegistered(&MutableString::staticClassInfo);

}  // namespace

const ClassInfo& MutableString::staticClassInfo() {
  static const ClassInfo kClass =
      ClassInfoBuilder<MutableString>("NSMutableString")
          .initializer(
              "init", [] { return std::make_shared<MutableString>(); }, "Creates an empty string.")
          .initializer(
              "initWithString:",
              [](const QString& string) { return std::make_shared<MutableString>(string); },
              "Creates an object with a copy of the string.")
          .property("string", &MutableString::string, &MutableString::setString, "The characters.")
          .decodable();
  return kClass;
}

std::shared_ptr<MutableString> MutableString::initWithCoder(Coder& coder) {
  const QVariant string = coder.decodeObject(kString);
  return string.typeId() == QMetaType::QString ? std::make_shared<MutableString>(string.toString())
                                               : nullptr;
}

void MutableString::encodeWithCoder(Coder& coder) const { coder.encodeObject(string_, kString); }

}  // namespace kelvar
