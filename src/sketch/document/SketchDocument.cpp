#include "sketch/document/SketchDocument.h"

#include <QCryptographicHash>
#include <QScopeGuard>
#include <chrono>

#include "platform/Log.h"
#include "platform/QtError.h"
#include "platform/files/File.h"
#include "platform/files/FileLock.h"
#include "platform/files/FileName.h"
#include "platform/files/ZipArchive.h"
#include "platform/image/ImageFile.h"
#include "platform/image/VectorFile.h"
#include "sketch/document/DocumentFiles.h"
#include "sketch/document/UserInfo.h"

namespace kelvar {
namespace {

/// PDFs, which the documents of some versions have, are drawn for twice their size.
Result<ImageRef> readImage(const QByteArray& bytes) {
  constexpr double kMaxSide = 4096;
  if (!bytes.startsWith("%PDF-")) return ImageFile::fromBytes(bytes, {});
  return readPdf(bytes, [](const QSizeF& natural) {
    const double longest = std::max(natural.width(), natural.height());
    return natural * std::clamp(kMaxSide / longest, 1.0, 2.0);
  });
}

/// Longer than another program should take from reading to writing, and for writing alone.
constexpr std::chrono::seconds kMaxReadWait{30};
constexpr std::chrono::seconds kMaxWriteWait{10};

/// Of the images that are kept: they are a thousand times as large as their files can be.
constexpr qsizetype kMaxKeptBytes = qsizetype{1} << 30;

}  // namespace

SketchDocument::SketchDocument(std::unique_ptr<DocumentFiles> files) : files_(std::move(files)) {
  for (const DocumentFiles::Page& page : files_->pages()) {
    pages_.append(SketchLayer::make(page.root, page.isChanged, nullptr));
  }
  for (const DocumentFiles::LayerTree& master : files_->foreignMasters()) {
    if (master.root->properties().symbolID.isNull()) continue;
    foreignMasters_.append(SketchLayer::make(master.root, master.isChanged, nullptr));
  }
}

/// Of two masters with one identifier the first counts, and those of the document come first.
void SketchDocument::indexSymbols() const {
  symbolMasters_.clear();
  const auto add = [this](const SketchLayerRef& layer) {
    const QString symbolID = layer->node().properties().symbolID;
    if (!symbolMasters_.contains(symbolID)) symbolMasters_.insert(symbolID, layer);
  };
  for (const SketchLayerRef& page : pages_) {
    for (const SketchLayerRef& layer : page->withDescendants()) {
      if (classOf(layer->node().json()) == u"symbolMaster") add(layer);
    }
  }
  for (const SketchLayerRef& master : foreignMasters_) add(master);
  areSymbolsKnown_ = true;
}

SketchDocument::~SketchDocument() = default;

Result<SketchDocumentRef> SketchDocument::open(const QString& path) {
  const Result<QByteArray> bytes = File::readAll(path, ZipArchive::kMaxArchiveBytes);
  if (!bytes) return tl::unexpected(bytes.error());
  Result<SketchDocumentRef> document = read(*bytes, path);
  if (!document) return document;
  (*document)->path_ = path;
  (*document)->known_ = *bytes;
  return document;
}

Result<SketchDocumentRef> SketchDocument::openToReplace(const QString& path) {
  Result<std::unique_ptr<FileLock>> lock = FileLock::take(path, kMaxReadWait);
  if (!lock) return tl::unexpected(lock.error());
  Result<SketchDocumentRef> document = open(path);
  if (document) (*document)->lock_ = *std::move(lock);
  return document;
}

Result<SketchDocumentRef> SketchDocument::read(const QByteArray& bytes, const QString& name) {
  auto files = DocumentFiles::read(bytes);
  if (files) {
    const SketchDocumentRef document(new SketchDocument(*std::move(files)));
    for (const SketchLayerRef& root : document->pages_ + document->foreignMasters_) {
      root->document_ = document;
    }
    return document;
  }
  return failure(files.error().kind,
                 QStringLiteral("cannot read %1: %2").arg(name, messageOf(files.error())));
}

bool SketchDocument::hasSupportedExtension(const QString& path) {
  return path.endsWith(QStringLiteral(".sketch"), Qt::CaseInsensitive);
}

Result<void> SketchDocument::save(const QString& path) {
  const Result<QByteArray> all = bytes();
  if (!all) return tl::unexpected(all.error());
  if (!lock_) {
    Result<std::unique_ptr<FileLock>> lock = FileLock::take(path, kMaxWriteWait);
    if (!lock) return tl::unexpected(lock.error());
    lock_ = *std::move(lock);
  }
  const auto unlock = qScopeGuard([this] { lock_.reset(); });
  if (hasChangedOnDisk(path)) {
    return failure(
        Error::Kind::Io,
        QStringLiteral("another program has changed %1 since it was read, so it is left as it is")
            .arg(path));
  }
  if (Result<void> written = File::writeAtomically(path, *all); !written) return written;
  path_ = path;
  known_ = *all;
  files_->setSaved();
  return {};
}

bool SketchDocument::hasUnsavedChanges() const { return files_->hasUnsavedChanges(); }

bool SketchDocument::hasChangedOnDisk(const QString& path) const {
  if (path_.isEmpty() || !isSameFile(path, path_)) return false;
  const QByteArray now = onDisk();
  return !now.isNull() && now != known_;
}

void SketchDocument::acceptDiskVersion() {
  const QByteArray now = onDisk();
  if (!now.isNull()) known_ = now;
}

QByteArray SketchDocument::onDisk() const {
  return File::readAll(path_, ZipArchive::kMaxArchiveBytes).value_or(QByteArray());
}

Result<QByteArray> SketchDocument::bytes() const { return files_->packed(); }

QString SketchDocument::appVersion() const { return getString(files_->meta(), "appVersion"); }

QString SketchDocument::build() const {
  // A number in every version so far; a string costs nothing.
  const SketchJson& build = get(files_->meta(), "build");
  return build.is_number_integer() ? QString::number(build.get<int64_t>())
                                   : getString(files_->meta(), "build");
}

QVariantMap SketchDocument::hostInformation() const {
  if (appVersion().isNull()) return {};
  return {{QStringLiteral("CFBundleName"), QStringLiteral("Sketch")},
          {QStringLiteral("CFBundleShortVersionString"), appVersion()},
          {QStringLiteral("CFBundleVersion"), build()}};
}

SketchLayerRef SketchDocument::currentPage() const {
  return pages_.value(getInt(files_->document(), "currentPageIndex"), pages_.first());
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
  if (!areSymbolsKnown_) indexSymbols();
  return symbolMasters_.value(symbolID);
}

QList<SketchLayerRef> SketchDocument::selection() const {
  QList<SketchLayerRef> selected;
  QSet<const SketchLayer*> known;
  for (const std::weak_ptr<SketchLayer>& each : selection_) {
    const SketchLayerRef layer = each.lock();
    if (!layer || !layer->isSelected_ || layer->document().get() != this) continue;
    if (known.contains(layer.get())) continue;
    known.insert(layer.get());
    selected.append(layer);
  }
  return selected;
}

void SketchDocument::select(const SketchLayerRef& layer, bool isSelected) {
  // A layer that was selected before is still in the list, but in an earlier place.
  if (isSelected && !layer->isSelected_) selection_.append(layer);
  layer->isSelected_ = isSelected;
}

void SketchDocument::deselectAll() {
  for (const std::weak_ptr<SketchLayer>& each : selection_) {
    if (const SketchLayerRef layer = each.lock()) layer->isSelected_ = false;
  }
  selection_.clear();
}

Result<void> SketchDocument::setCurrentPage(const SketchLayerRef& page) {
  const qsizetype index = pages_.indexOf(page);
  if (index < 0) return failure(Error::Kind::InvalidArgument, "it is not a page of this document");
  files_->setCurrentPage(int(index));
  return {};
}

SketchLayerRef SketchDocument::addPage(const SketchLayerRef& page) {
  page->moveTo(files_->addPage(page->node_));
  page->document_ = std::static_pointer_cast<SketchDocument>(shared_from_this());
  pages_.append(page);
  forgetSymbols();
  return page;
}

Result<void> SketchDocument::removePage(const SketchLayerRef& page) {
  const qsizetype index = pages_.indexOf(page);
  if (index < 0) return failure(Error::Kind::InvalidArgument, "it is not a page of this document");
  if (pages_.size() == 1) {
    return failure(Error::Kind::InvalidArgument, "a document must have a page");
  }
  const qsizetype open = pages_.indexOf(currentPage());
  files_->removePage(size_t(index));
  pages_.removeAt(index);
  files_->setCurrentPage(int(open > index || open == pages_.size() ? open - 1 : open));
  page->document_.reset();
  page->moveTo(std::make_shared<bool>(false));
  forgetSymbols();
  return {};
}

namespace {

std::weak_ptr<SketchDocument>& currentSlot() {
  static std::weak_ptr<SketchDocument> kDocument;
  return kDocument;
}

}  // namespace

SketchDocumentRef SketchDocument::current() { return currentSlot().lock(); }
void SketchDocument::setCurrent(const SketchDocumentRef& document) { currentSlot() = document; }

ImageRef SketchDocument::image(const ImageReference& reference) const {
  const QString key = reference.data.value_or(reference.name);
  if (const auto known = images_.find(key); known != images_.end()) return *known;
  QByteArray bytes = reference.data ? QByteArray::fromBase64(key.toLatin1()) : file(reference.name);
  // Early documents leave the extension out.
  for (const auto& extension : {QStringLiteral(".png"), QStringLiteral(".pdf")}) {
    if (bytes.isNull()) bytes = file(reference.name + extension);
  }
  const Result<ImageRef> image =
      bytes.isNull() ? Result<ImageRef>(failure(Error::Kind::NotFound, "it is missing"))
                     : readImage(bytes);
  if (!image) {
    logLine(u"SketchDocument: cannot read the image %@: %@",
            {reference.name, messageOf(image.error())});
  }
  keep(key, image.value_or(nullptr));
  return image.value_or(nullptr);
}

void SketchDocument::keep(const QString& key, const ImageRef& image) const {
  qsizetype bytes = image ? image->pixels().sizeInBytes() : 0;
  for (const ImageRef& kept : images_) bytes += kept ? kept->pixels().sizeInBytes() : 0;
  if (bytes > kMaxKeptBytes) images_.clear();
  images_.insert(key, image);
}

QString SketchDocument::addImage(const QByteArray& png) {
  const QByteArray hash = QCryptographicHash::hash(png, QCryptographicHash::Sha1).toHex();
  const QString name = QStringLiteral("images/%1.png").arg(QString::fromLatin1(hash));
  setFile(name, png);
  return name;
}

QByteArray SketchDocument::file(const QString& name) const { return files_->file(name); }
QStringList SketchDocument::fileNames() const { return files_->fileNames(); }

void SketchDocument::dropWhenUnused(const QString& image) {
  files_->dropWhenUnused(image);
  images_.remove(image);
}

QVariantMap SketchDocument::userInfo(const QString& key) const {
  return userInfoOf(files_->document(), key);
}

void SketchDocument::setUserInfo(const QString& key, const QVariantMap& value) {
  kelvar::setUserInfo(&files_->changeDocument(), key, value);
}

void SketchDocument::setFile(const QString& name, const QByteArray& bytes) {
  files_->setFile(name, bytes);
  images_.remove(name);
}

}  // namespace kelvar
