#include "sketch/document/DocumentFiles.h"

#include <algorithm>

#include "platform/QtError.h"
#include "platform/files/ZipArchive.h"

namespace kelvar {
namespace {

const auto kDocumentFile = QStringLiteral("document.json");
const auto kMetaFile = QStringLiteral("meta.json");
constexpr const char* kForeignSymbols = "foreignSymbols";
constexpr const char* kSymbolMaster = "symbolMaster";

/// Of all JSON files together: a value takes up to a hundred bytes of memory.
constexpr size_t kMaxValues = size_t{1} << 23;

tl::unexpected<Error> damaged(const QString& why) { return failure(Error::Kind::Damaged, why); }

/// Fails where one of the layers below is not an object.
Result<void> checkLayers(const SketchJson& layer) {
  int number = 0;
  for (const SketchJson& child : getArray(layer, "layers")) {
    ++number;
    if (!child.is_object()) {
      return damaged(QStringLiteral("layer %1 in \"%2\" is not an object")
                         .arg(number)
                         .arg(getString(layer, "name")));
    }
    if (const Result<void> checked = checkLayers(child); !checked) return checked;
  }
  return {};
}

void removeReferenced(const SketchJson& value, QSet<QString>* names) {
  if (value.is_object()) names->remove(getString(value, "_ref"));
  if (!value.is_structured()) return;
  for (const SketchJson& part : value) removeReferenced(part, names);
}

}  // namespace

DocumentFiles::DocumentFiles() : valuesLeft_(kMaxValues) {}
DocumentFiles::~DocumentFiles() = default;

Result<std::unique_ptr<DocumentFiles>> DocumentFiles::read(const QByteArray& archive) {
  std::unique_ptr<DocumentFiles> contents(new DocumentFiles);
  if (const auto read = contents->readFiles(archive); !read) return tl::unexpected(read.error());
  return contents;
}

Result<void> DocumentFiles::readFiles(const QByteArray& archive) {
  if (archive.isEmpty()) return damaged(QStringLiteral("the file is empty"));
  auto read = ZipArchive::read(archive);
  if (!read) return tl::unexpected(read.error());
  archive_ = *std::move(read);
  if (!archive_->contains(kDocumentFile)) {
    return failure(Error::Kind::Unsupported,
                   QStringLiteral("it is not a document from Sketch 43 or later: it has no %1")
                       .arg(kDocumentFile));
  }
  Result<SketchJson> document = readJson(kDocumentFile);
  if (!document) return tl::unexpected(document.error());
  document_ = *std::move(document);
  if (archive_->contains(kMetaFile)) {
    Result<SketchJson> meta = readJson(kMetaFile);
    if (!meta) return tl::unexpected(meta.error());
    meta_ = *std::move(meta);
  }
  if (Result<void> pages = readPages(); !pages) return pages;
  takeForeignMasters();
  indexStyles();
  return {};
}

Result<SketchJson> DocumentFiles::readJson(const QString& name) {
  Result<QByteArray> bytes = archive_->file(name);
  if (!bytes) return tl::unexpected(bytes.error());
  Result<SketchJson> json = readSketchJson(*std::move(bytes), &valuesLeft_);
  if (!json) {
    return failure(json.error().kind,
                   QStringLiteral("its file %1: %2").arg(name, messageOf(json.error())));
  }
  if (!json->is_object()) return damaged(QStringLiteral("its file %1 holds no object").arg(name));
  return json;
}

Result<void> DocumentFiles::readPages() {
  for (const SketchJson& reference : getArray(document_, "pages")) {
    const QString name = getString(reference, "_ref") + QStringLiteral(".json");
    if (!archive_->contains(name)) {
      return damaged(QStringLiteral("its page %1 is missing").arg(name));
    }
    Result<SketchJson> json = readJson(name);
    if (!json) return tl::unexpected(json.error());
    if (Result<void> checked = checkLayers(*json); !checked) return checked;
    pages_.push_back(
        {{std::make_shared<Layer>(*std::move(json)), std::make_shared<bool>(false)}, name});
  }
  if (pages_.empty()) return damaged(QStringLiteral("it has no pages"));
  return {};
}

void DocumentFiles::setCurrentPage(int index) {
  if (getInt(document_, "currentPageIndex") == index) return;
  document_["currentPageIndex"] = index;
  *isDocumentChanged_ = true;
}

DocumentFiles::Mark DocumentFiles::addPage(const std::shared_ptr<Layer>& page) {
  const QString name = QStringLiteral("pages/") + page->properties().objectID;
  const auto mark = std::make_shared<bool>(true);
  pages_.push_back({{page, mark}, name + QStringLiteral(".json")});
  removedPages_.remove(pages_.back().fileName);
  document_["pages"].push_back({{"_class", "MSJSONFileReference"},
                                {"_ref_class", "MSImmutablePage"},
                                {"_ref", name.toStdString()}});
  *isDocumentChanged_ = true;
  return mark;
}

void DocumentFiles::removePage(size_t index) {
  removedPages_.insert(pages_[index].fileName);
  pages_.erase(pages_.begin() + ptrdiff_t(index));
  document_["pages"].erase(index);
  *isDocumentChanged_ = true;
}

void DocumentFiles::takeForeignMasters() {
  const auto symbols = document_.find(kForeignSymbols);
  if (symbols == document_.end() || !symbols->is_array()) return;
  for (size_t i = 0; i < symbols->size(); ++i) {
    if (!get((*symbols)[i], kSymbolMaster).is_object()) continue;
    SketchJson& master = (*symbols)[i][kSymbolMaster];
    if (!checkLayers(master)) continue;
    foreignMasters_.push_back(
        {{std::make_shared<Layer>(std::exchange(master, nullptr)), isDocumentChanged_}, i});
  }
}

void DocumentFiles::indexStyles() const {
  sharedStyles_.clear();
  const auto add = [this](const SketchJson& style) {
    const QString objectID = getString(style, "do_objectID");
    if (!sharedStyles_.contains(objectID)) sharedStyles_.insert(objectID, &get(style, "value"));
  };
  for (const char* kind : {"layerStyles", "layerTextStyles"}) {
    for (const SketchJson& style : getArray(get(document_, kind), "objects")) add(style);
  }
  for (const char* kind : {"foreignLayerStyles", "foreignTextStyles"}) {
    for (const SketchJson& style : getArray(document_, kind)) add(get(style, "localSharedStyle"));
  }
  areStylesIndexed_ = true;
}

QList<DocumentFiles::LayerTree> DocumentFiles::foreignMasters() const {
  return {foreignMasters_.begin(), foreignMasters_.end()};
}

std::shared_ptr<Layer> DocumentFiles::foreignMaster(size_t index) const {
  for (const ForeignMaster& master : foreignMasters_) {
    if (master.index == index) return master.root;
  }
  return nullptr;
}

const SketchJson& DocumentFiles::sharedStyle(const QString& objectID) const {
  static const SketchJson kNothing;
  if (!areStylesIndexed_) indexStyles();
  const SketchJson* style = sharedStyles_.value(objectID);
  return style ? *style : kNothing;
}

bool DocumentFiles::usesDisplayP3() const {
  // The other color spaces are sRGB and that of whatever screen it is.
  constexpr int kDisplayP3 = 2;
  return getInt(document_, "colorSpace") == kDisplayP3;
}

SketchJson DocumentFiles::wholeDocument() const {
  SketchJson whole = document_;
  for (const ForeignMaster& master : foreignMasters_) {
    whole[kForeignSymbols][master.index][kSymbolMaster] = master.root->toJson();
  }
  return whole;
}

SketchJson& DocumentFiles::changeDocument() {
  areStylesIndexed_ = false;
  *isDocumentChanged_ = true;
  return document_;
}

Result<QByteArray> DocumentFiles::packed() const {
  std::map<QString, QByteArray> replaced;
  for (const Page& page : pages_) {
    if (!differs(page.fileName, page.isChanged)) continue;
    std::string text;
    page.root->appendTo(&text);
    replaced[page.fileName] = QByteArray::fromStdString(text);
  }
  if (differs(kDocumentFile, isDocumentChanged_)) {
    replaced[kDocumentFile] = writeSketchJson(wholeDocument());
  }
  for (auto i = changedFiles_.begin(); i != changedFiles_.end(); ++i) replaced[i.key()] = i.value();
  const QSet<QString> unused = unusedImages();
  for (const QString& name : unused) replaced.erase(name);
  Result<QByteArray> bytes = archive_->written(replaced, unused + removedPages_);
  if (bytes) return bytes;
  return failure(bytes.error().kind,
                 QStringLiteral("cannot pack the document: %1").arg(messageOf(bytes.error())));
}

void DocumentFiles::setSaved() {
  const auto markSaved = [this](const QString& name, const Mark& isChanged) {
    if (std::exchange(*isChanged, false)) savedFiles_.insert(name);
  };
  for (const Page& page : pages_) markSaved(page.fileName, page.isChanged);
  markSaved(kDocumentFile, isDocumentChanged_);
  areFilesSaved_ = true;
}

bool DocumentFiles::hasUnsavedChanges() const {
  return *isDocumentChanged_ || !areFilesSaved_ ||
         std::any_of(pages_.begin(), pages_.end(),
                     [](const Page& page) { return *page.isChanged; });
}

bool DocumentFiles::differs(const QString& name, const Mark& isChanged) const {
  return *isChanged || savedFiles_.contains(name);
}

QSet<QString> DocumentFiles::unusedImages() const {
  QSet<QString> unused = replacedImages_;
  const auto look = [&](const SketchJson& json) {
    if (!unused.isEmpty()) removeReferenced(json, &unused);
  };
  look(document_);
  for (const Page& page : pages_) page.root->eachJson(look);
  for (const ForeignMaster& master : foreignMasters_) master.root->eachJson(look);
  return unused;
}

void DocumentFiles::setFile(const QString& name, const QByteArray& bytes) {
  changedFiles_.insert(name, bytes);
  areFilesSaved_ = false;
}

QByteArray DocumentFiles::file(const QString& name) const {
  const auto changed = changedFiles_.find(name);
  if (changed != changedFiles_.end()) return *changed;
  return archive_->file(name).value_or(QByteArray());
}

QStringList DocumentFiles::fileNames() const {
  QStringList names = archive_->names();
  for (auto i = changedFiles_.begin(); i != changedFiles_.end(); ++i) {
    if (!archive_->contains(i.key())) names.append(i.key());
  }
  return names;
}

}  // namespace kelvar
