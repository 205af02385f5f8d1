#include "scripting/Catalogue.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QFile>
#include <QImage>
#include <QTemporaryDir>

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
      {u"KVBashAction"_s, u"KVBashAction.nothing()"_s},
      {u"KVOpenURLAction"_s, u"KVOpenURLAction.openURL_(nil)"_s},
      {u"NSImage"_s, u"image"_s},
      {u"NSURL"_s, u"NSURL.URLWithString_('http://127.0.0.1:9/')"_s},
      {u"SketchDocument"_s, u""_s},
      {u"SketchLayer"_s, u""_s}};
  return kMakers.value(name, name + u".new()"_s);
}

/// A value of the type, written in a script.
QString sample(const ValueType& type) {
  static const QHash<QString, QString> kSamples{
      {u"number"_s, u"1"_s},
      {u"boolean"_s, u"true"_s},
      {u"string"_s, u"'true'"_s},
      {u"list of strings"_s, u"points"_s},
      {u"list"_s, u"[]"_s},
      {u"dictionary"_s, u"({})"_s},
      {u"point"_s, u"NSMakePoint(1, 2)"_s},
      {u"size"_s, u"NSMakeSize(3, 4)"_s},
      {u"rectangle"_s, u"NSMakeRect(0, 0, 3, 4)"_s},
      {u"date"_s, u"new Date()"_s},
      {u"NSImage"_s, u"image"_s},
      {u"KVRect"_s, u"KVRectMake(0, 0, 2, 2)"_s},
      {u"NSBezierPath"_s, u"KVBezierPath.bezierPathWithPoints_(points)"_s},
      {u"CGImage"_s, u"KVImage.getCGImage_(image)"_s}};
  return type.theDelegate ? u"({})"_s : kSamples.value(scriptTypeName(type), u"nil"_s);
}

class CatalogueTest : public testing::Test {
 protected:
  CatalogueTest() {
    qputenv("KELVAR_DEFAULTS", dir_.filePath(u"settings"_s).toLocal8Bit());
    qputenv("DO_NOT_TRACK", "1");
    QImage pixels(8, 4, QImage::Format_ARGB32_Premultiplied);
    pixels.fill(Qt::red);
    runtime_.setGlobal(u"image"_s, QVariant::fromValue(std::make_shared<Image>(pixels)));
    runtime_.evaluate(u"var points = ['{0, 0}', '{4, 0}', '{4, 4}', '{0, 4}']"_s, u"set up"_s);
  }

  void evaluate(const QString& script) {
    runtime_.evaluate(u"try { %1 } catch (e) { log(String(e)) }"_s.arg(script), u"script"_s);
    // What trackers say when there is nobody to tell.
    printed_.removeAll(u"Error: no element of the list understands the operation"_s);
    printed_.removeAll(u"Error: an event that has to wait needs properties"_s);
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
  QStringList printed_;
  ScriptRuntime runtime_{[this](const QString& line) { printed_.append(line); }};
};

TEST_F(CatalogueTest, EveryOperationCanBeCalledFromAScript) {
  // These are not for a test: they open a browser, or write files and documents.
  const QStringList left{u"homepageButtonDidPress:"_s, u"feedbackForumButtonDidPress:"_s,
                         u"supportButtonDidPress:"_s, u"visitStoreButtonDidPress:"_s,
                         u"writeToFile:"_s};
  int called = 0;
  for (const ClassInfo* const info : Catalogue::classes()) {
    const QString name = info->name();
    if (name == u"KVDocumentMapping" || name.startsWith(u"Sketch")) continue;
    for (const ClassInfo* each = info; each; each = each->base()) {
      for (const ClassInfo::Operation& operation : each->operations()) {
        if (left.contains(operation.selector)) continue;
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
}

TEST_F(CatalogueTest, HasEveryNameThatPlugInsRelyOn) {
  const QString names =
      u"Kelvar KVPersister KVVersionChecker KVRect KVBezierPath KVLayerIterator KVShape "
      "KVImageTransform KVImage KVViewController KVPopupCell KVMenu KVView KVButton "
      "KVOpenURLAction KVBashAction CMD KVExternalActionsHandler TrackerManager KVRectMake "
      "KVRectFromCGRect CGRectAspectFittingSize KelvarVersionNumber KelvarVersionString "
      "TrackerManagerEventSessionEnded HRCoderException HRCoderClassNameKey "
      "HRCoderRootObjectKey HRCoderObjectAliasKey HRCoderBase64DataKey"_s;
  for (const QString& name : names.split(u' ')) {
    evaluate(u"if (typeof %1 === 'undefined') throw '%1 is missing'"_s.arg(name));
  }
  QStringList delegates;
  for (const DelegateInfo* const each : Catalogue::delegates()) delegates.append(each->name());
  EXPECT_EQ(delegates, (QStringList{u"KVVersionCheckerDelegate"_s, u"KVViewControllerDelegate"_s,
                                    u"KVPopupCellDelegate"_s}));
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
