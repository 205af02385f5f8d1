#include "mockup/Arrangement.h"

#include <QDir>
#include <QFileInfo>
#include <QSet>
#include <algorithm>
#include <cmath>
#include <optional>

#include "platform/QtError.h"
#include "platform/files/File.h"
#include "platform/files/FileName.h"
#include "platform/plist/Json.h"

namespace kelvar {
namespace {

constexpr qsizetype kMaxBytes = qsizetype{4} << 20;

constexpr QLatin1StringView kBytes("bytes");

/// Reads the members of one JSON object, each at most once; what is then left over is unknown.
///
/// The first error is kept in `*error`, and reading goes on with default values: callers look at
/// it once, at the end.
class ObjectReader {
 public:
  ObjectReader(const QVariant& object, QString owner, std::optional<Error>* error)
      : owner_(std::move(owner)), error_(error) {
    if (object.typeId() != QMetaType::QVariantMap) {
      reject(QStringLiteral("%1 must be an object").arg(owner_));
    }
    members_ = object.toMap();
  }

  QString requiredText(const char* name) {
    if (!members_.contains(QLatin1String(name))) {
      reject(QStringLiteral("%1 has no \"%2\"").arg(owner_, QLatin1String(name)));
    }
    return text(name);
  }

  QString text(const char* name, const QString& fallback = {}) {
    const QVariant value = members_.take(QLatin1String(name));
    if (!value.isValid()) return fallback;
    if (value.typeId() != QMetaType::QString || value.toString().isEmpty()) {
      reject(name, QStringLiteral("must be a non-empty string"));
    }
    return value.toString();
  }

  /// A file name that is not valid text is an object with its bytes in Base64.
  QString fileName(const char* name) {
    if (members_.value(QLatin1String(name)).typeId() != QMetaType::QVariantMap) {
      return requiredText(name);
    }
    const QVariantMap map = members_.take(QLatin1String(name)).toMap();
    const auto bytes = QByteArray::fromBase64Encoding(map.value(kBytes).toString().toLatin1(),
                                                      QByteArray::AbortOnBase64DecodingErrors);
    if (map.size() != 1 || !bytes || (*bytes).isEmpty()) {
      reject(name, QStringLiteral("must be a file name"));
      return {};
    }
    return fileNameFromBytes(*bytes);
  }

  int number(const char* name, int min, int max, int fallback) {
    const QVariant value = members_.take(QLatin1String(name));
    if (!value.isValid()) return fallback;
    const qlonglong number = value.toLongLong();
    if (value.typeId() != QMetaType::LongLong || number < min || number > max) {
      reject(name, QStringLiteral("must be an integer from %1 to %2").arg(min).arg(max));
      return fallback;
    }
    return int(number);
  }

  bool flag(const char* name, bool fallback) {
    const QVariant value = members_.take(QLatin1String(name));
    if (!value.isValid()) return fallback;
    if (value.typeId() != QMetaType::Bool) reject(name, QStringLiteral("must be true or false"));
    return value.toBool();
  }

  /// Empty if there is none.
  QVariantList list(const char* name) {
    const QVariant value = members_.take(QLatin1String(name));
    if (value.isValid() && value.typeId() != QMetaType::QVariantList) {
      reject(name, QStringLiteral("must be an array"));
    }
    return value.toList();
  }

  void rejectUnknown() {
    if (members_.isEmpty()) return;
    reject(QStringLiteral("%1 has an unknown member \"%2\"").arg(owner_, members_.firstKey()));
  }

  void reject(const char* name, const QString& problem) {
    reject(QStringLiteral("\"%1\" of %2 %3").arg(QLatin1String(name), owner_, problem));
  }

  void reject(const QString& problem) {
    if (!*error_) *error_ = failure(Error::Kind::Damaged, problem).value();
  }

