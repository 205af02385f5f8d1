#include "archive/MutableData.h"

#include "runtime/ClassInfo.h"

namespace kelvar {
namespace {

const ClassInfo::Registration kRegistered(&MutableData::staticClassInfo);

}  // namespace

const ClassInfo& MutableData::staticClassInfo() {
  static const ClassInfo kClass =
      // Scripts know bytes as values, so that they have no class for `Data`.
      ClassInfoBuilder<MutableData>("NSMutableData")
          .classOperation(
              "data", [] { return std::make_shared<MutableData>(); },
              "Creates an object without bytes.")
          .classOperation(
              "dataWithData:",
              [](const QByteArray& bytes) { return std::make_shared<MutableData>(bytes); },
              "Creates an object with a copy of the bytes.")
          .initializer(
              "init", [] { return std::make_shared<MutableData>(); },
              "Creates an object without bytes.")
          .property("bytes", &MutableData::bytes, &MutableData::setBytes, "The bytes.")
          .operation(
              "length", [](const MutableData& self) { return qlonglong(self.bytes().size()); },
              "Returns the number of bytes.")
          .operation(
              "appendData:",
              [](MutableData& self, const QByteArray& bytes) {
                self.setBytes(self.bytes() + bytes);
              },
              "Appends a copy of the bytes.")
          .decodable();
  return kClass;
}

std::shared_ptr<MutableData> MutableData::initWithCoder(Coder& coder) {
  return std::make_shared<MutableData>(Data::initWithCoder(coder)->bytes());
}

}  // namespace kelvar
