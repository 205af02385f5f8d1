#include "ui/PopUpButton.h"

#include <QAbstractItemView>
#include <QKeyEvent>
#include <QPointer>
#include <QSignalBlocker>
#include <QStylePainter>
#include <algorithm>

#include "ui/PopUpItemDelegate.h"
#include "ui/Thumbnail.h"
#include "ui/showWholeText.h"

namespace kelvar {
namespace {

constexpr int kMaxMenuWidth = 480;
/// The height of the buttons beside it, unless the font needs more.
constexpr int kMinHeight = 28;

bool opensMenu(const QKeyEvent& event) {
  switch (event.key()) {
    case Qt::Key_Up:
    case Qt::Key_Down:
    case Qt::Key_PageUp:
    case Qt::Key_PageDown:
    case Qt::Key_Home:
    case Qt::Key_End:
    case Qt::Key_Space:
    case Qt::Key_Select:
    case Qt::Key_F4:
      return true;
    default:
      return false;
  }
}

bool isTyped(const QKeyEvent& event) {
  return !event.text().isEmpty() && event.text().at(0).isPrint() &&
         !(event.modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier));
}

}  // namespace

PopUpButton::PopUpButton(QWidget* parent) : QComboBox(parent) {
  setItemDelegate(new PopUpItemDelegate(this));
  setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
  view()->setTextElideMode(Qt::ElideMiddle);
  view()->viewport()->installEventFilter(this);
  connect(this, &QComboBox::activated, this, [this] {
    freeTitle_.clear();
    markSelection();
    faceChanged();
    // A copy, as the action may replace itself.
    const QPointer<PopUpButton> self(this);
    if (const Action action = action_) action(*this);
    if (self) Q_EMIT itemWasChosen();
  });
}

PopUpButton::~PopUpButton() { setMenu(nullptr); }

void PopUpButton::setMenu(KVMenuRef menu) {
  if (menu_ && menu_->owner() == this) menu_->setOwner(nullptr);
  menu_ = std::move(menu);
  if (menu_) menu_->setOwner(this);
  showItems();
}

void PopUpButton::showItems() {
  const QSignalBlocker blocker(this);
  clear();
  if (menu_) {
    for (const MenuItemRef& item : menu_->items()) showItem(*item);
  }
  setCurrentIndex(-1);
  faceChanged();
}

void PopUpButton::showItem(const MenuItem& item) {
  if (item.isSeparatorItem()) {
    insertSeparator(count());
  } else {
    addItem(thumbnail(item.image(), iconSize()), item.title());
  }
}

void PopUpButton::menuDidGrow() {
  const QSignalBlocker blocker(this);
  const int selected = currentIndex();
  showItem(*menu_->items().last());
  // A combo box selects its first item by itself.
  setCurrentIndex(selected);
}

void PopUpButton::menuDidChange() {
  const auto isMarked = [](const MenuItemRef& item) { return item->state() != 0; };
  const auto marked = std::find_if(menu_->items().begin(), menu_->items().end(), isMarked);
  showItems();
  if (marked != menu_->items().end()) selectItemAtIndex(int(marked - menu_->items().begin()));
}

void PopUpButton::chooseItem(int index) {
  if (!isEnabled()) return;
  Q_EMIT PopUpNotifications::shared().willPopUp(this);
  selectItemAtIndex(index);
  Q_EMIT activated(index);
}

void PopUpButton::selectItemAtIndex(int index) {
  const QSignalBlocker blocker(this);
  const bool selectable = model()->flags(model()->index(index, 0)) & Qt::ItemIsSelectable;
  setCurrentIndex(selectable ? index : -1);
  freeTitle_.clear();
  markSelection();
  faceChanged();
}

MenuItemRef PopUpButton::selectedItem() const {
  return menu_ ? menu_->items().value(currentIndex()) : nullptr;
}

void PopUpButton::setUsesItemFromMenu(bool uses) {
  usesItemFromMenu_ = uses;
  faceChanged();
}

