#include "archive/HRCoder.h"

#include "archive/ArchiveReader.h"
#include "archive/ArchiveScalars.h"
#include "archive/ArchiveWriter.h"
#include "archive/HRCoderAliasPlaceholder.h"
#include "archive/MutableData.h"
#include "platform/Log.h"
#include "platform/Permissions.h"
#include "platform/QtError.h"
#include "platform/files/File.h"
#include "platform/plist/Json.h"
#include "platform/plist/PropertyList.h"

const char HRCoderClassNameKey[] = "$class";
const char HRCoderRootObjectKey[] = "$root";
const char HRCoderObjectAliasKey[] = "$alias";
const char HRCoderBase64DataKey[] = "$data";

namespace kelvar {
namespace {

const QString kRootKey = QString::fromLatin1(HRCoderRootObjectKey);
const QString kAliasKey = QString::fromLatin1(HRCoderObjectAliasKey);

}  // namespace

QString HRCoder::classNameKey() { return QString::fromLatin1(HRCoderClassNameKey); }

QVariant HRCoder::archivedPlistWithRootObject(const QVariant& object) {
  return HRCoder().archiveRootObject(object);
}

QVariant HRCoder::archivedJSONWithRootObject(const QVariant& object) {
  HRCoder coder;
  coder.setOutputFormat(kJson);
  return coder.archiveRootObject(object);
}

QByteArray HRCoder::archivedDataWithRootObject(const QVariant& object) {
  const auto data = std::make_shared<MutableData>();
  const auto coder = initForWritingWithMutableData(data);
  coder->encodeRootObject(object);
  return coder->finishEncoding() ? data->bytes() : QByteArray();
}

bool HRCoder::archiveRootObject(const QVariant& object, const QString& toFile) {
  const QByteArray bytes = archivedDataWithRootObject(object);
  if (bytes.isNull()) return false;
  const Result<void> written = Permissions::check(Permissions::Kind::Write, toFile).and_then([&] {
    return File::writeAtomically(toFile, bytes);
  });
  if (!written) logLine(u"HRCoder: %@", {messageOf(written.error())});
  return written.has_value();
}

QVariant HRCoder::unarchiveObjectWithPlistOrJSON(const QVariant& tree) {
  return HRCoder().unarchiveRootObjectWithPlistOrJSON(tree);
}

QVariant HRCoder::unarchiveObjectWithData(const QByteArray& data) {
  if (data.isNull()) return {};
  Result<QVariant> tree = PropertyList::read(data);
  if (!tree) tree = Json::read(data);
  if (tree) return unarchiveObjectWithPlistOrJSON(*tree);
  logLine(u"HRCoder: the data cannot be read: %@", {messageOf(tree.error())});
  return {};
}

QVariant HRCoder::unarchiveObjectWithFile(const QString& path) {
  const Result<QByteArray> bytes = Permissions::check(Permissions::Kind::Read, path).and_then([&] {
    return File::readAll(path, PropertyList::kMaxBytes);
  });
  if (bytes) return unarchiveObjectWithData(*bytes);
  logLine(u"HRCoder: %@", {messageOf(bytes.error())});
  return {};
}

HRCoder::HRCoder() : stack_{QVariantMap()} {}
HRCoder::~HRCoder() = default;

std::shared_ptr<HRCoder> HRCoder::initForWritingWithMutableData(std::shared_ptr<MutableData> data) {
  auto coder = std::make_shared<HRCoder>();
  coder->setData(std::move(data));
  return coder;
}

std::shared_ptr<HRCoder> HRCoder::initForReadingWithData(const QByteArray& data) {
  auto coder = std::make_shared<HRCoder>();
  if (data.isNull()) return coder;
  auto format = PropertyList::Format::Xml;
  Result<QVariant> root = PropertyList::read(data, &format);
  coder->setOutputFormat(format == PropertyList::Format::Binary ? kBinary : kXml);
  if (!root) {
    coder->setOutputFormat(kJson);
    root = Json::read(data);
  }
  if (!root) {
    throw ArchiveException(
        QStringLiteral("initForReadingWithData: method was unable to parse the supplied data."));
  }
  if (root->typeId() != QMetaType::QVariantMap) {
    throw ArchiveException(
        QStringLiteral("initForReadingWithData: method requires that the root object in the plist "
                       "data is an NSDictionary. Decoding an %1 is not supported with this method. "
                       "Try using unarchiveObjectWithData: instead.")
            .arg(archivedClassName(*root)));
  }
  coder->stack_.append(*root);
  return coder;
}

QVariant HRCoder::archiveRootObject(const QVariant& object) {
  setKnownObjects({});
  encodeRootObject(object);
  const QVariant tree = failed_ || stack_.isEmpty() ? QVariant() : stack_.last();
  finishEncoding();
  return tree;
}

void HRCoder::encodeRootObject(const QVariant& object) {
  if (isNone(object)) return;
  know(kRootKey, object);
  const QVariant tree = ArchiveWriter(*this).tree(object);
  if (!tree.isValid()) fail(QStringLiteral("the root cannot be archived"));
  stack_ = {tree};
}

void HRCoder::encodeObject(const QVariant& object, const QString& key) {
  const QVariant value = encodedObject(object, key);
  if (value.isValid()) write(value, key);
}

void HRCoder::encodeConditionalObject(const QVariant& object, const QString& key) {
  if (pathOfObject_.contains(objectIn(object).get())) encodeObject(object, key);
}

QVariant HRCoder::encodedObject(const QVariant& object, const QString& key) {
  if (failed_ || isNone(object) || key.isNull()) return {};
  const auto known = pathOfObject_.constFind(objectIn(object).get());
  if (known != pathOfObject_.constEnd()) return QVariantMap{{kAliasKey, *known}};
  const QString outer = keyPath_;
  const QString path = pathTo(key);
  know(path, object);
  keyPath_ = path;
  const QVariant value = ArchiveWriter(*this).tree(object);
  keyPath_ = outer;
  return value;
}

void HRCoder::encodeBool(bool value, const QString& key) { write(value, key); }
void HRCoder::encodeInt(int32_t value, const QString& key) { write(value, key); }
void HRCoder::encodeInt32(int32_t value, const QString& key) { write(value, key); }
void HRCoder::encodeInt64(int64_t value, const QString& key) { write(qlonglong(value), key); }
void HRCoder::encodeFloat(float value, const QString& key) { write(value, key); }
void HRCoder::encodeDouble(double value, const QString& key) { write(value, key); }
void HRCoder::encodeBytes(const QByteArray& bytes, const QString& key) {
  write(ArchiveWriter(*this).tree(bytes), key);
}

bool HRCoder::finishEncoding() {
  bool isWritten = true;
  if (data_ && outputFormat_ >= kXml && outputFormat_ <= kBinary) {
    isWritten = !failed_ && writeTo(data_.get());
  }
  data_ = nullptr;
  reset();
  return isWritten;
}

bool HRCoder::writeTo(MutableData* data) const {
  const QVariant top = stack_.isEmpty() ? QVariant() : stack_.last();
  const auto format =
      outputFormat_ == kBinary ? PropertyList::Format::Binary : PropertyList::Format::Xml;
  const Result<QByteArray> bytes =
      outputFormat_ == kJson ? Json::write(top) : PropertyList::write(top, format);
  if (!bytes) logLine(u"HRCoder: the archive cannot be written: %@", {messageOf(bytes.error())});
  data->setBytes(bytes.value_or(data->bytes()));
  return bytes.has_value();
}

QVariant HRCoder::unarchiveRootObjectWithPlistOrJSON(const QVariant& tree) {
  finishDecoding();
  stack_.clear();
  QVariant root = ArchiveReader(*this).object(tree);
  if (root.isValid() && !failed_) {
    know(kRootKey, root);
    for (auto alias = unresolvedAliases_.cbegin(); alias != unresolvedAliases_.cend(); ++alias) {
      ArchiveReader::replacePlaceholder(root, alias.key(), knownObjects_.value(alias.value()));
    }
  }
  if (failed_) root = QVariant();
  finishDecoding();
  return root;
}

bool HRCoder::containsValueForKey(const QString& key) const { return entry(key).isValid(); }

QVariant HRCoder::decodeObject(const QString& key) { return decodeObject(entry(key), key); }

QVariant HRCoder::decodeObject(const QVariant& value, const QString& key) {
  if (failed_ || !value.isValid() || key.isNull()) return {};
  const QString outer = keyPath_;
  const QString path = pathTo(key);
  const QVariantMap map = value.typeId() == QMetaType::QVariantMap ? value.toMap() : QVariantMap();
  const auto alias = map.constFind(kAliasKey);
  if (alias != map.constEnd()) {
    const QString target = alias->toString();
    if (knownObjects_.contains(target)) return knownObjects_.value(target);
    unresolvedAliases_.insert(path, target);
    return QVariant::fromValue(HRCoderAliasPlaceholder::placeholder());
  }
  keyPath_ = path;
  const QVariant object = ArchiveReader(*this).object(value);
  keyPath_ = outer;
  if (object.isValid()) {
    know(path, object);
  } else {
    // Nothing is left that the aliases within could be resolved for.
    auto inner = unresolvedAliases_.lowerBound(path + u'.');
    while (inner != unresolvedAliases_.end() && inner.key().startsWith(path + u'.')) {
      inner = unresolvedAliases_.erase(inner);
    }
  }
  return object;
}

bool HRCoder::decodeBool(const QString& key) { return archivedBool(entry(key)); }
int32_t HRCoder::decodeInt(const QString& key) { return archivedInt(entry(key)); }
int32_t HRCoder::decodeInt32(const QString& key) { return int32_t(archivedInt64(entry(key))); }
int64_t HRCoder::decodeInt64(const QString& key) { return archivedInt64(entry(key)); }
float HRCoder::decodeFloat(const QString& key) { return float(archivedReal(entry(key))); }
double HRCoder::decodeDouble(const QString& key) { return archivedReal(entry(key)); }

QByteArray HRCoder::decodeBytes(const QString& key) {
  const auto data =
      std::dynamic_pointer_cast<Data>(objectIn(ArchiveReader(*this).object(entry(key))));
  return data ? data->bytes() : QByteArray();
}

void HRCoder::finishDecoding() {
  unresolvedAliases_.clear();
  reset();
}

void HRCoder::setKnownObjects(const QHash<QString, QVariant>& objects) {
  knownObjects_.clear();
  pathOfObject_.clear();
  for (auto i = objects.begin(); i != objects.end(); ++i) know(i.key(), i.value());
}

void HRCoder::know(const QString& path, const QVariant& object) {
  const Object* const former = objectIn(knownObjects_.value(path)).get();
  if (former && pathOfObject_.value(former) == path) pathOfObject_.remove(former);
  knownObjects_.insert(path, object);
  if (const ObjectRef reference = objectIn(object)) pathOfObject_.insert(reference.get(), path);
}

QString HRCoder::pathTo(const QString& key) {
  QString path = keyPath_.isNull() ? key : keyPath_ + u'.' + key;
  pathText_ += path.size();
  if (pathText_ > kMaxPathText) fail(QStringLiteral("its key paths are too long"));
  return path;
}

void HRCoder::fail(const QString& why) {
  if (!failed_) logLine(u"HRCoder: %@", {why});
  failed_ = true;
}

void HRCoder::logMissingElement() const {
  if (!failed_) logLine(u"HRCoder: the list at %@ has an element that is none", {keyPath_});
}

void HRCoder::write(const QVariant& value, const QString& key) {
  if (stack_.isEmpty() || stack_.last().typeId() != QMetaType::QVariantMap || key.isNull()) return;
  static_cast<QVariantMap*>(stack_.last().data())->insert(key, value);
}

QVariant HRCoder::entry(const QString& key) const {
  const QVariant top = stack_.isEmpty() ? QVariant() : stack_.last();
  return top.typeId() == QMetaType::QVariantMap ? top.toMap().value(key) : QVariant();
}

void HRCoder::reset() {
  setKnownObjects({});
  stack_ = {QVariantMap()};
  depth_ = 0;
  pathText_ = 0;
  failed_ = false;
}

}  // namespace kelvar
