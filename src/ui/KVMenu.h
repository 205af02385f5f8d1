#pragma once

#include <QList>

#include "ui/MenuItem.h"

namespace kelvar {

class KVMenu;
using KVMenuRef = std::shared_ptr<KVMenu>;

/// A menu for a pop-up button, built from maps.
class KELVAR_EXPORT KVMenu : public Object {
 public:
  static const ClassInfo& staticClassInfo();
  const ClassInfo& classInfo() const override { return staticClassInfo(); }

  /// Takes one map per item, in the menu's order: "title" (string); "type" ("separator" for a
  /// separator, anything else for an ordinary item); "image" (an `ImageRef`, optional);
  /// "identifier" (string, by which `KVPopupCell` finds the item). The whole map becomes the
  /// represented object of an ordinary item. Throws `std::invalid_argument` if one has no title.
  static KVMenuRef menuWithItems(const QVariantList& items);

  /// What shows the menu.
  class Owner {
   public:
    virtual ~Owner() = default;
    virtual void menuDidChange() = 0;
    /// Called instead after an item was appended.
    virtual void menuDidGrow() = 0;
    /// Does what choosing the item does.
    virtual void chooseItem(int index) = 0;
  };
  /// The owner removes itself before it ends.
  void setOwner(Owner* owner) { owner_ = owner; }
  Owner* owner() const { return owner_; }

  const QList<MenuItemRef>& items() const { return items_; }
  void addItem(MenuItemRef item);
  /// These throw `std::out_of_range` for an index that no item has.
  MenuItemRef itemAtIndex(int64_t index) const;
  void removeItemAtIndex(int64_t index);
  void insertItem(const MenuItemRef& item, int64_t index);
  void performActionForItemAtIndex(int64_t index);
  void removeAllItems();
  /// Null or -1 if there is none.
  MenuItemRef itemWithTitle(const QString& title) const;
  int indexOfItemWithTitle(const QString& title) const;

 private:
  void changed() const;

  QList<MenuItemRef> items_;
  Owner* owner_ = nullptr;
};

}  // namespace kelvar