 private:
  QString owner_;
  QVariantMap members_;
  std::optional<Error>* error_;
};

bool isCoordinate(const QVariant& value) {
  const int type = value.typeId();
  const double number = value.toDouble();
  return (type == QMetaType::Double || type == QMetaType::LongLong) && std::isfinite(number) &&
         std::abs(number) <= Arrangement::kMaxCoordinate;
}

std::array<QPointF, 4> readCorners(ObjectReader* reader) {
  const QVariantList list = reader->list("corners");
  std::array<QPointF, 4> corners;
  if (list.size() != 4) {
    reader->reject("corners", QStringLiteral("must be an array of four points"));
    return corners;
  }
  for (qsizetype i = 0; i < 4; ++i) {
    const QVariantList point = list[i].toList();
    if (point.size() != 2 || !isCoordinate(point[0]) || !isCoordinate(point[1])) {
      reader->reject("corners",
                     QStringLiteral("must be an array of points [x, y] within a million pixels"));
      return corners;
    }
    corners[size_t(i)] = {point[0].toDouble(), point[1].toDouble()};
  }
  return corners;
}

/// "shape 2", counted from 1.
QString ordinal(const char* kind, qsizetype index) {
  return QStringLiteral("%1 %2").arg(QLatin1String(kind)).arg(index + 1);
}

QDir folderOf(const QString& file) { return QFileInfo(absoluteFileName(file)).path(); }

QString nameOf(const QString& file) { return QFileInfo(file).completeBaseName(); }

void readDesigns(const QVariantList& list, const QDir& folder, Arrangement* arrangement,
                 std::optional<Error>* error) {
  QSet<QString> ids;
  for (const QVariant& value : list) {
    ObjectReader reader(value, ordinal("design", arrangement->designs.size()), error);
    Arrangement::Design design;
    design.id = reader.requiredText("id");
    design.file = QDir::cleanPath(folder.absoluteFilePath(reader.fileName("file")));
    design.name = nameOf(design.file);
    reader.rejectUnknown();
    if (ids.contains(design.id)) reader.reject("id", QStringLiteral("is already in use"));
    if (*error) return;
    ids.insert(design.id);
    arrangement->designs.append(design);
  }
}

void readShapes(const QVariantList& list, Arrangement* arrangement, std::optional<Error>* error) {
  QSet<QString> ids;
  for (const QVariant& value : list) {
    ObjectReader reader(value, ordinal("shape", arrangement->shapes.size()), error);
    Arrangement::Shape shape;
    shape.id = reader.requiredText("id");
    shape.name = reader.text("name", QStringLiteral("Shape ") + shape.id);
    shape.corners = readCorners(&reader);
    shape.design = reader.text("design");
    shape.options.quality = reader.number("quality", 1, Arrangement::kQualities, 1);
    shape.options.rotation = reader.number("rotation", 0, 3, 0);
    shape.options.flipped = reader.flag("flipped", false);
    shape.options.includedInArtboards = reader.flag("included", true);
    reader.rejectUnknown();
    if (ids.contains(shape.id)) reader.reject("id", QStringLiteral("is already in use"));
    if (!shape.design.isEmpty() && !arrangement->design(shape.design)) {
      reader.reject("design", QStringLiteral("must be the \"id\" of a design"));
    }
    if (*error) return;
    ids.insert(shape.id);
    arrangement->shapes.append(shape);
  }
}

/// Sets `*error` if the arrangement is invalid.
Arrangement readArrangement(const QVariant& json, const QDir& folder, std::optional<Error>* error) {
  Arrangement arrangement;
  ObjectReader reader(json, QStringLiteral("the file"), error);
  if (reader.text("kelvar") != u"arrangement") {
    reader.reject(
        QStringLiteral("it is not an arrangement: \"kelvar\": \"arrangement\" is missing"));
  }
  const int version = reader.number("version", 0, INT32_MAX, 0);
  if (version != Arrangement::kVersion) {
    reader.reject(QStringLiteral("its version is %1, and this Kelvar reads version %2")
                      .arg(version)
                      .arg(Arrangement::kVersion));
  }
  arrangement.photo = QDir::cleanPath(folder.absoluteFilePath(reader.fileName("photo")));
  readDesigns(reader.list("designs"), folder, &arrangement, error);
  readShapes(reader.list("shapes"), &arrangement, error);
  reader.rejectUnknown();
  return arrangement;
}

/// JSON cannot hold bytes that are not valid text.
QVariant fileName(const QString& name) {
  if (name.isValidUtf16()) return name;
  return QVariantMap{{kBytes, QString::fromLatin1(fileNameBytes(name).toBase64())}};
}

/// Integers are written without a fraction, as people would write them.
QVariant coordinate(double value) {
  if (value == std::floor(value)) return qlonglong(value);
  return value;
}

QVariantMap memberMap(const Arrangement::Shape& shape) {
  QVariantList corners;
  for (const QPointF& corner : shape.corners) {
    corners.append(QVariant(QVariantList{coordinate(corner.x()), coordinate(corner.y())}));
  }
  QVariantMap map{{QStringLiteral("id"), shape.id},
                  {QStringLiteral("name"), shape.name},
                  {QStringLiteral("corners"), corners},
                  {QStringLiteral("quality"), qlonglong(shape.options.quality)},
                  {QStringLiteral("rotation"), qlonglong(shape.options.rotation)},
                  {QStringLiteral("flipped"), shape.options.flipped},
                  {QStringLiteral("included"), shape.options.includedInArtboards}};
  if (!shape.design.isEmpty()) map.insert(QStringLiteral("design"), shape.design);
  return map;
}

template <typename List>
auto* find(List& list, const QString& id) {
  const auto found =
      std::find_if(list.begin(), list.end(), [&](const auto& one) { return one.id == id; });
  return found == list.end() ? nullptr : &*found;
}

}  // namespace

Mapping Arrangement::Shape::mapping() const {
  return {.corners = quadFrom(corners), .options = options};
}

size_t Arrangement::Shape::topLeftCorner() const {
  Mapping mapping = this->mapping();
  // Designs are mapped onto a layer's corners in the layer's own coordinates.
  if (isMirrored) {
    for (warp::Point& corner : mapping.corners) corner.x = -corner.x;
  }
  const auto& inLayer = mapping.corners;
  return size_t(std::find(inLayer.begin(), inLayer.end(), mapping.quadOnPhoto().front()) -
                inLayer.begin());
}

const Arrangement::Design* Arrangement::design(const QString& id) const {
  return find(designs, id);
}

const Arrangement::Shape* Arrangement::shape(const QString& id) const { return find(shapes, id); }

Arrangement::Shape* Arrangement::shape(const QString& id) { return find(shapes, id); }

QList<Arrangement::Shape> Arrangement::shapesOnArtboard() const {
  QList<Shape> inSight;
  for (const Shape& shape : shapes) {
    if (shape.artboard == artboard) inSight.append(shape);
  }
  return inSight;
}

QString Arrangement::addDesign(const QString& file) {
  const QString path = absoluteFileName(file);
  for (const Design& design : designs) {
    if (design.file == path) return design.id;
  }
  int number = 1;
  while (design(QString::number(number))) ++number;
  designs.append({QString::number(number), nameOf(path), path});
  return designs.back().id;
}

Result<Arrangement> Arrangement::read(const QString& path) {
  const Result<QByteArray> bytes = File::readAll(path, kMaxBytes);
  if (!bytes) return tl::unexpected(bytes.error());
  const Result<QVariant> json = Json::read(*bytes);
  if (!json) return failureIn(QStringLiteral("cannot open ") + path, json.error());
  std::optional<Error> error;
  Arrangement arrangement = readArrangement(*json, folderOf(path), &error);
  if (error) return failureIn(QStringLiteral("cannot open ") + path, *error);
  return arrangement;
}

Result<void> Arrangement::write(const QString& path) const {
  const QDir folder = folderOf(path);
  QVariantList designList, shapeList;
  for (const Design& design : designs) {
    designList.append(
        QVariantMap{{QStringLiteral("id"), design.id},
                    {QStringLiteral("file"), fileName(folder.relativeFilePath(design.file))}});
  }
  for (const Shape& shape : shapes) shapeList.append(memberMap(shape));
  const QVariantMap json{{QStringLiteral("kelvar"), QStringLiteral("arrangement")},
                         {QStringLiteral("version"), qlonglong(kVersion)},
                         {QStringLiteral("photo"), fileName(folder.relativeFilePath(photo))},
                         {QStringLiteral("designs"), designList},
                         {QStringLiteral("shapes"), shapeList}};
  return Json::write(json, Json::Layout::Indented).and_then([&](const QByteArray& bytes) {
    return File::writeAtomically(path, bytes);
  });
}

}  // namespace kelvar
