#pragma once

#include <QHash>
#include <QMap>
#include <memory>

#include "archive/ArchiveException.h"
#include "runtime/Coder.h"
#include "runtime/Object.h"

extern "C" {

/// The key of the class name in an object's dictionary: "$class".
KELVAR_EXPORT extern const char HRCoderClassNameKey[];
/// The key path of the root: "$root".
KELVAR_EXPORT extern const char HRCoderRootObjectKey[];
/// The only key of a reference to an object written earlier, by its key path: "$alias".
KELVAR_EXPORT extern const char HRCoderObjectAliasKey[];
/// The key of the Base64 text in the dictionary that represents bytes in JSON: "$data".
KELVAR_EXPORT extern const char HRCoderBase64DataKey[];
}

namespace kelvar {

class MutableData;

/// Turns a graph of objects into a tree that people can read and edit, and back. The tree consists
/// of plain values that fit a property list or JSON; docs/archive-format.md describes it.
///
/// Values with an identity are `ObjectRef`s: objects of described classes, `MutableArray`,
/// `MutableDictionary`, `MutableString`, `Data` and `MutableData`. Each is written once and
/// referred to afterward. Plain lists, maps and bytes are accepted as well, and written at every
/// occurrence. Lists are read back as `MutableArray`, maps as `MutableDictionary` and bytes as
/// `Data`; strings, numbers, dates, URLs and null are values. The objects of a cyclic graph keep
/// each other alive: to release it, empty one of its containers.
///
/// A value that cannot be written or read is invalid, with a log line. Beyond the limits, the whole
/// result is invalid. One thread at a time.
class KELVAR_EXPORT HRCoder : public Object, public Coder {
 public:
  static const ClassInfo& staticClassInfo();
  const ClassInfo& classInfo() const override { return staticClassInfo(); }

  /// With any other number, the output is property-list values that are not serialized.
  enum OutputFormat { kXml = 0, kJson = 1, kBinary = 2 };

  /// Maximum depth of nested containers and objects.
  static constexpr int kMaxDepth = 512;
  /// Total length of the key paths of one archive, in characters.
  static constexpr qsizetype kMaxPathText = qsizetype{1} << 26;

  static QString classNameKey();

  /// The tree in the form for property lists.
  static QVariant archivedPlistWithRootObject(const QVariant& object);
  /// The tree in the form for JSON.
  static QVariant archivedJSONWithRootObject(const QVariant& object);
  /// As an XML property list; null if it cannot be written.
  static QByteArray archivedDataWithRootObject(const QVariant& object);
  /// The same, written to a file atomically.
  static bool archiveRootObject(const QVariant& object, const QString& toFile);

  static QVariant unarchiveObjectWithPlistOrJSON(const QVariant& tree);
  /// From a property list in any format, or JSON.
  static QVariant unarchiveObjectWithData(const QByteArray& data);
  static QVariant unarchiveObjectWithFile(const QString& path);

  HRCoder();
  ~HRCoder() override;
  /// `finishEncoding` writes the values encoded by key to `data`.
  static std::shared_ptr<HRCoder> initForWritingWithMutableData(std::shared_ptr<MutableData> data);
  /// Reads by key from the root. Throws an `ArchiveException` if the data cannot be read or the
  /// root is not a dictionary. Null bytes count as an empty dictionary.
  static std::shared_ptr<HRCoder> initForReadingWithData(const QByteArray& data);

  /// The tree of the whole graph.
  QVariant archiveRootObject(const QVariant& object);
  QVariant unarchiveRootObjectWithPlistOrJSON(const QVariant& tree);

  bool allowsKeyedCoding() const override { return true; }

  /// Writes the tree of the whole graph, replacing everything written so far.
  void encodeRootObject(const QVariant& object);
  void encodeObject(const QVariant& object, const QString& key) override;
  void encodeConditionalObject(const QVariant& object, const QString& key) override;
  /// The tree of `object` under `key`, without writing it.
  QVariant encodedObject(const QVariant& object, const QString& key);
  void encodeBool(bool value, const QString& key) override;
  void encodeInt(int32_t value, const QString& key) override;
  void encodeInt32(int32_t value, const QString& key) override;
  void encodeInt64(int64_t value, const QString& key) override;
  void encodeFloat(float value, const QString& key) override;
  void encodeDouble(double value, const QString& key) override;
  /// Never shared.
  void encodeBytes(const QByteArray& bytes, const QString& key) override;
  /// Writes to `data`, if there is any, and resets the coder. False if it could not be written;
  /// `data` is then unchanged.
  bool finishEncoding();

  bool containsValueForKey(const QString& key) const override;
  QVariant decodeObject(const QString& key) override;
  /// The object of the tree `value` under `key`.
  QVariant decodeObject(const QVariant& value, const QString& key);
  /// Numbers are converted as in C; strings are read as numbers.
  bool decodeBool(const QString& key) override;
  int32_t decodeInt(const QString& key) override;
  int32_t decodeInt32(const QString& key) override;
  int64_t decodeInt64(const QString& key) override;
  float decodeFloat(const QString& key) override;
  double decodeDouble(const QString& key) override;
  QByteArray decodeBytes(const QString& key) override;
  void finishDecoding();

  int outputFormat() const { return outputFormat_; }
  void setOutputFormat(int format) { outputFormat_ = format; }
  /// The dictionaries being written or read, the innermost last.
  const QVariantList& stack() const { return stack_; }
  void setStack(const QVariantList& stack) { stack_ = stack; }
  /// By key path.
  const QHash<QString, QVariant>& knownObjects() const { return knownObjects_; }
  void setKnownObjects(const QHash<QString, QVariant>& objects);
  /// From the key path of an alias to the one that it refers to.
  const QMap<QString, QString>& unresolvedAliases() const { return unresolvedAliases_; }
  void setUnresolvedAliases(const QMap<QString, QString>& aliases) { unresolvedAliases_ = aliases; }
  /// The key path of the object being written or read; null at the root.
  QString keyPath() const { return keyPath_; }
  void setKeyPath(const QString& path) { keyPath_ = path; }
  std::shared_ptr<MutableData> data() const { return data_; }
  void setData(std::shared_ptr<MutableData> data) { data_ = std::move(data); }

 private:
  friend class ArchiveLevel;
  friend class ArchiveReader;
  friend class ArchiveWriter;

  /// A map has no null keys, but its empty key may be a null string.
  static QString keyIn(const QString& key) { return key.isNull() ? QStringLiteral("") : key; }

  /// Logs the first reason and ends the work.
  void fail(const QString& why);
  void logMissingElement() const;
  void write(const QVariant& value, const QString& key);
  QVariant entry(const QString& key) const;
  QString pathTo(const QString& key);
  void know(const QString& path, const QVariant& object);
  bool writeTo(MutableData* data) const;
  void reset();

  int outputFormat_ = kXml;
  QVariantList stack_;
  QHash<QString, QVariant> knownObjects_;
  /// The inverse of `knownObjects_`.
  QHash<const Object*, QString> pathOfObject_;
  QMap<QString, QString> unresolvedAliases_;
  QString keyPath_;
  std::shared_ptr<MutableData> data_;
  int depth_ = 0;
  qsizetype pathText_ = 0;
  bool failed_ = false;
};

}  // namespace kelvar