void PopUpButton::setFaceItem(MenuItemRef item) {
  faceItem_ = std::move(item);
  faceChanged();
}

void PopUpButton::setTitle(const QString& title) {
  selectItemAtIndex(-1);
  freeTitle_ = title;
  faceChanged();
}

QString PopUpButton::title() const {
  if (!freeTitle_.isNull()) return freeTitle_;
  if (usesItemFromMenu_) return currentText();
  return faceItem_ ? faceItem_->title() : QString();
}

bool PopUpButton::isMarked(int index) const {
  if (!menu_) return index == currentIndex();
  const MenuItemRef item = menu_->items().value(index);
  return item && item->state() != 0;
}

QSize PopUpButton::sizeHint() const { return QComboBox::sizeHint().expandedTo({0, kMinHeight}); }

QSize PopUpButton::minimumSizeHint() const {
  return QComboBox::minimumSizeHint().expandedTo({0, kMinHeight});
}

void PopUpButton::showPopup() {
  Q_EMIT PopUpNotifications::shared().willPopUp(this);
  view()->setMinimumWidth(std::min(view()->sizeHintForColumn(0), kMaxMenuWidth));
  QComboBox::showPopup();
}

void PopUpButton::paintEvent(QPaintEvent*) {
  QStylePainter painter(this);
  painter.setPen(palette().color(QPalette::Text));
  QStyleOptionComboBox option;
  initStyleOption(&option);
  painter.drawComplexControl(QStyle::CC_ComboBox, option);
  option.currentIcon = faceIcon();
  option.currentText = elided();
  painter.drawControl(QStyle::CE_ComboBoxLabel, option);
}

QString PopUpButton::elided() const {
  QStyleOptionComboBox option;
  initStyleOption(&option);
  // The icon and the style's margins around it.
  const int taken = faceIcon().isNull() ? 4 : option.iconSize.width() + 8;
  const QRect field =
      style()->subControlRect(QStyle::CC_ComboBox, &option, QStyle::SC_ComboBoxEditField, this);
  return fontMetrics().elidedText(title(), Qt::ElideMiddle, std::max(field.width() - taken, 0));
}

bool PopUpButton::event(QEvent* event) {
  if (event->type() != QEvent::ToolTip || elided() == title()) return QComboBox::event(event);
  return showWholeText(this, event, title());
}

void PopUpButton::keyPressEvent(QKeyEvent* event) {
  if (!opensMenu(*event) && !isTyped(*event)) return event->ignore();
  showPopup();
  if (isTyped(*event) && event->key() != Qt::Key_Space) view()->keyboardSearch(event->text());
}

void PopUpButton::wheelEvent(QWheelEvent* event) { event->ignore(); }

bool PopUpButton::eventFilter(QObject* watched, QEvent* event) {
  if (watched != view()->viewport() || event->type() != QEvent::MouseButtonRelease) {
    return QComboBox::eventFilter(watched, event);
  }
  // A click on a separator would choose the item that the pointer was on before.
  const QModelIndex index = view()->indexAt(static_cast<QMouseEvent*>(event)->pos());
  return index.isValid() && !(index.flags() & Qt::ItemIsSelectable);
}

void PopUpButton::markSelection() {
  if (!menu_) return;
  const MenuItemRef selected = selectedItem();
  for (const MenuItemRef& item : menu_->items()) item->setState(item == selected ? 1 : 0);
}

void PopUpButton::faceChanged() {
  // Assistive technology reads the selection, which may differ from the face.
  const QString face = title();
  setAccessibleDescription(face == currentText() ? QString() : face);
  update();
}

QIcon PopUpButton::faceIcon() const {
  if (!freeTitle_.isNull()) return {};
  if (usesItemFromMenu_) return itemIcon(currentIndex());
  return faceItem_ ? thumbnail(faceItem_->image(), iconSize()) : QIcon();
}

PopUpNotifications& PopUpNotifications::shared() {
  static PopUpNotifications kShared;
  return kShared;
}

}  // namespace kelvar
