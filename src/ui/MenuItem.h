#pragma once

#include <QVariantMap>

#include "platform/image/Image.h"
#include "runtime/Object.h"

namespace kelvar {

/// An item of a menu.
class KELVAR_EXPORT MenuItem : public Object {
 public:
  static const ClassInfo& staticClassInfo();
  const ClassInfo& classInfo() const override { return staticClassInfo(); }

  static std::shared_ptr<MenuItem> separatorItem();

  bool isSeparatorItem() const { return separator_; }
  QString title() const { return title_; }
  void setTitle(const QString& title) { title_ = title; }
  /// Null for none.
  ImageRef image() const { return image_; }
  void setImage(ImageRef image) { image_ = std::move(image); }
  /// The map that the item was made from; invalid for a separator.
  QVariant representedObject() const { return representedObject_; }
  void setRepresentedObject(const QVariant& object) { representedObject_ = object; }
  /// Not used here: it is for the owner.
  int tag() const { return tag_; }
  void setTag(int tag) { tag_ = tag; }
  /// 1 if the open menu shows a check mark beside the item, else 0.
  int state() const { return state_; }
  void setState(int state) { state_ = state; }

 private:
  bool separator_ = false;
  QString title_;
  ImageRef image_;
  QVariant representedObject_;
  int tag_ = 0;
  int state_ = 0;
};

using MenuItemRef = std::shared_ptr<MenuItem>;

}  // namespace kelvar
