#include "scripting/Catalogue.h"

#include <QColor>
#include <QPointF>

#include "actions/CMD.h"
#include "actions/KVBashAction.h"
#include "actions/KVExternalActionsHandler.h"
#include "actions/KVOpenURLAction.h"
#include "analytics/CounterTracker.h"
#include "analytics/DeferableTracker.h"
#include "analytics/MockedTracker.h"
#include "analytics/SegmentIOTracker.h"
#include "analytics/TrackerManager.h"
#include "archive/HRCoder.h"
#include "core/KVPersister.h"
#include "core/KVVersionChecker.h"
#include "core/Kelvar.h"
#include "geometry/CGRectAspectFittingSize.h"
#include "geometry/KVBezierPath.h"
#include "geometry/KVImage.h"
#include "geometry/KVImageTransform.h"
#include "geometry/KVLayerIterator.h"
#include "geometry/KVRect.h"
#include "geometry/KVShape.h"
#include "geometry/PointList.h"
#include "host/SketchDocument.h"
#include "platform/KelvarVersion.h"
#include "runtime/ClassInfo.h"
#include "runtime/DelegateInfo.h"
#include "scripting/Boxed.h"
#include "scripting/NSImage.h"
#include "scripting/NSURL.h"
#include "ui/KVButton.h"
#include "ui/KVMenu.h"
#include "ui/KVPopupCell.h"
#include "ui/KVView.h"
#include "ui/KVViewController.h"

namespace kelvar {
namespace {

QString latin1(const char* text) { return QString::fromLatin1(text); }

/// Has functions alone.
struct Functions {};

QList<const ClassInfo*> reliedOn() {
  return {&Kelvar::theClass(),
          &KVPersister::theClass(),
          &KVVersionChecker::theClass(),
          &KVRect::theClass(),
          &KVBezierPath::theClass(),
          &KVLayerIterator::theClass(),
          &KVShape::theClass(),
          &KVImageTransform::theClass(),
          &KVImage::theClass(),
          &KVViewController::theClass(),
          &KVPopupCell::theClass(),
          &KVMenu::theClass(),
          &KVView::theClass(),
          &KVButton::theClass(),
          &KVOpenURLAction::theClass(),
          &KVBashAction::theClass(),
          &CMD::theClass(),
          &KVExternalActionsHandler::theClass(),
          &TrackerManager::theClass(),
          &SegmentIOTracker::theClass(),
          &CounterTracker::theClass(),
          &MockedTracker::theClass(),
          &DeferableTracker::theClass(),
          &Event::theClass(),
          &SketchDocument::theClass(),
          &SketchLayer::theClass(),
          &NSImage::theClass(),
          &NSURL::theClass(),
          Boxed::classFor(QMetaType::fromType<QColor>()),
          Boxed::classFor(QMetaType::fromType<BezierPath>())};
}

void add(const ClassInfo& info, QList<const ClassInfo*>* all) {
  if (all->contains(&info)) return;
  if (info.base()) add(*info.base(), all);
  all->append(&info);
}

}  // namespace

QList<const ClassInfo*> Catalogue::classes() {
  QList<const ClassInfo*> all;
  for (const ClassInfo* const each : reliedOn()) add(*each, &all);
  const auto addOf = [&](const ValueType& type) {
    if (type.theClass) add(type.theClass(), &all);
  };
  for (qsizetype i = 0; i < all.size(); ++i) {
    for (const ClassInfo::Operation& operation : all[i]->operations()) {
      addOf(operation.result);
      for (const ValueType& type : operation.parameters) addOf(type);
    }
  }
  return all;
}

const ClassInfo& Catalogue::functions() {
  static const ClassInfo kFunctions =
      Description<Functions>("")
          .classOperation("KVRectMake", &KVRectMake)
          .classOperation("KVRectFromCGRect", &KVRectFromCGRect)
          .classOperation("CGRectAspectFittingSize", &CGRectAspectFittingSize)
          .classOperation("NSPointFromString",
                          [](const QString& point) { return pointFromString(point); })
          .classOperation("NSStringFromPoint", &stringFromPoint)
          .classOperation("NSMakePoint", [](double x, double y) { return QPointF(x, y); })
          .classOperation("NSMakeSize",
                          [](double width, double height) { return QSizeF(width, height); })
          .classOperation("NSMakeRect", [](double x, double y, double width, double height) {
            return QRectF(x, y, width, height);
          });
  return kFunctions;
}

QList<Catalogue::Constant> Catalogue::constants() {
  const auto* const version = reinterpret_cast<const char*>(KelvarVersionString);
  return {
      {QStringLiteral("KelvarVersionNumber"), KelvarVersionNumber},
      {QStringLiteral("KelvarVersionString"), latin1(version)},
      {QStringLiteral("TrackerManagerEventSessionEnded"), latin1(TrackerManagerEventSessionEnded)},
      {QStringLiteral("HRCoderException"), latin1(HRCoderException)},
      {QStringLiteral("HRCoderClassNameKey"), latin1(HRCoderClassNameKey)},
      {QStringLiteral("HRCoderRootObjectKey"), latin1(HRCoderRootObjectKey)},
      {QStringLiteral("HRCoderObjectAliasKey"), latin1(HRCoderObjectAliasKey)},
      {QStringLiteral("HRCoderBase64DataKey"), latin1(HRCoderBase64DataKey)}};
}

QList<const DelegateInfo*> Catalogue::delegates() {
  QList<const DelegateInfo*> found;
  for (const ClassInfo* const each : classes()) {
    for (const ClassInfo::Property& property : each->properties()) {
      if (!property.type.theDelegate) continue;
      const DelegateInfo* const delegate = &property.type.theDelegate();
      if (!found.contains(delegate)) found.append(delegate);
    }
  }
  return found;
}

}  // namespace kelvar
