#include "archive/Data.h"

#include "runtime/ClassInfo.h"

namespace kelvar {
namespace {

const QString kBytes = QStringLiteral("NS.data");

const ClassInfo::Registration kRegistered(&Data::theClass);

}  // namespace

const ClassInfo& Data::theClass() {
  static const ClassInfo kClass = Description<Data>("NSData")
                                      .initialiser("init", [] { return std::make_shared<Data>(); })
                                      .property("bytes", &Data::bytes)
                                      .decodable();
  return kClass;
}

std::shared_ptr<Data> Data::initWithCoder(Coder& coder) {
  return std::make_shared<Data>(coder.decodeBytes(kBytes));
}

void Data::encodeWithCoder(Coder& coder) const { coder.encodeBytes(bytes_, kBytes); }

}  // namespace kelvar
