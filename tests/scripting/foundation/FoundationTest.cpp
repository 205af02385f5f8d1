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

TEST(FoundationTest, CountsDates) {
  expectResults({
      {R"js(
var c = NSCalendar.currentCalendar(), p = NSDateComponents.new();
c.timeZone = NSTimeZone.timeZoneForSecondsFromGMT(3600);
p.year = 2020; p.month = 1; p.day = 31; p.setHour(13);
var d = c.dateFromComponents(p), one = NSDateComponents.new();
one.month = 1;
var next = c.dateByAddingComponents_toDate_options(one, d, 0);
var back = c.components_fromDate(NSCalendarUnitMonth | NSCalendarUnitDay | 32, next);
var apart = c.components_fromDate_toDate_options(NSCalendarUnitDay | 32, d, next, 0);
return [d.toISOString(), back.month(), back.day(), back.hour(), back.year() === NSNotFound,
        apart.day(), c.component_fromDate(NSCalendarUnitWeekday, d),
        c.startOfDayForDate(d).toISOString()].join(' '))js",
       "2020-01-31T12:00:00.000Z 2 29 13 true 29 6 2020-01-30T23:00:00.000Z"},
      {"NSISO8601DateFormatter.new().stringFromDate(NSISO8601DateFormatter.new()"
       ".dateFromString('2020-02-03T04:05:06+0100'))",
       "2020-02-03T03:05:06Z"},
      {"NSISO8601DateFormatter.new().dateFromString('3.2.2020')", "null"},
      {R"js(
var c = NSCalendar.currentCalendar(), p = NSDateComponents.new();
c.timeZone = NSTimeZone.timeZoneForSecondsFromGMT(0);
p.hour = 5;
var early = c.dateFromComponents(p);
p.year = 96; p.month = 1; p.day = 31; p.hour = 0;
var month = NSDateComponents.new(); month.month = 1;
return [early, c.dateByAddingComponents_toDate_options(month, c.dateFromComponents(p), 0),
        c.dateByAddingUnit_value_toDate_options(NSCalendarUnitQuarter, 1, early, 0)]
    .map(d => d.toISOString()).join(' '))js",
       "0001-01-01T05:00:00.000Z 0096-02-29T00:00:00.000Z 0001-04-01T05:00:00.000Z"},
      {"NSCalendar.currentCalendar().dateByAddingUnit_value_toDate_options("
       "NSCalendarUnitWeekday, 1, NSDate.date(), 0)",
       "threw NSInvalidArgumentException: dateByAddingUnit:value:toDate:options: takes a unit up "
       "to "
       "years, not 512"},
  });
}

TEST(FoundationTest, WritesNumbersByPattern) {
  expectResults({
      {"var f = NSNumberFormatter.new(); f.setFormat('#,##0.00'); return "
       "f.stringFromNumber(1234.5)",
       "1,234.50"},
      {"var f = NSNumberFormatter.new(); f.positiveFormat = '0.0# px'; return "
       "f.stringFromNumber(3)",
       "3.0 px"},
      {"var f = NSNumberFormatter.new(); f.positiveFormat = '0%'; return "
       "f.stringFromNumber(-0.256)",
       "-26%"},
      {"var f = NSNumberFormatter.new(); f.numberStyle = 1; f.decimalSeparator = ',';"
       "f.groupingSeparator = '.'; return f.stringFromNumber(1234.5) + ' ' +"
       "f.numberFromString('1.234,5')",
       "1.234,5 1234.5"},
      {"var f = NSNumberFormatter.new(); f.numberStyle = 2; f.currencySymbol = '€';"
       "return f.stringFromNumber(-2)",
       "-€2.00"},
  });
}

TEST(FoundationTest, ReadsNumbersAsItWritesThem) {
  expectResults({
      {"var f = NSNumberFormatter.new(); f.setDecimalSeparator(',');"
       "return f.numberFromString('1,5') + ' ' + f.numberFromString('1.5')",
       "1.5 null"},
      {"return ['en_US', 'de_DE', 'fr_FR', 'de_CH'].map(name => { var f = NSNumberFormatter.new();"
       "f.locale = NSLocale.localeWithLocaleIdentifier(name); return [1, 2, 3].map(style => {"
       "f.numberStyle = style; f.currencyCode = 'EUR'; f.maximumFractionDigits = 2;"
       "return f.numberFromString(f.stringFromNumber(-1234567.25)); }); }).join(' ')",
       "-1234567.25,-1234567.25,-1234567.25 -1234567.25,-1234567.25,-1234567.25 "
       "-1234567.25,-1234567.25,-1234567.25 -1234567.25,-1234567.25,-1234567.25"},
      {"var f = NSNumberFormatter.new(); f.minimumFractionDigits = 400; f.minimumIntegerDigits = "
       "-3; return f.stringFromNumber(0.5)",
       "0.50000000000000000000"},
      {"NSNumberFormatter.new().setLocale('de_DE')",
       "threw NSInvalidArgumentException: locale takes an NSLocale, not a string"},
      {"NSNumberFormatter.new().setLocale(NSLocale.localeWithLocaleIdentifier('no such'))",
       "threw NSInvalidArgumentException: there is no locale \"no such\""},
  });
}

