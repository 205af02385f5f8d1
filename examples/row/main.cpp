/// One row of the panel in a window of its own: which design lies on the phone, how sharp, and
/// which way round. The row decides nothing; what the user does arrives at the delegates below.
///
///   kelvar-example-row design.png phone.jpg "x,y x,y x,y x,y"

#include <QApplication>
#include <QFileInfo>
#include <QVBoxLayout>
#include <QWidget>
#include <cstdio>

#include "host/Mapping.h"
#include "platform/ImageFile.h"
#include "ui/KVPopupCell.h"
#include "ui/KVViewController.h"

using namespace kelvar;

namespace {

/// What the row shows and changes.
struct Mockup {
  ImageRef design, photo;
  Mapping mapping;
  int quality = 1;  // Index of "2x" among the row's items.
  bool shown = true;

  ImageRef picture() const {
    Mapping mine = mapping;
    mine.scale = quality + 1;
    return design && shown ? mine.layOnto(design, photo) : photo;
  }
};

/// "x,y x,y" as the library writes points.
PointList points(const QString& text) {
  PointList points;
  for (const QString& word : text.split(u' ', Qt::SkipEmptyParts)) {
    const QStringList numbers = word.split(u',');
    points << stringFromPoint({numbers.value(0).toDouble(), numbers.value(1).toDouble()});
  }
  return points;
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
  QString error;
  Mockup mockup;
  const ImageRef design = mockup.design = ImageFile::read(arguments[1], {}, &error);
  if (design) mockup.photo = ImageFile::read(arguments[2], {}, &error);
  if (!mockup.photo) {
    std::fprintf(stderr, "%s\n", qPrintable(error));
    return 1;
  }
  mockup.mapping.path = points(arguments[3]);

  const KVPopupCellRef chooser = KVPopupCell::initWithNibName();
  const KVViewControllerRef row = KVViewController::initWithNibName();
  const auto refresh = [&] {
    row->setPreviewImage(mockup.picture());
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

  // No operation for refresh: that button does nothing here.
  const auto pressed = std::make_shared<KVViewControllerDelegate>();
  pressed->controllerDidPressRotateLayer = [&](KVViewController&) {
    mockup.mapping.rotation = (mockup.mapping.rotation + 1) % 4;
    refresh();
  };
  pressed->controllerDidPressFlipLayer = [&](KVViewController&) {
    mockup.mapping.flipped = !mockup.mapping.flipped;
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
