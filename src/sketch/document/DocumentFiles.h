#pragma once

#include <QByteArray>
#include <QHash>
#include <QSet>
#include <QStringList>
#include <memory>
#include <vector>

#include "pixels/Result.h"
#include "sketch/document/Layer.h"

namespace kelvar {

class ZipArchive;

/// The files of a document: read from an archive, decoded, changed, and packed again.
///
/// Files that were not changed keep their bytes. The mark of a changed file is shared by all layers
/// in it; saving takes it off.
class DocumentFiles {
 public:
  using Mark = std::shared_ptr<bool>;
  /// Layers keep the file's JSON alive, so that they can still be read after the document is
  /// destroyed.
  struct LayerTree {
    std::shared_ptr<Layer> root;
    Mark isChanged;
  };
  struct Page : LayerTree {
    QString fileName;
  };

  static Result<std::unique_ptr<DocumentFiles>> read(const QByteArray& archive);
  ~DocumentFiles();

  /// The document as the bytes of a file.
  Result<QByteArray> packed() const;
  /// To be called when what was packed has been saved.
  void setSaved();
  /// Whether anything was changed since it was read or saved.
  bool hasUnsavedChanges() const;

  /// document.json, without the masters in `foreignMasters`, and meta.json.
  const SketchJson& document() const { return document_; }
  /// The same, to be changed immediately.
  SketchJson& changeDocument();
  const SketchJson& meta() const { return meta_; }
  /// Never empty.
  const std::vector<Page>& pages() const { return pages_; }
  /// Opens the page with this index.
  void setCurrentPage(int index);
  /// Adds a page in a file that is named after its identifier. The mark is that of the file.
  Mark addPage(const std::shared_ptr<Layer>& page);
  void removePage(size_t index);
  /// The masters of symbols from libraries, which are stored in document.json.
  QList<LayerTree> foreignMasters() const;
  /// The master of the element with this index in "foreignSymbols"; null if it has none.
  std::shared_ptr<Layer> foreignMaster(size_t index) const;
  /// The value of a shared layer or text style; null JSON when it is missing.
  const SketchJson& sharedStyle(const QString& objectID) const;

  /// The version of the format, such as 136.
  int version() const { return getInt(meta_, "version"); }
  /// Whether colors are in Display P3 rather than sRGB.
  bool usesDisplayP3() const;

  QByteArray file(const QString& name) const;
  QStringList fileNames() const;
  void setFile(const QString& name, const QByteArray& bytes);
  void dropWhenUnused(const QString& image) { replacedImages_.insert(image); }

 private:
  struct ForeignMaster : LayerTree {
    size_t index;  ///< In "foreignSymbols".
  };

  DocumentFiles();
  Result<void> readFiles(const QByteArray& archive);
  Result<SketchJson> readJson(const QString& name);
  Result<void> readPages();
  void takeForeignMasters();
  void indexStyles() const;
  /// Whether the file differs from the archive's: it was changed, perhaps before the last save.
  bool differs(const QString& name, const Mark& isChanged) const;
  /// The complete document.json, including foreign masters.
  SketchJson wholeDocument() const;
  /// The replaced images that nothing refers to any longer.
  QSet<QString> unusedImages() const;

  std::shared_ptr<ZipArchive> archive_;
  size_t valuesLeft_;
  SketchJson document_;
  Mark isDocumentChanged_ = std::make_shared<bool>(false);
  SketchJson meta_;
  std::vector<Page> pages_;
  std::vector<ForeignMaster> foreignMasters_;
  /// Styles move when the document changes.
  mutable QHash<QString, const SketchJson*> sharedStyles_;
  mutable bool areStylesIndexed_ = false;
  /// The JSON files that were changed and saved since the archive was read.
  QSet<QString> savedFiles_;
  QHash<QString, QByteArray> changedFiles_;
  bool areFilesSaved_ = true;
  QSet<QString> replacedImages_;
  QSet<QString> removedPages_;
};

}  // namespace kelvar
