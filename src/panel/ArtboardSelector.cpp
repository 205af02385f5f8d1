#include "panel/ArtboardSelector.h"

namespace kelvar::cli {
namespace {

/// Points. Longer names are elided.
constexpr int kMinWidth = 140, kMaxWidth = 280;

}  // namespace

ArtboardSelector::ArtboardSelector(QWidget* parent) : PopUpButton(parent) {
  setObjectName(QStringLiteral("artboardSelector"));
  setAccessibleName(QStringLiteral("Artboard"));
  setFocusPolicy(Qt::TabFocus);
  setSizeAdjustPolicy(QComboBox::AdjustToContents);
  setMinimumWidth(kMinWidth);
  setMaximumWidth(kMaxWidth);
  setAction([this](PopUpButton& self) { choose(self.indexOfSelectedItem()); });
}

void ArtboardSelector::setArtboards(const QList<Mockup::Artboard>& artboards) {
  artboards_.clear();
  QVariantList items;
  for (const Mockup::Artboard& artboard : artboards) {
    artboards_.append(artboard.id);
    items.append(QVariantMap{{QStringLiteral("title"), artboard.name},
                             {QStringLiteral("identifier"), artboard.id}});
  }
  setMenu(KVMenu::menuWithItems(items));
  // Setting the policy again discards the width cached for the previous menu.
  setSizeAdjustPolicy(QComboBox::AdjustToContentsOnFirstShow);
  setSizeAdjustPolicy(QComboBox::AdjustToContents);
}

void ArtboardSelector::setShown(const QString& artboard) {
  selectItemAtIndex(int(artboards_.indexOf(artboard)));
}

bool ArtboardSelector::hasNext(int direction) const {
  const int next = indexOfSelectedItem() + direction;
  return indexOfSelectedItem() >= 0 && next >= 0 && next < artboards_.size();
}

void ArtboardSelector::step(int direction) {
  if (hasNext(direction)) choose(indexOfSelectedItem() + direction);
}

void ArtboardSelector::choose(int index) {
  if (onChosen && index >= 0 && index < artboards_.size()) onChosen(artboards_[index]);
}

}  // namespace kelvar::cli
