#pragma once

#include "host/Mockup.h"
#include "ui/PopUpButton.h"

namespace kelvar::app {

/// The pop-up that says which artboard of a document is shown.
class ArtboardChooser : public PopUpButton {
 public:
  explicit ArtboardChooser(QWidget* parent = nullptr);

  /// Called when a person has chosen one.
  std::function<void(const QString& artboard)> didChoose;

  void setArtboards(const QList<Mockup::Artboard>& artboards);
  void setShown(const QString& artboard);
  /// Whether there is one behind the one that is shown, or with -1 before it.
  bool hasNext(int direction) const;
  /// As if a person chose that one.
  void step(int direction);

 private:
  void choose(int index);

  QStringList artboards_;
};

}  // namespace kelvar::app
