#include "scripting/foundation/Results.h"

namespace kelvar {
namespace {

TEST(NSObjectTest, KnowsClasses) {
  expectResults({
      {R"js([NSClassFromString("NSString") === NSString, [NSString class] === NSString, NSStringFromClass([@"" class]), [[NSMutableArray class] superclass] === NSArray, [NSMutableArray isSubclassOfClass:NSArray], "x" instanceof NSString, [] instanceof NSArray, ({}) instanceof NSDictionary].join(" "))js",
       R"js(true true NSString true true true true true)js"},
      {R"js([[1,2] performSelector:@selector(count)] + " " + [@"a" performSelector:@selector(stringByAppendingString:) withObject:@"b"] + [@"a" respondsToSelector:@selector(length)] + "a".respondsToSelector("hasPrefix:"))js",
       R"js(2 abtruetrue)js"},
  });
}

TEST(NSObjectTest, NamesUnknownSelectors) {
  expectResults({
      {R"js(NSString.fooBar())js",
       R"js(threw NSInvalidArgumentException: the class NSString has no selector fooBar; the nearest is string)js"},
      {R"js(NSString.alloc().initWithFoo(1))js",
       R"js(threw NSInvalidArgumentException: NSString.alloc() has no selector initWithFoo; the nearest is initWithFormat)js"},
  });
}

TEST(NSObjectTest, AnswersByKey) {
  expectResults({
      {R"js([[{a:{b:1}},{a:{b:5}}] valueForKeyPath:"@max.a.b"] + " " + [{a:{b:1}}].valueForKeyPath("a.b") + [[1,2] valueForKeyPath:"@count"])js",
       R"js(5 12)js"},
      {R"js(var d = NSMutableDictionary.dictionary();
       d.setValue_forKey_("v", "k");
       [d setObject:{} forKey:"s"];
       [d setValue:3 forKeyPath:"s.t"];
       return JSON.stringify(d);)js",
       R"js({"k":"v","s":{"t":3}})js"},
      {R"js(var r = KVRectMake(1,2,3,4);
       return [r valueForKey:"width"] + [[r, r] valueForKey:@"x"];)js",
       R"js(31,1)js"},
  });
}

}  // namespace
}  // namespace kelvar
