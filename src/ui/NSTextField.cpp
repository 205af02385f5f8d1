#include "ui/NSTextField.h"

#include <QLabel>
#include <QLineEdit>
#include <stdexcept>

#include "runtime/ClassInfo.h"

namespace kelvar {
namespace {

const ClassInfo::Registration kRegistered(&NSTextField::staticClassInfo);
const ClassInfo::Registration kSecureRegistered(&NSSecureTextField::staticClassInfo);

QString textOf(const QWidget* control) {
  if (const auto* const edit = qobject_cast<const QLineEdit*>(control)) return edit->text();
  const auto* const label = qobject_cast<const QLabel*>(control);
  return label ? label->text() : QString();
}

Qt::Alignment alignmentOf(int number) {
  return number == 1 ? Qt::AlignRight : number == 2 ? Qt::AlignHCenter : Qt::AlignLeft;
}

}  // namespace

const ClassInfo& NSTextField::staticClassInfo() {
  using F = NSTextField;
  static const ClassInfo kClass =
      ClassInfoBuilder<F, NSControl>("NSTextField")
          .initializer(
              "init", [] { return F::initWithFrame({}); }, "Creates a field of size zero.")
          .initializer("initWithFrame:", &F::initWithFrame, "Creates a field to type into.")
          .classOperation("labelWithString:", &F::labelWithString,
                          "Creates a label of the size of its text.")
          .property("editable", &F::isEditable, &F::setEditable,
                    "Whether the user can type; otherwise it is a label, whose text wraps.")
          .operation("isEditable", &F::isEditable, "Returns whether the user can type.")
          .property("bezeled", &F::isBezeled, &F::setBezeled, "Whether it has a frame.")
          .property("bordered", &F::isBezeled, &F::setBezeled, "Whether it has a frame.")
          .property("placeholderString", &F::placeholderString, &F::setPlaceholderString,
                    "The text that an empty field shows.")
          .property("textColor", &F::textColor, &F::setTextColor,
                    "The color of the text, or nil for the palette's.")
          .property("selectable", &F::isSelectable, &F::setSelectable,
                    "Whether the text of a label can be selected; that of a field always can.")
          .operation("isSelectable", &F::isSelectable, "Returns whether the text can be selected.")
          .property("drawsBackground", &F::drawsBackground, &F::setDrawsBackground,
                    "Whether the background has its color.")
          .property("backgroundColor", &F::backgroundColor, &F::setBackgroundColor,
                    "The color of the background, or nil for the palette's.")
          .property("alignment", &F::alignment, &F::setAlignment,
                    "Where lines start: `NSLeftTextAlignment`, `NSRightTextAlignment` or "
                    "`NSCenterTextAlignment`.");
  return kClass;
}

const ClassInfo& NSSecureTextField::staticClassInfo() {
  using F = NSSecureTextField;
  static const ClassInfo kClass =
      ClassInfoBuilder<F, NSTextField>("NSSecureTextField")
          .initializer(
              "init", [] { return F::initWithFrame({}); }, "Creates a field of size zero.")
          .initializer("initWithFrame:", &F::initWithFrame,
                       "Creates a field that shows dots instead of what is typed.");
  return kClass;
}

TextFieldBox::TextFieldBox(bool isEditable) { putControl(isEditable); }

QLineEdit* TextFieldBox::edit() const { return qobject_cast<QLineEdit*>(control()); }

QLabel* TextFieldBox::label() const { return qobject_cast<QLabel*>(control()); }

void TextFieldBox::setEditable(bool editable) {
  if (editable != isEditable()) putControl(editable);
}

void TextFieldBox::putControl(bool isEditable) {
  const QString text = textOf(control());
  if (isEditable) {
    auto* const edit = new QLineEdit(text);
    edit->setEchoMode(isSecure_ ? QLineEdit::Password : QLineEdit::Normal);
    setControl(edit);
  } else {
    auto* const label = new QLabel;
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
    label->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    label->setText(text);
    setControl(label);
  }
  showBezel();
}

void TextFieldBox::setBezeled(bool bezeled) {
  isBezeled_ = bezeled;
  showBezel();
}

void TextFieldBox::showBezel() {
  if (edit()) edit()->setFrame(isBezeled_);
  if (label()) label()->setFrameShape(isBezeled_ ? QFrame::StyledPanel : QFrame::NoFrame);
}

void TextFieldBox::setSecure(bool secure) {
  isSecure_ = secure;
  if (edit()) edit()->setEchoMode(secure ? QLineEdit::Password : QLineEdit::Normal);
}

std::shared_ptr<NSTextField> NSTextField::initWithFrame(const QRectF& frame) {
  return std::static_pointer_cast<NSTextField>(View::adopt(new TextFieldBox, frame));
}

std::shared_ptr<NSSecureTextField> NSSecureTextField::initWithFrame(const QRectF& frame) {
  return std::static_pointer_cast<NSSecureTextField>(View::adopt(new SecureTextFieldBox, frame));
}

std::shared_ptr<NSTextField> NSTextField::labelWithString(const QString& text) {
  auto* const box = new TextFieldBox(false);
  box->setBezeled(false);
  box->label()->setWordWrap(false);
  box->label()->setText(text);
  return std::static_pointer_cast<NSTextField>(View::adopt(box, {{0, 0}, QSizeF(box->sizeHint())}));
}

TextFieldBox* NSTextField::box() const { return qobject_cast<TextFieldBox*>(widget()); }

QWidget* NSTextField::control() const { return box() ? box()->control() : widget(); }

QLabel* NSTextField::label() const { return qobject_cast<QLabel*>(control()); }

QString NSTextField::stringValue() const { return textOf(control()); }

void NSTextField::setStringValue(const QString& text) {
  if (label()) label()->setText(text);
  if (box() && box()->edit()) box()->edit()->setText(text);
}

bool NSTextField::isEditable() const { return box() && box()->isEditable(); }

void NSTextField::setEditable(bool editable) {
  if (!widget() || editable == isEditable()) return;
  if (!box()) throw std::invalid_argument("the label of a form cannot be edited");
  box()->setEditable(editable);
  styleControl();
  if (!action().expired()) connectControl();
}

bool NSTextField::isBezeled() const { return box() && box()->isBezeled(); }

void NSTextField::setBezeled(bool bezeled) {
  if (box()) box()->setBezeled(bezeled);
}

QString NSTextField::placeholderString() const { return placeholder_; }

void NSTextField::setPlaceholderString(const QString& text) {
  placeholder_ = text;
  styleControl();
}

QVariant NSTextField::textColor() const {
  return textColor_.isValid() ? QVariant(textColor_) : QVariant();
}

void NSTextField::setTextColor(const QColor& color) {
  textColor_ = color;
  styleControl();
}

void NSTextField::setSelectable(bool selectable) {
  isSelectable_ = selectable;
  styleControl();
}

void NSTextField::setDrawsBackground(bool draws) {
  drawsBackground_ = draws;
  styleControl();
}

QVariant NSTextField::backgroundColor() const {
  return backgroundColor_.isValid() ? QVariant(backgroundColor_) : QVariant();
}

void NSTextField::setBackgroundColor(const QColor& color) {
  backgroundColor_ = color;
  styleControl();
}

void NSTextField::setAlignment(int alignment) {
  alignment_ = alignment;
  styleControl();
}

void NSTextField::styleControl() {
  if (!control()) return;
  QPalette palette;
  if (textColor_.isValid()) {
    palette.setColor(QPalette::Text, textColor_);
    palette.setColor(QPalette::WindowText, textColor_);
  }
  const QColor background = drawsBackground_ ? backgroundColor_ : QColor(Qt::transparent);
  if (background.isValid()) {
    palette.setColor(QPalette::Base, background);
    palette.setColor(QPalette::Window, background);
  }
  control()->setAutoFillBackground(label() && drawsBackground_ && background.isValid());
  control()->setPalette(palette);
  if (label()) {
    label()->setAlignment(alignmentOf(alignment_) | Qt::AlignTop);
    label()->setTextInteractionFlags(isSelectable_ ? Qt::TextSelectableByMouse
                                                   : Qt::NoTextInteraction);
  }
  if (!box() || !box()->edit()) return;
  box()->edit()->setAlignment(alignmentOf(alignment_) | Qt::AlignVCenter);
  box()->edit()->setPlaceholderText(placeholder_);
}

void NSTextField::connectControl() {
  if (auto* const edit = box() ? box()->edit() : nullptr) {
    QObject::connect(edit, &QLineEdit::editingFinished, edit, acting());
  }
}

}  // namespace kelvar
