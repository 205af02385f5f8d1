#include "ui/MenuItem.h"

#include "runtime/ClassInfo.h"

namespace kelvar {
namespace {

const ClassInfo::Registration kRegistered(&MenuItem::theClass);

}  // namespace

const ClassInfo& MenuItem::theClass() {
  static const ClassInfo kClass =
      Description<MenuItem>("NSMenuItem")
          .initialiser("init", [] { return std::make_shared<MenuItem>(); })
          .classOperation("separatorItem", &MenuItem::separatorItem)
          .operation("isSeparatorItem", &MenuItem::isSeparatorItem)
          .property("title", &MenuItem::title, &MenuItem::setTitle)
          .property("image", &MenuItem::image, &MenuItem::setImage)
          .property("representedObject", &MenuItem::representedObject,
                    &MenuItem::setRepresentedObject)
          .property("state", &MenuItem::state, &MenuItem::setState);
  return kClass;
}

MenuItemRef MenuItem::separatorItem() {
  auto item = std::make_shared<MenuItem>();
  item->separator_ = true;
  return item;
}

}  // namespace kelvar
