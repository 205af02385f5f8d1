#pragma once

#include <QComboBox>
#include <functional>

#include "host/Mockup.h"

namespace kelvar::app {

/// The pop-up that says which artboard of a document is shown. Not there for what has none.
class ArtboardChooser : public QComboBox {
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
};

}  // namespace kelvar::app
