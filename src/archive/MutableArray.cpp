#include "archive/MutableArray.h"

#include "archive/ReleaseInTurn.h"
#include "runtime/ClassInfo.h"

namespace kelvar {
namespace {

const ClassInfo::Registration kRegistered(&MutableArray::theClass);

}  // namespace

MutableArray::~MutableArray() { releaseInTurn(&values_); }

const ClassInfo& MutableArray::theClass() {
  static const ClassInfo kClass =
      Description<MutableArray>("NSMutableArray")
          .initialiser("init", [] { return std::make_shared<MutableArray>(); })
          .operation("addObject:", &MutableArray::append);
  return kClass;
}

QVariant MutableArray::valueForKey(const QString& key) const {
  return kelvar::valueForKeyPath(QVariant(values_), key);
}

}  // namespace kelvar
