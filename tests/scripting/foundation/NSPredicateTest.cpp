#include "scripting/foundation/Results.h"

namespace kelvar {
namespace {

TEST(NSPredicateTest, ReadsFormats) {
  expectResults({
      {R"js([[{name:"a", n:1},{name:"b", n:2}] filteredArrayUsingPredicate:[NSPredicate predicateWithFormat:@"name == %@", "b"]][0].n)js",
       R"js(2)js"},
      {R"js([{name:"Ab", n:1},{name:"b", n:2}].filteredArrayUsingPredicate(NSPredicate.predicateWithFormat("name CONTAINS[cd] 'a' OR (n > 1 AND NOT name BEGINSWITH 'x')")).count())js",
       R"js(2)js"},
      {R"js(NSPredicate.predicateWithFormat("SELF IN %@", ["a"]).evaluateWithObject("a"))js",
       R"js(true)js"},
      {R"js(NSPredicate.predicateWithFormat("(className == 'NSString') && (length > %d)", 2).evaluateWithObject("abc"))js",
       R"js(true)js"},
      {R"js(NSPredicate.predicateWithFormat("name ==").evaluateWithObject({}))js",
       R"js(threw NSInvalidArgumentException: the predicate format "name ==" is not valid: the end was not expected)js"},
      {R"js(NSPredicate.predicateWithFormat("n BETWEEN {1, 3}").evaluateWithObject({n:3}))js",
       R"js(true)js"},
      {R"js(NSPredicate.predicateWithFormat("name LIKE[c] 'A*'").evaluateWithObject({name:"abc"}))js",
       R"js(true)js"},
      {R"js(NSPredicate.predicateWithFormat("ANY tags == 'x'").evaluateWithObject({tags:["y","x"]}))js",
       R"js(true)js"},
  });
}

}  // namespace
}  // namespace kelvar
