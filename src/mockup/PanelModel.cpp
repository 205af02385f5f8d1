#include "mockup/PanelModel.h"

#include <algorithm>
#include <cmath>

namespace kelvar {
namespace {

constexpr qsizetype kMaxSteps = 500;

QPointF clamped(const QPointF& point) {
  const double far = Arrangement::kMaxCoordinate;
  return {std::clamp(point.x(), -far, far), std::clamp(point.y(), -far, far)};
}

/// The nearest position of the image quality: 0 for 1x to 3 for 4x.
int qualityPosition(const Arrangement::Shape& shape) {
  const double nearest = std::round(shape.options.scale());
  return int(std::clamp(nearest, 1.0, double(Arrangement::kQualities))) - 1;
}

/// The value that all selected shapes have, or PanelModel::kMixed.
template <typename Get>
int common(const PanelModel& model, Get get) {
  const QStringList selection = model.selection();
  if (selection.isEmpty()) return 0;
  const auto of = [&](const QString& id) { return int(get(*model.arrangement().shape(id))); };
  const int first = of(selection.first());
  const bool isCommon = std::all_of(selection.begin(), selection.end(),
                                    [&](const QString& id) { return of(id) == first; });
  return isCommon ? first : PanelModel::kMixed;
}

}  // namespace

void PanelModel::open(const Arrangement& arrangement) {
  arrangement_ = saved_ = arrangement;
  selection_.clear();
  undo_.clear();
  redo_.clear();
  isOneStep_ = hasStep_ = false;
  notify();
}

void PanelModel::markSaved(const Arrangement& saved) {
  saved_ = saved;
  notify();
}

bool PanelModel::isModified() const {
  Arrangement saved = saved_;
  saved.artboard = arrangement_.artboard;
  return arrangement_ != saved;
}

void PanelModel::showArtboard(const QString& artboard) {
  if (artboard == arrangement_.artboard) return;
  arrangement_.artboard = artboard;
  setSelection(selection_);
  notify();
}

void PanelModel::undo() { step(&undo_, &redo_); }

void PanelModel::redo() { step(&redo_, &undo_); }

void PanelModel::step(QList<Arrangement>* from, QList<Arrangement>* to) {
  endStep();
  if (from->isEmpty()) return;
  Arrangement now = arrangement_;
  arrangement_ = from->takeLast();
  now.artboard = arrangement_.artboard;
  to->append(now);
  setSelection(selection_);
  notify();
}

void PanelModel::endStep() { isOneStep_ = hasStep_ = false; }

void PanelModel::select(const QStringList& shapes) {
  const QStringList before = selection_;
  setSelection(shapes);
  if (selection_ != before) notify();
}

void PanelModel::selectAll() {
  QStringList all;
  for (const Arrangement::Shape& shape : arrangement_.shapesOnArtboard()) all.append(shape.id);
  select(all);
}

void PanelModel::toggleSelected(const QString& shape) {
  QStringList shapes = selection_;
  if (!shapes.removeOne(shape)) shapes.append(shape);
  select(shapes);
}

void PanelModel::selectNext(int direction) {
  const QList<Arrangement::Shape> shapes = arrangement_.shapesOnArtboard();
  if (shapes.isEmpty()) return;
  qsizetype next = direction > 0 ? 0 : shapes.size() - 1;
  if (!selection_.isEmpty()) {
    const QString from = direction > 0 ? selection_.last() : selection_.first();
    const auto shape = std::find_if(shapes.begin(), shapes.end(),
                                    [&](const auto& each) { return each.id == from; });
    next = (shape - shapes.begin() + direction + shapes.size()) % shapes.size();
  }
  select({shapes[next].id});
}

QString PanelModel::addShape(const std::array<QPointF, 4>& corners) {
  Arrangement next = arrangement_;
  int number = 1;
  while (next.shape(QString::number(number))) ++number;
  Arrangement::Shape shape;
  shape.id = QString::number(number);
  shape.name = QStringLiteral("Shape %1").arg(number);
  std::transform(corners.begin(), corners.end(), shape.corners.begin(), clamped);
  next.shapes.append(shape);
  selection_ = {shape.id};
  change(next);
  return shape.id;
}

void PanelModel::removeSelected() {
  Arrangement next = arrangement_;
  next.shapes.removeIf([&](const Arrangement::Shape& shape) { return isSelected(shape.id); });
  change(next);
}

void PanelModel::setCorner(const QString& shape, int corner, const QPointF& point) {
  Arrangement next = arrangement_;
  Arrangement::Shape* moved = next.shape(shape);
  if (!moved) return;
  moved->corners[size_t(corner)] = clamped(point);
  change(next);
}

void PanelModel::moveSelected(const QPointF& by) {
  changeSelected([&](Arrangement::Shape& shape) {
    for (QPointF& corner : shape.corners) corner = clamped(corner + by);
  });
}

QString PanelModel::addDesign(const QString& file) {
  Arrangement next = arrangement_;
  const QString id = next.addDesign(file);
  change(next);
  return id;
}

QString PanelModel::addOpenedDesign(const QString& file) {
  QList<Arrangement*> states{&arrangement_, &saved_};
  for (QList<Arrangement>* const steps : {&undo_, &redo_}) {
    for (Arrangement& step : *steps) states.append(&step);
  }
  // All designs of all states, so that the new id is unique in each of them.
  Arrangement all;
  for (const Arrangement* const state : states) {
    for (const Arrangement::Design& design : state->designs) {
      if (!all.design(design.id)) all.designs.append(design);
    }
  }
  const QString id = all.addDesign(file);
  for (Arrangement* const state : states) {
    if (!state->design(id)) state->designs.append(*all.design(id));
  }
  notify();
  return id;
}

void PanelModel::setDesign(const QString& shape, const QString& design) {
  Arrangement next = arrangement_;
  if (Arrangement::Shape* changed = next.shape(shape)) changed->design = design;
  change(next);
}

int PanelModel::quality() const {
  return common(*this, [](const Arrangement::Shape& shape) { return qualityPosition(shape); });
}

void PanelModel::setQuality(int quality) {
  if (quality < 0 || quality >= Arrangement::kQualities) return;
  changeSelected([&](Arrangement::Shape& shape) {
    // A quality between two positions stays until another position is chosen.
    if (qualityPosition(shape) != quality) shape.options.quality = quality + 1;
  });
}

int PanelModel::included() const {
  return common(*this,
                [](const Arrangement::Shape& shape) { return shape.options.includedInArtboards; });
}

void PanelModel::setIncluded(bool included) {
  changeSelected([&](Arrangement::Shape& shape) { shape.options.includedInArtboards = included; });
}

void PanelModel::rotate() {
  changeSelected(
      [](Arrangement::Shape& shape) { shape.options.rotation = (shape.options.rotation + 1) % 4; });
}

void PanelModel::flip() {
  changeSelected([](Arrangement::Shape& shape) { shape.options.flipped = !shape.options.flipped; });
}

void PanelModel::changeSelected(const std::function<void(Arrangement::Shape&)>& changeOne) {
  Arrangement next = arrangement_;
  for (const QString& id : selection_) changeOne(*next.shape(id));
  change(next);
}

void PanelModel::change(const Arrangement& next) {
  if (next == arrangement_) return;
  if (!hasStep_) {
    if (undo_.size() == kMaxSteps) undo_.removeFirst();
    undo_.append(arrangement_);
    redo_.clear();
  }
  hasStep_ = isOneStep_;
  arrangement_ = next;
  setSelection(selection_);
  notify();
}

void PanelModel::setSelection(const QStringList& selection) {
  QStringList kept;
  for (const Arrangement::Shape& shape : arrangement_.shapesOnArtboard()) {
    if (selection.contains(shape.id)) kept.append(shape.id);
  }
  selection_ = kept;
}

void PanelModel::notify() const {
  if (onChanged) onChanged();
}

}  // namespace kelvar
