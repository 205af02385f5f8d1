#include "scripting/foundation/Results.h"

namespace kelvar {
namespace {

TEST(FoundationTest, KeepsNumbersSetsAndBytes) {
  expectResults({
      {R"js([[NSNumber numberWithInt:3.7] intValue] + [NSNumber numberWithFloat:1.5].stringValue() + [[NSNumber numberWithBool:true] boolValue])js",
       R"js(31.5true)js"},
      {R"js([5 compare:3] + " " + [5 isEqualToNumber:5] + [5 isKindOfClass:NSNumber])js",
       R"js(1 truetrue)js"},
      {R"js(var s = [NSMutableSet setWithArray:["a","b","a"]];
       [s addObject:@"c"];
       return [s count] + " " + [s containsObject:@"b"] + s.allObjects();)js",
       R"js(3 truea,b,c)js"},
      {R"js(var s = [NSCountedSet setWithArray:["a", "b", "a", [1], [1]]];
       [s removeObject:"b"];
       return [s count] + " " + [s countForObject:"a"] + [s countForObject:[1]] + [s countForObject:"b"] + " " + s.allObjects().count();)js",
       R"js(2 220 2)js"},
      {R"js(var s = [NSMutableOrderedSet orderedSetWithArray:["b", "a", "b"]];
       [s addObject:"a"];
       [s addObject:"c"];
       return [s array].join("") + [s count] + [s indexOfObject:"c"] + [s objectAtIndex:0] + [s isEqual:[NSOrderedSet orderedSetWithArray:["b", "a", "c"]]];)js",
       R"js(bac32btrue)js"},
      {R"js(var d = [@"hi" dataUsingEncoding:NSUTF8StringEncoding];
       return [d length] + d.length() + [d base64EncodedStringWithOptions:0] + NSString.alloc().initWithData_encoding_(NSData.alloc().initWithBase64EncodedString_options_("aGk=", 0), 4);)js",
       R"js(4aGk=hi)js"},
      {R"js(var a = [NSMutableArray array];
       [a addObject:[NSNull null]];
       return [a objectAtIndex:0] == NSNull.null() && [[a firstObject] isKindOfClass:NSNull] && a.containsObject(NSNull.null());)js",
       R"js(true)js"},
      {R"js(/^[0-9A-F-]{36}$/.test([[NSUUID UUID] UUIDString]))js", R"js(true)js"},
      {R"js(var p = MOPointer.alloc().init();
       var s = NSScanner.scannerWithString("#ff8000");
       s.scanString_intoString("#", nil);
       s.scanHexInt(p);
       return p.value();)js",
       R"js(16744448)js"},
      {R"js(var got = "";
       var o = {hear_: n => got += n.name() + n.userInfo().a};
       [[NSNotificationCenter defaultCenter] addObserver:o selector:@selector(hear:) name:@"N" object:nil];
       [[NSNotificationCenter defaultCenter] postNotificationName:@"N" object:nil userInfo:{a:1}];
       return got;)js",
       R"js(N1)js"},
  });
}

TEST(FoundationTest, ComputesWithRectangles) {
  expectResults({
      {R"js([CGRectContainsPoint(CGRectMake(0,0,10,10), CGPointMake(5,5)), NSStringFromRect(CGRectIntersection(CGRectMake(0,0,10,10), CGRectMake(5,5,10,10))), NSStringFromRect(CGRectUnion(CGRectMake(0,0,1,1), CGRectMake(5,5,1,1))), NSStringFromRect(CGRectInset(CGRectMake(0,0,10,10), 2, 3)), CGRectEqualToRect(CGRectZero, NSMakeRect(0,0,0,0)), CGRectIsNull(CGRectNull), NSStringFromSize(CGSizeMake(1,2)), NSStringFromRange(NSMakeRange(1,2)), NSMaxX(CGRectMake(1,0,2,0)), NSRectFromString("{{1,2},{3,4}}").size.height].join(" "))js",
       R"js(true {{5, 5}, {5, 5}} {{0, 0}, {6, 6}} {{2, 3}, {6, 4}} true true {1, 2} {1, 2} 3 4)js"},
      {R"js(var r = CGRectMake(0,0,1,1);
       r.origin.x = 5;
       r.size.width = 9;
       return NSStringFromRect(r) + CGRectZero.origin.x;)js",
       R"js({{5, 0}, {9, 1}}0)js"},
  });
}

}  // namespace
}  // namespace kelvar
