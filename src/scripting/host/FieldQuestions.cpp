#include "scripting/host/FieldQuestions.h"

#include <QCheckBox>
#include <QRadioButton>

#include "platform/UserDialog.h"
#include "runtime/leadingNumber.h"
#include "runtime/raise.h"
#include "ui/NSButton.h"
#include "ui/NSComboBox.h"
#include "ui/NSPopUpButton.h"
#include "ui/NSSlider.h"
#include "ui/NSStepper.h"
#include "ui/NSTextField.h"
#include "ui/PopUpButton.h"

namespace kelvar {
namespace {

using namespace Qt::StringLiterals;

/// The view's widget, or the one inside it; null if it is no `W`.
template <class W>
W* controlIn(const View& view) {
  QWidget* const widget = view.widget();
  auto* const itself = qobject_cast<W*>(widget);
  return itself || !widget ? itself : widget->findChild<W*>();
}

std::shared_ptr<NSButton> radioOf(const ViewRef& view) {
  auto button = std::dynamic_pointer_cast<NSButton>(view);
  return button && controlIn<QRadioButton>(*button) ? button : nullptr;
}

bool isUsable(const View& view) {
  const auto* const control = dynamic_cast<const NSControl*>(&view);
  return !view.isHidden() && (!control || control->isEnabled());
}

QString answerTo(const UserDialog::Question& question) {
  return orRaise(UserDialog::ask(question));
}

}  // namespace

void FieldQuestions::ask(const QList<ViewRef>& views) {
  bool hasAskedRadios = false;
  for (const ViewRef& each : views) {
    if (!radioOf(each)) {
      ask(each);
    } else if (!std::exchange(hasAskedRadios, true)) {
      askRadios(views);
    }
  }
}

void FieldQuestions::ask(const ViewRef& view) {
  auto* const field = dynamic_cast<NSTextField*>(view.get());
  if (field && !field->isEditable() && !field->stringValue().isEmpty()) {
    label_ = field->stringValue();
    isLabelUsed_ = false;
  }
  if (!isUsable(*view)) return;
  if (field && field->isEditable()) return askText(*field);
  if (auto* const combo = dynamic_cast<NSComboBox*>(view.get())) return askCombo(*combo);
  if (auto* const menu = dynamic_cast<NSPopUpButton*>(view.get())) return askMenu(*menu);
  if (auto* const button = dynamic_cast<NSButton*>(view.get())) return askBox(*button);
  if (auto* const slider = dynamic_cast<NSSlider*>(view.get())) {
    return askNumber(*slider, slider->minValue(), slider->maxValue());
  }
  if (auto* const stepper = dynamic_cast<NSStepper*>(view.get())) {
    return askNumber(*stepper, stepper->minValue(), stepper->maxValue());
  }
  ask(view->subviews());
}

/// The label, without the colon at its end.
QString FieldQuestions::takeLabel(const QString& otherwise) {
  const bool isNew = !std::exchange(isLabelUsed_, true);
  QString text = (isNew || otherwise.isEmpty() ? label_ : otherwise).trimmed();
  if (text.endsWith(u':')) text.chop(1);
  return text.isEmpty() ? u"Value"_s : text;
}

void FieldQuestions::askText(NSTextField& field) {
  const QString before = field.stringValue().isNull() ? u""_s : field.stringValue();
  const QString answer = answerTo({.text = takeLabel(field.placeholderString()),
                                   .choices = {},
                                   .initial = before,
                                   .dismissal = before,
                                   .isSecret = field.isSecure()});
  if (answer == before) return;
  field.setStringValue(answer);
  field.performClick();
}

/// The values are suggestions, unless the user may not type.
void FieldQuestions::askCombo(NSComboBox& box) {
  const QString before = box.stringValue().isNull() ? u""_s : box.stringValue();
  const QStringList values = box.values();
  QString text = takeLabel({});
  if (box.isEditable() && !values.isEmpty()) text += u" (%1)"_s.arg(values.join(u", "));
  const QString answer = answerTo({.text = text,
                                   .choices = box.isEditable() ? QStringList() : values,
                                   .initial = before,
                                   .dismissal = before});
  if (answer == before) return;
  box.setStringValue(answer);
  box.performClick();
}

void FieldQuestions::askMenu(NSPopUpButton& button) {
  QStringList titles = button.itemTitles();
  titles.removeAll(QString());
  titles.removeDuplicates();
  if (titles.isEmpty()) return;
  const QString before = button.itemTitles().value(button.indexOfSelectedItem());
  const QString initial = before.isEmpty() ? titles.first() : before;
  const QString answer = answerTo(
      {.text = takeLabel({}), .choices = titles, .initial = initial, .dismissal = initial});
  if (answer == before) return;
  button.selectItemWithTitle(answer);
  if (auto* const widget = qobject_cast<PopUpButton*>(button.widget())) widget->itemWasChosen();
}

void FieldQuestions::askNumber(NSControl& control, double minimum, double maximum) {
  const QString before = control.stringValue();
  const QString text = u"%1 (%2 to %3)"_s.arg(takeLabel({})).arg(minimum).arg(maximum);
  const QString answer =
      answerTo({.text = text, .choices = {}, .initial = before, .dismissal = before});
  if (answer == before) return;
  control.setDoubleValue(leadingNumber<double>(answer));
  control.performClick();
}

void FieldQuestions::askBox(NSButton& button) {
  if (!controlIn<QCheckBox>(button)) return;
  const QString before = button.state() == 0 ? u"No"_s : u"Yes"_s;
  const QString answer = answerTo({.text = button.title(),
                                   .choices = {u"Yes"_s, u"No"_s},
                                   .initial = before,
                                   .dismissal = before});
  if (answer != before) button.performClick();
}

/// Radio buttons in one view exclude each other.
void FieldQuestions::askRadios(const QList<ViewRef>& siblings) {
  QStringList titles;
  QString before;
  for (const ViewRef& each : siblings) {
    const auto radio = radioOf(each);
    if (!radio || !isUsable(*radio)) continue;
    titles.append(radio->title());
    if (radio->state() != 0) before = radio->title();
  }
  if (titles.isEmpty()) return;
  const QString initial = before.isEmpty() ? titles.first() : before;
  const QString answer = answerTo(
      {.text = takeLabel({}), .choices = titles, .initial = initial, .dismissal = initial});
  for (const ViewRef& each : siblings) {
    const auto radio = radioOf(each);
    if (radio && radio->title() == answer && radio->state() == 0) radio->performClick();
  }
}

}  // namespace kelvar
