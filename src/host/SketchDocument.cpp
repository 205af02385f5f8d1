#include "host/SketchDocument.h"

#include <QCryptographicHash>
#include <QScopeGuard>
#include <chrono>

#include "host/SketchJson.h"
#include "platform/FileLock.h"
#include "platform/FileName.h"
#include "platform/ImageFile.h"
#include "platform/Log.h"
#include "platform/WholeFile.h"
#include "platform/ZipArchive.h"

namespace kelvar {
namespace {

const auto kDocumentFile = QStringLiteral("document.json");
const auto kMetaFile = QStringLiteral("meta.json");

/// Of all JSON files together: a value takes up to a hundred bytes of memory.
constexpr size_t kMaxValues = size_t{1} << 23;

/// Longer than another program should take from reading to writing, and for writing alone.
constexpr std::chrono::seconds kLongestReading{30};
constexpr std::chrono::seconds kLongestWriting{10};

/// What the pictures that are kept take at most: they are a thousand times as large as their files
/// can be.
constexpr qsizetype kMostKeptBytes = qsizetype{1} << 30;

QString unreadable(const QString& name, const QString& why) {
  return QStringLiteral("cannot read %1: %2").arg(name, why);
}

/// Says which of the layers below is no object, or nothing.
QString objectionToLayers(const SketchJson& layer) {
  int number = 0;
  for (const SketchJson& child : listIn(layer, "layers")) {
    ++number;
    if (!child.is_object()) {
      return QStringLiteral("layer %1 in \"%2\" is no object")
          .arg(number)
          .arg(textIn(layer, "name"));
    }
    const QString objection = objectionToLayers(child);
    if (!objection.isEmpty()) return objection;
  }
  return {};
}

void removeReferenced(const SketchJson& value, QSet<QString>* names) {
  if (value.is_object()) names->remove(textIn(value, "_ref"));
  if (!value.is_structured()) return;
  for (const SketchJson& part : value) removeReferenced(part, names);
}

}  // namespace

SketchDocument::SketchDocument()
    : document_{kDocumentFile, std::make_shared<SketchJson>(), std::make_shared<bool>(false)},
      meta_{kMetaFile, std::make_shared<SketchJson>(), std::make_shared<bool>(false)} {}

SketchDocument::~SketchDocument() = default;

SketchDocumentRef SketchDocument::open(const QString& path, QString* error) {
  QByteArray bytes;
  if (!WholeFile::read(path, ZipArchive::kMaxArchiveBytes, &bytes, error)) return nullptr;
  const SketchDocumentRef document = read(bytes, path, error);
  if (!document) return nullptr;
  document->path_ = path;
  document->known_ = bytes;
  return document;
}

SketchDocumentRef SketchDocument::openToReplace(const QString& path, QString* error) {
  std::unique_ptr<FileLock> lock = FileLock::take(path, kLongestReading, error);
  const SketchDocumentRef document = lock ? open(path, error) : nullptr;
  if (document) document->lock_ = std::move(lock);
  return document;
}

SketchDocumentRef SketchDocument::read(const QByteArray& bytes, const QString& name,
                                       QString* error) {
  const SketchDocumentRef document(new SketchDocument);
  QString problem = bytes.isEmpty() ? QStringLiteral("the file is empty") : QString();
  if (problem.isEmpty()) problem = document->readArchive(bytes);
  if (problem.isEmpty()) return document;
  *error = unreadable(name, problem);
  return nullptr;
}

QString SketchDocument::readArchive(const QByteArray& bytes) {
  QString problem;
  archive_ = ZipArchive::read(bytes, &problem);
  if (!archive_) return problem;
  if (!archive_->contains(kDocumentFile)) {
    return QStringLiteral("it is no document of Sketch 43 or later: it has no %1")
        .arg(kDocumentFile);
  }
  valuesLeft_ = kMaxValues;
  problem = readJson(&document_);
  if (problem.isEmpty() && archive_->contains(kMetaFile)) problem = readJson(&meta_);
  if (problem.isEmpty()) problem = readPages();
  if (!problem.isEmpty()) return problem;
  readForeignSymbols();
  readStyles();
  return {};
}

QString SketchDocument::readJson(JsonFile* file) {
  const QString name = file->name;
  QString problem;
  QByteArray bytes = archive_->file(name, &problem);
  if (!problem.isEmpty()) return problem;
  if (!readSketchJson(std::move(bytes), &valuesLeft_, file->json.get(), &problem)) {
    return QStringLiteral("its file %1: %2").arg(name, problem);
  }
  return file->json->is_object() ? QString()
                                 : QStringLiteral("its file %1 holds no object").arg(name);
}

QString SketchDocument::readPages() {
  for (const SketchJson& reference : listIn(*document_.json, "pages")) {
    const QString name = textIn(reference, "_ref") + QStringLiteral(".json");
    if (!archive_->contains(name)) return QStringLiteral("its page %1 is missing").arg(name);
    JsonFile page{name, std::make_shared<SketchJson>(), std::make_shared<bool>(false)};
    QString problem = readJson(&page);
    if (problem.isEmpty()) problem = objectionToLayers(*page.json);
    if (!problem.isEmpty()) return problem;
    pages_.append(SketchLayer::make(page.json, page.isChanged, nullptr));
    pageFiles_.append(page);
    for (const SketchLayerRef& layer : pages_.last()->withDescendants()) {
      if (layer->kind() != u"symbolMaster") continue;
      const QString symbolID = textIn(layer->json(), "symbolID");
      if (!symbolMasters_.contains(symbolID)) symbolMasters_.insert(symbolID, layer);
    }
  }
  return pages_.isEmpty() ? QStringLiteral("it has no pages") : QString();
}

void SketchDocument::readForeignSymbols() {
  const auto symbols = document_.json->find("foreignSymbols");
  if (symbols == document_.json->end() || !symbols->is_array()) return;
  for (SketchJson& symbol : *symbols) {
    const QString symbolID = textIn(memberOf(symbol, "symbolMaster"), "symbolID");
    if (symbolID.isNull() || symbolMasters_.contains(symbolID)) continue;
    SketchJson& master = symbol["symbolMaster"];
    if (!objectionToLayers(master).isEmpty()) continue;
    symbolMasters_.insert(
        symbolID, SketchLayer::make({document_.json, &master}, document_.isChanged, nullptr));
  }
}

void SketchDocument::readStyles() {
  const auto add = [this](const SketchJson& style) {
    const QString objectID = textIn(style, "do_objectID");
    if (!sharedStyles_.contains(objectID))
      sharedStyles_.insert(objectID, &memberOf(style, "value"));
  };
  for (const char* kind : {"layerStyles", "layerTextStyles"}) {
    for (const SketchJson& style : listIn(memberOf(document(), kind), "objects")) add(style);
  }
  for (const char* kind : {"foreignLayerStyles", "foreignTextStyles"}) {
    for (const SketchJson& style : listIn(document(), kind))
      add(memberOf(style, "localSharedStyle"));
  }
}

bool SketchDocument::hasKnownEnding(const QString& path) {
  return path.endsWith(QStringLiteral(".sketch"), Qt::CaseInsensitive);
}

bool SketchDocument::save(const QString& path, QString* error) {
  const QByteArray all = bytes(error);
  if (all.isEmpty()) return false;
  if (!lock_) lock_ = FileLock::take(path, kLongestWriting, error);
  if (!lock_) return false;
  const auto unlock = qScopeGuard([this] { lock_.reset(); });
  if (hasChangedOnDisk(path)) {
    *error =
        QStringLiteral("another program has changed %1 since it was read, so it is left as it is")
            .arg(path);
    return false;
  }
  if (!WholeFile::write(path, all, error)) return false;
  path_ = path;
  known_ = all;
  return true;
}

bool SketchDocument::hasChangedOnDisk(const QString& path) const {
  if (path_.isEmpty() || !isSameFile(path, path_)) return false;
  const QByteArray now = onDisk();
  return !now.isNull() && now != known_;
}

void SketchDocument::disregardDisk() {
  const QByteArray now = onDisk();
  if (!now.isNull()) known_ = now;
}

QByteArray SketchDocument::onDisk() const {
  QByteArray bytes;
  QString error;
  return WholeFile::read(path_, ZipArchive::kMaxArchiveBytes, &bytes, &error) ? bytes
                                                                              : QByteArray();
}

QByteArray SketchDocument::bytes(QString* error) const {
  std::map<QString, QByteArray> replaced;
  for (const JsonFile& file : pageFiles_ + QList<JsonFile>{document_}) {
    if (*file.isChanged) replaced[file.name] = writeSketchJson(*file.json);
  }
  for (auto i = changedFiles_.begin(); i != changedFiles_.end(); ++i) replaced[i.key()] = i.value();
  const QSet<QString> unused = unusedImages();
  for (const QString& name : unused) replaced.erase(name);
  QString problem;
  const QByteArray bytes = archive_->written(replaced, unused, &problem);
  if (bytes.isEmpty()) *error = QStringLiteral("cannot pack the document: %1").arg(problem);
  return bytes;
}

QSet<QString> SketchDocument::unusedImages() const {
  QSet<QString> unused = replacedImages_;
  for (const JsonFile& file : pageFiles_ + QList<JsonFile>{document_}) {
    if (unused.isEmpty()) break;
    removeReferenced(*file.json, &unused);
  }
  return unused;
}

QString SketchDocument::appVersion() const { return textIn(meta(), "appVersion"); }

QString SketchDocument::build() const {
  // A number in every version so far; a string costs nothing.
  const SketchJson& build = memberOf(meta(), "build");
  return build.is_number_integer() ? QString::number(build.get<int64_t>())
                                   : textIn(meta(), "build");
}

QVariantMap SketchDocument::hostInformation() const {
  if (appVersion().isNull()) return {};
  return {{QStringLiteral("CFBundleName"), QStringLiteral("Sketch")},
          {QStringLiteral("CFBundleShortVersionString"), appVersion()},
          {QStringLiteral("CFBundleVersion"), build()}};
}

SketchLayerRef SketchDocument::currentPage() const {
  return pages_.value(integerIn(document(), "currentPageIndex"), pages_.first());
}

QList<SketchLayerRef> SketchDocument::artboards() const {
  QList<SketchLayerRef> artboards;
  for (const SketchLayerRef& page : pages_) {
    for (const SketchLayerRef& layer : page->children()) {
      if (layer->isArtboard()) artboards.append(layer);
    }
  }
  return artboards;
}

QList<SketchLayerRef> SketchDocument::layersNamed(const QString& nameOrID) const {
  QList<SketchLayerRef> identified, named;
  for (const SketchLayerRef& page : pages_) {
    for (const SketchLayerRef& layer : page->withDescendants()) {
      if (layer->objectID() == nameOrID) identified.append(layer);
      if (layer->name() == nameOrID) named.append(layer);
    }
  }
  return identified.isEmpty() ? named : identified;
}

SketchLayerRef SketchDocument::symbolMaster(const QString& symbolID) const {
  return symbolMasters_.value(symbolID);
}

const SketchJson& SketchDocument::sharedStyle(const QString& objectID) const {
  static const SketchJson kNothing;
  const SketchJson* style = sharedStyles_.value(objectID);
  return style ? *style : kNothing;
}

ImageRef SketchDocument::image(const SketchJson& reference) const {
  const QString name = textIn(reference, "_ref");
  const SketchJson& data = memberOf(reference, "data");
  const QString key = data.is_object() ? textIn(data, "_data") : name;
  if (const auto known = images_.find(key); known != images_.end()) return *known;
  QByteArray bytes = data.is_object() ? QByteArray::fromBase64(key.toLatin1()) : file(name);
  // Early documents leave the ending out.
  if (bytes.isNull()) bytes = file(name + QStringLiteral(".png"));
  QString problem = QStringLiteral("it is missing");
  const ImageRef image = bytes.isNull() ? nullptr : ImageFile::fromBytes(bytes, {}, &problem);
  if (!image) logLine(u"SketchDocument: cannot read the picture %@: %@", {name, problem});
  keep(key, image);
  return image;
}

void SketchDocument::keep(const QString& key, const ImageRef& image) const {
  qsizetype bytes = image ? image->pixels().sizeInBytes() : 0;
  for (const ImageRef& kept : images_) bytes += kept ? kept->pixels().sizeInBytes() : 0;
  if (bytes > kMostKeptBytes) images_.clear();
  images_.insert(key, image);
}

QString SketchDocument::addImage(const QByteArray& png) {
  const QByteArray hash = QCryptographicHash::hash(png, QCryptographicHash::Sha1).toHex();
  const QString name = QStringLiteral("images/%1.png").arg(QString::fromLatin1(hash));
  setFile(name, png);
  return name;
}

QByteArray SketchDocument::file(const QString& name) const {
  const auto changed = changedFiles_.find(name);
  if (changed != changedFiles_.end()) return *changed;
  QString problem;
  return archive_->file(name, &problem);
}

QStringList SketchDocument::fileNames() const {
  QStringList names = archive_->names();
  for (auto i = changedFiles_.begin(); i != changedFiles_.end(); ++i) {
    if (!archive_->contains(i.key())) names.append(i.key());
  }
  return names;
}

void SketchDocument::dropWhenUnused(const QString& image) {
  replacedImages_.insert(image);
  images_.remove(image);
}

void SketchDocument::setFile(const QString& name, const QByteArray& bytes) {
  changedFiles_.insert(name, bytes);
  images_.remove(name);
}

}  // namespace kelvar
