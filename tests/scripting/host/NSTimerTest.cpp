#include <gtest/gtest.h>

#include "scripting/ScriptOutput.h"
#include "scripting/foundation/Results.h"

namespace kelvar {
namespace {

/// Scripts that run to their end, and what they print.
void expectPrinted(const std::vector<ScriptCase>& cases) {
  ScriptOutput output;
  for (const ScriptCase& each : cases) {
    EXPECT_EQ(output.of(QString::fromUtf8(each.script)), each.result) << each.script;
  }
}

TEST(NSTimerTest, FiresTargetsAndBlocks) {
  expectPrinted({
      {"let n = 0; const t = {\"tick:\": 0, tick_(timer) { print(timer.userInfo().a, ++n);\n"
       "  if (n === 2) [timer invalidate] }};\n"
       "var timer = [NSTimer scheduledTimerWithTimeInterval:0.001 target:t\n"
       "  selector:@selector(tick:) userInfo:{a: 'x'} repeats:true];\n"
       "print([timer isValid], timer.timeInterval())",
       "true 0.001\nx 1\nx 2\n"},
      {"const o = {go() { print('went', t.isValid()); setTimeout(() => print(t.isValid()), 0) }};\n"
       "var t = NSTimer.scheduledTimerWithTimeInterval_target_selector_userInfo_repeats_(\n"
       "  0, o, 'go', nil, false)",
       "went true\nfalse\n"},
      {"NSTimer.scheduledTimerWithTimeInterval_repeats_block_(0, false, t => print('block'))",
       "block\n"},
      // Without a run loop, a timer fires by hand alone.
      {"const t = [NSTimer timerWithTimeInterval:0 repeats:false block:() => print('now')];\n"
       "setTimeout(() => { [t fire]; [t fire]; print(t.isValid()) }, 5)",
       "now\nfalse\n"},
      {"const t = [NSTimer timerWithTimeInterval:0 repeats:false block:() => print('loop')];\n"
       "[[NSRunLoop currentRunLoop] addTimer:t forMode:NSRunLoopCommonModes];\n"
       "NSRunLoop.mainRunLoop().addTimer_forMode_(t, 'x')",
       "loop\n"},
      {"const t = [NSTimer scheduledTimerWithTimeInterval:0 repeats:true block:() => "
       "print('no')];\n"
       "t.invalidate()",
       ""},
      // A script's own `setTimeout` may use these.
      {"setTimeout = (f, ms) => NSTimer.scheduledTimerWithTimeInterval_repeats_block_(\n"
       "  ms / 1000, false, f);\nsetTimeout(() => print('own'), 1)",
       "own\n"},
  });
}

TEST(NSTimerTest, ReportsMistakes) {
  expectResults({
      {"NSTimer.scheduledTimerWithTimeInterval_repeats_block_('x', false, () => 1)",
       "threw NSInvalidArgumentException: scheduledTimerWithTimeInterval:repeats:block: takes a "
       "number, not a string"},
      {"NSTimer.timerWithTimeInterval_repeats_block_(NaN, false, () => 1)",
       "threw NSInvalidArgumentException: timerWithTimeInterval:repeats:block: takes a number of "
       "seconds, not NaN"},
      {"NSTimer.timerWithTimeInterval_repeats_block_(1, false)",
       "threw NSInvalidArgumentException: timerWithTimeInterval:repeats:block: takes a function, "
       "not nil"},
      {"NSTimer.timerWithTimeInterval_target_selector_userInfo_repeats_(1, {}, 'go:', nil, false)",
       "threw NSInvalidArgumentException: timerWithTimeInterval:target:selector:: a dictionary has "
       "no selector go:"},
      {"NSTimer.timerWithTimeInterval_target_selector_userInfo_repeats_(1, nil, 'go', nil, false)",
       "threw NSInvalidArgumentException: timerWithTimeInterval:target:selector: takes an object, "
       "not nil"},
      {"NSRunLoop.currentRunLoop().addTimer_forMode_({}, 'x')",
       "threw NSInvalidArgumentException: addTimer:forMode: takes an NSTimer, not a dictionary"},
  });
}

TEST(COScriptTest, SchedulesFunctions) {
  expectPrinted({
      {"print(coscript === COScript.currentCOScript(), coscript.shouldKeepAround());\n"
       "coscript.setShouldKeepAround_(true); print([coscript shouldKeepAround]);\n"
       "coscript.shouldKeepAround = false; print(coscript.shouldKeepAround())",
       "true false\ntrue\nfalse\n"},
      // Nothing can call back any more, so that the program ends.
      {"[[COScript currentCOScript] setShouldKeepAround:true]", ""},
      {"coscript.scheduleWithInterval_jsFunction_(0, i => print('once', typeof i.cancel));\n"
       "[[COScript currentCOScript] scheduleWithInterval:0.001 jsFunction:function (i) {\n"
       "  print('twice') }].cancel()",
       "once function\n"},
      {"let n = 0; coscript.scheduleWithRepeatingInterval_jsFunction_(0, i => {\n"
       "  print(++n); if (n === 3) [i cancel] })",
       "1\n2\n3\n"},
      // Who says so no longer waits for what repeats, only for what ends.
      {"coscript.shouldKeepAround = true; setInterval(() => print('tick'), 1e6);\n"
       "setTimeout(() => { print('done'); coscript.shouldKeepAround = false;\n"
       "  setTimeout(() => print('last'), 1) }, 1)",
       "done\nlast\n"},
      {"const f = coscript.createFiber(); f.onCleanup(() => print('clean')); f.cleanup();\n"
       "f.cleanup(); print(coscript.env().scriptURL)",
       "clean\nnull\n"},
      {"try { coscript.scheduleWithInterval_jsFunction_(1) } catch (e) { print(e) }\n"
       "try { coscript.scheduleWithInterval_jsFunction_('x', () => 1) } catch (e) { print(e) }",
       "NSInvalidArgumentException: scheduleWithInterval:jsFunction: takes a function, not nil\n"
       "NSInvalidArgumentException: scheduleWithInterval:jsFunction: takes a number, not a "
       "string\n"},
  });
}

TEST(ScriptTimersTest, RunsWorkInOrder) {
  expectPrinted({
      {"setImmediate((a, b) => print('immediate', a, b), 1, 2);\n"
       "clearImmediate(setImmediate(() => print('never')));\n"
       "queueMicrotask(() => print('micro')); print('now')",
       "now\nmicro\nimmediate 1 2\n"},
      {"NSOperationQueue.mainQueue().addOperationWithBlock_(() => print('queued'));\n"
       "[{go_(x) { print('went', x) }} performSelector:@selector(go:) withObject:5 afterDelay:0];\n"
       "NSThread.mainThread().threadDictionary().k = 1;\n"
       "print([[[NSThread mainThread] threadDictionary] objectForKey:@\"k\"])",
       "1\nqueued\nwent 5\n"},
      {"queueMicrotask(() => { throw new Error('in micro') }); setTimeout(() => print('no'), 50)",
       "Error: in micro"},
      {"queueMicrotask('f')",
       "NSInvalidArgumentException: queueMicrotask takes a function, not a string"},
      {"setImmediate()", "NSInvalidArgumentException: setImmediate takes a function, not nil"},
  });
}

}  // namespace
}  // namespace kelvar
