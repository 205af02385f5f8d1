#include "scripting/foundation/Results.h"

namespace kelvar {
namespace {

TEST(NSStringTest, TrimsAndSplitsBySets) {
  expectResults({
      {R"js([@"  a b " stringByTrimmingCharactersInSet:[NSCharacterSet whitespaceCharacterSet]])js",
       R"js(a b)js"},
      {R"js(@"a,b;c".componentsSeparatedByCharactersInSet(NSCharacterSet.characterSetWithCharactersInString(",;")).count())js",
       R"js(3)js"},
      {R"js("a1b2".componentsSeparatedByCharactersInSet(NSCharacterSet.decimalDigitCharacterSet().invertedSet()).componentsJoinedByString(""))js",
       R"js(12)js"},
  });
}

TEST(NSStringTest, FindsAndCutsParts) {
  expectResults({
      {R"js(var r = "hello".rangeOfString("ll");
       return r.location + " " + r.length + " " + ("x".rangeOfString("y").location == NSNotFound);)js",
       R"js(2 2 true)js"},
      {R"js("hello".substringWithRange(NSMakeRange(1,3)) + "hello".substringFromIndex(3) + [@"hello" substringToIndex:2] + [@"abc" characterAtIndex:1])js",
       R"js(elllohe98)js"},
      {R"js("abc".substringFromIndex(4))js",
       R"js(threw NSRangeException: substringFromIndex: takes an index below 4, not 4)js"},
      {R"js("hello wORLD it's".capitalizedString())js", R"js(Hello World It's)js"},
  });
}

TEST(NSStringTest, ReadsNumbers) {
  expectResults({
      {R"js([[@"12abc" intValue], "3.5x".floatValue(), "YES".boolValue(), "no".boolValue(), " -7".integerValue(), "x".intValue()].join(" "))js",
       R"js(12 3.5 true false -7 0)js"},
  });
}

TEST(NSStringTest, IsAPath) {
  expectResults({
      {R"js(["/a//b/".stringByDeletingLastPathComponent(), "a".stringByAppendingPathComponent("b"), "/a/b.tar.gz".stringByDeletingPathExtension(), "~/x".stringByExpandingTildeInPath() != "~/x", "/a/b".pathComponents(), "x".stringByAppendingPathExtension("png"), "/".lastPathComponent()].join(" "))js",
       R"js(/a a/b /a/b.tar true /,a,b x.png /)js"},
      {R"js("a b&ü".stringByAddingPercentEncodingWithAllowedCharacters(NSCharacterSet.URLQueryAllowedCharacterSet()) + "a%20b".stringByRemovingPercentEncoding())js",
       R"js(a%20b&%C3%BCa b)js"},
  });
}

TEST(NSStringTest, Formats) {
  expectResults({
      {R"js([NSString stringWithFormat:@"%5.1f|%-5d|%+d|%e|%g|%c|%o|%X|%3$@", 3.14159, 42, 7, 12345.678, 0.0001, 65, 8, 255])js",
       R"js(  3.1|42   |+7|1.234568e+04|0.0001|A|10|FF|7)js"},
  });
}

TEST(NSStringTest, HasAMutableKin) {
  expectResults({
      {R"js(var s = [[NSMutableString alloc] initWithString:@"abc"];
       [s insertString:@"X" atIndex:1];
       [s deleteCharactersInRange:NSMakeRange(0,1)];
       [s replaceOccurrencesOfString:@"c" withString:@"d" options:0 range:NSMakeRange(0, [s length])];
       return s + s.uppercaseString() + s.hasPrefix("X") + [s isKindOfClass:NSString] + JSON.stringify({s});)js",
       R"js(XbdXBDtruetrue{"s":"Xbd"})js"},
  });
}

}  // namespace
}  // namespace kelvar
