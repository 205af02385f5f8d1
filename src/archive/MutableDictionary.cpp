#include "archive/MutableDictionary.h"

#include "archive/ReleaseInTurn.h"
#include "runtime/ClassInfo.h"

namespace kelvar {
namespace {

const ClassInfo::Registration kRegistered(&MutableDictionary::theClass);

}  // namespace

MutableDictionary::~MutableDictionary() { releaseInTurn(&values_); }

const ClassInfo& MutableDictionary::theClass() {
  static const ClassInfo kClass =
      Description<MutableDictionary>("NSMutableDictionary").initialiser("init", [] {
        return std::make_shared<MutableDictionary>();
      });
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
