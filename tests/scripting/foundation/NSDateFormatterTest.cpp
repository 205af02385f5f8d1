#include "scripting/foundation/Results.h"

namespace kelvar {
namespace {

TEST(NSDateFormatterTest, WritesAndReads) {
  expectResults({
      {R"js(var f = NSDateFormatter.alloc().init();
       f.setTimeZone(NSTimeZone.timeZoneWithName("UTC"));
       f.dateFormat = "yyyy-MM-dd'T'HH:mm:ss.SSS zzz";
       return f.stringFromDate(NSDate.dateWithTimeIntervalSince1970(86400.5));)js",
       R"js(1970-01-02T00:00:00.500 GMT)js"},
      {R"js(var f = [[NSDateFormatter alloc] init];
       [f setDateFormat:@"EEE, d MMM yyyy h:mm a Z"];
       [f setTimeZone:[NSTimeZone timeZoneForSecondsFromGMT:7200]];
       var d = [f dateFromString:@"Fri, 2 Jan 1970 1:30 PM +0200"];
       return [d timeIntervalSince1970] + " " + [f stringFromDate:d];)js",
       R"js(127800 Fri, 2 Jan 1970 1:30 PM +0200)js"},
      {R"js([[NSDate dateWithTimeIntervalSince1970:0] description])js",
       R"js(1970-01-01 00:00:00 +0000)js"},
      {R"js(var z = NSTimeZone.timeZoneWithName("America/New_York");
       return z.secondsFromGMTForDate(NSDate.dateWithTimeIntervalSince1970(1720000000)) + z.name();)js",
       R"js(-14400America/New_York)js"},
  });
}

}  // namespace
}  // namespace kelvar
