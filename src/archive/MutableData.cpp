#include "archive/MutableData.h"

#include "runtime/ClassInfo.h"

namespace kelvar {
namespace {

const ClassInfo::Registration kRegistered(&MutableData::theClass);

}  // namespace

const ClassInfo& MutableData::theClass() {
  static const ClassInfo kClass =
      Description<MutableData, Data>("NSMutableData")
          .initialiser("init", [] { return std::make_shared<MutableData>(); })
          .property("bytes", &MutableData::bytes, &MutableData::setBytes)
          .decodable();
  return kClass;
}

std::shared_ptr<MutableData> MutableData::initWithCoder(Coder& coder) {
  return std::make_shared<MutableData>(Data::initWithCoder(coder)->bytes());
}

}  // namespace kelvar
