#include "scripting/foundation/Results.h"

namespace kelvar {
namespace {

TEST(NSJSONSerializationTest, WritesAndReads) {
  expectResults({
      {R"js(var d = [NSJSONSerialization dataWithJSONObject:{b:1,a:[true,nil]} options:0 error:nil];
       return [[NSString alloc] initWithData:d encoding:NSUTF8StringEncoding];)js",
       R"js({"b":1,"a":[true,null]})js"},
      {R"js(var p = MOPointer.alloc().init();
       var r = [NSJSONSerialization JSONObjectWithData:[@"{bad" dataUsingEncoding:4] options:0 error:p];
       return r + " " + (p.value().localizedDescription().length() > 5) + p.value().code();)js",
       R"js(null true3840)js"},
      {R"js(NSJSONSerialization.JSONObjectWithData_options_error_([@'{"a":{"b":[1]}}' dataUsingEncoding:NSUTF8StringEncoding], 0, nil).objectForKey("a").allKeys())js",
       R"js(b)js"},
  });
}

}  // namespace
}  // namespace kelvar
