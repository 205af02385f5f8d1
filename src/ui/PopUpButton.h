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
/// not. The keys that would change a combo box open the menu, and the wheel is left to whatever
/// scrolls the button.
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

  /// What the face shows; the next selection replaces it. Null for an empty face.
  MenuItemRef faceItem() const { return faceItem_; }
  void setFaceItem(MenuItemRef item);

  /// Shows a title on the face and selects no item.
  void setTitle(const QString& title);
  /// What the face reads.
  QString title() const;

  bool allowsMixedState() const { return allowsMixedState_; }
  void setAllowsMixedState(bool allows) { allowsMixedState_ = allows; }

  /// What a choice by the user runs; the one before is forgotten.
  using Action = std::function<void(PopUpButton&)>;
  void setAction(Action action) { action_ = std::move(action); }

  /// Posts that the menu is about to open, then opens it.
  void showPopup() override;

  QSize minimumSizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void wheelEvent(QWheelEvent* event) override;

 private:
  enum class Face { Selection, Item, Title };

  void markSelection();
  void describeFace();

  KVMenuRef menu_;
  Face face_ = Face::Selection;
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
