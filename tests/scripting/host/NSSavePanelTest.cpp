#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include "scripting/foundation/Results.h"
#include "scripting/host/Asked.h"

namespace kelvar {
namespace {

using namespace Qt::StringLiterals;

TEST(NSSavePanelTest, AsksForPaths) {
  const QTemporaryDir dir;
  QFile file(dir.filePath(u"a.png"_s));
  ASSERT_TRUE(file.open(QIODevice::WriteOnly));
  const QString folder = dir.path(), image = file.fileName();
  const std::string open = "var p = [NSOpenPanel openPanel]; ";
  const std::string show =
      "return [p.runModal(), p.URL()?.path(), p.URLs().count(), p.filenames()].join(' ')"
      ".replaceAll('" +
      folder.toStdString() + "', 'DIR')";
  const struct {
    std::string script;
    QStringList answers;
    const char* asked;
    std::string result;
  } cases[] = {
      {open + "[p setMessage:@\"Image\"]; p.setAllowedFileTypes(['.PNG']); " + show,
       {image},
       "? Image {}\n",
       "1 DIR/a.png 1 DIR/a.png"},
      {open + show, {}, "? Open which file {}\n", "0  0 "},
      {open + "p.allowsMultipleSelection = true; " + show,
       {image, image},
       "? Open which file {}\n? Open which file {}\n? Open which file {}\n",
       "1 DIR/a.png 2 DIR/a.png,DIR/a.png"},
      {open + "p.setCanChooseFiles(false); p.setCanChooseDirectories(true); " + show,
       {folder},
       "? Open which folder {}\n",
       "1 DIR 1 DIR"},
      {open + show,
       {folder + u"/none"_s},
       "? Open which file {}\n",
       "threw NSInvalidArgumentException: there is no file " + folder.toStdString() +
           "/none to open"},
      {open + "p.setAllowedFileTypes(['jpg', 'gif']); " + show,
       {image},
       "? Open which file {}\n",
       "threw NSInvalidArgumentException: " + image.toStdString() + " is none of jpg, gif"},
      {open + "return p.setAllowedFileTypes('jpg')",
       {},
       "",
       "threw NSInvalidArgumentException: setAllowedFileTypes: takes a list, not a string"},
      {"var p = NSSavePanel.savePanel(); p.setNameFieldStringValue('x.svg');\n"
       "p.setDirectoryURL(NSURL.fileURLWithPath('/tmp/')); p.allowedFileTypes = ['svg'];\n"
       "return p.runModal() + ' ' + p.URL().path()",
       {u"/tmp/../tmp/y"_s},
       "? Save as [/tmp/x.svg] {}\n",
       "1 /tmp/y.svg"},
      {"var p = NSSavePanel.savePanel(), got; p.beginWithCompletionHandler(r => got = r);\n"
       "return got === NSModalResponseCancel && p.URL() === nil && p instanceof NSSavePanel &&\n"
       "  NSOpenPanel.openPanel() instanceof NSSavePanel",
       {},
       "? Save as {}\n",
       "true"},
  };
  for (const auto& each : cases) {
    Asked user(each.answers);
    expectResults({{each.script.c_str(), each.result.c_str()}});
    EXPECT_EQ(user.take(), each.asked) << each.script;
  }
}

TEST(NSPasteboardTest, KeepsValuesByType) {
  expectResults({
      {"var p = [NSPasteboard generalPasteboard]; [p clearContents];\n"
       "p.declareTypes_owner_([NSPasteboardTypeString], nil);\n"
       "[p setString:@\"häl\" forType:NSPasteboardTypeString];\n"
       "p.setData_forType_([@\"d\" dataUsingEncoding:4], 'com.example.own');\n"
       "return [p.stringForType(NSStringPboardType), p.stringForType('com.example.own'),\n"
       "  p.dataForType('com.example.none'), p.availableTypeFromArray(['x', NSStringPboardType]),\n"
       "  p.types().containsObject('com.example.own')].join(' ')",
       "häl d  NSStringPboardType true"},
      {"NSPasteboard.generalPasteboard().stringForType(NSPasteboardTypeString)", "häl"},
      {"var p = NSPasteboard.pasteboardWithName('mine'); p.writeObjects(['a', 'b']);\n"
       "return p.stringForType(NSPasteboardTypeString) + p.changeCount() +\n"
       "  NSPasteboard.pasteboardWithName('other').types().count()",
       "a\nb10"},
      {"NSPasteboard.generalPasteboard().setString_forType_(nil, NSPasteboardTypeString)",
       "threw NSInvalidArgumentException: setString:forType: takes a string, not nil"},
      {"NSPasteboard.generalPasteboard().setData_forType_('x', 'y')",
       "threw NSInvalidArgumentException: setData:forType: takes bytes, not a string"},
      {"NSPasteboard.generalPasteboard().stringForType([])",
       "threw NSInvalidArgumentException: stringForType: takes a string, not a list"},
  });
}

}  // namespace
}  // namespace kelvar
