#pragma once

#include <QStringList>

#include "ui/ControlBox.h"
#include "ui/NSControl.h"

class QComboBox;

namespace kelvar {

/// The widget of a combo box.
class ComboFieldBox : public ControlBox {
  Q_OBJECT
};

/// The view of a text field with a list of values to choose from. Its value is the text.
class KELVAR_EXPORT NSComboBox : public NSControl {
 public:
  static const ClassInfo& staticClassInfo();
  const ClassInfo& classInfo() const override { return staticClassInfo(); }

  using NSControl::NSControl;
  static std::shared_ptr<NSComboBox> initWithFrame(const QRectF& frame);

  QString stringValue() const override;
  /// Does not run the action.
  void setStringValue(const QString& text) override;
  /// Whether the user may also type.
  bool isEditable() const;
  void setEditable(bool editable);
  int numberOfVisibleItems() const;
  void setNumberOfVisibleItems(int count);

  QStringList values() const;
  void addValues(const QStringList& values);
  void removeAllItems();
  /// -1 if the text is none of the values.
  int indexOfSelectedItem() const { return int(values().indexOf(stringValue())); }
  /// These throw `std::out_of_range` for an index that no item has.
  QString valueAtIndex(int64_t index) const;
  void selectItemAtIndex(int64_t index) { setStringValue(valueAtIndex(index)); }

 protected:
  QWidget* control() const override;
  void connectControl() override;

 private:
  QComboBox* combo() const;
};

}  // namespace kelvar
