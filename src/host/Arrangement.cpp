#include "host/Arrangement.h"

#include <QDir>
#include <QFileInfo>
#include <QSet>
#include <algorithm>
#include <cmath>

#include "platform/FileName.h"
#include "platform/Json.h"
#include "platform/WholeFile.h"

namespace kelvar {
namespace {

constexpr qsizetype kMostBytes = qsizetype{4} << 20;

const auto kBytes = QStringLiteral("bytes");

/// Why a file is refused. Caught where the reading begins.
struct Objection {
  QString sentence;
};

[[noreturn]] void object(const QString& sentence) { throw Objection{sentence}; }

/// The members of one JSON object. Each is taken once; what is then left over is unknown.
class Members {
 public:
  Members(const QVariant& object, QString owner) : owner_(std::move(owner)) {
    if (object.typeId() != QMetaType::QVariantMap) refuse(owner_ + QStringLiteral(" is no object"));
    members_ = object.toMap();
  }

  QString text(const char* name) {
    if (!members_.contains(QLatin1String(name))) {
      refuse(QStringLiteral("%1 has no \"%2\"").arg(owner_, QLatin1String(name)));
    }
    return text(name, {});
  }

  QString text(const char* name, const QString& otherwise) {
    const QVariant value = members_.take(QLatin1String(name));
    if (!value.isValid()) return otherwise;
    if (value.typeId() != QMetaType::QString || value.toString().isEmpty()) {
      refuse(name, "no text, or an empty one");
    }
    return value.toString();
  }

  /// A name that is no text stands as its bytes in Base64.
  QString fileName(const char* name) {
    if (members_.value(QLatin1String(name)).typeId() != QMetaType::QVariantMap) return text(name);
    const QVariantMap map = members_.take(QLatin1String(name)).toMap();
    const auto bytes = QByteArray::fromBase64Encoding(map.value(kBytes).toString().toLatin1(),
                                                      QByteArray::AbortOnBase64DecodingErrors);
    if (map.size() != 1 || !bytes || (*bytes).isEmpty()) refuse(name, "no name of a file");
    return fileNameFromBytes(*bytes);
  }

  int number(const char* name, int least, int most, int otherwise) {
    const QVariant value = members_.take(QLatin1String(name));
    if (!value.isValid()) return otherwise;
    const qlonglong number = value.toLongLong();
    if (value.typeId() != QMetaType::LongLong || number < least || number > most) {
      refuse(name,
             qPrintable(QStringLiteral("no whole number from %1 to %2").arg(least).arg(most)));
    }
    return int(number);
  }

  bool flag(const char* name, bool otherwise) {
    const QVariant value = members_.take(QLatin1String(name));
    if (!value.isValid()) return otherwise;
    if (value.typeId() != QMetaType::Bool) refuse(name, "neither true nor false");
    return value.toBool();
  }

  /// Empty when there is none.
  QVariantList list(const char* name) {
    const QVariant value = members_.take(QLatin1String(name));
    if (value.isValid() && value.typeId() != QMetaType::QVariantList) refuse(name, "no list");
    return value.toList();
  }

  void refuseUnknown() const {
    if (members_.isEmpty()) return;
    refuse(QStringLiteral("%1 has an unknown member \"%2\"").arg(owner_, members_.firstKey()));
  }

  [[noreturn]] void refuse(const char* name, const char* what) const {
    refuse(QStringLiteral("\"%1\" of %2 is %3")
               .arg(QLatin1String(name), owner_, QString::fromUtf8(what)));
  }

 private:
  [[noreturn]] static void refuse(const QString& sentence) { object(sentence); }

