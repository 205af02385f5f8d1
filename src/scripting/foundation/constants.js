// Constants and functions that every script may use by name.
(function (prelude) {
  'use strict';

  prelude.defineConstants({
    YES: true, NO: false, NULL: null, Nil: null,
    NSNotFound: 0x7fffffffffffffff,
    NSIntegerMax: 0x7fffffffffffffff, NSIntegerMin: -0x8000000000000000,
    NSUIntegerMax: 0xffffffffffffffff,
    CGFLOAT_MAX: Number.MAX_VALUE, CGFLOAT_MIN: 2.2250738585072014e-308,
    DBL_MAX: Number.MAX_VALUE, FLT_MAX: 3.4028234663852886e38, FLT_EPSILON: 2 ** -23,
    M_PI: Math.PI, M_PI_2: Math.PI / 2, M_PI_4: Math.PI / 4, M_E: Math.E,
    NSOrderedAscending: -1, NSOrderedSame: 0, NSOrderedDescending: 1,
    NSCaseInsensitiveSearch: 1, NSLiteralSearch: 2, NSBackwardsSearch: 4, NSAnchoredSearch: 8,
    NSNumericSearch: 64, NSDiacriticInsensitiveSearch: 128, NSRegularExpressionSearch: 1024,
    NSASCIIStringEncoding: 1, NSUTF8StringEncoding: 4, NSISOLatin1StringEncoding: 5,
    NSUnicodeStringEncoding: 10, NSUTF16StringEncoding: 10,
    NSMacOSRomanStringEncoding: 30, NSWindowsCP1252StringEncoding: 12,
    NSUTF16BigEndianStringEncoding: 0x90000100, NSUTF16LittleEndianStringEncoding: 0x94000100,
    NSGenericException: 'NSGenericException', NSRangeException: 'NSRangeException',
    NSInvalidArgumentException: 'NSInvalidArgumentException',
    NSInternalInconsistencyException: 'NSInternalInconsistencyException',
    NSCocoaErrorDomain: 'NSCocoaErrorDomain', NSPOSIXErrorDomain: 'NSPOSIXErrorDomain',
    NSURLErrorDomain: 'NSURLErrorDomain', NSLocalizedDescriptionKey: 'NSLocalizedDescription',
    NSLocalizedFailureReasonErrorKey: 'NSLocalizedFailureReason',
    NSUnderlyingErrorKey: 'NSUnderlyingError', NSFilePathErrorKey: 'NSFilePath',
    NSDataWritingAtomic: 1, NSEnumerationReverse: 2, NSEnumerationConcurrent: 1,
    NSJSONReadingMutableContainers: 1, NSJSONReadingMutableLeaves: 2,
    NSJSONReadingAllowFragments: 4, NSJSONWritingPrettyPrinted: 1, NSJSONWritingSortedKeys: 2,
    NSJSONWritingFragmentsAllowed: 4, NSJSONWritingWithoutEscapingSlashes: 8,
    NSRegularExpressionCaseInsensitive: 1, NSRegularExpressionAllowCommentsAndWhitespace: 2,
    NSRegularExpressionIgnoreMetacharacters: 4, NSRegularExpressionDotMatchesLineSeparators: 8,
    NSRegularExpressionAnchorsMatchLines: 16,
    NSDateFormatterNoStyle: 0, NSDateFormatterShortStyle: 1, NSDateFormatterMediumStyle: 2,
    NSDateFormatterLongStyle: 3, NSDateFormatterFullStyle: 4,
    NSNumberFormatterNoStyle: 0, NSNumberFormatterDecimalStyle: 1,
    NSNumberFormatterCurrencyStyle: 2, NSNumberFormatterPercentStyle: 3,
    NSLocaleLanguageCode: 'kCFLocaleLanguageCodeKey',
    NSLocaleCountryCode: 'kCFLocaleCountryCodeKey', NSLocaleIdentifier: 'kCFLocaleIdentifierKey',
    NSCalendarUnitYear: 4, NSCalendarUnitMonth: 8, NSCalendarUnitDay: 16,
    NSCalendarUnitHour: 32, NSCalendarUnitMinute: 64, NSCalendarUnitSecond: 128,
    NSCalendarUnitWeekday: 512, NSCalendarUnitQuarter: 2048,
    NSYearCalendarUnit: 4, NSMonthCalendarUnit: 8, NSDayCalendarUnit: 16, NSHourCalendarUnit: 32,
    NSMinuteCalendarUnit: 64, NSSecondCalendarUnit: 128, NSWeekdayCalendarUnit: 512,
    NSFileType: 'NSFileType', NSFileSize: 'NSFileSize',
    NSFileModificationDate: 'NSFileModificationDate', NSFileCreationDate: 'NSFileCreationDate',
    NSFilePosixPermissions: 'NSFilePosixPermissions',
    NSFileTypeDirectory: 'NSFileTypeDirectory', NSFileTypeRegular: 'NSFileTypeRegular',
    NSFileTypeSymbolicLink: 'NSFileTypeSymbolicLink',
    NSDocumentDirectory: 9, NSLibraryDirectory: 5, NSDesktopDirectory: 12, NSCachesDirectory: 13,
    NSApplicationSupportDirectory: 14, NSDownloadsDirectory: 15, NSPicturesDirectory: 19,
    NSApplicationDirectory: 1, NSUserDirectory: 7, NSUserDomainMask: 1, NSLocalDomainMask: 2,
    NSAllDomainsMask: 0xffff,
  });

  prelude.defineFunctions({
    NSClassFromString(name) {
      const text = prelude.takeString(name, 'NSClassFromString');
      const found = prelude.classNamed(text);
      if (found) return found;
      const global = Object.hasOwn(globalThis, text) ? globalThis[text] : null;
      return prelude.isClass(global) ? global : null;
    },
    NSStringFromClass: type => prelude.isClass(type) ? type.name() : null,
    NSSelectorFromString: name => prelude.takeString(name, 'NSSelectorFromString'),
    NSStringFromSelector: name => prelude.takeString(name, 'NSStringFromSelector'),
    NSLog: (format, ...values) => globalThis.log(prelude.format(String(format), values)),
    arc4random: () => Math.floor(Math.random() * 2 ** 32),
    arc4random_uniform: bound => Math.floor(Math.random() * bound),
  });
})
