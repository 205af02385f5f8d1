#include "archive/MutableDictionary.h"

#include "archive/DeferredRelease.h"
#include "runtime/ClassInfo.h"

namespace kelvar {
namespace {

const ClassInfo::Registration kRegistered(&MutableDictionary::staticClassInfo);

}  // namespace

MutableDictionary::~MutableDictionary() { releaseIteratively(&values_); }

const ClassInfo& MutableDictionary::staticClassInfo() {
  static const ClassInfo kClass =
      ClassInfoBuilder<MutableDictionary>("NSMutableDictionary")
          .initializer(
              "init", [] { return std::make_shared<MutableDictionary>(); },
              "Creates an empty dictionary.");
  return kClass;
}

bool MutableDictionary::setValueForKey(const QVariant& value, const QString& key) {
  if (value.isValid()) {
    values_.insert(key, value);
  } else {
    values_.remove(key);
  }
  return true;
}

}  // namespace kelvar
