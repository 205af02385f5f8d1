#pragma once

#include <QList>

#include "ui/MenuItem.h"

namespace kelvar {

class KVMenu;
using KVMenuRef = std::shared_ptr<KVMenu>;

/// A menu for a pop-up button, built from plain maps.
class KELVAR_EXPORT KVMenu : public Object {
 public:
  static const ClassInfo& theClass();
  const ClassInfo& classInfo() const override { return theClass(); }

  /// One map an item, in the menu's order: "title" (string); "type" ("separator" makes a line, all
  /// else is an ordinary item); "image" (an `ImageRef`, optional); "identifier" (string, by which
  /// `KVPopupCell` knows the item). An ordinary item keeps its map, whatever else is in it, as its
  /// represented object. Throws `std::invalid_argument` when one has no title.
  static KVMenuRef menuWithItems(const QVariantList& items);

  const QList<MenuItemRef>& items() const { return items_; }
  void addItem(MenuItemRef item) { items_.append(std::move(item)); }

 private:
  QList<MenuItemRef> items_;
};

}  // namespace kelvar
