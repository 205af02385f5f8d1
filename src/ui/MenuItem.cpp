#include "ui/MenuItem.h"

#include "runtime/ClassInfo.h"

namespace kelvar {
namespace {

const ClassInfo::Registration kRegistered(&MenuItem::staticClassInfo);

}  // namespace

const ClassInfo& MenuItem::staticClassInfo() {
  static const ClassInfo kClass =
      ClassInfoBuilder<MenuItem>("NSMenuItem")
          .initializer(
              "init", [] { return std::make_shared<MenuItem>(); },
              "Creates an item without a title.")
          .initializer(
              "initWithTitle:action:keyEquivalent:",
              [](const QString& title, const QVariant&, const QVariant&) {
                const auto item = std::make_shared<MenuItem>();
                item->setTitle(title);
                return item;
              },
              "Creates an item; the last two arguments have no effect.")
          .classOperation("separatorItem", &MenuItem::separatorItem, "Creates a separator line.")
          .operation("isSeparatorItem", &MenuItem::isSeparatorItem,
                     "Returns whether the item is a separator line.")
          .property("title", &MenuItem::title, &MenuItem::setTitle, "The text of the item.")
          .property("image", &MenuItem::image, &MenuItem::setImage,
                    "The image beside the title, or nil.")
          .property("representedObject", &MenuItem::representedObject,
                    &MenuItem::setRepresentedObject,
                    "The dictionary that the item was made from, or nil.")
          .property("tag", &MenuItem::tag, &MenuItem::setTag, "A number for the owner's use.")
          .property("state", &MenuItem::state, &MenuItem::setState,
                    "Whether the open menu shows a check mark beside the item: 1 or 0.");
  return kClass;
}

MenuItemRef MenuItem::separatorItem() {
  auto item = std::make_shared<MenuItem>();
  item->separator_ = true;
  return item;
}

}  // namespace kelvar
