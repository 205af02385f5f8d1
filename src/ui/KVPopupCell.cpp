#include "ui/KVPopupCell.h"

#include "runtime/ClassInfo.h"
#include "runtime/DelegateInfo.h"
#include "ui/InterfaceFile.h"

namespace kelvar {
namespace {

const ClassInfo::Registration kRegistered(&KVPopupCell::theClass);

/// Invalid for an item without one.
QVariant identifierOf(const MenuItem& item) {
  return item.representedObject().toMap().value(QStringLiteral("identifier"));
}

}  // namespace

const ClassInfo& KVPopupCell::theClass() {
  using Cell = KVPopupCell;
  static const ClassInfo kClass =
      Description<Cell>("KVPopupCell")
          .initialiser("init", [] { return Cell::initWithNibName(); })
          .initialiser("initWithNibName:bundle:", &Cell::initWithNibName)
          .operation("nibName", &Cell::nibName)
          .operation("view", &Cell::viewObject)
          .operation("viewDidLoad", &Cell::viewDidLoad)
          .operation("reloadData", &Cell::reloadData)
          .operation("selectedItem", &Cell::selectedItem)
          .operation("representedObject", &Cell::representedObject)
          .operation("popupButtonDidPop:", &Cell::popupButtonDidPop)
          .operation("itemDidSelect:", &Cell::itemDidSelect)
          .property("popupButton", outletGetter(&Cell::popupButton),
                    outletSetter(&Cell::setPopupButton))
          .property("titleField", outletGetter(&Cell::titleField),
                    outletSetter(&Cell::setTitleField))
          .property("imageView", outletGetter(&Cell::imageView), outletSetter(&Cell::setImageView))
          .property("reuseIdentifier", &Cell::reuseIdentifier, &Cell::setReuseIdentifier)
          .property("image", &Cell::image, &Cell::setImage)
          .property("name", &Cell::name, &Cell::setName)
          .property("selectedIdentifier", &Cell::selectedIdentifier, &Cell::setSelectedIdentifier)
          .property("layerID", &Cell::layerID, &Cell::setLayerID)
          .property("popupMenu", &Cell::popupMenu, &Cell::setPopupMenu)
          .property("delegate", &Cell::delegate, &Cell::setDelegate);
  return kClass;
}

const DelegateInfo& KVPopupCellDelegate::theDelegate() {
  using Self = KVPopupCellDelegate;
  static const DelegateInfo kDelegate =
      DelegateDescription<Self>("KVPopupCellDelegate")
          .operation("popupCellSelectedDidChange:", &Self::popupCellSelectedDidChange);
  return kDelegate;
}

KVPopupCellRef KVPopupCell::initWithNibName(const QString& nibName, const QString& bundle) {
  const QString name = nibName.isNull() ? QStringLiteral("KVPopupCell") : nibName;
  if (!InterfaceFile::exists(name, bundle)) return nullptr;
  return std::make_shared<KVPopupCell>(name, bundle);
}

KVPopupCell::KVPopupCell(const QString& nibName, const QString& bundle)
    : ViewController(nibName, bundle),
      subscription_(
          QObject::connect(&PopUpNotifications::shared(), &PopUpNotifications::willPopUp,
                           [this](PopUpButton* button) { popupButtonDidPop(View::of(button)); })) {}

KVPopupCell::~KVPopupCell() { QObject::disconnect(subscription_); }

void KVPopupCell::viewDidLoad() {
  ViewController::viewDidLoad();
  if (popupButton_) popupButton_->setUsesItemFromMenu(false);
  reloadData();
}

void KVPopupCell::reloadData() {
  if (titleField_) titleField_->setText(name_);
  if (imageView_) imageView_->setImage(image_);
  if (!popupButton_) return;
  popupButton_->setMenu(popupMenu_);
  const MenuItemRef item = selectedItem();
  popupButton_->setFaceItem(item);
  popupButton_->selectItemAtIndex(item ? int(popupMenu_->items().indexOf(item)) : -1);
}

MenuItemRef KVPopupCell::selectedItem() const {
  if (!popupMenu_ || selectedIdentifier_.isNull()) return nullptr;
  for (const MenuItemRef& item : popupMenu_->items()) {
    if (identifierOf(*item) == selectedIdentifier_) return item;
  }
  return nullptr;
}

QVariant KVPopupCell::representedObject() const {
  const MenuItemRef item = selectedItem();
  return item ? item->representedObject() : QVariant();
}

void KVPopupCell::popupButtonDidPop(const ViewRef& button) {
  if (!popupButton_ || widgetOf<PopUpButton>(button) != popupButton_) return;
  popupButton_->setAction([self = weak_from_this()](PopUpButton& sender) {
    InterfaceFile::sendAction(self, QStringLiteral("itemDidSelect:"), &sender);
  });
  reloadData();
}

void KVPopupCell::itemDidSelect(const ViewRef& sender) {
  if (!popupButton_ || widgetOf<PopUpButton>(sender) != popupButton_) return;
  const MenuItemRef item = popupButton_->selectedItem();
  selectedIdentifier_ = item ? identifierOf(*item).toString() : QString();
  reloadData();
  {
    const auto delegate = delegate_.lock();
    if (!delegate || !delegate->popupCellSelectedDidChange) return;
  }
  if (const auto delegate = delegate_.lock()) delegate->popupCellSelectedDidChange(*this);
}

void KVPopupCell::setTitleField(QLabel* field) {
  titleField_ = field;
  if (field) field->setTextFormat(Qt::PlainText);
}

void KVPopupCell::setImage(const ImageRef& image) {
  image_ = image ? std::make_shared<Image>(*image) : nullptr;
}

}  // namespace kelvar
