#include "archive/MutableArray.h"

#include "archive/DeferredRelease.h"
#include "runtime/ClassInfo.h"

namespace kelvar {
namespace {

const ClassInfo::Registration kRegistered(&MutableArray::staticClassInfo);

}  // namespace

MutableArray::~MutableArray() { releaseIteratively(&values_); }

const ClassInfo& MutableArray::staticClassInfo() {
  static const ClassInfo kClass =
      ClassInfoBuilder<MutableArray>("NSMutableArray")
          .initializer(
              "init", [] { return std::make_shared<MutableArray>(); }, "Creates an empty list.")
          .operation("addObject:", &MutableArray::append, "Appends a value.");
  return kClass;
}

QVariant MutableArray::valueForKey(const QString& key) const {
  return kelvar::valueForKeyPath(QVariant(values_), key);
}

}  // namespace kelvar