TEST(FoundationTest, KeepsURLsEncoded) {
  expectResults({
      {"return ['https://u:p@h/a%2Fb', 'http://[::1]:8080/a?b[]=1#c%20d', 'mailto:a@b.c', '//h',"
       " 'https://:p@h?', 'a%zz'].filter("
       "text => NSURLComponents.componentsWithString(text).string() !== text).join()",
       ""},
      {"var c = NSURLComponents.componentsWithString('https://u%3A:p%40@[::1]/a%2Fb');"
       "return [c.user(), c.password(), c.host(), c.port(), c.path()].join(' ')",
       "u: p@ [::1]  /a/b"},
      {"var c = NSURLComponents.componentsWithString('https://h'); c.setQuery('a#b?%20');"
       "c.path = '/a?b'; c.password = 'p:@'; c.fragment = 'ü'; return c.string() + c.query()",
       "https://:p%3A%40@h/a%3Fb?a%23b?%2520#%C3%BCa#b?%20"},
      {"var c = NSURLComponents.componentsWithString('https://h'); c.path = 'a';"
       "return String(c.string()) + c.URL()",
       "nullnull"},
      {"NSURLComponents.new().setPath('/' + String.fromCharCode(0xd800))",
       "threw NSInvalidArgumentException: path takes text that is valid Unicode"},
      {"NSURLComponents.new().setQueryItems(['a'])",
       "threw NSInvalidArgumentException: setQueryItems: takes a list of NSURLQueryItem, not of a "
       "string"},
      {"NSURLComponents.new().setPercentEncodedQuery('a b')",
       "threw NSInvalidArgumentException: \"a b\" is no percent-encoded query"},
      {"NSURLComponents.new().setPort(-1)",
       "threw NSInvalidArgumentException: port takes a whole number up to 65535, not -1"},
  });
}

TEST(FoundationTest, TakesURLsApart) {
  expectResults({
      {"var c = NSURLComponents.componentsWithString('https://u@a.com:81/p%20q?x=1&y=a%26b#f');"
       "return [c.scheme(), c.user(), c.host(), c.port(), c.path(), c.fragment(),"
       "c.queryItems().map(i => i.name() + i.value())].join(' ')",
       "https u a.com 81 /p q f x1,ya&b"},
      {"var c = NSURLComponents.new(); c.scheme = 'https'; c.setHost('a.com'); c.path = '/a b';"
       "c.queryItems = [NSURLQueryItem.queryItemWithName_value('q', 'a&b c')];"
       "return c.URL().absoluteString()",
       "https://a.com/a%20b?q=a%26b%20c"},
      {"NSURLComponents.componentsWithString('a b')", "null"},
      {"var r = NSMutableURLRequest.requestWithURL(NSURL.URLWithString('https://a.com'));"
       "r.setHTTPMethod('post'); r.setValue_forHTTPHeaderField('b', 'A'); r.HTTPBody();"
       "r.setHTTPBody('x'.dataUsingEncoding(4)); r.addValue_forHTTPHeaderField('c', 'a');"
       "return [r.HTTPMethod(), JSON.stringify(r.allHTTPHeaderFields()), r.HTTPBody().length(),"
       "r.URL().host(), r.isKindOfClass(NSURLRequest)].join(' ')",
       R"js(POST {"a":"b, c"} 1 a.com true)js"},
      {"NSMutableURLRequest.requestWithURL(nil).setValue_forHTTPHeaderField('b\\r\\nX: y', 'a')",
       "threw Error: the value of the header a has a control character"},
      {"NSMutableURLRequest.requestWithURL(nil).addValue_forHTTPHeaderField('b', 'a: x')",
       "threw Error: \"a: x\" cannot be the name of a header"},
      {"var r = NSMutableURLRequest.requestWithURL(nil); r.setValue_forHTTPHeaderField('é', 'a');"
       "try { r.setAllHTTPHeaderFields({b: 'c', d: 'e\\n'}); } catch {}"
       "return JSON.stringify(r.allHTTPHeaderFields())",
       R"js({"a":"é"})js"},
      {"var r = [[NSMutableURLRequest alloc] init]; [r setURL:NSURL.URLWithString('https://b.c')];"
       "return r.URL().host() + r.HTTPMethod()",
       "b.cGET"},
      {"NSMutableURLRequest.requestWithURL(nil).setHTTPMethod('PUT')",
       "threw Error: the method PUT is not supported, only GET and POST"},
  });
}

