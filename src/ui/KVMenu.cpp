#include "ui/KVMenu.h"

#include <stdexcept>

#include "platform/Log.h"
#include "runtime/ClassInfo.h"

namespace kelvar {
namespace {

const ClassInfo::Registration kRegistered(&KVMenu::staticClassInfo);

/// For the log; null for none.
QString described(const QVariant& value) {
  if (!value.isValid()) return QStringLiteral("(null)");
  if (value.metaType() == QMetaType::fromType<ObjectRef>()) {
    const auto object = value.value<ObjectRef>();
    return object ? object->description() : QStringLiteral("(null)");
  }
  return value.canConvert<QString>() ? value.toString() : QLatin1String(value.typeName());
}

MenuItemRef itemOf(const QVariantMap& map) {
  const QVariant title = map.value(QStringLiteral("title"));
  const QVariant type = map.value(QStringLiteral("type"));
  const QVariant image = map.value(QStringLiteral("image"));
  if (type == QStringLiteral("separator")) return MenuItem::separatorItem();
  if (title.typeId() != QMetaType::QString) {
    throw std::invalid_argument("KVMenu: an item has no title");
  }
  const auto item = std::make_shared<MenuItem>();
  item->setTitle(title.toString());
  item->setImage(image.value<ImageRef>());
  if (!item->image()) {
    logLine(u"image: %@ %@ %@", {described(title), described(type), described(image)});
  }
  item->setRepresentedObject(map);
  return item;
}

}  // namespace

const ClassInfo& KVMenu::staticClassInfo() {
  static const ClassInfo kClass =
      ClassInfoBuilder<KVMenu>("KVMenu")
          .initializer(
              "init", [] { return std::make_shared<KVMenu>(); }, "Creates an empty menu.")
          .classOperation("menuWithItems:", &KVMenu::menuWithItems,
                          "Creates a menu from dictionaries with \"title\", and optionally "
                          "\"identifier\", \"image\" and \"type\" (\"separator\" for a line).")
          .operation("addItem:", &KVMenu::addItem, "Appends an item.")
          .property(
              "itemArray",
              [](const KVMenu& menu) {
                QVariantList items;
                for (const MenuItemRef& item : menu.items()) items.append(toVariant(item));
                return items;
              },
              "The items in order.")
          .operation(
              "numberOfItems", [](const KVMenu& menu) { return int(menu.items().size()); },
              "Returns the number of items, separators included.")
          .operation("itemAtIndex:", &KVMenu::itemAtIndex, "Returns an item by its position.")
          .operation("itemWithTitle:", &KVMenu::itemWithTitle,
                     "Returns the first item with that title, or nil.")
          .operation("indexOfItemWithTitle:", &KVMenu::indexOfItemWithTitle,
                     "Returns the position of the first item with that title, or -1.")
          .operation("insertItem:atIndex:", &KVMenu::insertItem, "Inserts an item.")
          .operation("removeItemAtIndex:", &KVMenu::removeItemAtIndex, "Removes an item.")
          .operation("removeAllItems", &KVMenu::removeAllItems, "Removes all items.")
          .operation("performActionForItemAtIndex:", &KVMenu::performActionForItemAtIndex,
                     "Does what choosing the item does in the pop-up button that shows the menu.");
  return kClass;
}

KVMenuRef KVMenu::menuWithItems(const QVariantList& items) {
  auto menu = std::make_shared<KVMenu>();
  for (const QVariant& item : items) menu->addItem(itemOf(item.toMap()));
  return menu;
}

void KVMenu::changed() const {
  if (owner_) owner_->menuDidChange();
}

void KVMenu::addItem(MenuItemRef item) {
  if (!item) throw std::invalid_argument("addItem: takes a menu item, not nil");
  items_.append(std::move(item));
  if (owner_) owner_->menuDidGrow();
}

MenuItemRef KVMenu::itemAtIndex(int64_t index) const {
  if (index >= 0 && index < items_.size()) return items_[qsizetype(index)];
  throw std::out_of_range(QStringLiteral("the menu has no item at %1, only %2 in all")
                              .arg(index)
                              .arg(items_.size())
                              .toStdString());
}

void KVMenu::removeItemAtIndex(int64_t index) {
  (void)itemAtIndex(index);
  items_.removeAt(qsizetype(index));
  changed();
}

void KVMenu::insertItem(const MenuItemRef& item, int64_t index) {
  if (!item) throw std::invalid_argument("insertItem:atIndex: takes a menu item, not nil");
  if (index != items_.size()) (void)itemAtIndex(index);
  items_.insert(qsizetype(index), item);
  changed();
}

void KVMenu::removeAllItems() {
  items_.clear();
  changed();
}

void KVMenu::performActionForItemAtIndex(int64_t index) {
  if (itemAtIndex(index)->isSeparatorItem() || !owner_) return;
  owner_->chooseItem(int(index));
}

int KVMenu::indexOfItemWithTitle(const QString& title) const {
  for (qsizetype i = 0; i < items_.size(); ++i) {
    if (!items_[i]->isSeparatorItem() && items_[i]->title() == title) return int(i);
  }
  return -1;
}

MenuItemRef KVMenu::itemWithTitle(const QString& title) const {
  const int index = indexOfItemWithTitle(title);
  return index < 0 ? nullptr : items_[index];
}

}  // namespace kelvar
