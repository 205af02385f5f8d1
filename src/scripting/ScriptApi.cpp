#include "scripting/ScriptApi.h"

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
#include "platform/KelvarVersion.h"
#include "runtime/ClassInfo.h"
#include "runtime/DelegateInfo.h"
#include "scripting/Base64CodecClass.h"
#include "scripting/Boxed.h"
#include "scripting/NSImage.h"
#include "scripting/NSURL.h"
#include "scripting/NSURLRequest.h"
#include "scripting/host/HostClasses.h"
#include "scripting/viewConstants.h"
#include "sketch/document/SketchDocument.h"
#include "ui/KVButton.h"
#include "ui/KVMenu.h"
#include "ui/KVPopupCell.h"
#include "ui/KVResizeViewController.h"
#include "ui/KVView.h"
#include "ui/KVViewController.h"
#include "ui/NSComboBox.h"
#include "ui/NSImageView.h"
#include "ui/NSMatrix.h"
#include "ui/NSPopUpButton.h"
#include "ui/NSScreen.h"
#include "ui/NSScrollView.h"
#include "ui/NSSlider.h"
#include "ui/NSStepper.h"
#include "ui/NSTextField.h"
#include "ui/NSWindow.h"

namespace kelvar {
namespace {

QString latin1(const char* text) { return QString::fromLatin1(text); }

/// Has class operations only.
struct Functions {};

QList<const ClassInfo*> exportedClasses() {
  return {&Kelvar::staticClassInfo(),
          &KVPersister::staticClassInfo(),
          &KVVersionChecker::staticClassInfo(),
          &KVRect::staticClassInfo(),
          &KVBezierPath::staticClassInfo(),
          &KVLayerIterator::staticClassInfo(),
          &KVShape::staticClassInfo(),
          &KVImageTransform::staticClassInfo(),
          &KVImage::staticClassInfo(),
          &KVViewController::staticClassInfo(),
          &KVPopupCell::staticClassInfo(),
          &KVMenu::staticClassInfo(),
          &KVView::staticClassInfo(),
          &KVButton::staticClassInfo(),
          &NSTextField::staticClassInfo(),
          &NSSecureTextField::staticClassInfo(),
          &NSPopUpButton::staticClassInfo(),
          &NSComboBox::staticClassInfo(),
          &NSImageView::staticClassInfo(),
          &NSMatrix::staticClassInfo(),
          &NSScreen::staticClassInfo(),
          &NSScrollView::staticClassInfo(),
          &NSSlider::staticClassInfo(),
          &NSStepper::staticClassInfo(),
          &NSPanel::staticClassInfo(),
          &KVResizeViewController::staticClassInfo(),
          &KVOpenURLAction::staticClassInfo(),
          &KVBashAction::staticClassInfo(),
          &CMD::staticClassInfo(),
          &KVExternalActionsHandler::staticClassInfo(),
          &TrackerManager::staticClassInfo(),
          &SegmentIOTracker::staticClassInfo(),
          &CounterTracker::staticClassInfo(),
          &MockedTracker::staticClassInfo(),
          &DeferableTracker::staticClassInfo(),
          &Event::staticClassInfo(),
          &TimedEvent::staticClassInfo(),
          &HRCoder::staticClassInfo(),
          &base64CodecClass(),
          &SketchDocument::staticClassInfo(),
          &SketchLayer::staticClassInfo(),
          &NSImage::staticClassInfo(),
          &NSURL::staticClassInfo(),
          &NSURLRequest::staticClassInfo(),
          &NSMutableURLRequest::staticClassInfo(),
          Boxed::classFor(QMetaType::fromType<QColor>()),
          Boxed::classFor(QMetaType::fromType<BezierPath>())};
}

void add(const ClassInfo& info, QList<const ClassInfo*>* all) {
  if (all->contains(&info)) return;
  if (info.base()) add(*info.base(), all);
  all->append(&info);
}

}  // namespace

QList<const ClassInfo*> ScriptApi::classes() {
  QList<const ClassInfo*> all;
  for (const ClassInfo* const each : exportedClasses() + hostClasses()) add(*each, &all);
  const auto addOf = [&](const ValueType& type) {
    if (type.staticClassInfo) add(type.staticClassInfo(), &all);
    if (type.staticElementInfo) add(type.staticElementInfo(), &all);
  };
  for (qsizetype i = 0; i < all.size(); ++i) {
    for (const ClassInfo::Operation& operation : all[i]->operations()) {
      addOf(operation.result);
      for (const ValueType& type : operation.parameters) addOf(type);
    }
  }
  return all;
}

const ClassInfo& ScriptApi::functions() {
  static const ClassInfo kFunctions =
      ClassInfoBuilder<Functions>("")
          .classOperation("KVRectMake", &KVRectMake, "Creates a rectangle.")
          .classOperation("KVRectFromCGRect", &KVRectFromCGRect,
                          "Creates a rectangle from a structure.")
          .classOperation("CGRectAspectFittingSize", &CGRectAspectFittingSize,
                          "Returns the largest rectangle with the size's proportions that fits "
                          "into the other, centered; the other's origin is not added.")
          .classOperation(
              "NSPointFromString", [](const QString& point) { return pointFromString(point); },
              "Reads a point from \"{x, y}\"; a part that cannot be read is 0.")
          .classOperation("NSStringFromPoint", &stringFromPoint, "Returns the point as \"{x, y}\".")
          .classOperation(
              "NSMakePoint", [](double x, double y) { return QPointF(x, y); }, "Creates a point.")
          .classOperation(
              "NSMakeSize", [](double width, double height) { return QSizeF(width, height); },
              "Creates a size.")
          .classOperation(
              "NSMakeRect",
              [](double x, double y, double width, double height) {
                return QRectF(x, y, width, height);
              },
              "Creates a rectangle structure.");
  return kFunctions;
}

QList<ScriptApi::Constant> ScriptApi::constants() {
  const auto* const version = reinterpret_cast<const char*>(KelvarVersionString);
  return viewConstants() +=
         {{QStringLiteral("KelvarVersionNumber"), KelvarVersionNumber},
          {QStringLiteral("KelvarVersionString"), latin1(version)},
          {QStringLiteral("TrackerManagerEventSessionEnded"),
           latin1(TrackerManagerEventSessionEnded)},
          {QStringLiteral("HRCoderException"), latin1(HRCoderException)},
          {QStringLiteral("HRCoderClassNameKey"), latin1(HRCoderClassNameKey)},
          {QStringLiteral("HRCoderRootObjectKey"), latin1(HRCoderRootObjectKey)},
          {QStringLiteral("HRCoderObjectAliasKey"), latin1(HRCoderObjectAliasKey)},
          {QStringLiteral("HRCoderBase64DataKey"), latin1(HRCoderBase64DataKey)}};
}

QList<const DelegateInfo*> ScriptApi::delegates() {
  QList<const DelegateInfo*> found;
  for (const ClassInfo* const each : classes()) {
    for (const ClassInfo::Property& property : each->properties()) {
      if (!property.type.staticDelegateInfo) continue;
      const DelegateInfo* const delegate = &property.type.staticDelegateInfo();
      if (!found.contains(delegate)) found.append(delegate);
    }
  }
  return found;
}

}  // namespace kelvar
