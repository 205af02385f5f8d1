#include "ui/NSComboBox.h"

#include <QComboBox>
#include <QLineEdit>
#include <stdexcept>

#include "runtime/ClassInfo.h"

namespace kelvar {
namespace {

using C = NSComboBox;

const ClassInfo::Registration kRegistered(&NSComboBox::staticClassInfo);

QString textFrom(const QVariant& value) { return value.toString(); }

QStringList textsFrom(const QVariantList& values) {
  QStringList texts;
  for (const QVariant& each : values) texts.append(textFrom(each));
  return texts;
}

}  // namespace

const ClassInfo& NSComboBox::staticClassInfo() {
  static const ClassInfo kClass =
      ClassInfoBuilder<C, NSControl>("NSComboBox")
          .initializer(
              "init", [] { return C::initWithFrame({}); }, "Creates a combo box of size zero.")
          .initializer("initWithFrame:", &C::initWithFrame, "Creates a combo box without items.")
          .property("editable", &C::isEditable, &C::setEditable, "Whether the user may also type.")
          .property("numberOfVisibleItems", &C::numberOfVisibleItems, &C::setNumberOfVisibleItems,
                    "How many items its list shows at a time.")
          .property("objectValues", &C::values, "The items in order.")
          .operation(
              "addItemWithObjectValue:",
              [](C& box, const QVariant& value) { box.addValues({textFrom(value)}); },
              "Appends an item.")
          .operation(
              "addItemsWithObjectValues:",
              [](C& box, const QVariantList& values) { box.addValues(textsFrom(values)); },
              "Appends items.")
          .operation("removeAllItems", &C::removeAllItems, "Removes all items.")
          .operation(
              "numberOfItems", [](const C& box) { return int(box.values().size()); },
              "Returns the number of items.")
          .operation("itemObjectValueAtIndex:", &C::valueAtIndex,
                     "Returns an item by its position.")
          .operation(
              "indexOfItemWithObjectValue:",
              [](const C& box, const QVariant& value) {
                return int(box.values().indexOf(textFrom(value)));
              },
              "Returns the position of an item, or -1.")
          .property("indexOfSelectedItem", &C::indexOfSelectedItem,
                    "The position of the item that the text is, or -1.")
          .operation(
              "objectValueOfSelectedItem",
              [](const C& box) {
                return box.indexOfSelectedItem() < 0 ? QString() : box.stringValue();
              },
              "Returns the item that the text is, or nil.")
          .operation("selectItemAtIndex:", &C::selectItemAtIndex,
                     "Makes an item the text; the action does not run.")
          .operation(
              "selectItemWithObjectValue:",
              [](C& box, const QVariant& value) {
                if (box.values().contains(textFrom(value))) box.setStringValue(textFrom(value));
              },
              "Makes an item the text, if there is such a one; the action does not run.");
  return kClass;
}

std::shared_ptr<NSComboBox> NSComboBox::initWithFrame(const QRectF& frame) {
  auto* const box = new ComboFieldBox;
  auto* const combo = new QComboBox;
  combo->setEditable(true);
  combo->setInsertPolicy(QComboBox::NoInsert);
  box->setControl(combo);
  return std::static_pointer_cast<NSComboBox>(View::adopt(box, frame));
}

QWidget* NSComboBox::control() const {
  const auto* const box = qobject_cast<ComboFieldBox*>(widget());
  return box ? box->control() : nullptr;
}

QComboBox* NSComboBox::combo() const { return qobject_cast<QComboBox*>(control()); }

QString NSComboBox::stringValue() const { return combo() ? combo()->currentText() : QString(); }

void NSComboBox::setStringValue(const QString& text) {
  if (!combo()) return;
  combo()->setCurrentIndex(combo()->findText(text, Qt::MatchFixedString | Qt::MatchCaseSensitive));
  if (combo()->isEditable()) combo()->setEditText(text);
}

bool NSComboBox::isEditable() const { return combo() && combo()->isEditable(); }

void NSComboBox::setEditable(bool editable) {
  if (combo()) combo()->setEditable(editable);
}

int NSComboBox::numberOfVisibleItems() const { return combo() ? combo()->maxVisibleItems() : 0; }

void NSComboBox::setNumberOfVisibleItems(int count) {
  if (combo()) combo()->setMaxVisibleItems(count);
}

QStringList NSComboBox::values() const {
  QStringList values;
  for (int i = 0; combo() && i < combo()->count(); ++i) values.append(combo()->itemText(i));
  return values;
}

/// The text stays as it is: Qt would make the first item the text.
void NSComboBox::addValues(const QStringList& values) {
  if (!combo()) return;
  const QString text = stringValue();
  combo()->addItems(values);
  setStringValue(text);
}

void NSComboBox::removeAllItems() {
  const QString text = stringValue();
  if (combo()) combo()->clear();
  setStringValue(text);
}

QString NSComboBox::valueAtIndex(int64_t index) const {
  const QStringList values = this->values();
  if (index >= 0 && index < values.size()) return values[index];
  throw std::out_of_range("the combo box has no item " + std::to_string(index));
}

void NSComboBox::connectControl() {
  QObject::connect(combo(), &QComboBox::textActivated, combo(), acting());
}

}  // namespace kelvar
