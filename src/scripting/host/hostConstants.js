// Constants of alerts, panels and the other classes here.
(function (prelude) {
  'use strict';

  prelude.defineConstants({
    NSAlertFirstButtonReturn: 1000, NSAlertSecondButtonReturn: 1001,
    NSAlertThirdButtonReturn: 1002,
    NSAlertDefaultReturn: 1, NSAlertAlternateReturn: 0, NSAlertOtherReturn: -1,
    NSAlertErrorReturn: -2,
    NSWarningAlertStyle: 0, NSInformationalAlertStyle: 1, NSCriticalAlertStyle: 2,
    NSAlertStyleWarning: 0, NSAlertStyleInformational: 1, NSAlertStyleCritical: 2,
    NSOKButton: 1, NSCancelButton: 0, NSModalResponseOK: 1, NSModalResponseCancel: 0,
    NSModalResponseStop: -1000, NSModalResponseAbort: -1001, NSModalResponseContinue: -1002,
    NSFileHandlingPanelOKButton: 1, NSFileHandlingPanelCancelButton: 0,
    NSPasteboardTypeString: 'public.utf8-plain-text', NSStringPboardType: 'NSStringPboardType',
    NSPasteboardTypePNG: 'public.png', NSPasteboardTypeHTML: 'public.html',
    NSPasteboardTypeURL: 'public.url',
    NSTaskTerminationReasonExit: 1, NSTaskTerminationReasonUncaughtSignal: 2,
    NSItalicFontMask: 1, NSBoldFontMask: 2,
    NSFontAttributeName: 'NSFont', NSForegroundColorAttributeName: 'NSColor',
    NSKernAttributeName: 'NSKern', NSParagraphStyleAttributeName: 'NSParagraphStyle',
    NSUnderlineStyleAttributeName: 'NSUnderline', NSBaselineOffsetAttributeName: 'NSBaselineOffset',
    NSStrikethroughStyleAttributeName: 'NSStrikethrough',
    NSTextAlignmentJustified: 3, NSTextAlignmentNatural: 4,
    NSLineBreakByWordWrapping: 0, NSLineBreakByCharWrapping: 1, NSLineBreakByClipping: 2,
    NSLineBreakByTruncatingHead: 3, NSLineBreakByTruncatingTail: 4,
    NSLineBreakByTruncatingMiddle: 5,
    NSCalibratedRGBColorSpace: 'NSCalibratedRGBColorSpace',
    NSDeviceRGBColorSpace: 'NSDeviceRGBColorSpace',
    NSRunLoopCommonModes: 'kCFRunLoopCommonModes', NSDefaultRunLoopMode: 'kCFRunLoopDefaultMode',
  });

  prelude.defineFunctions({
    NSRunAlertPanel: (title, format, ...rest) => prelude.classNamed('NSAlert')
        .alertWithMessageText_defaultButton_alternateButton_otherButton_informativeTextWithFormat_(
            title, ...rest.slice(0, 3), format, ...rest.slice(3)).runModal(),
  });
})
