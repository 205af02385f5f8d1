#pragma once

#include "mockup/Mockup.h"
#include "ui/PopUpButton.h"

namespace kelvar::cli {

/// The pop-up button that selects which artboard of a document is shown.
class ArtboardSelector : public PopUpButton {
 public:
  explicit ArtboardSelector(QWidget* parent = nullptr);

  /// Called with the identifier when the user has chosen one.
  std::function<void(const QString& artboard)> onChosen;

  void setArtboards(const QList<Mockup::Artboard>& artboards);
  void setShown(const QString& artboard);
  /// Whether there is one after the one that is shown, or before it if `direction` is -1.
  bool hasNext(int direction) const;
  /// Chooses that one, as the user would.
  void step(int direction);

 private:
  void choose(int index);

  QStringList artboards_;
};

}  // namespace kelvar::cli
