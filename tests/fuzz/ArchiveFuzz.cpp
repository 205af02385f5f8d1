#include "archive/ArchiveTree.h"
#include "archive/Graph.h"
#include "fuzz/Fuzz.h"
#include "platform/plist/Json.h"
#include "platform/plist/PropertyList.h"

namespace kelvar {
namespace {

void decodeRoot(const QByteArray& bytes) {
  const QVariant root = HRCoder::unarchiveObjectWithData(bytes);
  const QVariant tree = HRCoder::archivedPlistWithRootObject(root);
  takeApart(root);
  if (!tree.isValid()) return;
  const QVariant json = jsonArchiveTree(tree);
  check(identical(jsonArchiveTree(json), json), "converting a JSON tree is idempotent");
  takeApart(HRCoder::unarchiveObjectWithPlistOrJSON(json));
}

/// Resolves aliases as `kelvar archive show` does for a tree of unknown classes.
void lookUpAliases(const QByteArray& bytes) {
  Result<QVariant> tree = PropertyList::read(bytes);
  if (!tree) tree = Json::read(bytes);
  if (!tree) return;
  const QHash<QString, QVariant> targets = archiveAliasTargets(propertyListArchiveTree(*tree));
  for (const QVariant& target : targets) check(target.isValid(), "a resolved alias has a target");
}

void decodeByKey(const QByteArray& bytes) {
  try {
    const auto coder = HRCoder::initForReadingWithData(bytes);
    for (const QString& key : coder->stack().last().toMap().keys()) {
      check(coder->containsValueForKey(key), "a listed key exists");
      coder->decodeBool(key);
      coder->decodeInt(key);
      coder->decodeInt32(key);
      coder->decodeInt64(key);
      coder->decodeFloat(key);
      coder->decodeDouble(key);
      coder->decodeBytes(key);
      takeApart(coder->decodeObject(key));
    }
  } catch (const ArchiveException& exception) {
    check(*exception.what() != '\0', "the exception says why");
  }
}

}  // namespace
}  // namespace kelvar

/// Decodes objects from a property list or JSON.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  kelvar::decodeRoot(kelvar::bytesOf(data, size));
  kelvar::lookUpAliases(kelvar::bytesOf(data, size));
  kelvar::decodeByKey(kelvar::bytesOf(data, size));
  return 0;
}
