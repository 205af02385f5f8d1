#include "ui/makeView.h"

#include <QLabel>

#include "ui/ImageView.h"
#include "ui/KVButton.h"
#include "ui/KVView.h"
#include "ui/NSButton.h"
#include "ui/NSComboBox.h"
#include "ui/NSImageView.h"
#include "ui/NSMatrix.h"
#include "ui/NSPopUpButton.h"
#include "ui/NSScrollView.h"
#include "ui/NSSlider.h"
#include "ui/NSStepper.h"
#include "ui/NSTextField.h"
#include "ui/PopUpButton.h"

namespace kelvar {
namespace {

template <class V>
ViewRef make(QWidget* widget) {
  return std::make_shared<V>(widget);
}

const struct {
  const QMetaObject* widgetClass;
  ViewRef (*make)(QWidget* widget);
} kRows[] = {{&KVView::staticMetaObject, &KVView::makeView},
             {&KVButton::staticMetaObject, &KVButton::makeView},
             {&QAbstractButton::staticMetaObject, make<NSButton>},
             {&ButtonCellBox::staticMetaObject, make<NSButtonCell>},
             {&MatrixBox::staticMetaObject, make<NSMatrix>},
             {&ButtonBox::staticMetaObject, make<NSButton>},
             {&ComboFieldBox::staticMetaObject, make<NSComboBox>},
             {&PopUpButton::staticMetaObject, make<NSPopUpButton>},
             {&QLabel::staticMetaObject, make<NSTextField>},
             {&TextFieldBox::staticMetaObject, make<NSTextField>},
             {&SecureTextFieldBox::staticMetaObject, make<NSSecureTextField>},
             {&ImageView::staticMetaObject, make<NSImageView>},
             {&SliderBox::staticMetaObject, make<NSSlider>},
             {&StepperBox::staticMetaObject, make<NSStepper>},
             {&ScrollArea::staticMetaObject, make<NSScrollView>},
             {&QWidget::staticMetaObject, make<View>}};

}  // namespace

ViewRef makeView(QWidget* widget) {
  for (const QMetaObject* each = widget->metaObject(); each; each = each->superClass()) {
    for (const auto& row : kRows) {
      if (row.widgetClass == each) return row.make(widget);
    }
  }
  return make<View>(widget);
}

}  // namespace kelvar
