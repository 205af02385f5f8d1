#include "scripting/foundation/Results.h"

namespace kelvar {
namespace {

TEST(NSExceptionTest, HasNameAndReason) {
  expectResults({
      {R"js(try { [NSException raise:@"Foo" format:@"bar %d", 3];
       } catch (e) { return e.name() + e.reason() + [e name];
       })js",
       R"js(Foobar 3Foo)js"},
      {R"js(try { null.x } catch (e) { return typeof e.reason() + e.name;
       })js",
       R"js(stringTypeError)js"},
      {R"js(var e = [NSError errorWithDomain:@"d" code:3 userInfo:{NSLocalizedDescription: "oops"}];
       return e.localizedDescription() + e.code() + e;)js",
       R"js(oops3Error Domain=d Code=3 "oops")js"},
  });
}

}  // namespace
}  // namespace kelvar
