#include "ui/NSButton.h"

#include <QCheckBox>
#include <QKeySequence>
#include <QPushButton>
#include <QRadioButton>
#include <stdexcept>

#include "runtime/ClassInfo.h"
#include "runtime/leadingNumber.h"
#include "ui/KVButton.h"

namespace kelvar {
namespace {

const ClassInfo::Registration kRegistered(&NSButton::staticClassInfo);

QAbstractButton* makeButton(int type) {
  if (type == NSButton::kSwitch) return new QCheckBox;
  if (type == NSButton::kRadio) return new QRadioButton;
  auto* const button = new KVButton;
  button->setCheckable(type == NSButton::kPushOnPushOff || type == NSButton::kToggle ||
                       type == NSButton::kOnOff);
  return button;
}

/// The title as the button's text, in which "&" would mark a key.
QString escaped(const QString& title) { return QString(title).replace(u'&', QStringLiteral("&&")); }

QString unescaped(const QString& text) {
  return QString(text).replace(QStringLiteral("&&"), QStringLiteral("&"));
}

QKeySequence shortcut(const QString& key) {
  if (key == QStringLiteral("\r") || key == QStringLiteral("\n")) {
    return QKeySequence(Qt::Key_Return);
  }
  if (key == QStringLiteral("\x1b")) return QKeySequence(Qt::Key_Escape);
  if (key.isEmpty()) return {};
  return QKeySequence(QStringLiteral("Ctrl+") + key.left(1).toUpper());
}

}  // namespace

const ClassInfo& NSButton::staticClassInfo() {
  using B = NSButton;
  static const ClassInfo kClass =
      ClassInfoBuilder<B, NSControl>("NSButton")
          .initializer(
              "init", [] { return B::initWithFrame({}); }, "Creates a push button of size zero.")
          .initializer("initWithFrame:", &B::initWithFrame, "Creates a push button.")
          .property("title", &B::title, &B::setTitle, "The title.")
          .property("state", &B::state, &B::setState, "Off is 0, on is 1, mixed is -1.")
          .property("allowsMixedState", &B::allowsMixedState, &B::setAllowsMixedState,
                    "Whether a check box can be mixed.")
          .operation("setButtonType:", &B::setButtonType,
                     "Makes it a check box (`NSSwitchButton`), a radio button (`NSRadioButton`), "
                     "a button that stays pressed (`NSPushOnPushOffButton`) or a push button.")
          .property("bezelStyle", &B::bezelStyle, &B::setBezelStyle,
                    "The bezel that was asked for; the desktop decides on its look.")
          .property("image", &B::image, &B::setImage, "The image beside the title, or nil.")
          .property("bordered", &B::isBordered, &B::setBordered,
                    "Whether a push button has a bezel.")
          .property("keyEquivalent", &B::keyEquivalent, &B::setKeyEquivalent,
                    "The key that presses it: \"\\r\" for Return, \"\\x1b\" for Escape, else a "
                    "character that is typed with Ctrl.");
  return kClass;
}

std::shared_ptr<NSButton> NSButton::initWithFrame(const QRectF& frame) {
  auto* const box = new ButtonBox;
  box->setControl(makeButton(0));
  return std::static_pointer_cast<NSButton>(View::adopt(box, frame));
}

QWidget* NSButton::control() const {
  const auto* const box = qobject_cast<ButtonBox*>(widget());
  return box ? box->control() : widget();
}

QAbstractButton* NSButton::button() const { return qobject_cast<QAbstractButton*>(control()); }

QString NSButton::title() const { return button() ? unescaped(button()->text()) : QString(); }

void NSButton::setTitle(const QString& title) {
  if (button()) button()->setText(escaped(title));
}

int NSButton::state() const {
  const auto* const box = qobject_cast<QCheckBox*>(button());
  if (box && box->checkState() == Qt::PartiallyChecked) return -1;
  return button() && button()->isChecked() ? 1 : 0;
}

void NSButton::setState(int state) {
  auto* const box = qobject_cast<QCheckBox*>(button());
  if (box && state < 0 && box->isTristate()) return box->setCheckState(Qt::PartiallyChecked);
  if (button()) button()->setChecked(state != 0);
}

bool NSButton::allowsMixedState() const {
  const auto* const box = qobject_cast<QCheckBox*>(button());
  return box && box->isTristate();
}

void NSButton::setAllowsMixedState(bool allows) {
  if (auto* const box = qobject_cast<QCheckBox*>(button())) box->setTristate(allows);
}

void NSButton::setButtonType(int type) {
  auto* const box = qobject_cast<ButtonBox*>(widget());
  if (!widget()) return;
  if (!box) throw std::invalid_argument("the kind of this button cannot be changed");
  const QString title = this->title();
  const int state = this->state();
  box->setControl(makeButton(type));
  setTitle(title);
  setState(state);
  setImage(image_);
  setKeyEquivalent(keyEquivalent_);
  if (!action().expired()) connectControl();
}

void NSButton::setImage(const ImageRef& image) {
  image_ = image;
  if (!button()) return;
  button()->setIcon(image ? QIcon(QPixmap::fromImage(image->pixels())) : QIcon());
  if (image) button()->setIconSize(image->size().toSize());
}

bool NSButton::isBordered() const {
  const auto* const push = qobject_cast<QPushButton*>(button());
  return push && !push->isFlat();
}

void NSButton::setBordered(bool bordered) {
  if (auto* const push = qobject_cast<QPushButton*>(button())) push->setFlat(!bordered);
}

void NSButton::setKeyEquivalent(const QString& key) {
  keyEquivalent_ = key;
  if (button()) button()->setShortcut(shortcut(key));
}

void NSButton::setStringValue(const QString& value) {
  setDoubleValue(leadingNumber<double>(value));
}

void NSButton::setDoubleValue(double number) { setState(number < 0 ? -1 : number > 0 ? 1 : 0); }

void NSButton::performClick() {
  if (button()) button()->click();
}

void NSButton::connectControl() {
  QObject::connect(button(), &QAbstractButton::clicked, button(), acting());
}

}  // namespace kelvar
