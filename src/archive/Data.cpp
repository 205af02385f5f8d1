#include "archive/Data.h"

#include "runtime/ClassInfo.h"

namespace kelvar {
namespace {

const QString kBytes = QStringLiteral("NS.data");

const ClassInfo::Registration kRegistered(&Data::staticClassInfo);

}  // namespace

const ClassInfo& Data::staticClassInfo() {
  static const ClassInfo kClass =
      ClassInfoBuilder<Data>("NSData")
          .initializer(
              "init", [] { return std::make_shared<Data>(); }, "Creates an object without bytes.")
          .property("bytes", &Data::bytes, "The bytes.")
          .decodable();
  return kClass;
}

std::shared_ptr<Data> Data::initWithCoder(Coder& coder) {
  return std::make_shared<Data>(coder.decodeBytes(kBytes));
}

void Data::encodeWithCoder(Coder& coder) const { coder.encodeBytes(bytes_, kBytes); }

}  // namespace kelvar
