#include "archive/MutableString.h"

#include "runtime/ClassInfo.h"

namespace kelvar {
namespace {

const QString kString = QStringLiteral("NS.string");

const ClassInfo::Registration kRegistered(&MutableString::theClass);

}  // namespace

const ClassInfo& MutableString::theClass() {
  static const ClassInfo kClass =
      Description<MutableString>("NSMutableString")
          .initialiser("init", [] { return std::make_shared<MutableString>(); })
          .initialiser(
              "initWithString:",
              [](const QString& string) { return std::make_shared<MutableString>(string); })
          .property("string", &MutableString::string, &MutableString::setString)
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
