#include "ui/KVPopupCell.h"

#include "runtime/ClassInfo.h"
#include "runtime/DelegateInfo.h"
#include "ui/InterfaceFile.h"

namespace kelvar {
namespace {

const ClassInfo::Registration kRegistered(&KVPopupCell::staticClassInfo);

/// Invalid for an item without one.
QVariant identifierOf(const MenuItem& item) {
  return item.representedObject().toMap().value(QStringLiteral("identifier"));
}

}  // namespace

const ClassInfo& KVPopupCell::staticClassInfo() {
  using Cell = KVPopupCell;
  static const ClassInfo kClass =
      ClassInfoBuilder<Cell>("KVPopupCell")
          .initializer(
              "init", [] { return Cell::initWithNibName(); }, "Creates a chooser.")
          .initializer("initWithNibName:bundle:", &Cell::initWithNibName,
                       "Creates a chooser for a form; nil if there is no such form.")
          .operation("nibName", &Cell::nibName, "Returns the name of the form.")
          .operation("view", &Cell::viewObject,
                     "Returns the chooser's view, loading the form on first use.")
          .operation("viewDidLoad", &Cell::viewDidLoad,
                     "Called when the form has loaded; shows the properties.")
          .operation("reloadData", &Cell::reloadData, "Shows the current properties.")
          .operation("selectedItem", &Cell::selectedItem,
                     "Returns the first item of the menu with the selected identifier, or nil.")
          .operation("representedObject", &Cell::representedObject,
                     "Returns the dictionary of the selected item, or nil.")
          .operation("popupButtonDidPop:", &Cell::popupButtonDidPop,
                     "Called when a pop-up button is about to open; if it is this chooser's, the "
                     "chooser reloads and becomes its target.")
          .operation(
              "itemDidSelect:", &Cell::itemDidSelect,
              "Action of the menu's items: selects the item, reloads and tells the delegate.")
          .property("popupButton", outletGetter(&Cell::popupButton),
                    outletSetter(&Cell::setPopupButton), "The pop-up button of the form.")
          .property("titleField", outletGetter(&Cell::titleField),
                    outletSetter(&Cell::setTitleField), "The title's label of the form.")
          .property("imageView", outletGetter(&Cell::imageView), outletSetter(&Cell::setImageView),
                    "The image view of the form.")
          .property("reuseIdentifier", &Cell::reuseIdentifier, &Cell::setReuseIdentifier,
                    "An identifier for the owner's use.")
          .property("image", &Cell::image, &Cell::setImage,
                    "The image beside the title; the chooser keeps a copy.")
          .property("name", &Cell::name, &Cell::setName, "The title.")
          .property("selectedIdentifier", &Cell::selectedIdentifier, &Cell::setSelectedIdentifier,
                    "The identifier of the selected item, or nil for no selection.")
          .property("layerID", &Cell::layerID, &Cell::setLayerID,
                    "A layer's identifier, for the owner's use.")
          .property("popupMenu", &Cell::popupMenu, &Cell::setPopupMenu,
                    "The menu of the pop-up button.")
          .property("delegate", &Cell::delegate, &Cell::setDelegate,
                    "Told when the user chooses an item; held weakly.");
  return kClass;
}

const DelegateInfo& KVPopupCellDelegate::staticDelegateInfo() {
  using Self = KVPopupCellDelegate;
  static const DelegateInfo kDelegate =
      DelegateInfoBuilder<Self>("KVPopupCellDelegate")
          .operation("popupCellSelectedDidChange:", &Self::popupCellSelectedDidChange,
                     "Called after the user has chosen an item, even if it was already selected; "
                     "the chooser already shows it.");
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
