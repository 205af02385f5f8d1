#include "scripting/ScriptApi.h"
#include "scripting/foundation/FoundationReference.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QFile>
#include <QImage>
#include <QRegularExpression>
#include <QTemporaryDir>

#include "mockup/SketchParts.h"
#include "platform/Browser.h"
#include "platform/PendingTasks.h"
#include "platform/image/Image.h"
#include "runtime/ClassInfo.h"
#include "runtime/DelegateInfo.h"
#include "scripting/ApiReference.h"
#include "scripting/SelectorName.h"
#include "scripting/TypeName.h"
#include "scripting/runtime/ScriptRuntime.h"

namespace kelvar {
namespace {

using namespace Qt::StringLiterals;
using Kind = ClassInfo::Kind;

/// Other operations may have taken `layer` out of the document.
const QString kFreshLayer = u"put(layer.copy())"_s;

bool isLayer(const ClassInfo* info) {
  while (info && info != &SketchLayer::staticClassInfo()) info = info->base();
  return info != nullptr;
}

/// How a script makes an object of the class.
QString maker(const ClassInfo& info) {
  static const QHash<QString, QString> kMakers{
      {u"KVShape"_s, u"KVShape.alloc().initWithBounds_path_(KVRectMake(0, 0, 9, 9), points)"_s},
      {u"KVVersionChecker"_s, u"KVVersionChecker.alloc().initWithIdentifier_name_('i', 'n')"_s},
      {u"TrackerManager"_s, u"Kelvar.new().tracker()"_s},
      {u"SegmentIOTracker"_s,
       u"[SegmentIOTracker.alloc().initWithWriteKey_('k')].map(t => (t.uuid = 'u', t))[0]"_s},
      {u"KVBashAction"_s, u"KVBashAction.nothing()"_s},
      {u"KVOpenURLAction"_s, u"KVOpenURLAction.openURL_(nil)"_s},
      {u"NSImage"_s, u"image"_s},
      {u"NSURLRequest"_s,
       u"(t => (t.track_properties_('A', {}), t.preparedRequests()[0]))(SegmentIOTracker.new())"_s},
      {u"NSURL"_s, u"NSURL.URLWithString_('http://127.0.0.1:9/')"_s},
      {u"SketchDocument"_s, u"document"_s},
      {u"SketchLayer"_s, u"layer"_s},
      {u"NSColor"_s, u"NSColor.colorWithRed_green_blue_alpha_(1, 0, 0, 1)"_s},
      {u"NSBezierPath"_s, u"KVBezierPath.bezierPathWithPoints_(points)"_s},
      {u"NSView"_s, u"KVViewController.new().view()"_s},
      {u"NSControl"_s, u"KVButton.new()"_s},
      {u"NSFont"_s, u"NSFont.systemFontOfSize_(12)"_s},
      {u"NSPopUpButton"_s,
       u"[NSPopUpButton.new()].map(p => (p.addItemsWithTitles(['a', 'b']), p))[0]"_s},
      {u"KVMenu"_s, u"KVMenu.menuWithItems_([{title: 'a'}, {title: 'b'}])"_s},
      {u"NSWindow"_s,
       u"NSWindow.alloc().initWithContentRect_styleMask_backing_defer_(NSMakeRect(0, 0, 9, 9), 1, "
       "2, false)"_s},
      {u"NSPanel"_s,
       u"NSPanel.alloc().initWithContentRect_styleMask_backing_defer_(NSMakeRect(0, 0, 9, 9), 1, "
       "2, false)"_s},
      {u"KVAction"_s, u"KVBashAction.nothing()"_s},
      {u"MSDocument"_s, u"document"_s},
      {u"MSDocumentData"_s, u"document.documentData()"_s},
      {u"MSContentDrawView"_s, u"document.contentDrawView()"_s},
      {u"MSExportRequest"_s, u"MSExportRequest.exportRequestsFromExportableLayer_(layer)[0]"_s},
      {u"NSWorkspace"_s, u"NSWorkspace.sharedWorkspace()"_s},
      {u"MSLayer"_s, kFreshLayer},
      {u"MSStyledLayer"_s, kFreshLayer},
      {u"MSLayerArray"_s, u"MSLayerArray.arrayWithLayers_([layer, artboard])"_s},
      {u"MSLayerEnumerator"_s, u"MSLayerArray.arrayWithLayer_(layer).objectEnumerator()"_s},
      {u"MSSymbolInstance"_s, u"put(put(MSSymbolMaster.new()).newSymbolInstance())"_s},
      {u"MSPage"_s, u"put(layer.copy()).parentPage()"_s},
      {u"MSModelObject"_s, u"layer.style()"_s},
      {u"MSStyle"_s, u"layer.style()"_s},
      {u"MSStyleBorderOptions"_s, u"layer.style().borderOptions()"_s},
      {u"MSGraphicsContextSettings"_s, u"layer.style().contextSettings()"_s},
      {u"MSStyleBlur"_s, u"layer.style().blur()"_s},
      {u"MSGradientStop"_s, u"MSGradientStop.stopWithPosition_color_(0.5, MSColor.new())"_s},
      {u"MSExportOptions"_s, u"layer.exportOptions()"_s},
      {u"MSAbsoluteRect"_s, u"layer.absoluteRect()"_s},
      {u"MSHotspotLayer"_s, kFreshLayer},
      {u"MSSharedStyle"_s,
       u"MSSharedStyle.alloc().initWithName_firstInstance_('s', MSStyle.new())"_s},
      {u"MSImageData"_s, u"MSImageData.alloc().initWithImage_(image)"_s},
      {u"MSSharedStyleContainer"_s,
       u"[document.documentData().layerStyles()].map(s => { for (const name of ['a', 'b'])"
       " s.addSharedStyleWithName_firstInstance_(name, MSStyle.new()); return s })[0]"_s},
      {u"MSAssetCollection"_s,
       u"[document.documentData().assets()].map(a => { a.setColors_([MSColor.new(), "
       "MSColor.new()]);"
       " a.setGradients_([MSGradient.new(), MSGradient.new()]); return a })[0]"_s},
      {u"MSColorAsset"_s, u"MSColorAsset.alloc().initWithAsset_name_(MSColor.new(), 'c')"_s},
      {u"MSGradientAsset"_s,
       u"MSGradientAsset.alloc().initWithAsset_name_(MSGradient.new(), 'g')"_s},
      {u"MSRulerData"_s,
       u"[artboard.horizontalRulerData()].map(r => { r.addGuideWithValue_(1);"
       " r.addGuideWithValue_(2); return r })[0]"_s},
      {u"MSTextStyle"_s, u"MSTextLayer.new().style().textStyle()"_s},
      {u"MSCurvePoint"_s, u"MSCurvePoint.pointWithPoint_(NSMakePoint(0, 0))"_s},
      {u"MSOverrideValue"_s,
       u"[put(put(MSSymbolMaster.new()).newSymbolInstance())].map(i => {"
       " i.setOverrides_({a: 'b'}); return i.overrideValues()[0] })[0]"_s},
      {u"MSImmutableLayerAncestry"_s, u"MSImmutableLayerAncestry.ancestryWithMSLayer_(layer)"_s},
      {u"NSScreen"_s, u"NSScreen.mainScreen()"_s},
      {u"NSMatrix"_s,
       u"NSMatrix.alloc().initWithFrame_mode_prototype_numberOfRows_numberOfColumns_("
       "NSMakeRect(0, 0, 9, 9), NSRadioModeMatrix, NSButtonCell.new(), 2, 2)"_s},
      {u"NSFontManager"_s, u"NSFontManager.sharedFontManager()"_s}};
  const QString made = info.name() + u".new()"_s;
  return kMakers.value(info.name(), isLayer(&info) ? u"put(%1)"_s.arg(made) : made);
}

/// A value of the type, written in a script.
QString sample(const ValueType& type) {
  static const QHash<QString, QString> kSamples{
      {u"number"_s, u"1"_s},
      {u"boolean"_s, u"true"_s},
      // Also used as a file name.
      {u"string"_s, u"folder + '/true'"_s},
      {u"list of strings"_s, u"points"_s},
      {u"list"_s, u"[]"_s},
      {u"dictionary"_s, u"({})"_s},
      {u"point"_s, u"NSMakePoint(1, 2)"_s},
      {u"size"_s, u"NSMakeSize(3, 4)"_s},
      {u"rectangle"_s, u"NSMakeRect(0, 0, 3, 4)"_s},
      {u"date"_s, u"new Date()"_s},
      {u"NSImage"_s, u"image"_s},
      {u"NSView"_s, u"NSView.new()"_s},
      {u"NSMenuItem"_s, u"NSMenuItem.new()"_s},
      {u"MSColor"_s, u"MSColor.new()"_s},
      {u"MSImageData"_s, u"MSImageData.alloc().initWithImage_(image)"_s},
      {u"KVRect"_s, u"KVRectMake(0, 0, 2, 2)"_s},
      {u"KVImageTransform"_s, u"transform"_s},
      {u"SketchLayer"_s, u"layer"_s},
      {u"NSBezierPath"_s, u"KVBezierPath.bezierPathWithPoints_(points)"_s},
      {u"CGImage"_s, u"KVImage.getCGImage_(image)"_s}};
  return type.staticDelegateInfo ? u"({})"_s : kSamples.value(scriptTypeName(type), u"nil"_s);
}

/// The arguments of operations whose types do not say what they take; null for all others.
QString ownArguments(const QString& selector) {
  static const QHash<QString, QString> kArguments{
      {u"setColor:"_s, u"MSColor.new()"_s},
      {u"initWithFrame:mode:prototype:numberOfRows:numberOfColumns:"_s,
       u"NSMakeRect(0, 0, 9, 9), NSRadioModeMatrix, NSButtonCell.new(), 1, 1"_s},
      {u"exportRequestsFromLayerAncestry:"_s,
       u"MSImmutableLayerAncestry.ancestryWithMSLayer_(layer)"_s},
      {u"setTextColor:"_s, u"NSColor.redColor()"_s},
      {u"setBackgroundColor:"_s, u"NSColor.redColor()"_s},
      {u"stopWithPosition:color:"_s, u"0.5, MSColor.new()"_s},
      {u"addStyleFill:"_s, u"MSStyleFill.new()"_s},
      {u"addStyleBorder:"_s, u"MSStyleBorder.new()"_s},
      {u"addStyleShadow:"_s, u"MSStyleShadow.new()"_s},
      {u"addStyleInnerShadow:"_s, u"MSStyleInnerShadow.new()"_s},
      {u"addStop:"_s, u"MSGradientStop.stopWithPosition_color_(0, MSColor.new())"_s},
      {u"setStyle:"_s, u"MSStyle.new()"_s},
      {u"setGradient:"_s, u"MSGradient.new()"_s},
      {u"addLayer:"_s, u"MSOvalShape.new()"_s},
      {u"addLayers:"_s, u"[MSOvalShape.new(), MSTextLayer.new()]"_s},
      {u"insertLayer:atIndex:"_s, u"MSOvalShape.new(), 0"_s},
      {u"insertLayers:atIndex:"_s, u"[MSOvalShape.new()], 99"_s},
      {u"insertLayer:afterLayer:"_s, u"MSOvalShape.new(), document.layersNamed('A')[0]"_s},
      {u"insertLayers:afterLayer:"_s, u"[MSOvalShape.new()], document.layersNamed('A')[0]"_s},
      {u"insertLayer:beforeLayer:"_s, u"MSOvalShape.new(), document.layersNamed('A')[0]"_s},
      {u"insertLayers:beforeLayer:"_s, u"[MSOvalShape.new()], document.layersNamed('A')[0]"_s},
      {u"groupFromLayers:"_s, u"[MSOvalShape.new()]"_s},
      {u"groupWithLayers:"_s, u"[MSOvalShape.new()]"_s},
      {u"arrayWithLayers:"_s, u"[layer]"_s},
      {u"arrayWithLayer:"_s, u"layer"_s},
      {u"layerAtIndex:"_s, u"0"_s},
      {u"shapeWithPath:"_s, u"MSOvalShape.new()"_s},
      {u"shapeWithBezierPath:"_s, u"NSBezierPath.bezierPathWithRect(NSMakeRect(0, 0, 9, 9))"_s},
      {u"removeStyleFillAtIndex:"_s, u"0"_s},
      {u"setCurrentPage:"_s, u"document.pages()[0]"_s},
      {u"askForUserInput:initialValue:"_s, u"'q', 'a'"_s},
      {u"askForUserInput:ofType:initialValue:"_s, u"'q', 0, 'a'"_s},
      {u"saveArtboardOrSlice:toFile:"_s, u"artboard, folder + '/a.png'"_s},
      {u"setColor:atIndex:"_s, u"MSColor.new(), 0"_s},
      {u"setCornerRadiusFromComponents:"_s, u"'1/2/3/4'"_s},
      {u"setCornerRadiusString:"_s, u"'1/2/3/4'"_s},
      {u"layerWithPath:"_s, u"NSBezierPath.bezierPathWithRect(NSMakeRect(0, 0, 9, 9))"_s},
      {u"setSharedStyle:"_s, u"nil"_s},
      {u"updateToMatch:"_s, u"MSStyle.new()"_s},
      {u"addSharedStyleWithName:firstInstance:"_s, u"'s', MSStyle.new()"_s},
      {u"initWithName:firstInstance:"_s, u"'s', MSStyle.new()"_s},
      {u"addSharedObject:"_s,
       u"MSSharedStyle.alloc().initWithName_firstInstance_('s', MSStyle.new())"_s},
      {u"convertSymbolToArtboard:"_s, u"MSSymbolMaster.new()"_s},
      {u"canCreateSymbolFromLayers:"_s, u"[MSOvalShape.new()]"_s},
      {u"createSymbolFromLayers:withName:onSymbolsPage:"_s, u"[layer], 'S', true"_s},
      {u"convertArtboardToSymbol:"_s, u"MSArtboardGroup.new()"_s},
      {u"changeInstanceToSymbol:"_s, u"MSSymbolMaster.new()"_s},
      {u"initWithFrame:image:"_s,
       u"NSMakeRect(0, 0, 9, 9), MSImageData.alloc().initWithImage_(image)"_s},
      {u"exportRequestsFromExportableLayer:inRect:useIDForName:"_s,
       u"layer, NSMakeRect(-999, -999, 9999, 9999), true"_s},
      {u"setAttributedStringValue:"_s, u"'text'"_s},
      {u"setAttributedString:"_s, u"'text'"_s},
      {u"setFont:"_s, u"NSFont.systemFontOfSize_(12)"_s},
      {u"addAttribute:value:"_s, u"'NSKern', 1"_s},
      {u"addAttribute:value:forRange:"_s, u"'NSKern', 1, NSMakeRange(0, 1)"_s},
      {u"addAttributes:forRange:"_s, u"{NSKern: 1}, NSMakeRange(0, 1)"_s},
      {u"changeTextColorTo:"_s, u"MSColor.new()"_s},
      {u"addColor:"_s, u"MSColor.new()"_s},
      {u"removeColor:"_s, u"MSColor.new()"_s},
      {u"initWithAsset:name:"_s, u"MSColor.new(), 'c'"_s},
      {u"addColorAsset:"_s, u"MSColorAsset.alloc().initWithAsset_name_(MSColor.new(), 'c')"_s},
      {u"addGradient:"_s, u"MSGradient.new()"_s},
      {u"addGradientAsset:"_s,
       u"MSGradientAsset.alloc().initWithAsset_name_(MSGradient.new(), 'g')"_s},
      {u"removeSharedStyle:"_s, u"document.documentData().layerStyles().objects()[0]"_s},
      {u"removeSharedObject:"_s, u"document.documentData().layerStyles().objects()[0]"_s},
      {u"indexOfSharedStyle:"_s, u"document.documentData().layerStyles().objects()[0]"_s},
      {u"updateValueOfSharedObject:byCopyingInstance:"_s,
       u"document.documentData().layerStyles().objects()[0], MSStyle.new()"_s},
      {u"initWithName:style:"_s, u"'s', MSStyle.new()"_s},
      {u"removeStylePart:"_s, u"layer.style().addStylePartOfType_(0)"_s},
      {u"exportRequestFromLayerAncestry:exportFormat:"_s,
       u"MSImmutableLayerAncestry.ancestryWithMSLayer_(layer), MSExportFormat.new()"_s},
      {u"exportRequestFromExportFormat:layer:inRect:useIDForName:"_s,
       u"MSExportFormat.new(), layer, NSMakeRect(-999, -999, 9999, 9999), true"_s},
      {u"addPage:"_s, u"MSPage.new()"_s},
      {u"setHTTPMethod:"_s, u"'POST'"_s},
      {u"setValue:forHTTPHeaderField:"_s, u"'a', 'Accept'"_s},
      {u"addValue:forHTTPHeaderField:"_s, u"'a', 'Accept'"_s},
      {u"curveToPoint:controlPoint1:controlPoint2:"_s,
       u"NSMakePoint(1, 2), NSMakePoint(1, 2), NSMakePoint(1, 2)"_s}};
  return kArguments.value(selector);
}

/// Whether an operation rightly refuses `sample` values.
bool isRefusal(const QString& line) {
  static const QRegularExpression kRefusals(
      // Trackers without anybody to report to.
      u"^Error: (no element of the list understands the operation|"
      "an event that has to wait needs properties|to identify takes a uuid|"
      // Accept only certain values.
      "pop-up buttons do not pull down|the kind of this button cannot be changed|"
      "sampling is \"best\" or \"bilinear\"|openURL: takes an NSURL, not nil|"
      "the combo box has no item 1|an image is read from the URL of a file alone|"
      "setValue:forOverridePoint: takes an MSOverridePoint or its name|"
      "initWithAsset:name: takes MSGradient, not nil|"
      "the rectangle is not the frame of a layer|there is no element 1 among the 1 of the \\w+|"
      // Pages, and layers that are somewhere else.
      "it is not a page of this document|\"Page\" is in no other layer|\"\\w+\" is in no group "
      "that could take its layers|the page \"Page\" cannot be .*|"
      "the layers are in no group|\"[AL]\" is not in \"\\w+\"|"
      // Nobody answers.
      "nobody can be asked \"q\")$"_s);
  return kRefusals.match(line).hasMatch();
}

class ScriptApiTest : public testing::Test {
 protected:
  ScriptApiTest() {
    qputenv("KELVAR_DEFAULTS", dir_.filePath(u"settings"_s).toLocal8Bit());
    qputenv("DO_NOT_TRACK", "1");
    qputenv("KELVAR_WEB_SITE", "vendor.example");
    runtime_.setGlobal(u"folder"_s, dir_.path());
    QImage pixels(8, 4, QImage::Format_ARGB32_Premultiplied);
    pixels.fill(Qt::red);
    runtime_.setGlobal(u"image"_s, QVariant::fromValue(std::make_shared<Image>(pixels)));
    SetUpDocument();
  }

