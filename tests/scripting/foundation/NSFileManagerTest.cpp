#include "scripting/foundation/Results.h"

namespace kelvar {
namespace {

TEST(NSFileManagerTest, ChangesFilesAndFolders) {
  expectResults({
      {R"js(var fm = NSFileManager.defaultManager();
       var p = NSTemporaryDirectory() + "kelvar-" + [[NSUUID UUID] UUIDString];
       fm.removeItemAtPath_error_(p, nil);
       var ok = fm.createDirectoryAtPath_withIntermediateDirectories_attributes_error_(p + "/x/y", true, nil, nil);
       [@"häl" writeToFile:p + "/x/a.txt" atomically:true encoding:NSUTF8StringEncoding error:nil];
       var s = [NSString stringWithContentsOfFile:p+"/x/a.txt" encoding:4 error:nil];
       var d = MOPointer.alloc().init();
       var e = [fm fileExistsAtPath:p+"/x" isDirectory:d];
       return [ok, s, e, d.value(), fm.contentsOfDirectoryAtPath_error_(p+"/x", nil), fm.copyItemAtPath_toPath_error_(p+"/x", p+"/z", nil), fm.fileExistsAtPath(p+"/z/a.txt"), fm.attributesOfItemAtPath_error(p+"/x/a.txt", nil).NSFileSize, fm.subpathsAtPath(p).count(), fm.removeItemAtPath_error(p, nil)].join(" ");)js",
       R"js(true häl true true a.txt,y true true 4 6 true)js"},
  });
}

TEST(NSFileManagerTest, StoresErrors) {
  expectResults({
      {R"js(var p = [MOPointer new];
       var r = [[NSFileManager defaultManager] contentsOfDirectoryAtPath:"/nope" error:p];
       return r + " " + p.value().code() + " " + p.value().domain();)js",
       R"js(null 260 NSCocoaErrorDomain)js"},
  });
}

}  // namespace
}  // namespace kelvar
