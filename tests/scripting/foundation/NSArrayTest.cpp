#include "scripting/foundation/Results.h"

namespace kelvar {
namespace {

TEST(NSArrayTest, Sorts) {
  expectResults({
      {R"js([{n:2},{n:1},{n:3}].sortedArrayUsingDescriptors([NSSortDescriptor.sortDescriptorWithKey_ascending("n", false)]).map(e => e.n))js",
       R"js(3,2,1)js"},
      {R"js([["b","A","c"] sortedArrayUsingSelector:@selector(caseInsensitiveCompare:)])js",
       R"js(A,b,c)js"},
      {R"js([["10","9","2"] sortedArrayUsingSelector:"localizedStandardCompare:"])js",
       R"js(2,9,10)js"},
  });
}

TEST(NSArrayTest, StepsThroughElements) {
  expectResults({
      {R"js(var e = [["a","b"] objectEnumerator], o, r = "";
       while (o = [e nextObject]) r += o;
       return r;)js",
       R"js(ab)js"},
      {R"js(var r = "";
       [["a","b","c"] enumerateObjectsUsingBlock:function(o, i, stop) { r += o + i;
       if (i == 1) stop.value = true;
       }];
       return r;)js",
       R"js(a0b1)js"},
      {R"js(var i = [NSMutableIndexSet indexSetWithIndex:2];
       [i addIndex:0];
       return [["a","b","c"] objectsAtIndexes:i] + i.count();)js",
       R"js(a,c2)js"},
  });
}

TEST(NSArrayTest, RefusesNil) {
  expectResults({
      {R"js([[NSMutableArray array] addObject:nil])js",
       R"js(threw NSInvalidArgumentException: addObject: takes an object, not nil)js"},
  });
}

TEST(NSArrayTest, EndsComparingWhatContainsItself) {
  expectResults({
      {R"js(var a = [];
       a.push(a);
       return a.isEqual([[[1]]]) + " " + (a.description().length() > 10);)js",
       R"js(false true)js"},
      {R"js(var a = [], b = [];
       a.push(a);
       b.push(b);
       return a.isEqual(b);)js",
       R"js(threw NSInvalidArgumentException: the lists or dictionaries are nested too deeply to compare)js"},
  });
}

TEST(NSArrayTest, Copies) {
  expectResults({
      {R"js(var a = [1], b = [a mutableCopy];
       b.push(2);
       var s = "x".mutableCopy();
       s.appendString("y");
       return a.length + " " + b.length + s;)js",
       R"js(1 2xy)js"},
  });
}

}  // namespace
}  // namespace kelvar