TEST(FoundationTest, TransformsPoints) {
  expectResults({
      {"var t = CGAffineTransformRotate(CGAffineTransformMakeTranslation(10, 0), Math.PI / 2);"
       "var p = CGPointApplyAffineTransform(CGPointMake(2, 0), t);"
       "return [Math.round(p.x), Math.round(p.y)]",
       "10,2"},
      {"CGRectApplyAffineTransform(CGRectMake(1, 1, 2, 2), CGAffineTransformMakeScale(-2, 3))",
       "{{-6, 3}, {4, 6}}"},
      {"CGAffineTransformIsIdentity(CGAffineTransformConcat(CGAffineTransformMakeScale(2, 4),"
       "CGAffineTransformInvert(CGAffineTransformMakeScale(2, 4))))",
       "true"},
      {"CGPointApplyAffineTransform(CGPointMake(1, 0), nil)",
       "threw NSInvalidArgumentException: CGPointApplyAffineTransform takes a transform, not nil"},
  });
}

TEST(FoundationTest, ReadsAndWritesOpenFiles) {
  expectResults({
      {R"js(
var path = NSTemporaryDirectory() + NSUUID.UUID().UUIDString();
'abc'.writeToFile_atomically_encoding_error(path, true, 4, nil);
var f = NSFileHandle.fileHandleForUpdatingAtPath(path);
f.seekToEndOfFile(); f.writeData('de'.dataUsingEncoding(4));
f.seekToFileOffset(1); f.writeData('X'.dataUsingEncoding(4));
var rest = NSString.alloc().initWithData_encoding(f.readDataToEndOfFile(), 4);
f.truncateFileAtOffset(4); f.closeFile();
var size = NSFileManager.defaultManager().attributesOfItemAtPath_error(path, nil).fileSize();
var text = NSString.stringWithContentsOfFile_encoding_error(path, 4, nil);
NSFileManager.defaultManager().removeItemAtPath_error(path, nil);
return [rest, text, size, NSFileHandle.fileHandleForReadingAtPath(path)].join(' '))js",
       "cde aXcd 4 "},
      {R"js(
var path = NSTemporaryDirectory() + NSUUID.UUID().UUIDString();
'abc'.writeToFile_atomically_encoding_error(path, true, 4, nil);
var said = [], bytes = 'x'.dataUsingEncoding(4), open = kind => NSFileHandle[`fileHandleFor${kind}AtPath`](path);
var fails = work => { try { work(); said.push('did not fail'); } catch (e) { said.push(e.reason()); } };
fails(() => open('Reading').writeData(bytes));
fails(() => open('Reading').truncateFileAtOffset(0));
fails(() => open('Writing').readDataToEndOfFile());
for (const offset of [-1, 1.5, NaN, 2 ** 30]) fails(() => open('Updating').seekToFileOffset(offset));
fails(() => open('Updating').truncateFileAtOffset(2 ** 30));
var closed = open('Updating'); closed.closeFile();
fails(() => closed.writeData(bytes));
fails(() => NSPipe.pipe().fileHandleForReading().writeData(bytes));
said.push(NSString.stringWithContentsOfFile_encoding_error(path, 4, nil));
// A file that can no longer be read is not taken for an empty one.
var gone = open('Updating');
NSFileManager.defaultManager().removeItemAtPath_error(path, nil);
try { gone.writeData(bytes); } catch (e) { said.push(e.name(), NSFileManager.defaultManager().fileExistsAtPath(path)); }
return said.join('|'))js",
       "writeData: the file is not open for writing|"
       "truncateFileAtOffset: the file is not open for writing|"
       "readDataToEndOfFile: the file is not open for reading|"
       "seekToFileOffset: takes a whole number from 0 to 536870912, not -1|"
       "seekToFileOffset: takes a whole number from 0 to 536870912, not 1.5|"
       "seekToFileOffset: takes a whole number from 0 to 536870912, not NaN|"
       "seekToFileOffset: takes a whole number from 0 to 536870912, not 1073741824|"
       "truncateFileAtOffset: takes a whole number from 0 to 536870912, not 1073741824|"
       "writeData: the file is closed|writeData: the file is not open for writing|abc|"
       "NSFileHandleOperationException|false"},
      {R"js(
var folder = NSTemporaryDirectory() + NSUUID.UUID().UUIDString(), fm = NSFileManager.defaultManager();
fm.createDirectoryAtPath_withIntermediateDirectories_attributes_error(
    folder + '/Contents/Resources', true, nil, nil);
(@{CFBundleIdentifier: 'com.example.b'}).writeToFile_atomically(folder + '/Contents/Info.plist', true);
'x'.writeToFile_atomically_encoding_error(folder + '/Contents/Resources/a.txt', true, 4, nil);
var b = NSBundle.bundleWithPath(folder + '/');
var found = [b.bundleIdentifier(), b.pathForResource_ofType('a', 'txt') === b.resourcePath() + '/a.txt',
             b.URLForResource_withExtension('b', 'txt'), NSBundle.bundleWithPath(folder + '/no')];
fm.removeItemAtPath_error(folder, nil);
return found.join(' '))js",
       "com.example.b true  "},
  });
}

}  // namespace
}  // namespace kelvar
