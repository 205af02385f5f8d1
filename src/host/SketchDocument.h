#pragma once

#include <QByteArray>
#include <QHash>
#include <QSet>
#include <QStringList>

#include "host/SketchLayer.h"
#include "platform/Image.h"

namespace kelvar {

class FileLock;
class SketchDocument;
class ZipArchive;
using SketchDocumentRef = std::shared_ptr<SketchDocument>;

/// A document of Sketch 43 or later: an archive of JSON files and pictures.
///
/// What is not understood is kept: files that nobody changed are written again byte for byte, and
/// in a changed file every member keeps its place. Input is not trusted; docs/sketch-documents.md
/// states the limits. Every failure is one sentence for the person who gave the path. Main thread,
/// or any one thread for a document.
class KELVAR_EXPORT SketchDocument : public Object {
 public:
  ~SketchDocument() override;
  static const ClassInfo& theClass();
  const ClassInfo& classInfo() const override { return theClass(); }

  /// Whether a path names a document: it ends in ".sketch".
  static bool hasKnownEnding(const QString& path);

  /// Null, and `*error` says why, when it cannot be read.
  static SketchDocumentRef open(const QString& path, QString* error);
  /// The same, to be saved in its own place: other programs that would do that too wait until this
  /// one is saved or gone. Null also when one of them takes too long.
  static SketchDocumentRef openToReplace(const QString& path, QString* error);
  /// The document in `bytes`, called `name` in sentences.
  static SketchDocumentRef read(const QByteArray& bytes, const QString& name, QString* error);

  /// Where it was opened, or saved last.
  QString path() const { return path_; }
  /// Replaces the file at `path` whole, or leaves it as it was. Refuses where that is the
  /// document's own file and somebody else has changed it: see `disregardDisk`.
  bool save(const QString& path, QString* error);
  /// Whether somebody else has changed the file at `path` since it was read or written here. A file
  /// that is none of ours has not changed, and nothing is lost with one that has gone.
  bool hasChangedOnDisk(const QString& path) const;
  /// What is on disk now may be replaced.
  void disregardDisk();
  /// The document as a file. Empty, and `*error` says why, when it cannot be made.
  QByteArray bytes(QString* error) const;

  /// The version and build of the host that wrote the document, such as "52.1" and "67048": the
  /// host version, for whoever asks which host this is. Null when the document does not say.
  QString appVersion() const;
  QString build() const;
  /// The same under the keys of a bundle's Info.plist, for `Bundle`. Empty when the document does
  /// not say.
  QVariantMap hostInformation() const;

  /// In the document's order.
  const QList<SketchLayerRef>& pages() const { return pages_; }
  /// The page that was open when it was saved last: never null.
  SketchLayerRef currentPage() const;
  /// Every artboard and symbol master, in the order of the pages.
  QList<SketchLayerRef> artboards() const;
  /// The layers whose identifier is this, otherwise those that have this name.
  QList<SketchLayerRef> layersNamed(const QString& nameOrID) const;
  /// The master of a symbol, of the document itself or of a library; null when it is missing.
  SketchLayerRef symbolMaster(const QString& symbolID) const;
  /// The value of a shared layer or text style; null JSON when it is missing. Keep the document
  /// while it is used.
  const nlohmann::ordered_json& sharedStyle(const QString& objectID) const;

  /// document.json, meta.json.
  const nlohmann::ordered_json& document() const { return *document_.json; }
  const nlohmann::ordered_json& meta() const { return *meta_.json; }

  /// The picture that a fill's or bitmap's "image" refers to, or holds itself. Read once and kept,
  /// as long as all that is kept has room.
  /// Null, and a line in the log, when it is missing or cannot be read.
  ImageRef image(const nlohmann::ordered_json& reference) const;
  /// Keeps a picture file under its hash in images/ and returns the reference to it, "images/…".
  QString addImage(const QByteArray& png);

  /// A file of the archive; null bytes when there is none or it cannot be read.
  QByteArray file(const QString& name) const;
  QStringList fileNames() const;
  /// Adds or replaces a file that is neither JSON of the document nor a page.
  void setFile(const QString& name, const QByteArray& bytes);
  /// Leaves a picture out of what is saved, unless something still refers to it by then.
  void dropWhenUnused(const QString& image);

  /// A sentence for each thing that scripts have had drawn otherwise than the document wants it.
  const QStringList& warnings() const { return warnings_; }
  void addWarnings(const QStringList& warnings);

 private:
  struct JsonFile {
    QString name;
    std::shared_ptr<nlohmann::ordered_json> json;
    /// Whether it is to be written anew.
    std::shared_ptr<bool> isChanged;
  };

  SketchDocument();
  /// The file as it is now; null when it cannot be read.
  QByteArray onDisk() const;
  /// These return what is wrong, or none.
  QString readArchive(const QByteArray& bytes);
  QString readJson(JsonFile* file);
  QString readPages();
  void readForeignSymbols();
  void readStyles();
  /// Which of the replaced pictures nobody refers to.
  QSet<QString> unusedImages() const;
  void keep(const QString& key, const ImageRef& image) const;

  QString path_;
  /// The file as it was read or written last, or was to be replaced.
  QByteArray known_;
  std::unique_ptr<FileLock> lock_;
  std::shared_ptr<ZipArchive> archive_;
  size_t valuesLeft_ = 0;
  JsonFile document_;
  JsonFile meta_;
  QList<JsonFile> pageFiles_;
  QList<SketchLayerRef> pages_;
  QHash<QString, SketchLayerRef> symbolMasters_;
  QHash<QString, const nlohmann::ordered_json*> sharedStyles_;
  QHash<QString, QByteArray> changedFiles_;
  QSet<QString> replacedImages_;
  QStringList warnings_;
  mutable QHash<QString, ImageRef> images_;
};

}  // namespace kelvar
