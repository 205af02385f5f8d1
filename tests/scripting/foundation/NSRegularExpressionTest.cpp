#include "scripting/foundation/Results.h"

namespace kelvar {
namespace {

TEST(NSRegularExpressionTest, FindsAndReplaces) {
  expectResults({
      {R"js(var r = [NSRegularExpression regularExpressionWithPattern:@"(\\d+)-(\\w)" options:0 error:nil];
       var m = [r firstMatchInString:@"a 12-b" options:0 range:NSMakeRange(0, 6)];
       return [m rangeAtIndex:1].location + " " + m.numberOfRanges();)js",
       R"js(2 3)js"},
      {R"js(var r = NSRegularExpression.regularExpressionWithPattern_options_error_("a", 1, nil);
       return r.stringByReplacingMatchesInString_options_range_withTemplate_("Abca", 0, NSMakeRange(0,4), "<$0>");)js",
       R"js(<A>bc<a>)js"},
  });
}

}  // namespace
}  // namespace kelvar
