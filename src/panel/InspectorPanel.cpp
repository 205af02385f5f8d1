#include "panel/InspectorPanel.h"

#include <QLabel>
#include <QScrollBar>
#include <QVBoxLayout>

#include "panel/DesignCells.h"
#include "panel/SettingsRow.h"
#include "panel/VerticalScrollArea.h"
#include "ui/WrappingLabel.h"

namespace kelvar::cli {
namespace {

/// Points. The forms have the same margin at either side.
constexpr int kMargin = 12;
constexpr int kSpacing = 8;

QLabel* makeLabel(const char* name, QWidget* parent) {
  auto* const label = new WrappingLabel(parent);
  label->setObjectName(QLatin1String(name));
  label->setContentsMargins(kMargin, 0, kMargin, 0);
  return label;
}

QVBoxLayout* makeStack(QWidget* parent, int spacing) {
  auto* const layout = parent ? new QVBoxLayout(parent) : new QVBoxLayout;
  layout->setContentsMargins(0, 0, 0, 0);
  layout->setSpacing(spacing);
  return layout;
}

}  // namespace

InspectorPanel::InspectorPanel(PanelModel* model, QWidget* parent)
    : QWidget(parent), model_(model) {
  setObjectName(QStringLiteral("inspectorPanel"));
  QWidget* const contents = makeContents();
  scroll_ = new VerticalScrollArea(settings_->narrowView(), this);
  scroll_->setWidget(contents);
  scroll_->setWidgetResizable(true);
  scroll_->setFocusPolicy(Qt::NoFocus);
  scroll_->setFrameShape(QFrame::NoFrame);
  below_ = makeStack(nullptr, 0);
  auto* const whole = makeStack(this, 0);
  whole->addWidget(scroll_, 1);
  whole->addLayout(below_);
  settings_->onRefresh = [this] {
    if (onRefresh) onRefresh();
  };
  cells_->onFilesDropped = [this](const QStringList& files, const QString& shape) {
    if (onFilesDropped) onFilesDropped(files, shape);
  };
  updateFromModel();
}

QWidget* InspectorPanel::makeContents() {
  auto* const contents = new QWidget;
  title_ = makeLabel("selectionTitle", contents);
  QFont bold = title_->font();
  bold.setWeight(QFont::DemiBold);
  title_->setFont(bold);
  empty_ = makeLabel("emptyHint", contents);
  empty_->setForegroundRole(QPalette::PlaceholderText);
  problem_ = makeLabel("problem", contents);
  cells_ = new DesignCells(model_, contents);
  settings_ = new SettingsRow(model_, contents);
  // Hidden before anything is measured with it.
  settings_->hide();

  auto* const column = makeStack(nullptr, kSpacing);
  column->setContentsMargins(0, kMargin, 0, kMargin);
  for (QWidget* const part :
       {static_cast<QWidget*>(title_), static_cast<QWidget*>(empty_), static_cast<QWidget*>(cells_),
        static_cast<QWidget*>(problem_), static_cast<QWidget*>(settings_)}) {
    column->addWidget(part);
  }
  column->addStretch();
  // Views above scroll along: a long message leaves room for the rest.
  above_ = makeStack(nullptr, 0);
  auto* const whole = makeStack(contents, 0);
  whole->addLayout(above_);
  whole->addLayout(column, 1);
  return contents;
}

void InspectorPanel::addAbove(QWidget* widget) { above_->addWidget(widget); }

void InspectorPanel::addBelow(QWidget* widget) { below_->addWidget(widget); }

void InspectorPanel::setCanMakeShapes(bool can) {
  canMakeShapes_ = can;
  updateFromModel();
}

void InspectorPanel::setThumbnails(const QMap<QString, ImageRef>& thumbnails) {
  cells_->setThumbnails(thumbnails);
}

void InspectorPanel::setPreview(const ImageRef& preview) { settings_->setPreview(preview); }

void InspectorPanel::setBusy(bool isBusy) { settings_->setBusy(isBusy); }

void InspectorPanel::setProblems(const QMap<QString, QString>& problems) {
  problems_ = problems;
  showProblems();
}

void InspectorPanel::updateFromModel() {
  const qsizetype count = model_->selection().size();
  title_->setVisible(count > 1);
  title_->setText(QStringLiteral("%1 shapes").arg(count));
  settings_->setVisible(count > 0);
  empty_->setVisible(count == 0);
  empty_->setText(emptyHint());
  cells_->updateFromModel();
  settings_->updateFromModel();
  showProblems();
}

QString InspectorPanel::emptyHint() const {
  const Arrangement& arrangement = model_->arrangement();
  if (arrangement.photo.isEmpty()) {
    return QStringLiteral("The settings of selected shapes appear here.");
  }
  const bool isEmpty = arrangement.shapesOnArtboard().isEmpty();
  if (isEmpty && !canMakeShapes_) {
    return QStringLiteral("There is no four-cornered shape here to put a design on.");
  }
  if (isEmpty) {
    return QStringLiteral(
        "No shapes yet. Click the four corners of a screen, a wall or a label in the photo, "
        "starting at the top left.");
  }
  return QStringLiteral(
      "Nothing is selected. Click a shape to choose its design; Shift-click to select several.");
}

void InspectorPanel::showProblems() {
  QStringList lines;
  for (const QString& id : model_->selection()) {
    if (!problems_.contains(id)) continue;
    lines.append(model_->arrangement().shape(id)->name + QStringLiteral(": ") +
                 problems_.value(id));
  }
  problem_->setText(lines.join(u'\n'));
  problem_->setVisible(!lines.isEmpty());
}

void InspectorPanel::resizeEvent(QResizeEvent*) {
  cells_->setAvailableWidth(width());
  settings_->setAvailableWidth(width() - scroll_->verticalScrollBar()->sizeHint().width());
}

}  // namespace kelvar::cli
