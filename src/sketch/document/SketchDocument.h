#pragma once

#include <QByteArray>
#include <QHash>
#include <QStringList>

#include "pixels/Result.h"
#include "platform/image/Image.h"
#include "sketch/document/ImageReference.h"
#include "sketch/document/SketchLayer.h"

namespace kelvar {

class DocumentFiles;
class FileLock;
class SketchDocument;
using SketchDocumentRef = std::shared_ptr<SketchDocument>;

/// A document from Sketch 43 or later: an archive of JSON files and images.
///
/// Content that Kelvar does not understand is preserved: unchanged files are written back byte for
/// byte, and in a changed file every member keeps its place. Input is not trusted;
/// docs/sketch-documents.md lists the limits. Each document belongs to one thread, the main one or
/// any other.
class KELVAR_EXPORT SketchDocument : public Object {
 public:
  ~SketchDocument() override;
  static const ClassInfo& staticClassInfo();
  const ClassInfo& classInfo() const override;

  /// Whether a path names a document: it ends in ".sketch".
  static bool hasSupportedExtension(const QString& path);

  static Result<SketchDocumentRef> open(const QString& path);
  /// Opens a document that will be saved in place. Other programs that want to replace it wait
  /// until this one is saved or destroyed; fails if one of them takes too long.
  static Result<SketchDocumentRef> openToReplace(const QString& path);
  /// The document in `bytes`, called `name` in error messages.
  static Result<SketchDocumentRef> read(const QByteArray& bytes, const QString& name);

  /// The path that the document was opened from or last saved to.
  QString path() const { return path_; }
  /// Where scripts save it unless they name a path: at `path`, or where `setSavePath` says.
  QString savePath() const { return savePath_.isNull() ? path_ : savePath_; }
  void setSavePath(const QString& path) { savePath_ = path; }
  /// Whether it was changed since it was read or last saved.
  bool hasUnsavedChanges() const;
  /// Replaces the file at `path` completely or leaves it as it was. Fails if that is the document's
  /// own file and another program has changed it: see `acceptDiskVersion`.
  Result<void> save(const QString& path);
  /// Whether another program has changed the file at `path` since this document read or wrote it.
  /// False for any other file, and for one that no longer exists: replacing it loses nothing.
  bool hasChangedOnDisk(const QString& path) const;
  /// Allows `save` to replace the version that is now on disk.
  void acceptDiskVersion();
  /// The document as the bytes of a file.
  Result<QByteArray> bytes() const;

  /// The version and build of the application that wrote the document, such as "52.1" and "67048".
  /// Null if the document does not say.
  QString appVersion() const;
  QString build() const;
  /// The same under the keys of a bundle's Info.plist, for `Bundle`. Empty if the document does not
  /// say.
  QVariantMap hostInformation() const;

  /// In the document's order.
  const QList<SketchLayerRef>& pages() const { return pages_; }
  /// The page that was open when the document was last saved; never null.
  SketchLayerRef currentPage() const;
  /// Every artboard and symbol master, in the order of the pages.
  QList<SketchLayerRef> artboards() const;
  /// The layers with this identifier or, if there are none, those with this name.
  QList<SketchLayerRef> layersNamed(const QString& nameOrID) const;
  /// The master of a symbol, of the document itself or of a library; null if it is missing.
  SketchLayerRef symbolMaster(const QString& symbolID) const;
  /// Finds the masters of symbols again when they are next asked for. Called when layers come or
  /// go.
  void forgetSymbols() { areSymbolsKnown_ = false; }

  /// The selected layers, in the order in which they were selected. Not saved.
  QList<SketchLayerRef> selection() const;
  /// Selects a layer of this document, or takes it out of the selection.
  void select(const SketchLayerRef& layer, bool isSelected = true);
  void deselectAll();

  /// Makes a page the open one. It must be one of this document.
  Result<void> setCurrentPage(const SketchLayerRef& page);
  /// Adds a page after the others and returns it. It must be in no document, and its identifier
  /// unique.
  SketchLayerRef addPage(const SketchLayerRef& page);
  /// Fails for the only page.
  Result<void> removePage(const SketchLayerRef& page);

  /// The document that scripts work on, as long as it lives; null for none. Main thread.
  static SketchDocumentRef current();
  static void setCurrent(const SketchDocumentRef& document);

  /// The image that a fill or a bitmap refers to. Images are cached up to a size limit. Null, with
  /// a log line, if it is missing or cannot be read.
  ImageRef image(const ImageReference& reference) const;
  /// Adds an image file, named after its hash, to images/ and returns its name, "images/…".
  QString addImage(const QByteArray& png);

  /// A file of the archive; null bytes if there is none or it cannot be read.
  QByteArray file(const QString& name) const;
  QStringList fileNames() const;
  /// Adds or replaces a file other than document.json, meta.json and the pages.
  void setFile(const QString& name, const QByteArray& bytes);
  /// Omits an image when the document is saved, unless something still refers to it then.
  void dropWhenUnused(const QString& image);

  /// The document's "userInfo" under `key`; empty if there is none.
  QVariantMap userInfo(const QString& key) const;
  /// An empty map removes the key, and "userInfo" with its last one.
  void setUserInfo(const QString& key, const QVariantMap& value);

  /// Features that drawings made by scripts do not show as the document specifies, one sentence
  /// each.
  const QStringList& warnings() const { return warnings_; }
  void addWarnings(const QStringList& warnings);

  /// The decoded files, for this library's own use.
  const DocumentFiles& files() const { return *files_; }
  DocumentFiles& edit() { return *files_; }

 private:
  explicit SketchDocument(std::unique_ptr<DocumentFiles> files);
  /// The file as it is now; null if it cannot be read.
  QByteArray onDisk() const;
  void keep(const QString& key, const ImageRef& image) const;
  void indexSymbols() const;

  QString path_;
  QString savePath_;
  /// The file's bytes as last read, written, or accepted for replacement.
  QByteArray known_;
  std::unique_ptr<FileLock> lock_;
  std::unique_ptr<DocumentFiles> files_;
  QList<SketchLayerRef> pages_;
  /// The roots of the symbols of libraries.
  QList<SketchLayerRef> foreignMasters_;
  mutable bool areSymbolsKnown_ = false;
  mutable QHash<QString, SketchLayerRef> symbolMasters_;
  QList<std::weak_ptr<SketchLayer>> selection_;
  QStringList warnings_;
  mutable QHash<QString, ImageRef> images_;
};

}  // namespace kelvar
