#include "scripting/Catalogue.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QFile>
#include <QImage>
#include <QTemporaryDir>

#include "host/SketchParts.h"
#include "platform/Browser.h"
#include "platform/Image.h"
#include "platform/PendingWork.h"
#include "runtime/ClassInfo.h"
#include "runtime/DelegateInfo.h"
#include "scripting/Reference.h"
#include "scripting/ScriptRuntime.h"
#include "scripting/SelectorName.h"
#include "scripting/TypeName.h"

namespace kelvar {
namespace {

using namespace Qt::StringLiterals;
using Kind = ClassInfo::Kind;

/// How a script makes an object of the class: none for classes that have no objects.
QString maker(const QString& name) {
  static const QHash<QString, QString> kMakers{
      {u"KVShape"_s, u"KVShape.alloc().initWithBounds_path_(KVRectMake(0, 0, 9, 9), points)"_s},
      {u"KVVersionChecker"_s, u"KVVersionChecker.alloc().initWithIdentifier_name_('i', 'n')"_s},
      {u"TrackerManager"_s, u"Kelvar.new().tracker()"_s},
      {u"SegmentIOTracker"_s,
       u"[SegmentIOTracker.alloc().initWithWriteKey_('k')].map(t => (t.uuid = 'u', t))[0]"_s},
      {u"KVBashAction"_s, u"KVBashAction.nothing()"_s},
      {u"KVOpenURLAction"_s, u"KVOpenURLAction.openURL_(nil)"_s},
      {u"NSImage"_s, u"image"_s},
      {u"NSURL"_s, u"NSURL.URLWithString_('http://127.0.0.1:9/')"_s},
      {u"SketchDocument"_s, u"document"_s},
      {u"SketchLayer"_s, u"layer"_s},
      {u"NSColor"_s, u"NSColor.colorWithRed_green_blue_alpha_(1, 0, 0, 1)"_s},
      {u"NSBezierPath"_s, u"KVBezierPath.bezierPathWithPoints_(points)"_s},
      {u"NSView"_s, u"KVViewController.new().view()"_s},
      {u"KVAction"_s, u"KVBashAction.nothing()"_s}};
  return kMakers.value(name, name + u".new()"_s);
}

/// A value of the type, written in a script.
QString sample(const ValueType& type) {
  static const QHash<QString, QString> kSamples{
      {u"number"_s, u"1"_s},
      {u"boolean"_s, u"true"_s},
      // Also a file's name.
      {u"string"_s, u"folder + '/true'"_s},
      {u"list of strings"_s, u"points"_s},
      {u"list"_s, u"[]"_s},
      {u"dictionary"_s, u"({})"_s},
      {u"point"_s, u"NSMakePoint(1, 2)"_s},
      {u"size"_s, u"NSMakeSize(3, 4)"_s},
      {u"rectangle"_s, u"NSMakeRect(0, 0, 3, 4)"_s},
      {u"date"_s, u"new Date()"_s},
      {u"NSImage"_s, u"image"_s},
      {u"KVRect"_s, u"KVRectMake(0, 0, 2, 2)"_s},
      {u"KVImageTransform"_s, u"transform"_s},
      {u"SketchLayer"_s, u"layer"_s},
      {u"NSBezierPath"_s, u"KVBezierPath.bezierPathWithPoints_(points)"_s},
      {u"CGImage"_s, u"KVImage.getCGImage_(image)"_s}};
  return type.theDelegate ? u"({})"_s : kSamples.value(scriptTypeName(type), u"nil"_s);
}

class CatalogueTest : public testing::Test {
 protected:
  CatalogueTest() {
    qputenv("KELVAR_DEFAULTS", dir_.filePath(u"settings"_s).toLocal8Bit());
    qputenv("DO_NOT_TRACK", "1");
    qputenv("KELVAR_WEB_SITE", "vendor.example");
    runtime_.setGlobal(u"folder"_s, dir_.path());
    QImage pixels(8, 4, QImage::Format_ARGB32_Premultiplied);
    pixels.fill(Qt::red);
    runtime_.setGlobal(u"image"_s, QVariant::fromValue(std::make_shared<Image>(pixels)));
    SetUpDocument();
  }

  /// Anew.
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
        "transform = KVImageTransform.new(); transform.input = image;"
        "document.saveAs_(folder + '/first.sketch')"_s,
        u"set up"_s);
  }
  ~CatalogueTest() override { qunsetenv("KELVAR_WEB_SITE"); }

