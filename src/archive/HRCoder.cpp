#include "archive/HRCoder.h"

#include <QDateTime>
#include <QRegularExpression>
#include <QUrl>

#include "archive/HRCoderAliasPlaceholder.h"
#include "archive/MutableArray.h"
#include "archive/MutableData.h"
#include "archive/MutableDictionary.h"
#include "platform/Json.h"
#include "platform/Log.h"
#include "platform/PropertyList.h"
#include "platform/WholeFile.h"
#include "runtime/Conversion.h"
#include "runtime/leadingNumber.h"

const char HRCoderClassNameKey[] = "$class";
const char HRCoderRootObjectKey[] = "$root";
const char HRCoderObjectAliasKey[] = "$alias";
const char HRCoderBase64DataKey[] = "$data";
const char HRCoderException[] = "HRCoderException";

namespace kelvar {
namespace {

const QString kRootKey = QString::fromLatin1(HRCoderRootObjectKey);
const QString kAliasKey = QString::fromLatin1(HRCoderObjectAliasKey);

ObjectRef objectIn(const QVariant& value) {
  return value.metaType() == QMetaType::fromType<ObjectRef>() ? value.value<ObjectRef>() : nullptr;
}

bool isNone(const QVariant& value) {
  if (value.typeId() == QMetaType::QString) return value.toString().isNull();
  if (value.typeId() == QMetaType::QDateTime) return !value.toDateTime().isValid();
  if (value.typeId() == QMetaType::QUrl) return value.toUrl().isEmpty();
  if (value.metaType() == QMetaType::fromType<ObjectRef>()) return !objectIn(value);
  return !value.isValid();
}

bool isPlaceholder(const QVariant& value) {
  return objectIn(value) == HRCoderAliasPlaceholder::placeholder();
}

/// What a value in a tree is called where its kind is not wanted.
QString className(const QVariant& value) {
  switch (value.typeId()) {
    case QMetaType::QVariantList:
      return QStringLiteral("NSMutableArray");
    case QMetaType::QVariantMap:
      return QStringLiteral("NSMutableDictionary");
    case QMetaType::QString:
      return QStringLiteral("NSString");
    case QMetaType::QByteArray:
      return QStringLiteral("NSData");
    case QMetaType::QDateTime:
      return QStringLiteral("NSDate");
    case QMetaType::Nullptr:
      return QStringLiteral("NSNull");
    default:
      return QStringLiteral("NSNumber");
  }
}

bool boolFrom(const QVariant& value) {
  if (value.typeId() != QMetaType::QString) return isNumber(value) && value.toBool();
  static const QRegularExpression kYes(QStringLiteral("^\\s*[+-]?0*[YyTt1-9]"));
  return kYes.match(value.toString()).hasMatch();
}

int64_t integerFrom(const QVariant& value) {
  if (value.typeId() == QMetaType::QString) return leadingNumber<int64_t>(value.toString());
  return isNumber(value) ? numberFrom<int64_t>(value) : 0;
}

/// Integers are cut to 32 bits, texts and reals clamped.
int32_t smallIntegerFrom(const QVariant& value) {
  if (value.typeId() == QMetaType::QString) return leadingNumber<int32_t>(value.toString());
  return isNumber(value) ? numberFrom<int32_t>(value) : 0;
}

double realFrom(const QVariant& value) {
  if (value.typeId() == QMetaType::QString) return leadingNumber<double>(value.toString());
  return isNumber(value) ? value.toDouble() : 0;
}

}  // namespace

ArchiveException::~ArchiveException() = default;

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
  QString error;
  if (!bytes.isNull() && WholeFile::write(toFile, bytes, &error)) return true;
  if (!error.isEmpty()) logLine(u"HRCoder: %@", {error});
  return false;
}

QVariant HRCoder::unarchiveObjectWithPlistOrJSON(const QVariant& tree) {
  return HRCoder().unarchiveRootObjectWithPlistOrJSON(tree);
}

QVariant HRCoder::unarchiveObjectWithData(const QByteArray& data) {
  if (data.isNull()) return {};
  QString error;
  QVariant tree = PropertyList::read(data, nullptr, &error);
  if (!tree.isValid()) tree = Json::read(data, &error);
  if (!tree.isValid()) logLine(u"HRCoder: the data cannot be read: %@", {error});
  return unarchiveObjectWithPlistOrJSON(tree);
}

QVariant HRCoder::unarchiveObjectWithFile(const QString& path) {
  QByteArray bytes;
  QString error;
  if (WholeFile::read(path, PropertyList::kMaxBytes, &bytes, &error)) {
    return unarchiveObjectWithData(bytes);
  }
  logLine(u"HRCoder: %@", {error});
  return {};
}

HRCoder::HRCoder() : stack_{QVariantMap()} {}
HRCoder::~HRCoder() = default;

std::unique_ptr<HRCoder> HRCoder::initForWritingWithMutableData(std::shared_ptr<MutableData> data) {
  auto coder = std::make_unique<HRCoder>();
  coder->setData(std::move(data));
  return coder;
}