  /// Replaces the document and the variables that refer to it.
  void SetUpDocument() {
    const SketchJson red = parts::color(1, 0, 0);
    const auto document = parts::document(
        {parts::group("artboard", "A", {0, 0, 40, 20},
                      {parts::layer("rectangle", "R", {0, 0, 40, 20}, parts::filled(red)),
                       parts::layer("hologram", "H", {0, 0, 1, 1})}),
         parts::layer("rectangle", "L", {50, 0, 8, 8}, parts::filled(red))});
    runtime_.setGlobal(u"document"_s, toVariant(document));
    runtime_.evaluate(
        u"points = ['{0, 0}', '{4, 0}', '{4, 4}', '{0, 4}'];"
        "artboard = document.artboards()[0]; layer = document.layersNamed_('L')[0];"
        "put = l => { if (l.respondsToSelector_('addLayer:')) l.addLayer_(MSOvalShape.new());"
        " document.pages()[0].addLayer_(l); return l };"
        "transform = KVImageTransform.new(); transform.input = image;"
        "document.saveAs_(folder + '/first.sketch')"_s,
        u"set up"_s);
  }
  ~ScriptApiTest() override { qunsetenv("KELVAR_WEB_SITE"); }

  void evaluate(const QString& script) {
    runtime_.evaluate(u"try { %1 } catch (e) { log(String(e)) }"_s.arg(script), u"script"_s);
    printed_.removeIf(isRefusal);
    EXPECT_EQ(printed_.join(u'\n').toStdString(), "") << script.toStdString();
    printed_.clear();
  }

