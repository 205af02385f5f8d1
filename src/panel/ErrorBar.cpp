#include "panel/ErrorBar.h"

#include <QAction>
#include <QClipboard>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QToolButton>

#include "ui/WrappingLabel.h"

namespace kelvar::cli {

ErrorBar::ErrorBar(QWidget* parent) : QFrame(parent) {
  setObjectName(QStringLiteral("errorBar"));
  setStyleSheet(
      QStringLiteral("#errorBar { background: #b3261e; } #errorBar QLabel, #errorBar QToolButton "
                     "{ color: white; } #errorBar QToolButton:focus { border: 1px solid white; }"));
  // Long paths have no spaces where a plain label could wrap.
  label_ = new WrappingLabel;
  label_->setObjectName(QStringLiteral("errorLabel"));
  label_->setContextMenuPolicy(Qt::ActionsContextMenu);
  auto* const copy = new QAction(QStringLiteral("Copy"), label_);
  connect(copy, &QAction::triggered, this,
          [this] { QGuiApplication::clipboard()->setText(label_->text()); });
  label_->addAction(copy);
  auto* const close = new QToolButton;
  close->setText(QStringLiteral("✕"));
  close->setAutoRaise(true);
  close->setAccessibleName(QStringLiteral("Dismiss"));
  close->setFocusPolicy(Qt::TabFocus);
  connect(close, &QToolButton::clicked, this, &QWidget::hide);
  auto* const line = new QHBoxLayout(this);
  line->setContentsMargins(16, 8, 8, 8);
  line->addWidget(label_, 1);
  line->addWidget(close);
  hide();
}

void ErrorBar::showError(const QString& message) {
  label_->setText(message);
  show();
}

}  // namespace kelvar::cli
