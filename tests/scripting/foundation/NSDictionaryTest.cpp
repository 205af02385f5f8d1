#include "scripting/foundation/Results.h"

namespace kelvar {
namespace {

TEST(NSDictionaryTest, StepsThroughKeys) {
  expectResults({
      {R"js(var d = NSDictionary.dictionaryWithObjectsAndKeys("x","k","y","l",nil);
       var e = d.keyEnumerator(), k, r = "";
       while ((k = e.nextObject())) r += k + d.objectForKey(k);
       return r;)js",
       R"js(kxly)js"},
  });
}

TEST(NSDictionaryTest, RefusesOtherKeys) {
  expectResults({
      {R"js(var d = NSMutableDictionary.dictionary(); return d.setObject_forKey_(1, Symbol("x"));)js",
       R"js(threw NSInvalidArgumentException: setObject:forKey: takes a string as a key, not a symbol)js"},
  });
}

TEST(NSDictionaryTest, HidesItsOperationsFromLoops) {
  expectResults({
      {R"js(var r = [];
       for (var k in {a:1}) r.push(k);
       for (var k in [5]) r.push(k);
       for (var k in NSDictionary.dictionaryWithObject_forKey(1,"z")) r.push(k);
       for (var k in "s") r.push(k);
       return r.join();)js",
       R"js(a,0,z,0)js"},
  });
}

}  // namespace
}  // namespace kelvar
