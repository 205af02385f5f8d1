#pragma once

#include <QLabel>

#include "platform/Image.h"
#include "ui/ImageView.h"
#include "ui/KVPopupCellDelegate.h"
#include "ui/PopUpButton.h"
#include "ui/ViewController.h"

namespace kelvar {

class KVPopupCell;
using KVPopupCellRef = std::shared_ptr<KVPopupCell>;

/// A chooser: a title, a picture, and a pop-up button whose menu lists what can be chosen.
///
/// Items are known by the "identifier" in their maps, not by position. After changing a property,
/// call `reloadData`. Main thread only.
class KELVAR_EXPORT KVPopupCell : public Object, public ViewController {
 public:
  static const ClassInfo& theClass();
  const ClassInfo& classInfo() const override { return theClass(); }

  /// Null when there is no such form. See `ViewController` for what stands for none.
  static KVPopupCellRef initWithNibName(const QString& nibName = {}, const QString& bundle = {});

  /// Use `initWithNibName`.
  KVPopupCell(const QString& nibName, const QString& bundle);
  ~KVPopupCell() override;

  void viewDidLoad() override;
  /// Shows the properties.
  void reloadData();

  /// The first item of the menu with the selected identifier; null when there is none.
  MenuItemRef selectedItem() const;
  /// The map of the selected item; invalid when nothing is selected.
  QVariant representedObject() const;

  /// Some pop-up button is about to open. When it is this cell's, the cell becomes the one that it
  /// reports to, and reloads.
  void popupButtonDidPop(const ViewRef& button);
  /// Takes over what was chosen, reloads, and tells the delegate.
  void itemDidSelect(const ViewRef& sender);

  PopUpButton* popupButton() const { return popupButton_; }
  void setPopupButton(PopUpButton* button) { popupButton_ = button; }
  QLabel* titleField() const { return titleField_; }
  void setTitleField(QLabel* field);
  ImageView* imageView() const { return imageView_; }
  void setImageView(ImageView* view) { imageView_ = view; }

  /// Kept for the owner, as is the layer's.
  QString reuseIdentifier() const { return reuseIdentifier_; }
  void setReuseIdentifier(const QString& identifier) { reuseIdentifier_ = identifier; }
  ImageRef image() const { return image_; }
  /// Keeps a copy, as everywhere in the panel.
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