  /// Windows that an operation left open would keep other scripts running.
  void TearDown() override {
    while (PendingTasks::count() > 0) QCoreApplication::processEvents();
    QApplication::closeAllWindows();
  }

  static QString callOf(const ClassInfo::Operation& operation) {
    const QString own = ownArguments(operation.selector);
    if (!own.isNull()) return u"%1(%2)"_s.arg(scriptName(operation.selector), own);
    QStringList arguments;
    for (const ValueType& type : operation.parameters) arguments.append(sample(type));
    return u"%1(%2)"_s.arg(scriptName(operation.selector), arguments.join(u", "));
  }

  QTemporaryDir dir_;
  Browser browser_{"http", "https", "mailto"};
  QStringList printed_;
  ScriptRuntime runtime_{[this](const QString& line) { printed_.append(line); }};
};

TEST_F(ScriptApiTest, CallsEveryOperation) {
  int called = 0;
  for (const ClassInfo* const info : ScriptApi::classes()) {
    const QString name = info->name();
    // In a script that is the foundation's class; this one occurs in archives.
    if (name == u"NSData") continue;
    // Not in this document.
    if (name == u"MSOverridePoint" || name == u"MSAvailableOverride" ||
        name == u"MSForeignSymbol") {
      continue;
    }
    SetUpDocument();
    for (const ClassInfo* each = info; each; each = each->base()) {
      for (const ClassInfo::Operation& operation : each->operations()) {
        if (operation.kind == Kind::Initializer && each != info) continue;
        const QString whose = operation.kind == Kind::Operation     ? maker(*info)
                              : operation.kind == Kind::Initializer ? name + u".alloc()"_s
                                                                    : name;
        evaluate(whose + u'.' + callOf(operation));
        ++called;
      }
    }
  }
  for (const ClassInfo::Operation& function : ScriptApi::functions().operations()) {
    evaluate(callOf(function));
  }
  EXPECT_GT(called, 200);
  QStringList opened;
  for (const QUrl& url : browser_.opened) opened.append(url.path());
  opened.removeDuplicates();
  EXPECT_EQ(opened.join(u' '), u"/kelvar/ /kelvar/feedback /kelvar/support /kelvar/pro"_s);
}

TEST_F(ScriptApiTest, ReturnsWhatLibraryReturns) {
  const std::pair<const char*, const char*> cases[] = {
      {"KVRectFromCGRect(NSMakeRect(1.5, 2, 3, 4))", "{1.5, 2, 3, 4}"},
      {"KVRectMake(1, 2, 3, 4).CGRect()", "{{1, 2}, {3, 4}}"},
      {"CGRectAspectFittingSize(NSMakeSize(200, 100), NSMakeRect(50, 50, 100, 100))",
       "{{0, 25}, {100, 50}}"},
      {"NSStringFromPoint(NSPointFromString('{1.5, -2}'))", "{1.5, -2}"},
      {"KVBezierPath.edgesLengthPoint1_point2_(NSMakePoint(1, 2), NSMakePoint(4, 5))", "21"},
      {"KVBezierPath.sumPoints_(points)", "-32"},
      {"KVBezierPath.bezierPathIsClockwise_(KVBezierPath.bezierPathReversed_("
       "KVBezierPath.bezierPathWithPoints_(points)))",
       "false"},
      {"KVBezierPath.pointsFromBezierPath_(KVBezierPath.bezierPathWithPoints_(points)).join(' ')",
       "{0, 0} {4, 0} {4, 4} {0, 4}"},
      {"KVLayerIterator.new().extractPointsFromLayer_(layer).join(' ')",
       "{0, 0} {8, 0} {8, 8} {0, 8}"},
      {"KVShape.reversedPoints_(points).join(' ')", "{0, 0} {0, 4} {4, 4} {4, 0}"},
      {"(() => { const s = KVShape.alloc().initWithBounds_path_(KVRectMake(5, 5, 100, 40),"
       " ['{-20, 0}', '{80, 0}', '{80, 40}', '{-20, 40}']); s.scale = 2;"
       " return [s.realSize(), s.scaledSize(), s.croppingRect(), s.scaledCroppingRect(),"
       " s.normalizedPoints()[1]].join(' ') })()",
       "{100, 40} {200, 80} {25, 5, 100, 40} {50, 10, 200, 80} {100, 0}"},
      {"(() => { const t = KVImageTransform.new(); t.input = image; t.rotation = 1;"
       " t.flipped = true; return t.points().join(' ') })()",
       "{8, 4} {8, 0} {0, 0} {0, 4}"},
      {"(() => { const t = KVImageTransform.new(); t.input = image; t.scale = 2;"
       " const s = [t.createOutput().size()]; t.extent = NSMakeSize(9, 7.1);"
       " return s.concat(t.createOutput().size()).join(' ') })()",
       "{16, 8} {18, 15}"},
      {"KVImage.fillImage_insideBounds_scale_shouldTrimTransparent_(image, KVRectMake(0, 0, 10, "
       "10),"
       " 2, true).size()",
       "{20, 10}"},
      {"KVImage.scaleImage_size_(image, NSMakeSize(3, 3)).size()", "{3, 3}"},
      {"KVImage.cropImage_withBounds_(image, KVRectMake(1, 1, 2, 2)).size()", "{2, 2}"},
      {"(() => { const p = KVPersister.new(); p.setObject_forKey_([1, 'a'], 'k');"
       " const v = p.objectForKey_('k').join('+'); p.removeObjectForKey_('k');"
       " return v + p.objectForKey_('k') })()",
       "1+anull"},
      {"KVBashAction.nothing().command() + KVBashAction.nothing().exec()",
       "echo please restart manuallyfalse"},
      {"CMD.new().exec_('echo a b').trim()", "a b"},
      {"KVExternalActionsHandler.new().urlWithPath_('http://a/b').path()", "/b"},
      {"[KVOpenURLAction.openURL_('https://a/').exec(),"
       " KVOpenURLAction.openURL_(NSURL.URLWithString_('https://b/')).exec(),"
       " KVOpenURLAction.openURL_('file:///etc/passwd').exec()].join(' ')",
       "true true false"},
      {"KVOpenURLAction.openURL_(5)", "Error: openURL: takes a string or an address"},
      {"KVImageTransform.new().sampling()", "bilinear"},
      {"transform.sampling = 'no'", "Error: sampling is \"best\" or \"bilinear\""},
      {"(() => { const v = KVView.new();"
       " v.backgroundColor = NSColor.colorWithRed_green_blue_alpha_(1, 0, 0, 0.5);"
       " return [v.backgroundColor().redComponent(), v.backgroundColor().greenComponent(),"
       " Math.round(v.backgroundColor().alphaComponent() * 2)] })()",
       "1,0,1"},
      {"(() => { const c = KVPopupCell.new(); c.name = 'Home'; c.popupMenu ="
       " KVMenu.menuWithItems_([]); return [c.name(), c.popupMenu().itemArray().count()] })()",
       "Home,0"},
      {"(() => { layer.name = 'M'; layer.frame = KVRectMake(1, 2, 3, 4); layer.isVisible = false;"
       " document.saveAs_(folder + '/second.sketch');"
       " return [layer, layer.frame(), layer.isVisible(), document.path().replace(folder, "
       "'')].join(' ') })()",
       "<rectangle M (L-id)> {1, 2, 3, 4} false /second.sketch"},
      {"(() => { layer.frame().x = 7; const f = layer.frame(); f.setWidth(9); f.setY_(6);"
       " return [f, layer.frame(), f.isKindOfClass_(KVRect), f.className()].join(' ') })()",
       "{7, 6, 9, 8} {7, 6, 9, 8} true MSRect"},
      {"(() => { const menu = KVMenu.new(), item = NSMenuItem.new(); item.title = 'Home';"
       " menu.addItem_(item); const view = KVView.new(); view.dropShadow = NSShadow.new();"
       " const manager = TrackerManager.alloc().initWithTrackers_identifier_([Tracker.new()], 'a');"
       " const trackers = manager.trackers(); manager.trackers = [];"
       " return [menu.itemArray()[0].title(), view.dropShadow().shadowOffset(), trackers.count(),"
       " manager.trackers().count()].join(' ') })()",
       "Home {0, 0} 1 0"},
      {"(() => { const c = KVVersionChecker.alloc().initWithIdentifier_name_('i', 'n');"
       " c.lastCheck = new Date(5); const then = c.lastCheck().getTime(); c.lastCheck = nil;"
       " return [then, c.lastCheck(), c.actionURL(), KVButton.new().textColor(),"
       " NSURL.URLWithString_('')].map(String).join(' ') })()",
       "5 null null null null"},
      {"['a', '', 'a\\u0000b', '\u00e9'].map(each => each.MD5String().slice(0, 8)).join(' ')",
       "0CC175B9 D41D8CD9 0CC175B9 66DDCD97"},
      {"['', 'f', '\u00e9'].map(each => each.base64String()).join(' ') + ' ' +"
       " new Uint8Array([255, 0]).base64String()",
       " Zg== w6k= /wA="},
      {"(() => { const l = [1, 2, 3, 4, 5, 6, 7, 8, {}], all = new Set(l);"
       " const orders = new Set([...Array(50)].map(() => l.shuffle().join()));"
       " return [l.shuffle() === l, l.length, l.every(e => all.delete(e)), orders.size > 9,"
       " [].shuffle().length, [5].shuffle()[0]].join(' ') })()",
       "true 9 true true 0 5"},
      {"(() => { const a = CounterTracker.new(), b = MockedTracker.new(); let told = '';"
       " const list = [null, 5, a, {track_properties_(name) { told = name; list.length = 0 }}, b];"
       " const e = list.each(); [e track:'Shown' properties:{x: 1}];"
       " const after = [a.tracksCount(), b.name(), told, b.properties().x].join();"
       " e.array = [KVRect.new(), a]; e.uploadsCount; e.setUploadsCount_(3);"
       " return [after, a.uploadsCount(), e.array().length, "
       "e.respondsToSelector_('track:properties:'),"
       " e.respondsToSelector_('rotate'), e.respondsToSelector('setArray:'), e].join(' ') })()",
       "1,Shown,Shown,1 3 2 true false true <Each>"},
      {"(() => { const c = CounterTracker.new(); c.track_properties_('A', {n: 1});"
       " c.timedTrack_('B'); c.timedFinish_properties_('B', {});"
       " c.storage = c.events().concat(Event.eventWithName_properties_('C', nil));"
       " return [c.events()[0].isEqual_(Event.eventWithName_properties_('A', {n: 1})), "
       "c.tracksCount(),"
       " c.timesStarted(), c.timesFinished(), c.storage()[1].description()].join(' ') })()",
       "true 2 1 1 <Event: C, (null)>"},
      {"(() => { const c = CounterTracker.new(); c.storage = [KVRect.new()] })()",
       "Error: CounterTracker setStorage: [0] is KVRect, not Event"},
      {"(() => { const d = DeferableTracker.deferredTracker(); d.enabled = true;"
       " return [d.enabled(), d.className(), "
       "SegmentIOTracker.alloc().initWithWriteKey_('k').writeKey(),"
       " KVShape.new().scale(), KVShape.new().realSize()].join(' ') })()",
       "true DeferableTracker k 1 {0, 0}"},
      {"(() => { const t = TimedTracker.new(), told = [];"
       " t.delegate = {timedTracker_eventStarted_(who, name) { told.push(who === t, name) },"
       " timedTracker_eventFinished_(who, e) { told.push(e.name(), e.properties().n) }};"
       " t.start_('A'); t.track_properties_('A', {n: 1}); return told.join(' ') })()",
       "true A A 1"},
      {"(() => { const c = CounterTracker.new(), other = MockedTracker.new(), t = c.timed();"
       " const own = t.delegate() === c; t.delegate = other; t.start_('A');"
       " const is = t.delegate() === other; t.delegate = nil; t.start_('B');"
       " return [own, is, c.timesStarted(), other.startedEvent(), t.delegate()].map(String).join(' "
       "')"
       " })()",
       "true true 0 A null"},
      {"(() => { const t = TimedTracker.new(), other = TimedTracker.new();"
       " t.start_('A'); other.events = t.events(); other.flushEvent_('A');"
       " return [Object.keys(other.events()).length, Object.keys(t.events())].join(' ') })()",
       "0 A"},
      {"(() => { const t = [[SegmentIOTracker alloc] initWithWriteKey:\"K\"]; t.uuid = 'U';"
       " t.setSuperProperties_({y: 2}); [t addSuperProperties:{z: 3}]; [t track:\"A\" "
       "properties:{x: 1}];"
       " const q = t.pendingEvents(), r = [t preparedRequests][0];"
       " return [q.length, q[0].event, q[0]._date instanceof Date, t.superProperties().z,"
       " r.HTTPMethod(), r.valueForHTTPHeaderField_('authorization'),"
       " JSON.stringify(JSON.parse(String.fromCharCode(...r.HTTPBody())).properties)].join(' ') "
       "})()",
       "1 A true 3 POST Basic Szo= {\"x\":1,\"y\":2,\"z\":3}"},
      {"JSON.stringify(SegmentIOTracker.bodyForRequest_([SegmentIOTracker"
       " identifyRequestWithEmail:\"e\" userID:\"e\" writeKey:\"K\" properties:{uuid: 'U'}]))",
       "{\"anonymousId\":\"U\",\"traits\":{\"email\":\"e\",\"uuid\":\"U\"},\"userId\":\"e\"}"},
      {"[NSString.stringFromBase64String_('w6k='), [NSString stringFromBase64UrlEncodedString:"
       "\"YT8-w6k\"], NSString.stringFromBase64String_('/w=='), "
       "[NSData dataWithBase64String:\"Zm9v\"].length, "
       "NSData.dataWithBase64UrlEncodedString('-_8')[1]].map(String).join(' ')",
       "é a?>é null 3 255"},
      {"SegmentIOTracker.new().setPendingEvents_([{event: 'A'}])",
       "Error: an event that waits is a dictionary with event, properties and _date"},
      {"(() => { const d = {}, c = KVVersionChecker.alloc().initWithIdentifier_name_('i', 'n');"
       " c.persister = {setObject_forKey_(v, k) { d[k] = v.$class }, objectForKey_() {},"
       " removeObjectForKey_() {}}; c.persist(); return JSON.stringify(d) })()",
       "{\"i.checker\":\"KVVersionChecker\"}"},
      {"(() => { const told = [], counter = CounterTracker.new(), store = {d: {},"
       " setObject_forKey_(v, k) { this.d[k] = v }, objectForKey_(k) { return this.d[k] },"
       " removeObjectForKey_() {}};"
       " const own = {track_properties_(n, p) { told.push(n, p?.x);"
       " if (n === 'A') m.track_properties_('B', nil) }, setUuid_(u) { told.push(u.length) },"
       " timedTracker_eventFinished_(t, e) { told.push(e.name()) }};"
       " const m = [[TrackerManager alloc] initWithTrackers:[own, counter] persister:store"
       " identifier:\"id\"]; m.track_properties_('A', {x: 1}); m.timedTrack_('T');"
       " m.timedFinish_properties_('T', {}); return [told, counter.tracksCount(),"
       " counter.timesFinished(), m.trackers()[0] === own, m.uuid() === store.d['id.uuid']]"
       ".join(' ') })()",
       "36,A,1,B,,T 2 1 true true"},
      {"(() => { const m = TrackerManager.new(); m.trackers = [{track_properties_() {}}];"
       " m.identifyEmail_('a@b') })()",
       "Error: no element of the list understands the operation"},
      {"KVPersister.new().setObject_forKey_({list: [0, {x() {}}]}, 'a.b')",
       "Error: KVPersister setObject:forKey: the value for a.b: list[1].x: a function cannot be "
       "passed to Kelvar"},
      {"Kelvar.new().setObject_forKey_({list: [KVRect.new()]}, 'a.b')",
       "Error: the value for a.b cannot be stored: list[0] is an object of class KVRect"},
      {"(() => { const p = TrackerPersister.new(); p.setObject_forKey_(NaN, 'n');"
       " const n = p.objectForKey_('n'); p.setObject_forKey_(nil, 'n');"
       " return [n, p.objectForKey_('n')].join(' ') })()",
       "NaN "},
      {"(() => { const layer = {layers: [{bezierPath: KVBezierPath.bezierPathWithPoints_(points)}],"
       " frame: {x: 5, y: 6, width: 4, height: 4}};"
       " const s = [[KVShape alloc] initWithBounds:layer.frame path:"
       "[[KVLayerIterator new] extractPointsFromLayer:layer]]; s.scale = 2;"
       " return [s.path().join(' '), s.scaledCroppingRect(),"
       " [[KVLayerIterator new] extractPointsFromLayer:{layers: []}].length].join(' ') })()",
       "{0, 0} {4, 0} {4, 4} {0, 4} {10, 12, 8, 8} 0"},
      {"KVLayerIterator.new().extractPointsFromLayer_(5)",
       "Error: a layer is an object or a dictionary"},
      {"(() => { const s = KVShape.new(); s.bounds = NSMakeRect(1, 2, 3, 4); return s.bounds() "
       "})()",
       "{1, 2, 3, 4}"},
      {"KVShape.new().setBounds_({x: 1, y: 2})",
       "Error: KVShape setBounds: takes KVRect as argument 1, not dictionary"},
      {"(() => { const t = KVImageTransform.new(), v = KVView.new();"
       " const c = KVVersionChecker.new(); t.input = image; c.actionURL = NSURL.URLWithString_("
       "'http://a/'); v.backgroundColor = NSColor.colorWithRed_green_blue_alpha_(1, 0, 0, 1);"
       " return [t.input() === t.input(), t.input() === image, c.actionURL() === c.actionURL(),"
       " v.backgroundColor() === v.backgroundColor()].join(' ') })()",
       "true true true true"},
      {"['a?>\u00e9'.base64UrlEncodedString(), new Uint8Array([251, 255]).base64UrlEncodedString(),"
       " MF_Base64Codec.base64StringFromBase64UrlEncodedString_('-_8'),"
       " MF_Base64Codec.dataFromBase64String_('Zm9v').length].join(' ')",
       "YT8-w6k -_8 +/8= 3"},
      {"(() => { const told = [], list = [{f(x) { told.push(x); list.length = 0 }}, 5, nil,"
       " {f_(x) { told.push(-x) }}]; [[list each] f:1]; [[Each alloc] initWithArray:[{go() {"
       " throw new Error(told) }}]].go() })()",
       "Error: 1,-1"},
      {"TimedTracker.new().setEvents_({A: TimedEvent.new()})",
       "Error: events that go on are objects of MutableTimedEvent"},
      {"TimedTracker.new().setDelegate_(KVRect.new())",
       "Error: TimedTracker setDelegate: takes TimedTrackerDelegate as argument 1, not KVRect"},
      {"document.imageOfArtboard_forTransform_(artboard, transform).size()", "{40, 20}"},
      // Reported once, for the preview and for the design.
      {"document.imageOfArtboard_forTransform_(artboard, transform) && document.warnings()",
       "\"H\" is a layer of an unknown kind, \"hologram\"; only its contents are drawn."},
      {"document.settingsOfLayer_(layer)", "null"},
      {"document.fillLayer_withImage_settings_(artboard, image, {})",
       "Error: the layer \"A\" (A-id) cannot take a design: it is not a shape (artboard)"},
      {"document.fillLayer_withImage_settings_(layer, nil, {})",
       "Error: the layer \"L\" (L-id) cannot take a design: there is no image for it"},
      {"document.fillLayer_withImage_settings_(layer, image, {quality: 'fine'})",
       "Error: the setting quality does not fit"},
      {"document.fillLayer_withImage_settings_(layer, image, {artboard: 'nowhere'})",
       "Error: the document has no artboard \"nowhere\", only \"A\""},
      {"(() => { document.fillLayer_withImage_settings_(layer, image, {artboard: 'A-id',"
       " rotation: 2}); document.fillLayer_withImage_settings_(layer, image, {flipped: true});"
       " return JSON.stringify(document.settingsOfLayer_(layer)) + document.mappedLayers() })()",
       "{\"artboard\":\"A-id\",\"flipped\":true,\"included\":true,\"quality\":1,"
       "\"rotation\":2}<rectangle L (L-id)>"},
  };
  for (const auto& [script, result] : cases) {
    printed_.clear();
    SetUpDocument();
    runtime_.evaluate(
        u"try { log(%1) } catch (e) { log(String(e)) }"_s.arg(QString::fromUtf8(script)), u"s"_s);
    EXPECT_EQ(printed_.join(u'\n').toStdString(), result) << script;
  }
}

TEST_F(ScriptApiTest, HasEveryNameThatPlugInsUse) {
  const QString names =
      u"Kelvar KVPersister KVVersionChecker KVRect KVBezierPath KVLayerIterator KVShape "
      "KVImageTransform KVImage KVViewController KVPopupCell KVMenu KVView KVButton "
      "KVOpenURLAction KVBashAction CMD KVExternalActionsHandler TrackerManager SegmentIOTracker "
      "CounterTracker MockedTracker DeferableTracker Event TimedTracker KVRectMake "
      "KVRectFromCGRect CGRectAspectFittingSize KelvarVersionNumber KelvarVersionString "
      "TrackerManagerEventSessionEnded HRCoderException HRCoderClassNameKey "
      "HRCoderRootObjectKey HRCoderObjectAliasKey HRCoderBase64DataKey"_s;
  for (const QString& name : names.split(u' ')) {
    evaluate(u"if (typeof %1 === 'undefined') throw '%1 is missing'"_s.arg(name));
  }
  QStringList delegates;
  for (const DelegateInfo* const each : ScriptApi::delegates()) delegates.append(each->name());
  EXPECT_EQ(delegates,
            (QStringList{u"KVVersionCheckerDelegate"_s, u"KVViewControllerDelegate"_s,
                         u"KVPopupCellDelegate"_s, u"ControlAction"_s, u"TimedTrackerDelegate"_s}));
}

/// With KELVAR_WRITE_REFERENCE set, writes the pages instead.
TEST(ApiReferenceTest, IsUpToDate) {
  const std::pair<const char*, QString> pages[] = {
      {"scripting-reference.md", ApiReference::markdown()},
      {"scripting-host-classes.md", ApiReference::hostClasses()},
      {"scripting-foundation.md", FoundationReference::markdown()},
      {"kelvar.d.ts", ApiReference::typeScript()}};
  for (const auto& [name, text] : pages) {
    QFile file(QStringLiteral(KELVAR_DOCS_DIR "/") + QString::fromLatin1(name));
    if (qEnvironmentVariableIsSet("KELVAR_WRITE_REFERENCE")) {
      ASSERT_TRUE(file.open(QIODevice::WriteOnly));
      file.write(text.toUtf8());
      continue;
    }
    ASSERT_TRUE(file.open(QIODevice::ReadOnly)) << name;
    EXPECT_TRUE(file.readAll() == text.toUtf8())
        << "docs/" << name << " is stale: run this test with KELVAR_WRITE_REFERENCE=1";
  }
}

}  // namespace
}  // namespace kelvar