std::unique_ptr<HRCoder> HRCoder::initForReadingWithData(const QByteArray& data) {
  auto coder = std::make_unique<HRCoder>();
  if (data.isNull()) return coder;
  QString error;
  auto format = PropertyList::Format::Xml;
  QVariant root = PropertyList::read(data, &format, &error);
  coder->setOutputFormat(format == PropertyList::Format::Binary ? kBinary : kXml);
  if (!root.isValid()) {
    root = Json::read(data, &error);
    if (!root.isValid()) {
      throw ArchiveException(
          QStringLiteral("initForReadingWithData: method was unable to parse the supplied data."));
    }
    coder->setOutputFormat(kJson);
  }
  if (root.typeId() != QMetaType::QVariantMap) {
    throw ArchiveException(
        QStringLiteral("initForReadingWithData: method requires that the root object in the plist "
                       "data is an NSDictionary. Decoding an %1 is not supported with this method. "
                       "Try using unarchiveObjectWithData: instead.")
            .arg(className(root)));
  }
  coder->stack_.append(root);
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
  const QVariant tree = archived(object);
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
  const QVariant value = archived(object);
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
  write(archived(bytes), key);
}

bool HRCoder::finishEncoding() {
  bool isWritten = true;
  if (data_ && outputFormat_ >= kXml && outputFormat_ <= kBinary) {
    QString error;
    const QByteArray bytes = failed_ ? QByteArray() : serialised(&error);
    isWritten = !bytes.isEmpty();
    if (isWritten) data_->setBytes(bytes);
    if (!error.isEmpty()) logLine(u"HRCoder: the archive cannot be written: %@", {error});
  }
  data_ = nullptr;
  reset();
  return isWritten;
}

QByteArray HRCoder::serialised(QString* error) const {
  const QVariant top = stack_.isEmpty() ? QVariant() : stack_.last();
  if (outputFormat_ == kJson) return Json::write(top, Json::Layout::Compact, error);
  return PropertyList::write(
      top, outputFormat_ == kBinary ? PropertyList::Format::Binary : PropertyList::Format::Xml,
      error);
}

QVariant HRCoder::unarchiveRootObjectWithPlistOrJSON(const QVariant& tree) {
  finishDecoding();
  stack_.clear();
  QVariant root = unarchived(tree);
  if (root.isValid() && !failed_) {
    know(kRootKey, root);
    for (auto alias = unresolvedAliases_.cbegin(); alias != unresolvedAliases_.cend(); ++alias) {
      replacePlaceholder(root, alias.key(), knownObjects_.value(alias.value()));
    }
  }
  if (failed_) root = QVariant();
  finishDecoding();
  return root;
}

void HRCoder::replacePlaceholder(const QVariant& root, const QString& path,
                                 const QVariant& object) {
  QVariant container = root;
  for (const QString& component : path.split(u'.')) {
    const ObjectRef holder = objectIn(container);
    if (!holder) return;
    if (const auto array = std::dynamic_pointer_cast<MutableArray>(holder)) {
      const auto index = leadingNumber<int64_t>(component);
      if (index < 0 || index >= array->values().size()) return;
      container = array->values()[index];
      if (!isPlaceholder(container)) continue;
      // A list has no place for none.
      return array->replace(index, object.isValid() ? object : QVariant::fromValue(nullptr));
    }
    container = holder->valueForKey(component);
    if (!container.isValid() || isPlaceholder(container)) {
      holder->setValueForKey(object, component);
      return;
    }
  }
}

bool HRCoder::containsValueForKey(const QString& key) const { return valueForKey(key).isValid(); }

QVariant HRCoder::decodeObject(const QString& key) { return decodeObject(valueForKey(key), key); }

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
  const QVariant object = unarchived(value);
  keyPath_ = outer;
  if (object.isValid()) {
    know(path, object);
  } else {
    // Nobody is left to take what the aliases within stand for.
    auto inner = unresolvedAliases_.lowerBound(path + u'.');
    while (inner != unresolvedAliases_.end() && inner.key().startsWith(path + u'.')) {
      inner = unresolvedAliases_.erase(inner);
    }
  }
  return object;
}

bool HRCoder::decodeBool(const QString& key) { return boolFrom(valueForKey(key)); }
int32_t HRCoder::decodeInt(const QString& key) { return smallIntegerFrom(valueForKey(key)); }
int32_t HRCoder::decodeInt32(const QString& key) { return int32_t(integerFrom(valueForKey(key))); }
int64_t HRCoder::decodeInt64(const QString& key) { return integerFrom(valueForKey(key)); }
float HRCoder::decodeFloat(const QString& key) { return float(realFrom(valueForKey(key))); }
double HRCoder::decodeDouble(const QString& key) { return realFrom(valueForKey(key)); }

QByteArray HRCoder::decodeBytes(const QString& key) {
  const auto data = std::dynamic_pointer_cast<Data>(objectIn(unarchived(valueForKey(key))));
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

QVariant HRCoder::fail(const QString& why) {
  if (!failed_) logLine(u"HRCoder: %@", {why});
  failed_ = true;
  return {};
}

void HRCoder::write(const QVariant& value, const QString& key) {
  if (stack_.isEmpty() || stack_.last().typeId() != QMetaType::QVariantMap || key.isNull()) return;
  static_cast<QVariantMap*>(stack_.last().data())->insert(key, value);
}

QVariant HRCoder::valueForKey(const QString& key) const {
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
