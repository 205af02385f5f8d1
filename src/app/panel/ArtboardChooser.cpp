#include "app/panel/ArtboardChooser.h"

namespace kelvar::app {
namespace {

/// Points: a name that is longer is cut.
constexpr int kLeastWidth = 140, kMostWidth = 280;

}  // namespace

ArtboardChooser::ArtboardChooser(QWidget* parent) : PopUpButton(parent) {
  setObjectName(QStringLiteral("artboardChooser"));
  setAccessibleName(QStringLiteral("Artboard"));
  setFocusPolicy(Qt::TabFocus);
  setSizeAdjustPolicy(QComboBox::AdjustToContents);
  setMinimumWidth(kLeastWidth);
  setMaximumWidth(kMostWidth);
  setAction([this](PopUpButton& self) { choose(self.indexOfSelectedItem()); });
}

void ArtboardChooser::setArtboards(const QList<Mockup::Artboard>& artboards) {
  artboards_.clear();
  QVariantList items;
  for (const Mockup::Artboard& artboard : artboards) {
    artboards_.append(artboard.id);
    items.append(QVariantMap{{QStringLiteral("title"), artboard.name},
                             {QStringLiteral("identifier"), artboard.id}});
  }
  setMenu(KVMenu::menuWithItems(items));
  // Otherwise it stays as wide as the menu before asked for.
  setSizeAdjustPolicy(QComboBox::AdjustToContentsOnFirstShow);
  setSizeAdjustPolicy(QComboBox::AdjustToContents);
}

void ArtboardChooser::setShown(const QString& artboard) {
  selectItemAtIndex(int(artboards_.indexOf(artboard)));
}

bool ArtboardChooser::hasNext(int direction) const {
  const int next = indexOfSelectedItem() + direction;
  return indexOfSelectedItem() >= 0 && next >= 0 && next < artboards_.size();
}

void ArtboardChooser::step(int direction) {
  if (hasNext(direction)) choose(indexOfSelectedItem() + direction);
}

void ArtboardChooser::choose(int index) {
  if (didChoose && index >= 0 && index < artboards_.size()) didChoose(artboards_[index]);
}

}  // namespace kelvar::app
