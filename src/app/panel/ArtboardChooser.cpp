#include "app/panel/ArtboardChooser.h"

namespace kelvar::app {
namespace {

/// Characters that are always in sight; longer names are whole in the list.
constexpr int kLeastCharacters = 14;
constexpr int kMostWidth = 320;

}  // namespace

ArtboardChooser::ArtboardChooser(QWidget* parent) : QComboBox(parent) {
  setObjectName(QStringLiteral("artboardChooser"));
  setAccessibleName(QStringLiteral("Artboard"));
  setToolTip(QStringLiteral("The artboard that is shown"));
  setFocusPolicy(Qt::TabFocus);
  setSizeAdjustPolicy(QComboBox::AdjustToContents);
  setMinimumContentsLength(kLeastCharacters);
  setMaximumWidth(kMostWidth);
  connect(this, &QComboBox::activated, this, [this](int index) {
    if (didChoose) didChoose(itemData(index).toString());
  });
}

void ArtboardChooser::setArtboards(const QList<Mockup::Artboard>& artboards) {
  clear();
  for (const Mockup::Artboard& artboard : artboards) addItem(artboard.name, artboard.id);
}

void ArtboardChooser::setShown(const QString& artboard) { setCurrentIndex(findData(artboard)); }

bool ArtboardChooser::hasNext(int direction) const {
  const int next = currentIndex() + direction;
  return currentIndex() >= 0 && next >= 0 && next < count();
}

void ArtboardChooser::step(int direction) {
  if (hasNext(direction) && didChoose) didChoose(itemData(currentIndex() + direction).toString());
}

}  // namespace kelvar::app
