#include "panel/StatusBar.h"

#include <QHBoxLayout>
#include <QToolButton>
#include <cmath>

#include "ui/ElidedLabel.h"

namespace kelvar::cli {

StatusBar::StatusBar(QWidget* parent) : QWidget(parent) {
  auto* const line = new QHBoxLayout(this);
  line->setContentsMargins(12, 4, 8, 4);
  line->setSpacing(2);
  status_ = new ElidedLabel;
  status_->setObjectName(QStringLiteral("status"));
  status_->setForegroundRole(QPalette::PlaceholderText);
  line->addWidget(status_, 1);
  line->addWidget(
      addButton(QStringLiteral("−"), QStringLiteral("Zoom out"), &StatusBar::onZoomOut));
  zoom_ = addButton(QStringLiteral("100%"), QStringLiteral("Fit the image"), &StatusBar::onFit);
  zoom_->setMinimumWidth(56);
  line->addWidget(zoom_);
  line->addWidget(addButton(QStringLiteral("+"), QStringLiteral("Zoom in"), &StatusBar::onZoomIn));
}

QToolButton* StatusBar::addButton(const QString& text, const QString& name,
                                  std::function<void()> StatusBar::*callback) {
  auto* const button = new QToolButton;
  button->setText(text);
  button->setAutoRaise(true);
  button->setAccessibleName(name);
  button->setToolTip(name);
  button->setFocusPolicy(Qt::TabFocus);
  connect(button, &QToolButton::clicked, this, [this, callback] {
    if (this->*callback) (this->*callback)();
  });
  return button;
}

void StatusBar::setStatus(const QString& message) { status_->setText(message); }

void StatusBar::setZoom(double zoom) {
  zoom_->setText(QStringLiteral("%1%").arg(std::round(zoom * 100)));
}

}  // namespace kelvar::cli
