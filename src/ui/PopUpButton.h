#pragma once

#include <QComboBox>
#include <functional>

#include "ui/KVMenu.h"

namespace kelvar {

/// A pop-up button: a face, and a menu that opens over it.
///
/// Its items come from a `KVMenu`, or are those that a form gives to a combo box. The face can show
/// something other than the selection: an item, a free title, or nothing. When the user chooses an
/// item, even the same one again, the action runs; selecting by program does not run it. Items can
/// only be chosen in the menu: keys that would change a combo box open it, and the wheel is left to
/// the scroll area around the button. A title that does not fit is elided in the middle; the tool
/// tip then shows all of it.
class KELVAR_EXPORT PopUpButton : public QComboBox, private KVMenu::Owner {
  Q_OBJECT

 public:
  explicit PopUpButton(QWidget* parent = nullptr);
  ~PopUpButton() override;

  KVMenuRef menu() const { return menu_; }
  /// Replaces the items and selects none. Null for no items.
  void setMenu(KVMenuRef menu);

  /// -1 if none is selected.
  int indexOfSelectedItem() const { return currentIndex(); }
  /// Shows the item on the face and marks it, and no other, in the menu. Selects none if the item
  /// cannot be selected.
  void selectItemAtIndex(int index);
  /// Null if none is selected, or if the items are a form's.
  MenuItemRef selectedItem() const;

  /// Whether the face shows the selection, which is the default, or `faceItem`.
  bool usesItemFromMenu() const { return usesItemFromMenu_; }
  void setUsesItemFromMenu(bool uses);
  /// Null for an empty face.
  MenuItemRef faceItem() const { return faceItem_; }
  void setFaceItem(MenuItemRef item);

  /// Deselects all items, and shows a title on the face until one is selected.
  void setTitle(const QString& title);
  /// The text on the face.
  QString title() const;

  /// Whether the menu shows a check mark beside the item.
  bool isMarked(int index) const;

  bool allowsMixedState() const { return allowsMixedState_; }
  void setAllowsMixedState(bool allows) { allowsMixedState_ = allows; }

  /// Does what the user's choosing the item does: announces that the menu will open, selects the
  /// item and runs the action. Nothing if the button is disabled.
  void chooseItem(int index) override;

  /// Runs when the user chooses an item. Replaces the previous action.
  using Action = std::function<void(PopUpButton&)>;
  void setAction(Action action) { action_ = std::move(action); }

  QSize sizeHint() const override;
  QSize minimumSizeHint() const override;

  /// Announces through `PopUpNotifications` that the menu will open, then opens it.
  void showPopup() override;

 protected:
  bool event(QEvent* event) override;
  void paintEvent(QPaintEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void wheelEvent(QWheelEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;

 Q_SIGNALS:
  /// Emitted when the user has chosen an item, after the action.
  void itemWasChosen();

 private:
  /// Shows the items as they are now, with the same selection.
  void menuDidChange() override;
  void menuDidGrow() override;
  void showItems();
  void showItem(const MenuItem& item);
  void markSelection();
  void faceChanged();
  QIcon faceIcon() const;
  /// The title, elided to fit.
  QString elided() const;

  KVMenuRef menu_;
  bool usesItemFromMenu_ = true;
  MenuItemRef faceItem_;
  QString freeTitle_;
  bool allowsMixedState_ = false;
  Action action_;
};

/// Signals that any pop-up button in the process is about to open its menu.
class KELVAR_EXPORT PopUpNotifications : public QObject {
  Q_OBJECT

 public:
  static PopUpNotifications& shared();

 Q_SIGNALS:
  void willPopUp(kelvar::PopUpButton* button);
};

}  // namespace kelvar
