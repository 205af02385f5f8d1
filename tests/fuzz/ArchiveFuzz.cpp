#include "archive/ArchiveTree.h"
#include "archive/Graph.h"
#include "fuzz/Fuzz.h"
#include "platform/Json.h"
#include "platform/PropertyList.h"

namespace kelvar {
namespace {

void decodeRoot(const QByteArray& bytes) {
  const QVariant root = HRCoder::unarchiveObjectWithData(bytes);
  const QVariant tree = HRCoder::archivedPlistWithRootObject(root);
  takeApart(root);
  if (!tree.isValid()) return;
  const QVariant json = jsonArchiveTree(tree);
  check(identical(jsonArchiveTree(json), json), "a JSON tree is one already");
  takeApart(HRCoder::unarchiveObjectWithPlistOrJSON(json));
}

/// What `kelvar archive show` asks of a tree whose classes nobody knows.
void lookUpAliases(const QByteArray& bytes) {
  QString error;
  QVariant tree = PropertyList::read(bytes, nullptr, &error);
  if (!tree.isValid()) tree = Json::read(bytes, &error);
  const QHash<QString, QVariant> targets = archiveAliasTargets(propertyListArchiveTree(tree));
  for (const QVariant& target : targets) check(target.isValid(), "what is found is there");
}

void decodeByKey(const QByteArray& bytes) {
  try {
    const auto coder = HRCoder::initForReadingWithData(bytes);
    for (const QString& key : coder->stack().last().toMap().keys()) {
      check(coder->containsValueForKey(key), "a key is there");
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

/// Objects out of any property list or JSON.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  kelvar::decodeRoot(kelvar::bytesOf(data, size));
  kelvar::lookUpAliases(kelvar::bytesOf(data, size));
  kelvar::decodeByKey(kelvar::bytesOf(data, size));
  return 0;
}
