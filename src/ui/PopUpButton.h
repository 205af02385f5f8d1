#pragma once

#include <QComboBox>
#include <functional>

#include "ui/KVMenu.h"

namespace kelvar {

/// A pop-up button: a face, and a menu that opens over it.
///
/// Its items come from a `KVMenu`, or are those that a form gives to a combo box. What the face
/// shows can be set apart from the selection: an item, a free title, or nothing. A choice by the
/// user runs the action, also when the same item is chosen again; what the program selects does
/// not. There is no choice without the menu: keys that would change a combo box open it, and the
/// wheel is left to whatever scrolls the button. A title that does not fit is cut in its middle;
/// the tool tip then has the whole.
class KELVAR_EXPORT PopUpButton : public QComboBox {
  Q_OBJECT

 public:
  explicit PopUpButton(QWidget* parent = nullptr);

  KVMenuRef menu() const { return menu_; }
  /// Replaces the items and selects none. Null for no items.
  void setMenu(KVMenuRef menu);

  /// -1 when none is selected. Of items that cannot be selected, none is.
  int indexOfSelectedItem() const { return currentIndex(); }
  /// Also marks the item in the menu, and no other. The face shows it.
  void selectItemAtIndex(int index);
  /// Null when none is selected, or the items are a form's.
  MenuItemRef selectedItem() const;

  /// Whether the face follows the selection; at first it does. Else it shows `faceItem`.
  bool usesItemFromMenu() const { return usesItemFromMenu_; }
  void setUsesItemFromMenu(bool uses);
  /// Null for an empty face.
  MenuItemRef faceItem() const { return faceItem_; }
  void setFaceItem(MenuItemRef item);

  /// Shows a title on the face, until an item is selected, and selects none.
  void setTitle(const QString& title);
  /// What the face reads.
  QString title() const;

  /// Whether the menu shows a check mark beside the item.
  bool isMarked(int index) const;

  bool allowsMixedState() const { return allowsMixedState_; }
  void setAllowsMixedState(bool allows) { allowsMixedState_ = allows; }

  /// What a choice by the user runs; the one before is forgotten.
  using Action = std::function<void(PopUpButton&)>;
  void setAction(Action action) { action_ = std::move(action); }

  QSize sizeHint() const override;
  QSize minimumSizeHint() const override;

  /// Posts that the menu is about to open, then opens it.
  void showPopup() override;

 protected:
  bool event(QEvent* event) override;
  void paintEvent(QPaintEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void wheelEvent(QWheelEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void markSelection();
  void faceChanged();
  QIcon faceIcon() const;
  /// The title as it fits.
  QString elided() const;

  KVMenuRef menu_;
  bool usesItemFromMenu_ = true;
  MenuItemRef faceItem_;
  QString freeTitle_;
  bool allowsMixedState_ = false;
  Action action_;
};

/// Tells every listener in the process that some pop-up button is about to open its menu.
class KELVAR_EXPORT PopUpNotifications : public QObject {
  Q_OBJECT

 public:
  static PopUpNotifications& shared();

 Q_SIGNALS:
  void willPopUp(kelvar::PopUpButton* button);
};

}  // namespace kelvar
