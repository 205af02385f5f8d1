#include "ui/NSPopUpButton.h"

#include <algorithm>
#include <stdexcept>

#include "runtime/ClassInfo.h"
#include "runtime/leadingNumber.h"
#include "ui/PopUpButton.h"

namespace kelvar {
namespace {

using P = NSPopUpButton;
using Builder = ClassInfoBuilder<P, NSControl>;

const ClassInfo::Registration kRegistered(&NSPopUpButton::staticClassInfo);

MenuItemRef makeItem(const QString& title) {
  const auto item = std::make_shared<MenuItem>();
  item->setTitle(title);
  return item;
}

/// The button's menu with its items, for the operations that pass a position on to it.
template <class R>
auto onMenu(R (KVMenu::*member)(int64_t) const) {
  return [member](const P& button, int64_t index) -> R {
    const KVMenuRef menu = button.menu();
    return menu ? ((*menu).*member)(index) : R();
  };
}

QVariantList itemArray(const P& button) {
  QVariantList items;
  if (const KVMenuRef menu = button.menu()) {
    for (const MenuItemRef& each : menu->items()) items.append(toVariant(each));
  }
  return items;
}

Builder&& addItems(Builder&& builder) {
  return std::move(builder)
      .initializer(
          "init", [] { return P::initWithFrame({}, false); }, "Creates a button of size zero.")
      .initializer("initWithFrame:pullsDown:", &P::initWithFrame,
                   "Creates a pop-up button without items; menus that pull down are refused.")
      .initializer(
          "initWithFrame:", [](const QRectF& frame) { return P::initWithFrame(frame, false); },
          "Creates a pop-up button without items.")
      .property("menu", &P::menu, &P::setMenu, "The menu with the items.")
      .property("itemArray", itemArray, "The items in order.")
      .property("itemTitles", &P::itemTitles, "The titles of the items in order.")
      .operation(
          "numberOfItems", [](const P& button) { return int(itemArray(button).size()); },
          "Returns the number of items, separators included.")
      .operation("addItemWithTitle:", &P::addItemWithTitle,
                 "Appends an item; the first one is selected.")
      .operation("addItemsWithTitles:", &P::addItemsWithTitles,
                 "Appends items; the first one is selected.")
      .operation(
          "removeItemAtIndex:",
          [](P& button, int64_t index) {
            if (const KVMenuRef menu = button.menu()) menu->removeItemAtIndex(index);
          },
          "Removes an item by its position.")
      .operation(
          "removeItemWithTitle:",
          [](P& button, const QString& title) {
            const qsizetype index = button.itemTitles().indexOf(title);
            if (index >= 0) button.menu()->removeItemAtIndex(index);
          },
          "Removes the first item with that title, if there is one.")
      .operation(
          "insertItemWithTitle:atIndex:",
          [](P& button, const QString& title, int64_t index) {
            if (const KVMenuRef menu = button.menu()) menu->insertItem(makeItem(title), index);
          },
          "Inserts an item at a position.")
      .operation("removeAllItems", &P::removeAllItems, "Removes all items.")
      .operation("itemAtIndex:", onMenu(&KVMenu::itemAtIndex), "Returns an item by its position.")
      .operation(
          "itemTitleAtIndex:",
          [](const P& button, int64_t index) {
            const KVMenuRef menu = button.menu();
            return menu ? menu->itemAtIndex(index)->title() : QString();
          },
          "Returns the title of an item by its position.")
      .operation(
          "indexOfItemWithTitle:",
          [](const P& button, const QString& title) {
            return int(button.itemTitles().indexOf(title));
          },
          "Returns the position of the first item with that title, or -1.");
}

/// -1 if there is none.
int indexOfItemWithTag(const P& button, int tag) {
  const KVMenuRef menu = button.menu();
  const QList<MenuItemRef> items = menu ? menu->items() : QList<MenuItemRef>();
  const auto found = std::find_if(items.begin(), items.end(),
                                  [&](const MenuItemRef& each) { return each->tag() == tag; });
  return found == items.end() ? -1 : int(found - items.begin());
}

Builder&& addLookup(Builder&& builder) {
  return std::move(builder)
      .operation(
          "lastItem",
          [](const P& button) {
            const KVMenuRef menu = button.menu();
            return menu && !menu->items().isEmpty() ? menu->items().last() : nullptr;
          },
          "Returns the last item, or nil.")
      .operation(
          "itemWithTitle:",
          [](const P& button, const QString& title) {
            const KVMenuRef menu = button.menu();
            return menu ? menu->itemWithTitle(title) : nullptr;
          },
          "Returns the first item with that title, or nil.")
      .operation("indexOfItemWithTag:", indexOfItemWithTag,
                 "Returns the position of the first item with that tag, or -1.")
      .operation(
          "selectItemWithTag:",
          [](P& button, int tag) {
            const int index = indexOfItemWithTag(button, tag);
            if (index >= 0) button.selectItemAtIndex(index);
            return index >= 0;
          },
          "Selects the first item with that tag, and returns whether there is one; the action does "
          "not run.")
      .operation(
          "selectedTag",
          [](const P& button) {
            const MenuItemRef item = button.selectedItem();
            return item ? item->tag() : -1;
          },
          "Returns the tag of the selected item, or -1.");
}

Builder&& addSelection(Builder&& builder) {
  return std::move(builder)
      .property("indexOfSelectedItem", &P::indexOfSelectedItem,
                "The position of the selected item, or -1.")
      .property("selectedItem", &P::selectedItem, "The selected item, or nil.")
      .property(
          "titleOfSelectedItem",
          [](const P& button) {
            const MenuItemRef item = button.selectedItem();
            return item ? item->title() : QString();
          },
          "The title of the selected item, or nil.")
      .operation("selectItemAtIndex:", &P::selectItemAtIndex,
                 "Selects an item by its position, or none for -1; the action does not run.")
      .operation("selectItemWithTitle:", &P::selectItemWithTitle,
                 "Selects the first item with that title, or none; the action does not run.")
      .operation("selectItem:", &P::selectItem,
                 "Selects the item, or none for nil; the action does not run.")
      .property("title", &P::title, &P::setTitle,
                "The text on the button; setting it selects no item.");
}

}  // namespace

const ClassInfo& NSPopUpButton::staticClassInfo() {
  static const ClassInfo kClass = addLookup(addSelection(addItems(Builder("NSPopUpButton"))));
  return kClass;
}

std::shared_ptr<NSPopUpButton> NSPopUpButton::initWithFrame(const QRectF& frame, bool pullsDown) {
  if (pullsDown) throw std::invalid_argument("pop-up buttons do not pull down");
  auto* const button = new PopUpButton;
  button->setMenu(std::make_shared<KVMenu>());
  return std::static_pointer_cast<NSPopUpButton>(View::adopt(button, frame));
}

PopUpButton* NSPopUpButton::button() const { return qobject_cast<PopUpButton*>(widget()); }

KVMenuRef NSPopUpButton::menu() const {
  PopUpButton* const button = this->button();
  if (!button || button->menu()) return button ? button->menu() : nullptr;
  const auto menu = std::make_shared<KVMenu>();
  for (int i = 0; i < button->count(); ++i) menu->addItem(makeItem(button->itemText(i)));
  const int selected = button->indexOfSelectedItem();
  const QString title = button->title();
  button->setMenu(menu);
  button->selectItemAtIndex(selected);
  if (selected < 0 && !title.isEmpty()) button->setTitle(title);
  return menu;
}

QList<MenuItemRef> NSPopUpButton::items() const {
  const KVMenuRef menu = this->menu();
  return menu ? menu->items() : QList<MenuItemRef>();
}

void NSPopUpButton::setMenu(const KVMenuRef& menu) {
  if (!button()) return;
  button()->setMenu(menu ? menu : std::make_shared<KVMenu>());
  if (button()->usesItemFromMenu()) button()->selectItemAtIndex(0);
}

QStringList NSPopUpButton::itemTitles() const {
  QStringList titles;
  for (const MenuItemRef& each : items()) titles.append(each->title());
  return titles;
}

void NSPopUpButton::addItemWithTitle(const QString& title) { addItemsWithTitles({title}); }

void NSPopUpButton::addItemsWithTitles(const QStringList& titles) {
  const KVMenuRef menu = this->menu();
  if (!menu) return;
  const bool wasEmpty = menu->items().isEmpty();
  for (const QString& each : titles) menu->addItem(makeItem(each));
  if (wasEmpty) button()->selectItemAtIndex(0);
}

void NSPopUpButton::removeAllItems() {
  if (const KVMenuRef menu = this->menu()) menu->removeAllItems();
}

int NSPopUpButton::indexOfSelectedItem() const {
  return button() ? button()->indexOfSelectedItem() : -1;
}

MenuItemRef NSPopUpButton::selectedItem() const { return items().value(indexOfSelectedItem()); }

void NSPopUpButton::selectItemAtIndex(int64_t index) {
  const KVMenuRef menu = this->menu();
  if (!menu) return;
  const MenuItemRef item = index == -1 ? nullptr : menu->itemAtIndex(index);
  button()->selectItemAtIndex(int(index));
  if (!button()->usesItemFromMenu()) button()->setFaceItem(item);
}

void NSPopUpButton::selectItemWithTitle(const QString& title) {
  selectItemAtIndex(itemTitles().indexOf(title));
}

void NSPopUpButton::selectItem(const MenuItemRef& item) {
  selectItemAtIndex(item ? items().indexOf(item) : -1);
}

QString NSPopUpButton::title() const { return button() ? button()->title() : QString(); }

void NSPopUpButton::setTitle(const QString& title) {
  if (button()) button()->setTitle(title);
}

QString NSPopUpButton::stringValue() const { return QString::number(indexOfSelectedItem()); }

void NSPopUpButton::setStringValue(const QString& value) {
  selectItemAtIndex(leadingNumber<int64_t>(value));
}

void NSPopUpButton::performClick() {
  if (button() && button()->isEnabled() && button()->isVisible()) button()->showPopup();
}

void NSPopUpButton::connectControl() {
  QObject::connect(button(), &PopUpButton::itemWasChosen, button(), acting());
}

}  // namespace kelvar
