/// One row of the panel in its own window: the design on the phone, its quality and its rotation.
/// The row decides nothing: it reports what the user does to the delegates below.
///
///   kelvar-example-row design.png phone.jpg "x,y x,y x,y x,y"

#include <QApplication>
#include <QFileInfo>
#include <QVBoxLayout>
#include <QWidget>
#include <cstdio>

#include "mockup/Mapping.h"
#include "platform/image/ImageFile.h"
#include "ui/KVPopupCell.h"
#include "ui/KVViewController.h"

using namespace kelvar;

namespace {

/// The state that the row shows and changes.
struct Mockup {
  ImageRef design, photo;
  Mapping mapping;
  int quality = 1;  // Index of "2x" among the row's items.
  bool shown = true;

  ImageRef image() const {
    Mapping mine = mapping;
    mine.options.quality = quality + 1;
    return design && shown ? mine.compositeOnto(design, photo).value_or(photo) : photo;
  }
};

/// Corners from "x,y x,y x,y x,y".
warp::Quad quadFrom(const QString& text) {
  const QStringList words = text.split(u' ', Qt::SkipEmptyParts);
  warp::Quad quad;
  for (qsizetype i = 0; i < 4; ++i) {
    const QStringList numbers = words.value(i).split(u',');
    quad[size_t(i)] = {numbers.value(0).toDouble(), numbers.value(1).toDouble()};
  }
  return quad;
}

QVariantMap menuItem(const QString& title, const QString& identifier, const ImageRef& image) {
  QVariantMap item{{QStringLiteral("title"), title}, {QStringLiteral("identifier"), identifier}};
  if (image) item[QStringLiteral("image")] = QVariant::fromValue(image);
  return item;
}

}  // namespace

int main(int argc, char** argv) {
  const QApplication application(argc, argv);
  const QStringList arguments = QApplication::arguments();
  if (arguments.size() != 4) {
    std::fputs("usage: kelvar-example-row DESIGN PHOTO \"x,y x,y x,y x,y\"\n", stderr);
    return 2;
  }
  const auto designFile = ImageFile::read(arguments[1], {});
  const auto photoFile = designFile ? ImageFile::read(arguments[2], {}) : designFile;
  if (!photoFile) {
    std::fprintf(stderr, "%s\n", photoFile.error().message.c_str());
    return 1;
  }
  const ImageRef design = *designFile;
  Mockup mockup{.design = design, .photo = *photoFile};
  mockup.mapping.corners = quadFrom(arguments[3]);

  const KVPopupCellRef chooser = KVPopupCell::initWithNibName();
  const KVViewControllerRef row = KVViewController::initWithNibName();
  const auto refresh = [&] {
    row->setPreviewImage(mockup.image());
    row->setImageQuality(mockup.quality);
    row->setIncludeInArtboards(mockup.shown ? 1 : 0);
    row->reloadData();
  };

  const auto chosen = std::make_shared<KVPopupCellDelegate>();
  chosen->popupCellSelectedDidChange = [&](KVPopupCell& cell) {
    mockup.design = cell.selectedIdentifier() == u"design" ? design : nullptr;
    refresh();
  };
  const QString title = QFileInfo(arguments[1]).completeBaseName();
  chooser->setName(QStringLiteral("Phone"));
  chooser->setImage(mockup.photo);
  chooser->setPopupMenu(
      KVMenu::menuWithItems({menuItem(title, QStringLiteral("design"), design),
                             QVariantMap{{QStringLiteral("type"), QStringLiteral("separator")}},
                             menuItem(QStringLiteral("None"), QStringLiteral("none"), nullptr)}));
  chooser->setSelectedIdentifier(QStringLiteral("design"));
  chooser->setDelegate(chosen);

  // No refresh operation: that button does nothing here.
  const auto pressed = std::make_shared<KVViewControllerDelegate>();
  pressed->controllerDidPressRotateLayer = [&](KVViewController&) {
    mockup.mapping.options.rotation = (mockup.mapping.options.rotation + 1) % 4;
    refresh();
  };
  pressed->controllerDidPressFlipLayer = [&](KVViewController&) {
    mockup.mapping.options.flipped = !mockup.mapping.options.flipped;
    refresh();
  };
  pressed->controllerDidSelectImageQuality = [&](KVViewController&, const QVariant& index) {
    mockup.quality = index.toInt();
    refresh();
  };
  pressed->controllerDidToggleIncludeInArtboards = [&](KVViewController&, const QVariant& state) {
    mockup.shown = state.toInt() == 1;
    refresh();
  };
  row->setDelegate(pressed);

  QWidget window;
  QVBoxLayout layout(&window);
  layout.setContentsMargins(0, 0, 0, 0);
  layout.setSpacing(0);
  layout.addWidget(chooser->view());
  layout.addWidget(row->view());
  layout.addStretch();
  refresh();
  window.setWindowTitle(QStringLiteral("Kelvar: one row"));
  window.show();
  return QApplication::exec();
}
