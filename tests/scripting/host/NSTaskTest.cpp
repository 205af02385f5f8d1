#include <gtest/gtest.h>

#include "platform/Permissions.h"
#include "scripting/ScriptOutput.h"
#include "scripting/foundation/Results.h"

namespace kelvar {
namespace {

/// Defines `run`, which returns what a shell command prints.
constexpr const char* kShell = R"js(
var text = data => NSString.alloc().initWithData_encoding_(data, NSUTF8StringEncoding);
var shell = (command, also) => {
  var task = NSTask.alloc().init(), pipe = NSPipe.pipe();
  task.setLaunchPath("/bin/sh"); [task setArguments:["-c", command]]; task.setStandardOutput(pipe);
  if (also) also(task, pipe);
  task.launch();
  var read = text(pipe.fileHandleForReading().readDataToEndOfFile());
  [task waitUntilExit];
  return read.trim() + " " + task.terminationStatus();
};
)js";

void expectShell(const std::vector<ScriptCase>& cases) {
  for (const ScriptCase& each : cases) {
    const std::string script = std::string(kShell) + "return " + each.script;
    expectResults({{script.c_str(), each.result}});
  }
}

TEST(NSTaskTest, ReadsWhatProgramsPrint) {
  expectShell({
      {"shell('echo hi; exit 3')", "hi 3"},
      // More than a pipe holds.
      {"shell('head -c 300000 /dev/zero | tr \"\\\\0\" x').length", "300002"},
      {"shell('pwd; echo $A $HOME', t => { t.currentDirectoryPath = '/usr';\n"
       "  t.setEnvironment({A: 'b'}) })",
       "/usr\nb 0"},
      {"shell('echo out; echo err >&2', (t, p) => t.setStandardError(p))", "out\nerr 0"},
      {"shell('cat', t => { var p = [NSPipe pipe], h = p.fileHandleForWriting();\n"
       "  h.writeData([@\"given\" dataUsingEncoding:4]); [h closeFile];\n"
       "  t.standardInput = p })",
       "given 0"},
  });
  expectResults({
      {"var t = [NSTask launchedTaskWithLaunchPath:@\"/bin/sh\" arguments:[\"-c\", \"kill $$\"]];\n"
       "[t waitUntilExit]; return [t.terminationStatus(), t.terminationReason(), t.isRunning()]",
       "15,2,false"},
      {"var t = NSTask.launchedTaskWithLaunchPath_arguments_('/bin/sleep', ['100']);\n"
       "var runs = t.isRunning() && t.processIdentifier() > 0; t.terminate(); t.waitUntilExit();\n"
       "return runs + ' ' + t.isRunning() + t.processIdentifier()",
       "true false0"},
      {"var e = MOPointer.new(), t = NSTask.new(); t.launchPath = '/no/such';\n"
       "return t.launchAndReturnError(e) + ' ' + /cannot launch/.test(e.value())",
       "false true"},
  });
  EXPECT_EQ(ScriptOutput().of(QStringLiteral(
                "var t = NSTask.new(); t.setLaunchPath('/bin/sh'); t.setArguments(['-c', 'exit "
                "4']);\nt.terminationHandler = x => print('ended', x.terminationStatus());\n"
                "t.launch(); print('launched')")),
            "launched\nended 4\n");
}

TEST(NSTaskTest, ReportsMistakes) {
  expectResults({
      {"NSTask.new().launch()", "threw NSInvalidArgumentException: the task has no launch path"},
      {"NSTask.new().terminationStatus()",
       "threw NSInvalidArgumentException: the task was not launched"},
      {"return NSTask.new().setArguments('x')",
       "threw NSInvalidArgumentException: setArguments: takes a list, not a string"},
      {"return NSTask.new().setStandardOutput({})",
       "threw NSInvalidArgumentException: setStandardOutput: takes an NSPipe, not a dictionary"},
      {"NSTask.launchedTaskWithLaunchPath_arguments_('/no/such', [])",
       "threw Error: cannot launch /no/such: execvp: No such file or directory"},
      {"var t = NSTask.launchedTaskWithLaunchPath_arguments_('/bin/true', []);\n"
       "t.waitUntilExit(); return t.launch()",
       "threw NSInvalidArgumentException: the task was launched before"},
      {"NSThread.sleepForTimeInterval_('x')",
       "threw NSInvalidArgumentException: sleepForTimeInterval: takes a number, not a string"},
      {"[NSThread sleepForTimeInterval:0.001]; return NSThread.isMainThread()", "true"},
  });
  Permissions permissions;
  permissions.close(Permissions::Kind::Run);
  Permissions::install(permissions);
  expectResults(
      {{"NSTask.launchedTaskWithLaunchPath_arguments_('/bin/echo', [])",
        "threw Error: running /bin/echo is not allowed; --allow run=/usr/bin/echo allows it"}});
  Permissions::install({});
}

TEST(NSAttributedStringTest, KeepsAttributesOfCharacters) {
  expectResults({
      // Characters that get an attribute together stay one run.
      {"var s = NSMutableAttributedString.alloc().initWithString('x'.repeat(4000)), runs = 0;\n"
       "s.addAttribute_value_range_('NSKern', 1, NSMakeRange(0, 4000));\n"
       "s.removeAttribute_range_('NSFont', NSMakeRange(0, 4000));\n"
       "s.enumerateAttributesInRange_options_usingBlock_(NSMakeRange(0, 4000), 0, () => ++runs);\n"
       "return runs",
       "1"},
      {"var s = [[NSMutableAttributedString alloc] initWithString:@\"Hello\"];\n"
       "[s addAttribute:NSFontAttributeName value:@\"F\" range:NSMakeRange(0, 2)];\n"
       "s.addAttributes_range_({NSColor: 'red'}, NSMakeRange(1, 3));\n"
       "var r = MOPointer.new(), d = s.attributesAtIndex_effectiveRange_(1, r);\n"
       "return [s.string(), s.length(), [s length], d.allKeys(), NSStringFromRange(r.value()),\n"
       "  s.attribute_atIndex_effectiveRange_('NSColor', 3, r), NSStringFromRange(r.value()),\n"
       "  s.attribute_atIndex_effectiveRange_('NSFont', 4, nil)].join(' ')",
       "Hello 5 5 NSFont,NSColor {1, 1} red {1, 3} "},
      {"var s = NSMutableAttributedString.alloc().initWithString_attributes_('ab', {k: 1});\n"
       "s.appendAttributedString(NSAttributedString.alloc().initWithString('cd'));\n"
       "s.replaceCharactersInRange_withString_(NSMakeRange(0, 1), 'XY');\n"
       "s.deleteCharactersInRange(NSMakeRange(2, 1)); s.removeAttribute_range_('k', NSMakeRange(0,"
       "1));\n"
       "return s + ' ' + [0, 1, 2].map(i => [s attributesAtIndex:i effectiveRange:nil].k)",
       "XYcd ,1,"},
      {"var a = NSAttributedString.alloc().initWithString_attributes_('a', {k: [1]}),\n"
       "  b = a.mutableCopy(), c = b.copy(); b.addAttribute_value_range_('l', 2, NSMakeRange(0, "
       "1));\n"
       "return [a.isEqual(c), a.isEqual(b), c.isMemberOfClass(NSAttributedString),\n"
       "  b.isKindOfClass(NSAttributedString), a.attributedSubstringFromRange(\n"
       "  NSMakeRange(0, 1)).isEqualToAttributedString(a)].join(' ')",
       "true false true true true"},
      {"NSMutableAttributedString.new().addAttribute_value_range_('k', 1, NSMakeRange(0, 1))",
       "threw NSRangeException: addAttribute:value:range: takes a range within 0 and 0, not {0, "
       "1}"},
      {"NSAttributedString.alloc().initWithString(nil)",
       "threw NSInvalidArgumentException: initWithString: takes a string, not nil"},
      {"NSAttributedString.new().attributesAtIndex_effectiveRange_(0, nil)",
       "threw NSRangeException: attributesAtIndex:effectiveRange: takes an index below 0, not 0"},
  });
}

}  // namespace
}  // namespace kelvar
