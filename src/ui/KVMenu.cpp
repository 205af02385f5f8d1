#include "ui/KVMenu.h"

#include <stdexcept>

#include "platform/Log.h"
#include "runtime/ClassInfo.h"

namespace kelvar {
namespace {

const ClassInfo::Registration kRegistered(&KVMenu::theClass);

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

const ClassInfo& KVMenu::theClass() {
  static const ClassInfo kClass =
      Description<KVMenu>("KVMenu")
          .initialiser("init", [] { return std::make_shared<KVMenu>(); })
          .classOperation("menuWithItems:", &KVMenu::menuWithItems)
          .operation("addItem:", &KVMenu::addItem)
          .property("itemArray", [](const KVMenu& menu) {
            QVariantList items;
            for (const MenuItemRef& item : menu.items()) items.append(toVariant(item));
            return items;
          });
  return kClass;
}

KVMenuRef KVMenu::menuWithItems(const QVariantList& items) {
  auto menu = std::make_shared<KVMenu>();
  for (const QVariant& item : items) menu->addItem(itemOf(item.toMap()));
  return menu;
}

}  // namespace kelvar
