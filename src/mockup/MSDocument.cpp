#include "mockup/MSDocument.h"

#include <QDir>
#include <QFileInfo>
#include <QUrl>

#include "mockup/MSContentDrawView.h"
#include "platform/Permissions.h"
#include "platform/UserDialog.h"
#include "platform/files/FileName.h"
#include "platform/image/ImageFile.h"
#include "sketch/classes/LayerClasses.h"
#include "sketch/classes/MSExportRequest.h"
#include "sketch/classes/newLayerJson.h"
#include "sketch/classes/withDocumentLayers.h"
#include "sketch/document/Layer.h"
#include "sketch/render/ArtboardRenderer.h"

namespace kelvar {
namespace {

using namespace Qt::StringLiterals;
using Self = SketchDocument;

const ClassInfo::Registration kRegistered(&documentClass);

SketchDocumentRef refTo(const Self& self) {
  return std::static_pointer_cast<Self>(std::const_pointer_cast<Object>(self.shared_from_this()));
}

QUrl fileURL(const Self& self) {
  return self.path().isEmpty() ? QUrl() : QUrl::fromLocalFile(absoluteFileName(self.path()));
}

QString displayName(const Self& self) { return QFileInfo(self.path()).completeBaseName(); }

SketchLayerRef currentArtboard(const Self& self) {
  for (const SketchLayerRef& layer : self.selection()) {
    if (layer->page() != self.currentPage()) continue;
    if (const SketchLayerRef artboard = layer->artboard()) return artboard;
  }
  return nullptr;
}

QVariantList selection(const Self& self) { return MSLayerArray::toList(self.selection()); }

SketchLayerRef addBlankPage(Self& self) {
  SketchJson json = newLayerJson("page", {});
  json["name"] = u"Page %1"_s.arg(self.pages().size() + 1).toStdString();
  const SketchLayerRef page =
      self.addPage(SketchLayer::create(std::make_unique<Layer>(std::move(json))));
  orRaise(self.setCurrentPage(page));
  return page;
}

QString askForInput(Self&, const QString& question, const QString& initial) {
  return orRaise(
      UserDialog::ask({.text = question, .choices = {}, .initial = initial, .dismissal = u""_s}));
}

/// A folder that cannot be made is missing when the file is written.
void makeFolderOf(const QString& path) { QDir().mkpath(QFileInfo(path).path()); }

/// The extension of the path decides on the format.
void exportLayer(Self& self, const QVariant& what, const QString& path) {
  const ObjectRef object = what.value<ObjectRef>();
  auto request = std::dynamic_pointer_cast<MSExportRequest>(object);
  if (const auto layer = std::dynamic_pointer_cast<SketchLayer>(object)) {
    request = std::dynamic_pointer_cast<MSExportRequest>(
        MSExportRequest::forLayer(layer).first().value<ObjectRef>());
  }
  if (!request) raise(u"saveArtboardOrSlice:toFile: takes a layer or an MSExportRequest"_s);
  orRaise(Permissions::check(Permissions::Kind::Write, path));
  if (ImageFile::hasSupportedExtension(path)) makeFolderOf(path);
  orRaise(ImageFile::checkWritable(path));
  ArtboardRenderer renderer(refTo(self));
  const ImageRef image = orRaise(renderer.render(*request->layer, request->scale));
  self.addWarnings(renderer.warnings());
  orRaise(ImageFile::write(*image, path));
}

MSContentDrawViewRef contentDrawView(const Self&) { return std::make_shared<MSContentDrawView>(); }

/// What scripts ask of the document's window, and of its file.
ClassInfoBuilder<Self> withWindow(ClassInfoBuilder<Self> builder) {
  return std::move(builder)
      .property("fileURL", fileURL,
                "Where the document was opened or last saved, as the URL of a file.")
      .property("displayName", displayName, "The name of the file, without its extension.")
      .operation("isDocumentEdited", &Self::hasUnsavedChanges,
                 "Returns whether there are changes that are not saved.")
      .operation(
          "zoomValue", [](const Self&) { return 1.0; },
          "Returns 1, as there is no canvas that could be zoomed.")
      .operation(
          "reloadInspector", [](Self&) {}, "Does nothing, as there is no inspector.")
      .operation(
          "window", [](const Self&) { return QVariant(); }, "Returns nil, as there is no window.")
      .operation(
          "documentWindow", [](const Self&) { return QVariant(); },
          "Returns nil, as there is no window.")
      .operation("contentDrawView", contentDrawView,
                 "Returns the view of a canvas, which is not there.")
      .operation("currentView", contentDrawView,
                 "Returns the view of a canvas, which is not there.")
      .operation(
          "showMessage:", [](Self&, const QString& text) { UserDialog::show(text); },
          "Shows a message to the user, on standard error.")
      .operation(
          "displayMessage:", [](Self&, const QString& text) { UserDialog::show(text); },
          "Shows a message to the user, on standard error.")
      .operation("askForUserInput:initialValue:", askForInput,
                 "Asks the user for a text and returns it; an empty one if nobody answers.")
      .operation(
          "askForUserInput:ofType:initialValue:",
          [](Self& self, const QString& question, int, const QString& initial) {
            return askForInput(self, question, initial);
          },
          "Asks the user for a text and returns it as it is, whatever the type; an empty one if "
          "nobody answers.");
}

ClassInfoBuilder<Self> withPages(ClassInfoBuilder<Self> builder) {
  return withDocumentLayers(std::move(builder))
      .operation("addBlankPage", addBlankPage, "Adds a page, opens it and returns it.")
      .operation(
          "removePage:",
          [](Self& self, const SketchLayerRef& page) { orRaise(self.removePage(page)); },
          "Removes a page, which must not be the only one.");
}

}  // namespace

const ClassInfo& SketchDocument::classInfo() const { return documentClass(); }

const ClassInfo& documentClass() {
  static const ClassInfo kClass =
      withWindow(withPages(ClassInfoBuilder<Self>("MSDocument", Self::staticClassInfo())))
          .classOperation("currentDocument", &Self::current,
                          "Returns the document that the script was given, or nil.")
          .property(
              "documentData",
              [](const Self& self) { return std::make_shared<MSDocumentData>(refTo(self)); },
              "The pages, symbols and layers.")
          .property("currentArtboard", currentArtboard,
                    "The artboard that is selected or has a selected layer, or nil.")
          .operation("findCurrentArtboardGroup", currentArtboard,
                     "Returns the artboard that is selected or has a selected layer, or nil.")
          .operation(
              "selectedLayers",
              [](const Self& self) { return std::make_shared<MSLayerArray>(self.selection()); },
              "Returns the selected layers.")
          .operation("selection", selection, "Returns the selected layers as an ordinary list.")
          .operation("findSelectedLayers", selection,
                     "Returns the selected layers as an ordinary list.")
          .operation("saveArtboardOrSlice:toFile:", exportLayer,
                     "Draws a layer, or what an MSExportRequest says, into a PNG, JPEG or WebP "
                     "file, by the path's extension. Folders that are missing are made.");
  return kClass;
}

}  // namespace kelvar
