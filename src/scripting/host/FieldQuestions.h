#pragma once

#include <QString>

#include "ui/View.h"

namespace kelvar {

class NSButton;
class NSComboBox;
class NSControl;
class NSPopUpButton;
class NSTextField;

/// Asks the user for the values of the controls in views, one after the other, in the order in
/// which they were added: text fields that can be edited, combo boxes, pop-up buttons, check boxes,
/// sliders, steppers and radio buttons.
///
/// A field is named by the label before it, or else by its placeholder. Hidden and disabled ones
/// are left out. A changed control acts as if the user had used it. Raises where nobody can answer.
/// Main thread.
class FieldQuestions {
 public:
  void ask(const QList<ViewRef>& views);

 private:
  void ask(const ViewRef& view);
  void askText(NSTextField& field);
  void askCombo(NSComboBox& box);
  void askNumber(NSControl& control, double minimum, double maximum);
  void askMenu(NSPopUpButton& button);
  void askBox(NSButton& button);
  void askRadios(const QList<ViewRef>& siblings);
  QString takeLabel(const QString& otherwise);

  QString label_;
  bool isLabelUsed_ = true;
};

}  // namespace kelvar
