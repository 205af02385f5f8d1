#pragma once

#include <QHash>
#include <QMap>
#include <memory>
#include <stdexcept>

#include "runtime/Coder.h"
#include "runtime/Object.h"

extern "C" {

/// In a dictionary that stands for an object, the name of its class: "$class".
KELVAR_EXPORT extern const char HRCoderClassNameKey[];
/// The key path of the root: "$root".
KELVAR_EXPORT extern const char HRCoderRootObjectKey[];
/// In a dictionary of this entry alone, the key path of an object written earlier: "$alias".
KELVAR_EXPORT extern const char HRCoderObjectAliasKey[];
/// In a dictionary that stands for bytes in JSON, the bytes as Base64: "$data".
KELVAR_EXPORT extern const char HRCoderBase64DataKey[];
/// The name of the exception that `HRCoder::initForReadingWithData` throws.
KELVAR_EXPORT extern const char HRCoderException[];
}

namespace kelvar {

class MutableData;

/// What `HRCoder::initForReadingWithData` throws, and nothing else in the library.
class KELVAR_EXPORT ArchiveException : public std::runtime_error {
 public:
  explicit ArchiveException(const QString& reason) : std::runtime_error(reason.toStdString()) {}
  ~ArchiveException() override;
  const char* name() const { return HRCoderException; }
};

/// Turns a graph of objects into a tree that people can read and edit, and back. The tree is plain
/// values, to be kept as a property list or as JSON; docs/archive-format.md describes it.
///
/// In the graph, what has an identity is an `ObjectRef`: objects of described classes, and the
/// containers `MutableArray`, `MutableDictionary`, `MutableString`, `Data` and `MutableData`. Each
/// is written once and referred to afterwards. Plain lists, maps and bytes are taken as well, and
/// written wherever they stand. What is read back are lists as `MutableArray`, maps as
/// `MutableDictionary` and bytes as `Data`; strings, numbers, dates, addresses and null are values.
/// A graph that leads back to itself owns itself: whoever lets go of it empties a container first.
///
/// What cannot be written or read is none, with a line in the log. No input nests deeper than 512
/// or makes more than it should: beyond the limits the whole of it is none.
///
/// Used by one thread at a time.
class KELVAR_EXPORT HRCoder : public Coder {
 public:
  /// Any other number stands for property-list values that are not written anywhere.
  enum OutputFormat { kXml = 0, kJson = 1, kBinary = 2 };

  /// Containers and objects in one another, at most.
  static constexpr int kMaxDepth = 512;
  /// Characters in the key paths of one archive together, at most.
  static constexpr qsizetype kMaxPathText = qsizetype{1} << 26;

  static QString classNameKey();

  /// The tree, as property lists have it.
  static QVariant archivedPlistWithRootObject(const QVariant& object);
  /// The tree, as JSON has it.
  static QVariant archivedJSONWithRootObject(const QVariant& object);
  /// As an XML property list; null when that cannot be written.
  static QByteArray archivedDataWithRootObject(const QVariant& object);
  /// The same into a file, whole or not at all.
  static bool archiveRootObject(const QVariant& object, const QString& toFile);

  static QVariant unarchiveObjectWithPlistOrJSON(const QVariant& tree);
  /// From a property list of any form, or else JSON.
  static QVariant unarchiveObjectWithData(const QByteArray& data);
  static QVariant unarchiveObjectWithFile(const QString& path);

  HRCoder();
  ~HRCoder() override;
  /// `finishEncoding` puts what is written by key until then into `data`.
  static std::unique_ptr<HRCoder> initForWritingWithMutableData(std::shared_ptr<MutableData> data);
  /// Reads by key from the root, which must be a dictionary; throws an `ArchiveException` when it
  /// is not, or cannot be read. Null bytes are an empty dictionary.
  static std::unique_ptr<HRCoder> initForReadingWithData(const QByteArray& data);

  /// The tree of the whole graph.
  QVariant archiveRootObject(const QVariant& object);
  QVariant unarchiveRootObjectWithPlistOrJSON(const QVariant& tree);

  bool allowsKeyedCoding() const override { return true; }

  /// Puts the tree of the whole graph in the place of what was written so far.
  void encodeRootObject(const QVariant& object);
  void encodeObject(const QVariant& object, const QString& key) override;
  void encodeConditionalObject(const QVariant& object, const QString& key) override;
  /// What stands for `object` under `key`; written nowhere.
  QVariant encodedObject(const QVariant& object, const QString& key);
  void encodeBool(bool value, const QString& key) override;
  void encodeInt(int32_t value, const QString& key) override;
  void encodeInt32(int32_t value, const QString& key) override;
  void encodeInt64(int64_t value, const QString& key) override;
  void encodeFloat(float value, const QString& key) override;
  void encodeDouble(double value, const QString& key) override;
  /// Never shared.
  void encodeBytes(const QByteArray& bytes, const QString& key) override;
  /// Writes to `data`, if there is any, and forgets it and all else. False when it could not be
  /// written; `data` is then as it was.
  bool finishEncoding();

  bool containsValueForKey(const QString& key) const override;
  QVariant decodeObject(const QString& key) override;
  /// What the `value` of the tree under `key` stands for.
  QVariant decodeObject(const QVariant& value, const QString& key);
  /// Numbers become one another as in C; strings are read as numbers.
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
  /// Where an alias stood, and the key path that it names.
  const QMap<QString, QString>& unresolvedAliases() const { return unresolvedAliases_; }
  void setUnresolvedAliases(const QMap<QString, QString>& aliases) { unresolvedAliases_ = aliases; }
  /// Of the object being written or read; null at the root.
  QString keyPath() const { return keyPath_; }
  void setKeyPath(const QString& path) { keyPath_ = path; }
  std::shared_ptr<MutableData> data() const { return data_; }
  void setData(std::shared_ptr<MutableData> data) { data_ = std::move(data); }

 private:
  class Level;

  QVariant archived(const QVariant& object);
  QVariant archivedReference(const ObjectRef& object);
  QVariant archivedObject(const ObjectRef& object);
  QVariant archivedMap(const QVariantMap& map);
  QVariant archivedList(const QVariantList& list);
  QVariant archivedBytes(const QByteArray& bytes, const QString& className) const;
  QVariant archivedDate(const QDateTime& date) const;

  QVariant unarchived(const QVariant& value);
  QVariant unarchivedMap(const QVariantMap& map);
  QVariant unarchivedObject(const QString& className);
  QVariant unarchivedList(const QVariantList& list);

  QVariant fail(const QString& why);
  void write(const QVariant& value, const QString& key);
  QVariant valueForKey(const QString& key) const;
  QString pathTo(const QString& key);
  void know(const QString& path, const QVariant& object);
  void replacePlaceholder(const QVariant& root, const QString& path, const QVariant& object);
  QByteArray serialised(QString* error) const;
  void reset();

  int outputFormat_ = kXml;
  QVariantList stack_;
  QHash<QString, QVariant> knownObjects_;
  /// The same, the other way round.
  QHash<const Object*, QString> pathOfObject_;
  QMap<QString, QString> unresolvedAliases_;
  QString keyPath_;
  std::shared_ptr<MutableData> data_;
  int depth_ = 0;
  qsizetype pathText_ = 0;
  bool failed_ = false;
};

}  // namespace kelvar