  QString owner_;
  QVariantMap members_;
};

bool isCoordinate(const QVariant& value) {
  const int type = value.typeId();
  const double number = value.toDouble();
  return (type == QMetaType::Double || type == QMetaType::LongLong) && std::isfinite(number) &&
         std::abs(number) <= Arrangement::kFarthest;
}

std::array<QPointF, 4> readCorners(Members* members) {
  const QVariantList list = members->list("corners");
  if (list.size() != 4) members->refuse("corners", "no list of four points");
  std::array<QPointF, 4> corners;
  for (qsizetype i = 0; i < 4; ++i) {
    const QVariantList point = list[i].toList();
    if (point.size() != 2 || !isCoordinate(point[0]) || !isCoordinate(point[1])) {
      members->refuse("corners", "no list of points [x, y] within a million pixels");
    }
    corners[size_t(i)] = {point[0].toDouble(), point[1].toDouble()};
  }
  return corners;
}

/// "shape 2", as a person counts.
QString ordinal(const char* kind, qsizetype index) {
  return QStringLiteral("%1 %2").arg(QLatin1String(kind)).arg(index + 1);
}

void refuseTaken(const QString& id, QSet<QString>* taken, const QString& owner) {
  if (taken->contains(id)) object(QStringLiteral("the \"id\" of %1 is taken").arg(owner));
  taken->insert(id);
}

QDir folderOf(const QString& file) { return QFileInfo(absoluteFileName(file)).path(); }

QString nameOf(const QString& file) { return QFileInfo(file).completeBaseName(); }

QList<Arrangement::Design> readDesigns(const QVariantList& list, const QDir& folder) {
  QList<Arrangement::Design> designs;
  QSet<QString> taken;
  for (const QVariant& value : list) {
    const QString owner = ordinal("design", designs.size());
    Members members(value, owner);
    Arrangement::Design design;
    design.id = members.text("id");
    design.file = QDir::cleanPath(folder.absoluteFilePath(members.fileName("file")));
    design.name = nameOf(design.file);
    members.refuseUnknown();
    refuseTaken(design.id, &taken, owner);
    designs.append(design);
  }
  return designs;
}

void readShapes(const QVariantList& list, Arrangement* arrangement) {
  QSet<QString> taken;
  for (const QVariant& value : list) {
    const QString owner = ordinal("shape", arrangement->shapes.size());
    Members members(value, owner);
    Arrangement::Shape shape;
    shape.id = members.text("id");
    shape.name = members.text("name", QStringLiteral("Shape ") + shape.id);
    shape.corners = readCorners(&members);
    shape.design = members.text("design", QString());
    shape.quality = members.number("quality", 1, Arrangement::kQualities, 1) - 1;
    shape.rotation = uint64_t(members.number("rotation", 0, 3, 0));
    shape.flipped = members.flag("flipped", false);
    shape.included = members.flag("included", true);
    members.refuseUnknown();
    refuseTaken(shape.id, &taken, owner);
    if (!shape.design.isEmpty() && !arrangement->design(shape.design)) {
      members.refuse("design", "the \"id\" of none of the designs");
    }
    arrangement->shapes.append(shape);
  }
}

Arrangement readArrangement(const QVariant& json, const QDir& folder) {
  Members members(json, QStringLiteral("the whole"));
  if (members.text("kelvar", QString()) != u"arrangement") {
    object(QStringLiteral("it is no arrangement: \"kelvar\": \"arrangement\" is missing"));
  }
  const int version = members.number("version", 0, INT32_MAX, 0);
  if (version != Arrangement::kVersion) {
    object(QStringLiteral("it is of version %1, and this Kelvar knows version %2")
               .arg(version)
               .arg(Arrangement::kVersion));
  }
  Arrangement arrangement;
  arrangement.photo = QDir::cleanPath(folder.absoluteFilePath(members.fileName("photo")));
  arrangement.designs = readDesigns(members.list("designs"), folder);
  readShapes(members.list("shapes"), &arrangement);
  members.refuseUnknown();
  return arrangement;
}

/// JSON has no place for bytes that are no text.
QVariant fileName(const QString& name) {
  if (name.isValidUtf16()) return name;
  return QVariantMap{{kBytes, QString::fromLatin1(fileNameBytes(name).toBase64())}};
}

/// Whole numbers stand without a fraction, as a person would write them.
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
                  {QStringLiteral("quality"), qlonglong(shape.quality + 1)},
                  {QStringLiteral("rotation"), qlonglong(shape.rotation)},
                  {QStringLiteral("flipped"), shape.flipped},
                  {QStringLiteral("included"), shape.included}};
  if (!shape.design.isEmpty()) map.insert(QStringLiteral("design"), shape.design);
  return map;
}

/// By value: a list of arrangements is searched alike for reading and for changing.
template <typename List>
auto* find(List& list, const QString& id) {
  const auto found =
      std::find_if(list.begin(), list.end(), [&](const auto& one) { return one.id == id; });
  return found == list.end() ? nullptr : &*found;
}

}  // namespace

Mapping Arrangement::Shape::mapping() const {
  Mapping mapping;
  for (const QPointF& corner : corners) mapping.path.append(stringFromPoint(corner));
  mapping.scale = quality + 1;
  mapping.rotation = rotation;
  mapping.flipped = flipped;
  mapping.sampling = warp::Sampling::Best;
  return mapping;
}

size_t Arrangement::Shape::topLeftCorner() const {
  // A design follows a layer's corners as they lie in the layer.
  Shape inLayer = *this;
  if (isMirrored) {
    for (QPointF& corner : inLayer.corners) corner.rx() = -corner.x();
  }
  const warp::Point at = inLayer.mapping().quadOnPhoto().front();
  const auto distance = [&](const QPointF& corner) {
    return std::hypot(corner.x() - at.x, corner.y() - at.y);
  };
  const auto nearest =
      std::min_element(inLayer.corners.begin(), inLayer.corners.end(),
                       [&](const auto& a, const auto& b) { return distance(a) < distance(b); });
  return size_t(nearest - inLayer.corners.begin());
}

const Arrangement::Design* Arrangement::design(const QString& id) const {
  return find(designs, id);
}

const Arrangement::Shape* Arrangement::shape(const QString& id) const { return find(shapes, id); }

Arrangement::Shape* Arrangement::shape(const QString& id) { return find(shapes, id); }

QList<Arrangement::Shape> Arrangement::shapesInSight() const {
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

std::optional<Arrangement> Arrangement::read(const QString& path, QString* error) {
  QByteArray bytes;
  if (!WholeFile::read(path, kMostBytes, &bytes, error)) return std::nullopt;
  QString problem;
  const QVariant json = Json::read(bytes, &problem);
  try {
    if (!json.isValid()) object(problem);
    return readArrangement(json, folderOf(path));
  } catch (const Objection& objection) {
    *error = QStringLiteral("cannot open %1: %2").arg(path, objection.sentence);
    return std::nullopt;
  }
}

bool Arrangement::write(const QString& path, QString* error) const {
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
  const QByteArray bytes = Json::write(json, Json::Layout::Indented, error);
  return !bytes.isEmpty() && WholeFile::write(path, bytes, error);
}

}  // namespace kelvar
