#include <QFileInfo>
#include <QTemporaryDir>

#include "mockup/SketchParts.h"
#include "platform/QtError.h"
#include "runtime/Conversion.h"
#include "scripting/ScriptOutput.h"

namespace kelvar {
namespace {

using namespace Qt::StringLiterals;

SketchDocumentRef sample() {
  const SketchJson red = parts::filled(parts::color(1, 0, 0));
  auto files = parts::files(
      {parts::group("artboard", "A", {10, 20, 100, 80},
                    {parts::group("group", "G", {5, 6, 40, 30},
                                  {parts::layer("rectangle", "R", {1, 2, 8, 10}, red)})}),
       parts::group("symbolMaster", "S", {200, 0, 50, 50},
                    {parts::layer("rectangle", "P", {0, 0, 9, 9}, red)}, {{"symbolID", "s-1"}}),
       parts::layer("symbolInstance", "I", {300, 0, 50, 50}, {{"symbolID", "s-1"}}),
       parts::layer("oval", "O", {0, 200, 9, 9}, {{"sharedStyleID", "style-1"}})});
  SketchJson document = SketchJson::parse(files[u"document.json"_s].toStdString());
  document["layerStyles"] = {{"objects", SketchJson::array({{{"_class", "sharedStyle"},
                                                             {"do_objectID", "style-1"},
                                                             {"name", "Accent"},
                                                             {"value", red["style"]}}})}};
  files[u"document.json"_s] = writeSketchJson(document);
  return parts::opened(parts::packed(files));
}

struct Case {
  /// Run first; may be empty.
  const char* change;
  /// Evaluated after it, and again in the document as it is saved.
  const char* read;
  const char* result;
};

class SketchClassesTest : public testing::Test {
 protected:
  static std::string run(const SketchDocumentRef& document, const QString& script) {
    const QString setUp =
        u"const byName = name => document.layersNamed_(name)[0], page = document.currentPage();\n"
        "const names = layers => layers.map(l => l.name()).join(' ');\n"_s;
    return ScriptOutput().of(setUp + script, {{u"document"_s, toVariant(document)}});
  }

  template <size_t count>
  static void check(const Case (&cases)[count]) {
    for (const Case& each : cases) {
      const QString read = u"log(String(%1))"_s.arg(QString::fromUtf8(each.read));
      const std::string expected = std::string(each.result) + '\n';
      const SketchDocumentRef document = sample();
      EXPECT_EQ(run(document, QString::fromUtf8(each.change) + u'\n' + read), expected)
          << each.change;
      const Result<QByteArray> bytes = document->bytes();
      ASSERT_TRUE(bytes) << each.change;
      EXPECT_EQ(run(parts::opened(*bytes), read), expected) << "saved: " << each.change;
    }
  }