  void evaluate(const QString& script) {
    runtime_.evaluate(u"try { %1 } catch (e) { log(String(e)) }"_s.arg(script), u"script"_s);
    // What trackers say when there is nobody to tell.
    printed_.removeAll(u"Error: no element of the list understands the operation"_s);
    printed_.removeAll(u"Error: an event that has to wait needs properties"_s);
    // What takes certain words alone.
    printed_.removeAll(u"Error: sampling is \"best\" or \"bilinear\""_s);
    EXPECT_EQ(printed_.join(u'\n').toStdString(), "") << script.toStdString();
    printed_.clear();
  }

  /// Windows that some of the operations have opened would keep other scripts waiting.
  void TearDown() override {
    while (PendingWork::count() > 0) QCoreApplication::processEvents();
    QApplication::closeAllWindows();
  }

  static QString callOf(const ClassInfo::Operation& operation) {
    QStringList arguments;
    for (const ValueType& type : operation.parameters) arguments.append(sample(type));
    return u"%1(%2)"_s.arg(scriptName(operation.selector), arguments.join(u", "));
  }

  QTemporaryDir dir_;
  Browser browser_{"http", "https", "mailto"};
  QStringList printed_;
  ScriptRuntime runtime_{[this](const QString& line) { printed_.append(line); }};
};

TEST_F(CatalogueTest, EveryOperationCanBeCalledFromAScript) {
  int called = 0;
  for (const ClassInfo* const info : Catalogue::classes()) {
    const QString name = info->name();
    for (const ClassInfo* each = info; each; each = each->base()) {
      for (const ClassInfo::Operation& operation : each->operations()) {
        if (operation.kind == Kind::Initialiser && each != info) continue;
        const QString whose = operation.kind == Kind::Operation     ? maker(name)
                              : operation.kind == Kind::Initialiser ? name + u".alloc()"_s
                                                                    : name;
        evaluate(whose + u'.' + callOf(operation));
        ++called;
      }
    }
  }
  for (const ClassInfo::Operation& function : Catalogue::functions().operations()) {
    evaluate(callOf(function));
  }
  EXPECT_GT(called, 200);
  QStringList opened;
  for (const QUrl& url : browser_.opened) opened.append(url.path());
  opened.removeDuplicates();
  EXPECT_EQ(opened.join(u' '), u"/kelvar/ /kelvar/feedback /kelvar/support /kelvar/pro"_s);
}

TEST_F(CatalogueTest, OperationsGiveWhatTheyGiveInTheLibrary) {
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
       "{7, 6, 9, 8} {7, 6, 9, 8} true KVRect"},
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
       "Error: what is stored are objects of Event"},
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
      {"TimedTracker.new().setEvents_({A: TimedEvent.new()})",
       "Error: events that go on are objects of MutableTimedEvent"},
      {"TimedTracker.new().setDelegate_(KVRect.new())",
       "Error: TimedTracker setDelegate: takes TimedTrackerDelegate as argument 1, not KVRect"},
      {"document.imageOfArtboard_forTransform_(artboard, transform).size()", "{40, 20}"},
      // Whether for the preview or for a design, once.
      {"document.imageOfArtboard_forTransform_(artboard, transform) && document.warnings()",
       "\"H\" is a layer of an unknown kind, \"hologram\"; what is in it is drawn."},
      {"document.settingsOfLayer_(layer)", "null"},
      {"document.fillLayer_withImage_settings_(artboard, image, {})",
       "Error: the layer \"A\" (A-id) cannot take a design: it is no shape (artboard)"},
      {"document.fillLayer_withImage_settings_(layer, nil, {})",
       "Error: the layer \"L\" (L-id) cannot take a design: there is no picture for it"},
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

TEST_F(CatalogueTest, HasEveryNameThatPlugInsRelyOn) {
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
  for (const DelegateInfo* const each : Catalogue::delegates()) delegates.append(each->name());
  EXPECT_EQ(delegates, (QStringList{u"KVVersionCheckerDelegate"_s, u"KVViewControllerDelegate"_s,
                                    u"KVPopupCellDelegate"_s, u"TimedTrackerDelegate"_s}));
}

/// With KELVAR_WRITE_REFERENCE set, writes the pages anew instead.
TEST(Reference, IsWhatTheDescriptionsSay) {
  const std::pair<const char*, QString> pages[] = {
      {"scripting-reference.md", Reference::markdown()}, {"kelvar.d.ts", Reference::typeScript()}};
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
