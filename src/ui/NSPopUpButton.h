#pragma once

#include "ui/KVMenu.h"
#include "ui/NSControl.h"

namespace kelvar {

class PopUpButton;

/// The view of a pop-up button. Its value is the position of the selected item, -1 for none.
///
/// Items are those of its menu. The items that a form gives to a button become a menu when they are
/// first asked for.
class KELVAR_EXPORT NSPopUpButton : public NSControl {
 public:
  static const ClassInfo& staticClassInfo();
  const ClassInfo& classInfo() const override { return staticClassInfo(); }

  using NSControl::NSControl;
  /// Throws `std::invalid_argument` for `pullsDown`, as there are no such menus here.
  static std::shared_ptr<NSPopUpButton> initWithFrame(const QRectF& frame, bool pullsDown);

  /// Null once the widget was deleted.
  KVMenuRef menu() const;
  void setMenu(const KVMenuRef& menu);
  QStringList itemTitles() const;
  /// The first item that is added is selected.
  void addItemWithTitle(const QString& title);
  void addItemsWithTitles(const QStringList& titles);
  void removeAllItems();

  int indexOfSelectedItem() const;
  /// Null if none is selected.
  MenuItemRef selectedItem() const;
  /// Neither runs the action. -1 selects none; others throw `std::out_of_range` if there is no such
  /// item.
  void selectItemAtIndex(int64_t index);
  void selectItemWithTitle(const QString& title);
  void selectItem(const MenuItemRef& item);

  /// The text on the button.
  QString title() const;
  /// Selects no item.
  void setTitle(const QString& title);

  QString stringValue() const override;
  void setStringValue(const QString& value) override;
  double doubleValue() const override { return indexOfSelectedItem(); }
  void setDoubleValue(double number) override { selectItemAtIndex(integerFromReal(number)); }
  void performClick() override;

 protected:
  void connectControl() override;

 private:
  PopUpButton* button() const;
  QList<MenuItemRef> items() const;
};

}  // namespace kelvar