  /// What a script is told that does what cannot be done.
  static void checkRefusals(const std::pair<const char*, const char*>* cases, size_t count) {
    for (size_t i = 0; i < count; ++i) {
      const QString script = QString::fromUtf8(cases[i].first);
      EXPECT_EQ(
          run(sample(), u"try { %1; log('done') } catch (e) { log(e.message) }"_s.arg(script)),
          std::string(cases[i].second) + '\n')
          << cases[i].first;
    }
  }
};

TEST_F(SketchClassesTest, NamesClassesAsTheHostDoes) {
  check({
      {"", "names(page.children())", "Page A G R S P I O"},
      // A walk ends at shapes, in whose key path they stand for the group of older documents.
      {"",
       "(function walk(l) { return [l.name()].concat(...l.layers().map(walk)) })(byName('A'))"
       ".join(' ') + byName('R').valueForKey_('layers')[0].name()",
       "A G RR"},
      {"", "page.children().map(l => l.className()).join(' ')",
       "MSPage MSArtboardGroup MSLayerGroup MSRectangleShape MSSymbolMaster MSRectangleShape "
       "MSSymbolInstance MSOvalShape"},
      {"",
       "[byName('R').isKindOfClass_(MSShapePathLayer), byName('R').isKindOfClass_(MSLayer),"
       " byName('R').isMemberOfClass_(MSLayer), byName('S').isKindOfClass_(MSArtboardGroup)]",
       "true,true,false,true"},
      {"", "document.className()", "MSDocument"},
  });
}

TEST_F(SketchClassesTest, MovesLayers) {
  check({
      {"byName('R').frame().x = 3; byName('R').frame().setMaxY_(40)", "byName('R').frame()",
       "{3, 30, 8, 10}"},
      {"const f = byName('R').frame(); byName('R').frame().setWidth_(50); f.setX_(9)",
       "byName('R').rect()", "{{9, 2}, {50, 10}}"},
      {"byName('R').frame = NSMakeRect(1, 2, 3, 4)", "byName('R').frame()", "{1, 2, 3, 4}"},
      {"byName('R').setFrame_(MSRect.rectWithX_y_width_height_(4, 3, 2, 1))", "byName('R').frame()",
       "{4, 3, 2, 1}"},
      {"", "byName('R').absoluteRect()", "{16, 28, 8, 10}"},
      {"byName('R').absoluteRect().setX_(0)",
       "[byName('R').frame().x(), byName('R').absoluteRect().rulerX()]", "-15,-10"},
      {"byName('G').setIsFlippedHorizontal_(true); byName('R').absoluteRect().x = 20",
       "[byName('R').absoluteRect().x(), byName('R').frame().x()]", "20,27"},
      {"const f = byName('R').frame(); f.subtractX_(3); f.subtractY_(4); f.scaleBy_(2);"
       "byName('O').setAbsolutePosition_(NSMakePoint(7, 8))",
       "[byName('R').frame(), byName('O').absolutePosition(), byName('R').parentRoot().name(),"
       " byName('O').parentRoot().name()]",
       "{-2, -2, 16, 20},{7, 8},A,Page"},
      {"byName('R').setRotation_(90)", "[byName('R').rotation(), byName('R').isLocked()]",
       "90,false"},
      {"byName('R').isLocked = true; byName('R').setIsVisible_(false)",
       "[byName('R').isLocked(), byName('R').isVisible()]", "true,false"},
  });
}

TEST_F(SketchClassesTest, ChangesTree) {
  check({
      {"",
       "[byName('R').parentGroup(), byName('R').parentArtboard(), byName('R').parentPage()]"
       ".map(l => l.name())",
       "G,A,Page"},
      {"byName('R').duplicate().setName_('R2')", "names(byName('G').layers())", "R R2"},
      {"byName('R').removeFromParent()", "byName('G').containsLayers()", "false"},
      {"page.addLayers_([byName('R'), MSOvalShape.new()])", "names(page.layers())",
       "A S I O R Oval"},
      {"page.insertLayer_atIndex_(byName('O'), 0)", "names(page.layers())", "O A S I"},
      {"page.insertLayer_beforeLayer_(byName('O'), byName('S'))", "names(page.layers())",
       "A O S I"},
      {"page.insertLayer_afterLayer_(byName('A'), byName('S'))", "names(page.layers())", "S A I O"},
      {"MSLayerMovement.moveToFront([byName('A'), byName('S')])", "names(page.layers())",
       "I O A S"},
      {"MSLayerMovement.moveToBack(MSLayerArray.arrayWithLayers([byName('I'), byName('O')]))",
       "names(page.layers())", "I O A S"},
      {"MSLayerMovement.moveForward([byName('A'), byName('S')])", "names(page.layers())",
       "I A S O"},
      {"MSLayerMovement.moveBackward([byName('A'), byName('I'), byName('O')])",
       "names(page.layers())", "A I O S"},
      {"byName('O').setCenter(NSMakePoint(10, 20))",
       "[byName('O').frame(), byName('O').center()].join(' ')", "{5.5, 15.5, 9, 9} {10, 20}"},
      {"const g = MSLayerGroup.groupFromLayers_([byName('I'), byName('O')]); g.name = 'New'",
       "[names(page.layers()), byName('New').frame(), byName('O').frame()]",
       "A S New,{0, 0, 350, 209},{0, 200, 9, 9}"},
      {"byName('G').ungroup()", "[names(byName('A').layers()), byName('R').frame()]",
       "R,{6, 8, 8, 10}"},
      {"byName('R').frame().x = 30; byName('G').resizeToFitChildrenWithOption_(0)",
       "[byName('G').frame(), byName('R').frame(), byName('R').absoluteRect().x()]",
       "{35, 8, 8, 10},{0, 0, 8, 10},45"},
      {"const a = MSArtboardGroup.new(); a.frame().width = 320; a.setName_('B');"
       "a.setHasBackgroundColor_(true); a.setBackgroundColor_(MSColor.colorWithSVGString_('#0f0'));"
       "page.addLayers_([a])",
       "[names(document.artboards()), byName('B').frame().width(),"
       " byName('B').backgroundColor().hexValue()]",
       "A S B,320,00FF00"},
      {"const p = document.addBlankPage(); p.setName_('Two'); p.addLayer_(byName('O'))",
       "[names(document.pages()), names(document.currentPage().layers()), names(document.pages()[0]"
       ".layers())]",
       "Page Two,O,A S I"},
  });
}

TEST_F(SketchClassesTest, ChangesStyles) {
  check({
      {"",
       "[byName('R').style().fills().count(), byName('R').style().firstEnabledFill().color()"
       ".hexValue(), byName('O').style().fills().count()]",
       "1,FF0000,0"},
      {"byName('R').style().fills()[0].color().setGreen_(1)",
       "byName('R').style().fills()[0].color().hexValue()", "FFFF00"},
      {"const f = byName('O').style().addStylePartOfType_(0); f.setFillType_(1);"
       "f.gradient().setTo_(NSMakePoint(1, 0.5))",
       "[byName('O').style().fills()[0].gradient().to(),"
       " byName('O').style().fills()[0].gradient().stops().count()]",
       "{1, 0.5},2"},
      {"const b = byName('O').style().addStylePartOfType_(1); b.setThickness_(3); b.position = 1;"
       "b.color = NSColor.redColor(); byName('O').style().borderOptions().dashPattern = [4, 2]",
       "[byName('O').style().borders()[0].thickness(), byName('O').style().firstEnabledBorder()"
       ".position(), byName('O').style().borders()[0].color().red(), byName('O').style()"
       ".borderOptions().dashPattern().join('-')]",
       "3,1,1,4-2"},
      {"const s = byName('O').style().addStylePartOfType_(2); s.setBlurRadius_(7);"
       "byName('O').style().contextSettings().opacity = 0.5",
       "[byName('O').style().shadows()[0].blurRadius(), byName('O').style().contextSettings()"
       ".opacity()]",
       "7,0.5"},
      {"const s = MSStyle.new(); s.addStyleFill_(MSStyleFill.new()); byName('O').setStyle_(s);"
       "s.fills()[0].color = MSColor.blackColor()",
       "byName('O').style().fills()[0].color().hexValue() === '000000'", "false"},
      {"byName('R').style().removeAllStyleFills()", "byName('R').style().hasEnabledFill()",
       "false"},
      {"byName('O').style().addStylePartOfType_(0).color = "
       "MSImmutableColor.colorWithSVGString_('#f00')",
       "['R', 'O'].map(name => byName(name).style().firstEnabledFill().color()).map((c, i, all) =>"
       " [c.isEqual(all[0]), c.hash() === all[0].hash(), c.isEqual_(MSColor.blackColor()),"
       " c.isEqual(nil)].join(' ')).join()",
       "true true false false,true true false false"},
      {"byName('O').sharedStyle().style().fills()[0].color().setBlue_(1)",
       "[byName('O').sharedStyle().name(), document.documentData().layerStyles().objects()[0]"
       ".value().fills()[0].color().hexValue(), names(byName('O').sharedStyle()"
       ".allLayersInstances())]",
       "Accent,FF00FF,O"},
  });
}

TEST_F(SketchClassesTest, KeepsColorsAndGradientsOfDocument) {
  const char* const kColors =
      "document.documentData().assets().colors().map(c => c.hexValue()).join(' ')";
  check({
      {"const a = document.documentData().assets(); a.addColor(MSColor.colorWithSVGString('#f00'));"
       "a.addColors([MSColor.whiteColor(), MSColor.blackColor()]); a.removeColorAtIndex(1)",
       kColors, "FF0000 000000"},
      {"const a = document.documentData().assets(); a.setColors([MSColor.whiteColor(),"
       " MSColor.colorWithSVGString('#00f')]); a.removeColor(MSColor.whiteColor())",
       kColors, "0000FF"},
      {"const a = document.documentData().assets(); a.addColor(MSColor.blackColor());"
       "a.addColorAsset(MSColorAsset.alloc().initWithAsset_name(MSColor.whiteColor(), 'Paper'))",
       "document.documentData().assets().colorAssets().map(c => c.color().hexValue() + c.name())"
       ".join()",
       "000000,FFFFFFPaper"},
      {"const a = document.documentData().assets();"
       "a.addColorAsset(MSColorAsset.alloc().initWithAsset_name(MSColor.whiteColor(), 'Paper'));"
       "a.addColor(MSColor.blackColor())",
       "document.documentData().assets().colorAssets().map(c => c.name() + c.objectID().length)"
       ".join()",
       "Paper36,36"},
      // All are added, or none.
      {"const a = document.documentData().assets(); a.addColor(MSColor.blackColor());"
       "try { a.addColors([MSColor.whiteColor(), 5]); } catch {}",
       kColors, "000000"},
      {"const g = MSGradient.new(); g.setColor_atIndex_(MSColor.colorWithSVGString('#0f0'), 1);"
       "document.documentData().assets().addGradient(g)",
       "document.documentData().assets().gradients().map(g => g.stops()[1].color().hexValue())",
       "00FF00"},
      {"const a = document.documentData().assets(); a.addColor(MSColor.blackColor());"
       "a.removeAllColors()",
       kColors, ""},
  });
}

TEST_F(SketchClassesTest, PlacesGuidesGridsAndLinks) {
  check({
      {"const r = byName('A').horizontalRulerData(); r.addGuideWithValue(20);"
       "r.addGuideWithValue(7.5); r.addGuideWithValue(40); r.removeGuideAtIndex(0)",
       "[byName('A').horizontalRulerData().guides(), byName('A').verticalRulerData()"
       ".numberOfGuides()]",
       "7.5,40,0"},
      {"const g = MSSimpleGrid.new(); g.setGridSize_(8); byName('A').setGrid(g);"
       "byName('A').layout = MSLayoutGrid.new(); byName('A').layout().setNumberOfColumns(4)",
       "[byName('A').grid().gridSize(), byName('A').layout().numberOfColumns(), "
       "byName('S').grid()]",
       "8,4,"},
      {"const f = MSFlowConnection.new(); f.setDestinationArtboardID(byName('A').objectID());"
       "byName('R').flow = f; byName('A').setIsFlowHome(true)",
       "[byName('R').flow().destinationArtboard().name(), byName('O').flow(),"
       " byName('A').isFlowHome()]",
       "A,,true"},
      {"byName('R').flow = MSFlowConnection.new(); byName('R').setFlow(nil)", "byName('R').flow()",
       "null"},
  });
}

TEST_F(SketchClassesTest, RemovesColorsByComponents) {
  auto files = parts::files({});
  SketchJson json = SketchJson::parse(files[u"document.json"_s].toStdString());
  json["assets"] = {{"colors", {{{"_class", "color"}, {"swatchID", "x"}, {"red", 1}}}}};
  files[u"document.json"_s] = writeSketchJson(json);
  EXPECT_EQ(run(parts::opened(parts::packed(files)),
                u"const a = document.documentData().assets(); a.removeColor(MSColor.whiteColor());"
                "log(a.colors().count()); a.removeColor(MSColor.colorWithSVGString('#f00'));"
                "log(a.colors().count())"_s),
            "1\n0\n");
}

TEST_F(SketchClassesTest, NamesExportsByTheirFormats) {
  const SketchDocumentRef document = parts::opened(parts::packed(parts::files({parts::layer(
      "rectangle", "R", {0, 0, 9, 9},
      {{"exportOptions",
        {{"exportFormats",
          {{{"name", "p-"}, {"namingScheme", 1}, {"scale", 2}, {"fileFormat", "png"}},
           {{"name", "-s"}, {"namingScheme", 0}, {"scale", 0}, {"fileFormat", "png"}}}}}}})})));
  EXPECT_EQ(run(document,
                u"const layer = byName('R'), [prefix, zero] = layer.exportOptions().exportFormats()"
                ", place = MSImmutableLayerAncestry.ancestryWithMSLayer(layer), make = format =>"
                "MSExportRequest.exportRequestFromLayerAncestry_exportFormat(place, format);"
                "log(make(prefix).name(), make(prefix).scale());"
                "try { make(zero); } catch (e) { log(e.message); }"
                "try { MSExportRequest.exportRequestsFromExportableLayer(layer); }"
                "catch (e) { log(e.message); }"_s),
            "p-R 2\nscale must be above 0\nscale must be above 0\n");
}

TEST_F(SketchClassesTest, MovesPointsOfOutlines) {
  check({
      {"const t = MSRectangleShape.alloc().initWithFrame(NSMakeRect(0, 0, 10, 20));"
       "t.name = 'T'; page.addLayer(t); t.points()[1].setPoint(NSMakePoint(0.5, 0));"
       "t.points()[2].cornerRadius = 3",
       "[byName('T').points().map(p => p.point()).join(), byName('T').points()[2].cornerRadius(),"
       " byName('T').edited()]",
       "{0, 0},{0.5, 0},{1, 1},{0, 1},3,true"},
      {"const s = MSShapeGroup.shapeWithRect(NSMakeRect(5, 6, 10, 20)); s.name = 'T';"
       "page.addLayer(s)",
       "[byName('T').bezierPathWithTransforms().bounds(), byName('T').pathInFrame().bounds()]",
       "{{5, 6}, {10, 20}},{{5, 6}, {10, 20}}"},
  });
}

TEST_F(SketchClassesTest, GivesCharactersAttributes) {
  const QString make =
      u"const t = MSTextLayer.new(); page.addLayer(t); t.name = 'T';"
      "t.stringValue = 'one two'; t.setFontPostscriptName('Roboto-Bold');"_s;
  struct Row {
    const char* change;
    const char* read;
    const char* result;
  };
  const Row rows[] = {
      {"t.setFontSize(20)",
       "[byName('T').font().fontName(), byName('T').font().pointSize(),"
       " byName('T').style().textStyle().attributes().NSFont.pointSize()]",
       "Roboto-Bold,20,20"},
      {"t.font = t.fonts()[0]; t.addAttribute_value_forRange('NSColor', NSColor.redColor(),"
       " NSMakeRange(4, 3))",
       "[0, 4].map(i => byName('T').attributedString().attribute_atIndex_effectiveRange('NSColor',"
       " i, nil).redComponent())",
       "0,1"},
      {"t.addAttribute_value('NSKern', 2)",
       "[byName('T').kerning(), byName('T').styleAttributes().NSKern]", "2,2"},
      {"const a = t.attributedStringValue().mutableCopy(); const p = NSMutableParagraphStyle.new();"
       "p.setAlignment(2); p.minimumLineHeight = 30; p.maximumLineHeight = 30;"
       "a.replaceCharactersInRange_withString(NSMakeRange(0, 3), 'un');"
       "a.addAttributes_range({NSParagraphStyle: p, NSUnderline: 1}, NSMakeRange(0, 6));"
       "t.setAttributedStringValue(a)",
       "[byName('T').stringValue(), byName('T').textAlignment(), byName('T').lineHeight(),"
       " byName('T').attributedString().attributesAtIndex_effectiveRange(5, nil).NSUnderline]",
       "un two,2,30,1"},
      {"t.setAttributedStringValue(NSAttributedString.alloc().initWithString('new'))",
       "[byName('T').stringValue(), byName('T').font().fontName()]", "new,Roboto-Bold"},
      // What cannot be set leaves the text as it was.
      {"const a = NSMutableAttributedString.alloc().initWithString('new');"
       "a.addAttribute_value_range('NSLink', 'x', NSMakeRange(0, 1));"
       "try { t.setAttributedStringValue(a); } catch (e) { t.name = 'T'; }",
       "byName('T').stringValue()", "one two"},
      {"let said; try { t.addAttribute_value_forRange('NSKern', 2, {location: 9e18, length: 9e18});"
       "} catch (e) { said = e.message; } t.stringValue = said",
       "byName('T').stringValue()",
       "the range {9000000000000000000, 9000000000000000000} is beyond the 7 characters of the "
       "text"},
      // Neighbors that look alike are one run.
      {"const a = t.attributedStringValue().mutableCopy();"
       "a.addAttribute_value_range('NSKern', 2, NSMakeRange(0, 3));"
       "a.addAttribute_value_range('NSKern', 2, NSMakeRange(3, 2));"
       "t.setAttributedStringValue(a)",
       "byName('T').attributedString().treeAsDictionary().value.attributes.map(r => r.text)",
       "one t,wo"},
  };
  for (const Row& row : rows) {
    const QByteArray change = (make + QString::fromUtf8(row.change)).toUtf8();
    check({{change.constData(), row.read, row.result}});
  }
}

TEST_F(SketchClassesTest, ReplacesDamagedTexts) {
  const SketchJson wrong{{"location", 1e300}, {"length", -5}, {"attributes", {{"kerning", 1}}}};
  const SketchJson damaged[] = {
      {{"style", 5}, {"attributedString", {{"string", "abc"}}}},
      {{"style", {{"textStyle", "x"}}}, {"attributedString", {{"string", "abc"}}}},
      {{"attributedString", {{"string", "abc"}, {"attributes", {wrong, wrong}}}}}};
  for (const SketchJson& members : damaged) {
    const SketchDocumentRef document =
        parts::opened(parts::packed(parts::files({parts::layer("text", "T", {}, members)})));
    EXPECT_EQ(
        SketchClassesTest::run(
            document,
            u"const t = byName('T'); t.addAttribute_value_forRange('NSKern', 2,"
            "NSMakeRange(0, t.stringValue().length())); const text = NSMutableAttributedString"
            ".alloc().initWithString('one'); text.addAttribute_value_range('NSKern', 3, "
            "NSMakeRange(1, 2)); t.setAttributedStringValue(text); t.verticalAlignment = 2;"
            "print(t.stringValue(), t.verticalAlignment(), "
            "t.attributedString().attribute_atIndex_effectiveRange("
            "'NSKern', 2, nil))"_s),
        "one 2 3\n")
        << members;
  }
}

TEST_F(SketchClassesTest, RemovesSharedStyles) {
  check({
      {"const all = document.documentData().layerStyles(); all.removeSharedStyle(all.objects()[0])",
       "[document.documentData().layerStyles().numberOfSharedStyles(), byName('O').sharedStyle()]",
       "0,"},
      {"const all = document.documentData().layerStyles();"
       "all.addSharedObject(MSSharedStyle.alloc().initWithName_style('B', MSStyle.new()));"
       "all.removeSharedStyleAtIndex(0)",
       "[document.documentData().layerStyles().objects().map(s => s.name()),"
       " byName('O').sharedStyleID()]",
       "B,"},
      // What is held of one stays that one.
      {"const all = document.documentData().layerStyles();"
       "const [a] = all.objects(), add = name => all.addSharedStyleWithName_firstInstance("
       "name, MSStyle.new()); const b = add('B'), c = add('C'), style = c.style();"
       "all.removeSharedStyle(b); c.name = 'D'; style.addStylePartOfType_(0);"
       "all.removeSharedStyle(a); let said = ''; try { a.name = 'E'; } catch (e) { said = e; }"
       "c.name = c.name() + all.indexOfSharedStyle(c) + c.style().fills().count() + said",
       "document.documentData().layerStyles().objects().map(s => s.name())",
       "D01Error: the MSSharedStyle is no longer where it was"},
      {"const all = document.documentData().layerStyles();"
       "all.updateValueOfSharedObject_byCopyingInstance(all.sharedStyleAtIndex(0), MSStyle.new())",
       "document.documentData().layerStyleWithID('style-1').style().fills().count()", "0"},
      {"const s = byName('R').style(); s.addStylePartOfType_(1); const f = "
       "s.addStylePartOfType_(0);"
       "s.removeStylePart(s.fills()[0]); f.color",
       "[byName('R').style().fills().count(), byName('R').style().borders().count()]", "1,1"},
  });
}

TEST_F(SketchClassesTest, SharesStyles) {
  const char* const kShared =
      "[byName('R').sharedStyle()?.name(), byName('O').sharedStyle()?.name(), byName('O').style()"
      ".fill()?.color().hexValue(), document.documentData().allLayerStyles().count()]";
  check({
      {"document.documentData().layerStyles().addSharedStyleWithName_firstInstance_('New',"
       " byName('R').style()); byName('R').style().fill().color().setGreen_(1)",
       kShared, "New,Accent,,2"},
      {"const s = MSSharedStyle.alloc().initWithName_firstInstance_('New', byName('R').style());"
       "const all = document.documentData().layerStyles(); all.addSharedObject_(s);"
       "byName('O').setSharedStyle_(s); byName('R').sharedStyle = nil",
       kShared, ",New,FF0000,2"},
      {"const s = byName('O').sharedStyle(); byName('R').style().fill().color = "
       "MSColor.blackColor();"
       "byName('R').setStyle_(s.newInstance()); byName('O').style = MSStyle.new()",
       kShared, "Accent,,,1"},
      {"const s = byName('O').sharedStyle(); s.updateToMatch_(byName('R').style());"
       "s.resetReferencingInstances(); byName('R').setStyle_(byName('O').style().copy())",
       kShared, "Accent,Accent,FF0000,1"},
      {"const t = MSTextLayer.new(); t.name = 'T'; page.addLayer_(t); t.setFontSize_(30);"
       "const s = document.documentData().layerTextStyles().addSharedStyleWithName_firstInstance_("
       "'Big', t.style()); const u = MSTextLayer.new(); u.name = 'U'; page.addLayer_(u);"
       "u.setSharedStyle_(s); u.setStyle_(u.style().copy()); t.setStyle_(MSStyle.new())",
       "[byName('U').fontSize(), byName('U').frame().height() === byName('T').frame().height(),"
       " byName('U').sharedStyle().name(), byName('T').sharedStyle(), byName('T').fontSize(),"
       " document.documentData().allTextStyles().count()]",
       "30,true,Big,,30,1"},
      {"byName('R').style().addStylePartOfType_(1); byName('R').style().disableAllFills();"
       "byName('O').style().disableAllBorders()",
       "[byName('R').style().hasEnabledFill(), byName('R').style().border().thickness(),"
       " byName('R').style().shadow()]",
       "false,1,"},
  });
  // Overrides find a style that was added after the document was read.
  const SketchDocumentRef document = sample();
  EXPECT_EQ(run(document,
                u"for (let i = 0; i < 20; ++i) {"
                "const s = document.documentData().layerStyles()"
                ".addSharedStyleWithName_firstInstance_('S' + i, byName('R').style());"
                "s.style().fill().color = MSColor.colorWithSVGString_('#0000ff');"
                "byName('I').setOverrides_({['P-id_layerStyle']: s.objectID()});"
                "const copy = byName('I').duplicate();"
                "const g = copy.detachByReplacingWithGroup();"
                "if (g.layers()[0].style().fill().color().hexValue() !== '0000FF') log(i);"
                "} log(document.warnings().length)"_s),
            "0\n");
}

TEST_F(SketchClassesTest, FitsTextFrames) {
  check({
      {"const t = MSTextLayer.new(); t.name = 'T'; page.addLayer_(t); t.setStringValue_('iiii');"
       "const narrow = t.frame().width(); t.stringValue = 'WWWWWWWW'; t.setFontSize_(30);"
       "if (!(t.frame().width() > 4 * narrow && t.frame().height() > 25)) log(narrow, t.frame())",
       "[byName('T').stringValue(), byName('T').fontSize()]", "WWWWWWWW,30"},
      // Right-aligned lines end where they ended.
      {"const t = MSTextLayer.new(); t.name = 'T'; page.addLayer_(t); t.setTextAlignment_(1);"
       "const right = t.frame().maxX(); t.setStringValue_('A much longer text');"
       "if (t.frame().maxX() !== right) log(right, t.frame())",
       "byName('T').textAlignment()", "1"},
      {"const t = MSTextLayer.alloc().initWithFrame_(NSMakeRect(5, 6, 80, 10)); t.name = 'T';"
       "page.addLayer_(t); t.setTextBehaviour_(2); t.frame = NSMakeRect(5, 6, 80, 10);"
       "t.setStringValue_('one two three four five six'); t.textColor = NSColor.blueColor()",
       "[byName('T').frame(), byName('T').textColor().blue()]", "{5, 6, 80, 10},1"},
      {"const t = MSTextLayer.new(); t.name = 'T'; page.addLayer_(t); t.setTextBehaviour_(1);"
       "t.frame().width = 40; t.setStringValue_('one two three four five six');"
       "if (!(t.frame().height() > 50)) log(t.frame())",
       "byName('T').frame().width()", "40"},
  });
}

TEST_F(SketchClassesTest, ChangesSymbols) {
  check({
      {"", "[byName('I').symbolMaster().name(), names(byName('S').allInstances())]", "S,I"},
      {"const i = byName('S').newSymbolInstance(); i.name = 'J'; page.addLayer_(i)",
       "[names(byName('S').allInstances()), byName('J').frame()]", "I J,{0, 0, 50, 50}"},
      {"const m = MSSymbolMaster.convertArtboardToSymbol_(byName('A')); m.name = 'M';"
       "page.addLayer_(m.newSymbolInstance())",
       "[names(document.allSymbols()), byName('M').allInstances().count(), names(page.layers())]",
       "M S,1,M S I O M"},
      {"const r = byName('R'), p = byName('P');"
       "MSSymbolMaster.convertArtboardToSymbol_(byName('A'));"
       "MSSymbolMaster.convertSymbolToArtboard_(byName('S'));"
       "r.name = 'held'; p.name = 'kept'; if (byName('held') !== r) log('another')",
       "[byName('A').className(), names(byName('A').children()), names(byName('S').layers())]",
       "MSSymbolMaster,A G held,kept"},
      {"byName('I').detachByReplacingWithGroup()",
       "[names(page.layers()), byName('I').className(), names(byName('I').layers())]",
       "A S I O,MSLayerGroup,P"},
      {"byName('I').setOverrides_({'P-id': 'x'})", "JSON.stringify(byName('I').overrides())",
       "{\"P-id\":\"x\"}"},
      {"const p = document.documentData().symbolsPageOrCreateIfNecessary();"
       "if (document.documentData().symbolsPageOrCreateIfNecessary() !== p) log('another');"
       "byName('O').duplicate().name = 'O2'; const made = MSSymbolCreator"
       ".createSymbolFromLayers_withName_onSymbolsPage_(MSLayerArray.arrayWithLayers_([byName('O'),"
       " byName('O2')]), 'N', true); made.name = 'J'; made.frame().width = 30; "
       "made.resetSizeToMaster();"
       "MSSymbolCreator.createSymbolFromLayers_withName_onSymbolsPage_([byName('J')], 'M', false)",
       "[names(document.pages()), names(document.documentData().symbolsPage().layers()),"
       " names(byName('N').layers()), byName('M').frame(), byName('J').frame(),"
       " byName('M').symbolMaster().className(), document.currentPage().name(),"
       " document.documentData().foreignSymbols().count()]",
       "Page Symbols,N,O O2,{0, 200, 9, 9},{0, 0, 9, 9},MSSymbolMaster,Page,0"},
      {"MSSymbolMaster.convertSymbolToArtboard_(byName('S'))",
       "[byName('S').className(), names(byName('S').layers()), byName('I').symbolMaster()]",
       "MSArtboardGroup,P,"},
      {"const t = MSTextLayer.new(); t.name = 'T'; byName('S').addLayer_(t);"
       "const j = byName('S').newSymbolInstance(); j.name = 'J';"
       "const m = MSSymbolMaster.new(); m.name = 'M'; page.addLayers_([m]); m.addLayer_(j);"
       "const k = m.newSymbolInstance(); k.name = 'K'; page.addLayer_(k);"
       "const find = p => k.availableOverrides().find(o => o.overridePoint().property() === p);"
       "j.setValue_forOverridePoint_('inner', byName('I').availableOverrides()[0].overridePoint());"
       "if (find('stringValue').currentValue() !== 'inner') log(find('stringValue'));"
       "k.setValue_forOverridePoint_('outer', find('stringValue').overridePoint())",
       "byName('K').availableOverrides().map(o => [o.affectedLayer().name(), o.hasOverride(),"
       " o.defaultValue() === byName('S').symbolID() || o.defaultValue(),"
       " o.currentValue().length].join(' ')).join()",
       "J false true 3,T true inner 5"},
      {"const t = MSTextLayer.new(); byName('S').addLayer_(t);"
       "byName('I').setOverrides_({[t.objectID()]: 'A text that is a good deal longer'});"
       "const g = byName('I').detachByReplacingWithGroup(), s = g.layers()[1]; s.name = 'D';"
       "t.setStringValue_(s.stringValue()); t.name = 'T'",
       "[byName('D').frame().width() === byName('T').frame().width(),"
       " byName('D').valueForKey_('kelvar.hasForeignFrame')]",
       "true,"},
  });
}

TEST_F(SketchClassesTest, SetsWhatIsExported) {
  check({
      {"byName('R').exportOptions().setExportFormats_([MSExportFormat"
       ".formatWithScale_name_fileFormat_(2, '@2x', 'jpg'), MSExportFormat.new()]);"
       "byName('G').addLayer_(MSSliceLayer.new())",
       "[byName('R').exportOptions().exportFormats().map(f => f.scale() + f.name() +"
       " f.fileFormat()).join(' '), names(page.allExportableLayers()), names(page.slices())]",
       "2@2xjpg 1png,R,Slice"},
      {"byName('R').exportOptions().addExportFormat().setScale(3)",
       "(() => { const place = MSImmutableLayerAncestry.ancestryWithMSLayer(byName('R'));"
       "const formats = [[2, '@2x', 'jpg'], [1, '', 'png']].map(each => MSExportFormat"
       ".formatWithScale_name_fileFormat_(...each));"
       "const text = requests => requests.map(r => r.name() + r.scale() + r.format()).join(' ');"
       "const named = "
       "MSExportRequest.exportRequestsFromExportableLayer_exportFormats_useIDForName_("
       "byName('R'), formats, true);"
       "return [text(MSExportRequest.exportRequestsFromLayerAncestry(place)),"
       "  text(MSExportRequest.exportRequestsFromLayerAncestry_exportFormats(place, formats)),"
       "  named.every(each => each.name() == byName('R').objectID()), named.length] })()",
       "R3png,R@2x2jpg R1png,true,2"},
  });
}

TEST_F(SketchClassesTest, MakesShapesOfPaths) {
  check({
      {"const r = MSRectangleShape.alloc().initWithFrame_(NSMakeRect(7, 8, 20, 10));"
       "const g = MSShapeGroup.shapeWithPath_(r); g.name = 'X'; page.addLayers_([g])",
       "[byName('X').frame(), byName('X').layers()[0].frame()]", "{7, 8, 20, 10},{0, 0, 20, 10}"},
      {"const p = NSBezierPath.bezierPath(); p.moveToPoint_(NSMakePoint(2, 2));"
       "p.lineToPoint_(NSMakePoint(12, 2)); p.lineToPoint_(NSMakePoint(12, 22)); p.closePath();"
       "const s = MSShapePathLayer.shapeWithBezierPath_(p); s.name = 'X'; page.addLayer_(s)",
       "[byName('X').frame(), byName('X').numberOfPoints(), byName('X').isClosed()]",
       "{2, 2, 10, 20},3,true"},
      {"const s = MSShapePathLayer.shapeWithBezierPath_(NSBezierPath.bezierPathWithOvalInRect_("
       "NSMakeRect(1, 2, 30, 40))); s.name = 'X'; page.addLayer_(s)",
       "byName('X').bezierPath().bounds()", "{{0, 0}, {30, 40}}"},
      {"const r = MSRectangleShape.rectangleWithRect_cornerRadius_(NSMakeRect(0, 0, 9, 9), 2);"
       "r.name = 'X'; page.addLayer_(r)",
       "byName('X').cornerRadiusFloat()", "2"},
      {"const r = MSRectangleShape.alloc().initWithFrame_(NSMakeRect(10, 20, 40, 20));"
       "r.name = 'X'; page.addLayer_(r); r.setCornerRadiusFromComponents_('8/4;0/2');"
       "r.setRotation_(90)",
       "[byName('X').cornerRadiusString(), byName('X').pathInFrame().bounds(),"
       " byName('X').bezierPathWithTransforms().bounds()]",
       "8/4/0/2,{{10, 20}, {40, 20}},{{20, 10}, {20, 40}}"},
      {"const p = NSBezierPath.bezierPathWithRect_(NSMakeRect(1, 2, 3, 4));"
       "const g = MSShapeGroup.layerWithPath_(MSPath.pathWithBezierPath_(p)); g.name = 'X';"
       "page.addLayer_(g)",
       "byName('X').frame()", "{1, 2, 3, 4}"},
  });
}

TEST_F(SketchClassesTest, RefusesWhatCannotBe) {
  static constexpr std::pair<const char*, const char*> kCases[] = {
      {"byName('G').addLayer_(byName('A').parentPage())",
       "the page \"Page\" cannot be put into a layer"},
      {"byName('G').addLayer_(byName('A'))", "\"A\" cannot be put into itself"},
      {"byName('R').frame().setX_(1 / 0)", "the frame of a layer takes finite numbers"},
      {"byName('R').style().fills()[0].setColor_('red')", "color takes an MSColor"},
      {"const f = byName('R').style().fills()[0]; byName('R').style().removeAllStyleFills();"
       "f.setFillType_(1)",
       "the MSStyleFill is no longer where it was"},
      {"document.removePage_(page)", "a document must have a page"},
      {"page.addLayers_([nil])", "addLayers: takes a list of layers, with nothing else in it"},
      {"MSShapePathLayer.shapeWithBezierPath_(NSBezierPath.bezierPath())",
       "the path has no points"},
      {"NSBezierPath.bezierPath().lineToPoint_(NSMakePoint(1, 1))",
       "a path begins with moveToPoint:"},
      {"let g = MSLayerGroup.new(); for (let i = 0; i < 300; ++i) { const h = MSLayerGroup.new();"
       "h.addLayer_(g); g = h }",
       "layers cannot be nested more than 200 deep"},
      {"document.saveArtboardOrSlice_toFile_(byName('A'), '/dev/null/b/a.png')",
       "cannot write /dev/null/b/a.png: the folder /dev/null/b does not exist"},
      {"byName('R').setName_(nil)", "the name of a layer is a string, not nil"},
      {"byName('R').name = undefined", "the name of a layer is a string, not nil"},
      {"document.documentData().layerStyles().addSharedStyleWithName_firstInstance_('', byName('R')"
       ".style())",
       "a shared style needs a name"},
      {"document.documentData().layerStyles().addSharedObject_(byName('O').sharedStyle())",
       "the shared style \"Accent\" is in a document already"},
      {"byName('R').setSharedStyle_(byName('R').style())",
       "setSharedStyle: takes MSSharedStyle, not MSStyle"},
      {"MSSymbolCreator.createSymbolFromLayers_withName_onSymbolsPage_([MSOvalShape.new()], 'a', "
       "0)",
       "a symbol is made of layers of a document"},
      {"MSSymbolCreator.createSymbolFromLayers_withName_onSymbolsPage_([byName('A')], 'a', true)",
       "\"A\" cannot be put into a group"},
      {"MSRectangleShape.new().setCornerRadiusFromComponents_('8/x')",
       "\"8/x\" is not a list of radii such as \"8/8/0/0\""},
      {"MSRectangleShape.new().setCornerRadiusFromComponents_('1/2/3')",
       "\"1/2/3\" has 3 radii, not 1 or 4"},
      {"MSGradient.new().setColor_atIndex_(MSColor.blackColor(), 2)", "the gradient has no stop 2"},
      {"byName('R').exportOptions().setExportFormats_([MSColor.blackColor()])",
       "setExportFormats: takes MSExportFormat, not nil"},
      {"MSTextLayer.new().setFontSize_(0)", "fontSize must be above 0"},
      {"MSTextLayer.new().addAttribute_value('NSParagraphStyle', 'x')",
       "the attribute NSParagraphStyle takes an NSParagraphStyle"},
      {"MSTextLayer.new().addAttribute_value('NSParagraphStyle', {indent: 1})",
       "a paragraph style has no indent"},
      {"MSTextLayer.new().addAttribute_value('NSParagraphStyle', {headIndent: 'x'})",
       "headIndent of a paragraph style is a number"},
      {"byName('R').bezierPat()",
       "an object of class MSRectangleShape has no selector bezierPat; the nearest is bezierPath"},
  };
  checkRefusals(kCases, std::size(kCases));
}

TEST_F(SketchClassesTest, SelectsLayers) {
  EXPECT_EQ(run(sample(),
                u"byName('R').select_byExtendingSelection_(true, false);"
                "byName('O').select_byExpandingSelection_(true, true);"
                "log(names(document.selectedLayers().layers()), document.selection().count(),"
                " document.currentArtboard().name(), byName('R').isSelected());"
                "page.changeSelectionBySelectingLayers_([byName('I')]);"
                "log(names(page.selectedLayers().layers()), document.currentArtboard());"
                "page.changeSelectionBySelectingLayers_(nil); log(document.selection().count());"
                "byName('R').setIsSelected_(true); byName('R').removeFromParent();"
                "log(document.selection().count())"_s),
            "R O 2 A true\nI null\n0\n0\n");
}

TEST_F(SketchClassesTest, SavesDocuments) {
  const QTemporaryDir dir;
  const SketchDocumentRef document = sample();
  document->setSavePath(dir.filePath(u"new.sketch"_s));
  const QString image = dir.filePath(u"a/b/R.png"_s);
  EXPECT_EQ(
      run(document,
          u"log(document.isDocumentEdited()); byName('R').setName_('R2');"
          "log(document.isDocumentEdited()); document.saveDocument_(nil);"
          "log(document.isDocumentEdited());"
          "document.saveArtboardOrSlice_toFile_(byName('R2'), '%1');"
          "document.reloadInspector(); const view = document.contentDrawView();"
          "view.centerRect_(byName('R2').absoluteRect().rect()); view.refresh()"_s.arg(image)),
      "false\ntrue\nfalse\n");
  EXPECT_TRUE(QFileInfo::exists(image));
  const Result<SketchDocumentRef> saved = SketchDocument::open(document->savePath());
  ASSERT_TRUE(saved);
  EXPECT_EQ((*saved)->layersNamed(u"R2"_s).size(), 1);
}

}  // namespace
}  // namespace kelvar
