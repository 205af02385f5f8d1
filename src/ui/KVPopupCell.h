#pragma once

#include <QLabel>

#include "platform/image/Image.h"
#include "ui/ImageView.h"
#include "ui/KVPopupCellDelegate.h"
#include "ui/PopUpButton.h"
#include "ui/ViewController.h"

namespace kelvar {

class KVPopupCell;
using KVPopupCellRef = std::shared_ptr<KVPopupCell>;

/// A chooser: a title, an image, and a pop-up button with a menu of choices.
///
/// Items are identified by the "identifier" in their maps, not by position. After changing
/// properties, call `reloadData`. Main thread only.
class KELVAR_EXPORT KVPopupCell : public Object, public ViewController {
 public:
  static const ClassInfo& staticClassInfo();
  const ClassInfo& classInfo() const override { return staticClassInfo(); }

  /// Null if there is no such form. See `ViewController` for the defaults.
  static KVPopupCellRef initWithNibName(const QString& nibName = {}, const QString& bundle = {});

  /// Use `initWithNibName`.
  KVPopupCell(const QString& nibName, const QString& bundle);
  ~KVPopupCell() override;

  void viewDidLoad() override;
  /// Shows the properties.
  void reloadData();

  /// The first item of the menu with the selected identifier; null if there is none.
  MenuItemRef selectedItem() const;
  /// The map of the selected item; invalid if nothing is selected.
  QVariant representedObject() const;

  /// Called when any pop-up button is about to open. If it is this cell's, the cell becomes its
  /// target and reloads.
  void popupButtonDidPop(const ViewRef& button);
  /// Selects what the user chose, reloads, and calls the delegate.
  void itemDidSelect(const ViewRef& sender);

  PopUpButton* popupButton() const { return popupButton_; }
  void setPopupButton(PopUpButton* button) { popupButton_ = button; }
  QLabel* titleField() const { return titleField_; }
  void setTitleField(QLabel* field);
  ImageView* imageView() const { return imageView_; }
  void setImageView(ImageView* view) { imageView_ = view; }

  /// Not used here, as is `layerID`: they are for the owner.
  QString reuseIdentifier() const { return reuseIdentifier_; }
  void setReuseIdentifier(const QString& identifier) { reuseIdentifier_ = identifier; }
  ImageRef image() const { return image_; }
  /// Keeps a copy.
  void setImage(const ImageRef& image);
  QString name() const { return name_; }
  void setName(const QString& name) { name_ = name; }
  /// Null for no selection.
  QString selectedIdentifier() const { return selectedIdentifier_; }
  void setSelectedIdentifier(const QString& identifier) { selectedIdentifier_ = identifier; }
  QString layerID() const { return layerID_; }
  void setLayerID(const QString& layerID) { layerID_ = layerID; }
  KVMenuRef popupMenu() const { return popupMenu_; }
  void setPopupMenu(KVMenuRef menu) { popupMenu_ = std::move(menu); }

  std::weak_ptr<KVPopupCellDelegate> delegate() const { return delegate_; }
  void setDelegate(std::weak_ptr<KVPopupCellDelegate> delegate) { delegate_ = std::move(delegate); }

 private:
  QPointer<PopUpButton> popupButton_;
  QPointer<QLabel> titleField_;
  QPointer<ImageView> imageView_;
  QString reuseIdentifier_;
  ImageRef image_;
  QString name_;
  QString selectedIdentifier_;
  QString layerID_;
  KVMenuRef popupMenu_;
  std::weak_ptr<KVPopupCellDelegate> delegate_;
  QMetaObject::Connection subscription_;
};

}  // namespace kelvar
