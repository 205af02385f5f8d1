// Kelvar's classes for scripts, made from their descriptions; do not edit. Needs TypeScript 5.1.
// What is said to give an object, a string or a list may give nil as well.

// Scripts run in no browser, whose Event is another one.
/// <reference no-default-lib="true" />
/// <reference lib="es2022" />

interface NSPoint { x: number; y: number; }
interface NSSize { width: number; height: number; }
interface NSRect { origin: NSPoint; size: NSSize; }
interface CGImage {}
interface Array<T> {
  count(): number;
  objectAtIndex_(index: number): T;
  objectAtIndex(index: number): T;
  firstObject(): T | null;
  lastObject(): T | null;
  objectEnumerator(): { nextObject(): T | null };
  each(): any;
  shuffle(): T[];
}
interface String {
  MD5String(): string;
  base64String(): string;
}
interface Uint8Array { base64String(): string; }

/** What each class answers. */
interface KelvarClass {
  name(): string;
  class(): KelvarClass;
  [Symbol.hasInstance](value: any): boolean;
}
/** What each object answers. */
interface NSObject {
  class(): KelvarClass;
  className(): string;
  isKindOfClass_(class_: KelvarClass): boolean;
  isKindOfClass(class_: KelvarClass): boolean;
  respondsToSelector_(selector: string): boolean;
  respondsToSelector(selector: string): boolean;
}

/** What a command's function is called with. */
interface ScriptContext {
  document: SketchDocument | null;
  selection: SketchLayer[];
  command: PluginCommand | null;
  plugin: PluginBundle | null;
  scriptPath: string;
  arguments: string[];
}

declare const nil: null;
declare const context: ScriptContext;
interface Console { log(...values: any[]): void; }
declare var console: Console;
declare function log(...values: any[]): void;
declare function print(...values: any[]): void;
declare function setTimeout(call: Function, milliseconds?: number, ...values: any[]): number;
declare function setInterval(call: Function, milliseconds?: number, ...values: any[]): number;
declare function clearTimeout(timer: number): void;
declare function clearInterval(timer: number): void;

interface NSObject {
  description(): string;
  valueForKey_(key: string | null): any;
  valueForKey(key: string | null): any;
  valueForKeyPath_(path: string | null): any;
  valueForKeyPath(path: string | null): any;
  setValue_forKey_(value: any, key: string | null): boolean;
  setValue_forKey(value: any, key: string | null): boolean;
}

interface NSObjectAllocated {
  init(): NSObject;
}

declare const NSObject: KelvarClass & {
  alloc(): NSObjectAllocated;
  "new"(): NSObject;
};

interface KVPersister extends NSObject {
  setObject_forKey_(object: any, key: string | null): void;
  setObject_forKey(object: any, key: string | null): void;
  objectForKey_(key: string | null): any;
  objectForKey(key: string | null): any;
  removeObjectForKey_(key: string | null): void;
  removeObjectForKey(key: string | null): void;
}

interface KVPersisterAllocated {
  init(): KVPersister;
}

declare const KVPersister: KelvarClass & {
  alloc(): KVPersisterAllocated;
  "new"(): KVPersister;
};

interface Kelvar extends KVPersister {
  get tracker(): () => TrackerManager;
  set tracker(value: TrackerManager | null);
  get env(): () => string;
  set env(value: string | null);
  get pluginName(): () => string;
  set pluginName(value: string | null);
  get persister(): () => KVPersister;
  set persister(value: KVPersister | null);
  trackForEvent_properties_(event: string | null, properties: Record<string, any> | null): string;
  trackForEvent_properties(event: string | null, properties: Record<string, any> | null): string;
  loadServerNotification(): void;
  setTracker_(tracker: TrackerManager | null): void;
  setTracker(tracker: TrackerManager | null): void;
  setEnv_(env: string | null): void;
  setEnv(env: string | null): void;
  setPluginName_(name: string | null): void;
  setPluginName(name: string | null): void;
  setPersister_(persister: KVPersister | null): void;
  setPersister(persister: KVPersister | null): void;
}

interface KelvarAllocated {
  init(): Kelvar;
}

declare const Kelvar: KelvarClass & {
  alloc(): KelvarAllocated;
  "new"(): Kelvar;
};

interface KVVersionChecker extends NSObject {
  get identifier(): () => string;
  set identifier(value: string | null);
  get name(): () => string;
  set name(value: string | null);
  get finished(): () => boolean;
  set finished(value: boolean);
  get success(): () => boolean;
  set success(value: boolean);
  get error(): () => any;
  set error(value: any);
  get result(): () => any;
  set result(value: any);
  get isExpired(): () => boolean;
  set isExpired(value: boolean);
  get expiredMessage(): () => string;
  set expiredMessage(value: string | null);
  get actionTitle(): () => string;
  set actionTitle(value: string | null);
  get actionURL(): () => NSURL;
  set actionURL(value: NSURL | null);
  get lastCheck(): () => Date;
  set lastCheck(value: Date | null);
  get delegate(): () => KVVersionCheckerDelegate;
  set delegate(value: KVVersionCheckerDelegate | null);
  get persister(): () => KVPersister;
  set persister(value: KVPersister | null);
  persist(): void;
  start(): void;
  setIdentifier_(identifier: string | null): void;
  setIdentifier(identifier: string | null): void;
  setName_(name: string | null): void;
  setName(name: string | null): void;
  setFinished_(finished: boolean): void;
  setFinished(finished: boolean): void;
  setSuccess_(success: boolean): void;
  setSuccess(success: boolean): void;
  setError_(error: any): void;
  setError(error: any): void;
  setResult_(result: any): void;
  setResult(result: any): void;
  setIsExpired_(expired: boolean): void;
  setIsExpired(expired: boolean): void;
  setExpiredMessage_(message: string | null): void;
  setExpiredMessage(message: string | null): void;
  setActionTitle_(title: string | null): void;
  setActionTitle(title: string | null): void;
  setActionURL_(url: NSURL | null): void;
  setActionURL(url: NSURL | null): void;
  setLastCheck_(check: Date | null): void;
  setLastCheck(check: Date | null): void;
  setDelegate_(delegate: KVVersionCheckerDelegate | null): void;
  setDelegate(delegate: KVVersionCheckerDelegate | null): void;
  setPersister_(persister: KVPersister | null): void;
  setPersister(persister: KVPersister | null): void;
}

interface KVVersionCheckerAllocated {
  initWithIdentifier_name_(identifier: string | null, name: string | null): KVVersionChecker;
  initWithIdentifier_name(identifier: string | null, name: string | null): KVVersionChecker;
}

declare const KVVersionChecker: KelvarClass & {
  alloc(): KVVersionCheckerAllocated;
  checkerWithIdentifier_name_(identifier: string | null, name: string | null): KVVersionChecker;
  checkerWithIdentifier_name(identifier: string | null, name: string | null): KVVersionChecker;
};

interface KVRect extends NSObject {
  get x(): () => number;
  set x(value: number);
  get y(): () => number;
  set y(value: number);
  get width(): () => number;
  set width(value: number);
  get height(): () => number;
  set height(value: number);
  setX_(x: number): void;
  setX(x: number): void;
  setY_(y: number): void;
  setY(y: number): void;
  setWidth_(width: number): void;
  setWidth(width: number): void;
  setHeight_(height: number): void;
  setHeight(height: number): void;
  CGRect(): NSRect;
}

interface KVRectAllocated {
  init(): KVRect;
}

declare const KVRect: KelvarClass & {
  alloc(): KVRectAllocated;
  "new"(): KVRect;
};

interface KVBezierPath {
}

interface KVBezierPathAllocated {
}

declare const KVBezierPath: KelvarClass & {
  alloc(): KVBezierPathAllocated;
  pointsFromBezierPath_(path: NSBezierPath | null): string[];
  pointsFromBezierPath(path: NSBezierPath | null): string[];
  bezierPathWithPoints_(points: string[] | null): NSBezierPath;
  bezierPathWithPoints(points: string[] | null): NSBezierPath;
  edgesLengthPoint1_point2_(point1: NSPoint, point2: NSPoint): number;
  edgesLengthPoint1_point2(point1: NSPoint, point2: NSPoint): number;
  sumPoints_(points: string[] | null): number;
  sumPoints(points: string[] | null): number;
  bezierPathIsClockwise_(clockwise: NSBezierPath | null): boolean;
  bezierPathIsClockwise(clockwise: NSBezierPath | null): boolean;
  bezierPathReversed_(reversed: NSBezierPath | null): NSBezierPath;
  bezierPathReversed(reversed: NSBezierPath | null): NSBezierPath;
};

interface KVLayerIterator extends NSObject {
  extractPointsFromLayer_(layer: NSObject | null): string[];
  extractPointsFromLayer(layer: NSObject | null): string[];
}

interface KVLayerIteratorAllocated {
  init(): KVLayerIterator;
}

declare const KVLayerIterator: KelvarClass & {
  alloc(): KVLayerIteratorAllocated;
  "new"(): KVLayerIterator;
};

interface KVShape extends NSObject {
  get bounds(): () => KVRect;
  set bounds(value: KVRect | null);
  get path(): () => string[];
  set path(value: string[] | null);
  get scale(): () => number;
  set scale(value: number);
  setBounds_(bounds: KVRect | null): void;
  setBounds(bounds: KVRect | null): void;
  setPath_(path: string[] | null): void;
  setPath(path: string[] | null): void;
  setScale_(scale: number): void;
  setScale(scale: number): void;
  realSize(): NSSize;
  scaledSize(): NSSize;
  croppingRect(): KVRect;
  scaledCroppingRect(): KVRect;
  normalizedPoints(): string[];
}

interface KVShapeAllocated {
  init(): KVShape;
  initWithBounds_path_(bounds: KVRect | null, path: string[] | null): KVShape;
  initWithBounds_path(bounds: KVRect | null, path: string[] | null): KVShape;
}

declare const KVShape: KelvarClass & {
  alloc(): KVShapeAllocated;
  "new"(): KVShape;
  edgesLengthPoint1_point2_(point1: NSPoint, point2: NSPoint): number;
  edgesLengthPoint1_point2(point1: NSPoint, point2: NSPoint): number;
  sumPoints_(points: string[] | null): number;
  sumPoints(points: string[] | null): number;
  pointsAreClockwised_(clockwised: string[] | null): boolean;
  pointsAreClockwised(clockwised: string[] | null): boolean;
  reversedPoints_(points: string[] | null): string[];
  reversedPoints(points: string[] | null): string[];
};

interface KVImageTransform extends NSObject {
  get input(): () => NSImage;
  set input(value: NSImage | null);
  get scale(): () => number;
  set scale(value: number);
  get rotation(): () => number;
  set rotation(value: number);
  get flipped(): () => boolean;
  set flipped(value: boolean);
  get sampling(): () => string;
  set sampling(value: string | null);
  get extent(): () => NSSize;
  set extent(value: NSSize);
  get tl(): () => NSPoint;
  set tl(value: NSPoint);
  get tr(): () => NSPoint;
  set tr(value: NSPoint);
  get br(): () => NSPoint;
  set br(value: NSPoint);
  get bl(): () => NSPoint;
  set bl(value: NSPoint);
  setInput_(input: NSImage | null): void;
  setInput(input: NSImage | null): void;
  setScale_(scale: number): void;
  setScale(scale: number): void;
  setRotation_(rotation: number): void;
  setRotation(rotation: number): void;
  setFlipped_(flipped: boolean): void;
  setFlipped(flipped: boolean): void;
  setSampling_(sampling: string | null): void;
  setSampling(sampling: string | null): void;
  setExtent_(extent: NSSize): void;
  setExtent(extent: NSSize): void;
  setTl_(tl: NSPoint): void;
  setTl(tl: NSPoint): void;
  setTr_(tr: NSPoint): void;
  setTr(tr: NSPoint): void;
  setBr_(br: NSPoint): void;
  setBr(br: NSPoint): void;
  setBl_(bl: NSPoint): void;
  setBl(bl: NSPoint): void;
  points(): string[];
  createOutput(): NSImage;
  getCIImageFromNSImage_(image: NSImage | null): CGImage;
  getCIImageFromNSImage(image: NSImage | null): CGImage;
  getNSImage_(image: CGImage | null): NSImage;
  getNSImage(image: CGImage | null): NSImage;
}

interface KVImageTransformAllocated {
  init(): KVImageTransform;
}

declare const KVImageTransform: KelvarClass & {
  alloc(): KVImageTransformAllocated;
  "new"(): KVImageTransform;
};

interface KVImage {
}

interface KVImageAllocated {
}

declare const KVImage: KelvarClass & {
  alloc(): KVImageAllocated;
  getCGImage_(image: NSImage | null): CGImage;
  getCGImage(image: NSImage | null): CGImage;
  scaleImage_size_(image: NSImage | null, size: NSSize): NSImage;
  scaleImage_size(image: NSImage | null, size: NSSize): NSImage;
  fillImage_insideBounds_scale_shouldTrimTransparent_(image: NSImage | null, bounds: KVRect | null, scale: number, transparent: boolean): NSImage;
  fillImage_insideBounds_scale_shouldTrimTransparent(image: NSImage | null, bounds: KVRect | null, scale: number, transparent: boolean): NSImage;
  fillImage_insideBounds_scale_shouldTrimTransparent_shadow_(image: NSImage | null, bounds: KVRect | null, scale: number, transparent: boolean, shadow: NSSize): NSImage;
  fillImage_insideBounds_scale_shouldTrimTransparent_shadow(image: NSImage | null, bounds: KVRect | null, scale: number, transparent: boolean, shadow: NSSize): NSImage;
  cropImage_withBounds_(image: NSImage | null, bounds: KVRect | null): NSImage;
  cropImage_withBounds(image: NSImage | null, bounds: KVRect | null): NSImage;
};

interface KVViewController extends KVPersister {
  get persister(): () => KVPersister;
  set persister(value: KVPersister | null);
  get reuseIdentifier(): () => string;
  set reuseIdentifier(value: string | null);
  get imageQualityPopupButton(): () => NSView;
  set imageQualityPopupButton(value: NSView | null);
  get layerRotateButton(): () => NSView;
  set layerRotateButton(value: NSView | null);
  get layerFlipButton(): () => NSView;
  set layerFlipButton(value: NSView | null);
  get includeInArtboardButton(): () => NSView;
  set includeInArtboardButton(value: NSView | null);
  get imageView(): () => NSView;
  set imageView(value: NSView | null);
  get imageQuality(): () => any;
  set imageQuality(value: any);
  get includeInArtboards(): () => any;
  set includeInArtboards(value: any);
  get previewImage(): () => NSImage;
  set previewImage(value: NSImage | null);
  get referenceID(): () => string;
  set referenceID(value: string | null);
  get messageLabel(): () => NSView;
  set messageLabel(value: NSView | null);
  get actionButton(): () => NSView;
  set actionButton(value: NSView | null);
  get message(): () => string;
  set message(value: string | null);
  get actionTitle(): () => string;
  set actionTitle(value: string | null);
  get actionURL(): () => NSURL;
  set actionURL(value: NSURL | null);
  get action(): () => KVAction;
  set action(value: KVAction | null);
  get softMessageLabel(): () => NSView;
  set softMessageLabel(value: NSView | null);
  get softCloseButton(): () => NSView;
  set softCloseButton(value: NSView | null);
  get messageId(): () => any;
  set messageId(value: any);
  get softActionUrlString(): () => string;
  set softActionUrlString(value: string | null);
  get delegate(): () => KVViewControllerDelegate;
  set delegate(value: KVViewControllerDelegate | null);
  nibName(): string;
  view(): NSView;
  viewDidLoad(): void;
  reloadData(): void;
  enableLayerButton(): void;
  disableLayerButton(): void;
  includeInArtboardButtonDidChange_(change: NSView | null): void;
  includeInArtboardButtonDidChange(change: NSView | null): void;
  refreshButtonDidPress_(press: NSView | null): void;
  refreshButtonDidPress(press: NSView | null): void;
  flipButtonDidPress_(press: NSView | null): void;
  flipButtonDidPress(press: NSView | null): void;
  rotateButtonDidPress_(press: NSView | null): void;
  rotateButtonDidPress(press: NSView | null): void;
  imageQualityPopupButtonDidChange_(change: NSView | null): void;
  imageQualityPopupButtonDidChange(change: NSView | null): void;
  activateButtonDidPress_(press: NSView | null): void;
  activateButtonDidPress(press: NSView | null): void;
  softBannerMessageAction_(action: NSView | null): void;
  softBannerMessageAction(action: NSView | null): void;
  readSoftMessage_(message: NSView | null): void;
  readSoftMessage(message: NSView | null): void;
  showSoftMessage_action_messageId_(message: string | null, action: string | null, id: number): void;
  showSoftMessage_action_messageId(message: string | null, action: string | null, id: number): void;
  setMessageRead(): void;
  setPersister_(persister: KVPersister | null): void;
  setPersister(persister: KVPersister | null): void;
  setReuseIdentifier_(identifier: string | null): void;
  setReuseIdentifier(identifier: string | null): void;
  setImageQualityPopupButton_(button: NSView | null): void;
  setImageQualityPopupButton(button: NSView | null): void;
  setLayerRotateButton_(button: NSView | null): void;
  setLayerRotateButton(button: NSView | null): void;
  setLayerFlipButton_(button: NSView | null): void;
  setLayerFlipButton(button: NSView | null): void;
  setIncludeInArtboardButton_(button: NSView | null): void;
  setIncludeInArtboardButton(button: NSView | null): void;
  setImageView_(view: NSView | null): void;
  setImageView(view: NSView | null): void;
  setImageQuality_(quality: any): void;
  setImageQuality(quality: any): void;
  setIncludeInArtboards_(artboards: any): void;
  setIncludeInArtboards(artboards: any): void;
  setPreviewImage_(image: NSImage | null): void;
  setPreviewImage(image: NSImage | null): void;
  setReferenceID_(id: string | null): void;
  setReferenceID(id: string | null): void;
  setMessageLabel_(label: NSView | null): void;
  setMessageLabel(label: NSView | null): void;
  setActionButton_(button: NSView | null): void;
  setActionButton(button: NSView | null): void;
  setMessage_(message: string | null): void;
  setMessage(message: string | null): void;
  setActionTitle_(title: string | null): void;
  setActionTitle(title: string | null): void;
  setActionURL_(url: NSURL | null): void;
  setActionURL(url: NSURL | null): void;
  setAction_(action: KVAction | null): void;
  setAction(action: KVAction | null): void;
  setSoftMessageLabel_(label: NSView | null): void;
  setSoftMessageLabel(label: NSView | null): void;
  setSoftCloseButton_(button: NSView | null): void;
  setSoftCloseButton(button: NSView | null): void;
  setMessageId_(id: any): void;
  setMessageId(id: any): void;
  setSoftActionUrlString_(string: string | null): void;
  setSoftActionUrlString(string: string | null): void;
  setDelegate_(delegate: KVViewControllerDelegate | null): void;
  setDelegate(delegate: KVViewControllerDelegate | null): void;
}

interface KVViewControllerAllocated {
  init(): KVViewController;
  initWithNibName_bundle_(name: string | null, bundle: string | null): KVViewController;
  initWithNibName_bundle(name: string | null, bundle: string | null): KVViewController;
}

declare const KVViewController: KelvarClass & {
  alloc(): KVViewControllerAllocated;
  "new"(): KVViewController;
};

interface KVPopupCell extends NSObject {
  get popupButton(): () => NSView;
  set popupButton(value: NSView | null);
  get titleField(): () => NSView;
  set titleField(value: NSView | null);
  get imageView(): () => NSView;
  set imageView(value: NSView | null);
  get reuseIdentifier(): () => string;
  set reuseIdentifier(value: string | null);
  get image(): () => NSImage;
  set image(value: NSImage | null);
  get name(): () => string;
  set name(value: string | null);
  get selectedIdentifier(): () => string;
  set selectedIdentifier(value: string | null);
  get layerID(): () => string;
  set layerID(value: string | null);
  get popupMenu(): () => KVMenu;
  set popupMenu(value: KVMenu | null);
  get delegate(): () => KVPopupCellDelegate;
  set delegate(value: KVPopupCellDelegate | null);
  nibName(): string;
  view(): NSView;
  viewDidLoad(): void;
  reloadData(): void;
  selectedItem(): NSMenuItem;
  representedObject(): any;
  popupButtonDidPop_(pop: NSView | null): void;
  popupButtonDidPop(pop: NSView | null): void;
  itemDidSelect_(select: NSView | null): void;
  itemDidSelect(select: NSView | null): void;
  setPopupButton_(button: NSView | null): void;
  setPopupButton(button: NSView | null): void;
  setTitleField_(field: NSView | null): void;
  setTitleField(field: NSView | null): void;
  setImageView_(view: NSView | null): void;
  setImageView(view: NSView | null): void;
  setReuseIdentifier_(identifier: string | null): void;
  setReuseIdentifier(identifier: string | null): void;
  setImage_(image: NSImage | null): void;
  setImage(image: NSImage | null): void;
  setName_(name: string | null): void;
  setName(name: string | null): void;
  setSelectedIdentifier_(identifier: string | null): void;
  setSelectedIdentifier(identifier: string | null): void;
  setLayerID_(id: string | null): void;
  setLayerID(id: string | null): void;
  setPopupMenu_(menu: KVMenu | null): void;
  setPopupMenu(menu: KVMenu | null): void;
  setDelegate_(delegate: KVPopupCellDelegate | null): void;
  setDelegate(delegate: KVPopupCellDelegate | null): void;
}

interface KVPopupCellAllocated {
  init(): KVPopupCell;
  initWithNibName_bundle_(name: string | null, bundle: string | null): KVPopupCell;
  initWithNibName_bundle(name: string | null, bundle: string | null): KVPopupCell;
}

declare const KVPopupCell: KelvarClass & {
  alloc(): KVPopupCellAllocated;
  "new"(): KVPopupCell;
};

interface KVMenu extends NSObject {
  addItem_(item: NSMenuItem | null): void;
  addItem(item: NSMenuItem | null): void;
  itemArray(): any[];
}

interface KVMenuAllocated {
  init(): KVMenu;
}

declare const KVMenu: KelvarClass & {
  alloc(): KVMenuAllocated;
  "new"(): KVMenu;
  menuWithItems_(items: any[] | null): KVMenu;
  menuWithItems(items: any[] | null): KVMenu;
};

interface KVView extends NSObject {
  get hidden(): () => boolean;
  set hidden(value: boolean);
  get dropShadow(): () => NSShadow;
  set dropShadow(value: NSShadow | null);
  get backgroundColor(): () => any;
  set backgroundColor(value: any);
  get borderColor(): () => any;
  set borderColor(value: any);
  get borderWidth(): () => number;
  set borderWidth(value: number);
  get innerShadowSize(): () => NSPoint;
  set innerShadowSize(value: NSPoint);
  get innerShadowBlur(): () => number;
  set innerShadowBlur(value: number);
  get innerShadowColor(): () => any;
  set innerShadowColor(value: any);
  get shadowSize(): () => NSPoint;
  set shadowSize(value: NSPoint);
  get shadowBlur(): () => number;
  set shadowBlur(value: number);
  get shadowColor(): () => any;
  set shadowColor(value: any);
  setHidden_(hidden: boolean): void;
  setHidden(hidden: boolean): void;
  isOpaque(): boolean;
  refreshShadow(): void;
  setDropShadow_(shadow: NSShadow | null): void;
  setDropShadow(shadow: NSShadow | null): void;
  setBackgroundColor_(color: NSColor | null): void;
  setBackgroundColor(color: NSColor | null): void;
  setBorderColor_(color: NSColor | null): void;
  setBorderColor(color: NSColor | null): void;
  setBorderWidth_(width: number): void;
  setBorderWidth(width: number): void;
  setInnerShadowSize_(size: NSPoint): void;
  setInnerShadowSize(size: NSPoint): void;
  setInnerShadowBlur_(blur: number): void;
  setInnerShadowBlur(blur: number): void;
  setInnerShadowColor_(color: NSColor | null): void;
  setInnerShadowColor(color: NSColor | null): void;
  setShadowSize_(size: NSPoint): void;
  setShadowSize(size: NSPoint): void;
  setShadowBlur_(blur: number): void;
  setShadowBlur(blur: number): void;
  setShadowColor_(color: NSColor | null): void;
  setShadowColor(color: NSColor | null): void;
}

interface KVViewAllocated {
  init(): KVView;
  initWithCoder_(coder: any): KVView;
  initWithCoder(coder: any): KVView;
}

declare const KVView: KelvarClass & {
  alloc(): KVViewAllocated;
  "new"(): KVView;
};

interface KVButton extends NSObject {
  get hidden(): () => boolean;
  set hidden(value: boolean);
  get title(): () => string;
  set title(value: string | null);
  get backgroundColor(): () => any;
  set backgroundColor(value: any);
  get textColor(): () => any;
  set textColor(value: any);
  setHidden_(hidden: boolean): void;
  setHidden(hidden: boolean): void;
  awakeFromNib(): void;
  setTitle_(title: string | null): void;
  setTitle(title: string | null): void;
  setBackgroundColor_(color: NSColor | null): void;
  setBackgroundColor(color: NSColor | null): void;
  setTextColor_(color: NSColor | null): void;
  setTextColor(color: NSColor | null): void;
}

interface KVButtonAllocated {
  init(): KVButton;
}

declare const KVButton: KelvarClass & {
  alloc(): KVButtonAllocated;
  "new"(): KVButton;
};

interface KVAction extends NSObject {
  exec(): boolean;
}

interface KVActionAllocated {
}

declare const KVAction: KelvarClass & {
  alloc(): KVActionAllocated;
};

interface KVOpenURLAction extends KVAction {
}

interface KVOpenURLActionAllocated {
  init(): KVOpenURLAction;
}

declare const KVOpenURLAction: KelvarClass & {
  alloc(): KVOpenURLActionAllocated;
  "new"(): KVOpenURLAction;
  openURL_(url: any): KVOpenURLAction;
  openURL(url: any): KVOpenURLAction;
};

interface KVBashAction extends KVAction {
  get command(): () => string;
  set command(value: string | null);
  setCommand_(command: string | null): void;
  setCommand(command: string | null): void;
}

interface KVBashActionAllocated {
  init(): KVBashAction;
}

declare const KVBashAction: KelvarClass & {
  alloc(): KVBashActionAllocated;
  "new"(): KVBashAction;
  bash_(bash: string | null): KVBashAction;
  bash(bash: string | null): KVBashAction;
  restart(): KVBashAction;
  nothing(): KVBashAction;
};

interface CMD extends NSObject {
  get cd(): () => string;
  set cd(value: string | null);
  get exports(): () => string;
  set exports(value: string | null);
  exec_(exec: string | null): string;
  exec(exec: string | null): string;
  setCd_(cd: string | null): void;
  setCd(cd: string | null): void;
  setExports_(exports: string | null): void;
  setExports(exports: string | null): void;
}

interface CMDAllocated {
  init(): CMD;
}

declare const CMD: KelvarClass & {
  alloc(): CMDAllocated;
  "new"(): CMD;
};

interface KVExternalActionsHandler extends NSObject {
  urlWithPath_(path: string | null): NSURL;
  urlWithPath(path: string | null): NSURL;
  homepageButtonDidPress_(press: any): void;
  homepageButtonDidPress(press: any): void;
  feedbackForumButtonDidPress_(press: any): void;
  feedbackForumButtonDidPress(press: any): void;
  supportButtonDidPress_(press: any): void;
  supportButtonDidPress(press: any): void;
  visitStoreButtonDidPress_(press: any): void;
  visitStoreButtonDidPress(press: any): void;
}

interface KVExternalActionsHandlerAllocated {
  init(): KVExternalActionsHandler;
}

declare const KVExternalActionsHandler: KelvarClass & {
  alloc(): KVExternalActionsHandlerAllocated;
  "new"(): KVExternalActionsHandler;
};

interface Tracker extends NSObject {
  get uuid(): () => string;
  set uuid(value: string | null);
  get email(): () => string;
  set email(value: string | null);
  get timed(): () => TimedTracker;
  set timed(value: TimedTracker | null);
  event_increment_(event: string | null, increment: string | null): void;
  event_increment(event: string | null, increment: string | null): void;
  timedTrack_(track: string | null): void;
  timedTrack(track: string | null): void;
  timedFinish_properties_(finish: string | null, properties: Record<string, any> | null): void;
  timedFinish_properties(finish: string | null, properties: Record<string, any> | null): void;
  timedFinish_properties_mergeFutureEventsWithinTimeInterval_(finish: string | null, properties: Record<string, any> | null, interval: number): void;
  timedFinish_properties_mergeFutureEventsWithinTimeInterval(finish: string | null, properties: Record<string, any> | null, interval: number): void;
  timedFlush_(flush: string | null): void;
  timedFlush(flush: string | null): void;
  track_properties_(track: string | null, properties: Record<string, any> | null): void;
  track_properties(track: string | null, properties: Record<string, any> | null): void;
  timedTracker_eventStarted_(tracker: TimedTracker | null, started: string | null): void;
  timedTracker_eventStarted(tracker: TimedTracker | null, started: string | null): void;
  timedTracker_eventFinished_(tracker: TimedTracker | null, finished: TimedEvent | null): void;
  timedTracker_eventFinished(tracker: TimedTracker | null, finished: TimedEvent | null): void;
  setSuperProperties_(properties: Record<string, any> | null): void;
  setSuperProperties(properties: Record<string, any> | null): void;
  identifyEmail_(email: string | null): void;
  identifyEmail(email: string | null): void;
  aliasId_fromOld_(id: string | null, old: string | null): void;
  aliasId_fromOld(id: string | null, old: string | null): void;
  aliasFromUUIDTo_(to: string | null): void;
  aliasFromUUIDTo(to: string | null): void;
  setUuid_(uuid: string | null): void;
  setUuid(uuid: string | null): void;
  setEmail_(email: string | null): void;
  setEmail(email: string | null): void;
  setTimed_(timed: TimedTracker | null): void;
  setTimed(timed: TimedTracker | null): void;
}

interface TrackerAllocated {
  init(): Tracker;
}

declare const Tracker: KelvarClass & {
  alloc(): TrackerAllocated;
  "new"(): Tracker;
};

interface TrackerManager extends Tracker {
  get trackers(): () => any[];
  set trackers(value: any[] | null);
  get persister(): () => TrackerPersister;
  set persister(value: TrackerPersister | null);
  get identifier(): () => string;
  set identifier(value: string | null);
  setAsSharedInstance(): void;
  addSuperProperties_(properties: Record<string, any> | null): void;
  addSuperProperties(properties: Record<string, any> | null): void;
  configureChild(): void;
  allTrackers(): any[];
  setTrackers_(trackers: any[] | null): void;
  setTrackers(trackers: any[] | null): void;
  setPersister_(persister: TrackerPersister | null): void;
  setPersister(persister: TrackerPersister | null): void;
  setIdentifier_(identifier: string | null): void;
  setIdentifier(identifier: string | null): void;
}

interface TrackerManagerAllocated {
  initWithTrackers_identifier_(trackers: any[] | null, identifier: string | null): TrackerManager;
  initWithTrackers_identifier(trackers: any[] | null, identifier: string | null): TrackerManager;
  initWithTrackers_persister_identifier_(trackers: any[] | null, persister: TrackerPersister | null, identifier: string | null): TrackerManager;
  initWithTrackers_persister_identifier(trackers: any[] | null, persister: TrackerPersister | null, identifier: string | null): TrackerManager;
}

declare const TrackerManager: KelvarClass & {
  alloc(): TrackerManagerAllocated;
  sharedInstance(): TrackerManager;
};

interface SegmentIOTracker extends Tracker {
  get isObtainingLocation(): () => boolean;
  set isObtainingLocation(value: boolean);
  get writeKey(): () => string;
  set writeKey(value: string | null);
  get context(): () => Record<string, any>;
  set context(value: Record<string, any> | null);
  handlePendingRequests(): void;
  addSuperProperties_(properties: Record<string, any> | null): void;
  addSuperProperties(properties: Record<string, any> | null): void;
  setIsObtainingLocation_(location: boolean): void;
  setIsObtainingLocation(location: boolean): void;
  setWriteKey_(key: string | null): void;
  setWriteKey(key: string | null): void;
  setContext_(context: Record<string, any> | null): void;
  setContext(context: Record<string, any> | null): void;
}

interface SegmentIOTrackerAllocated {
  initWithWriteKey_(key: string | null): SegmentIOTracker;
  initWithWriteKey(key: string | null): SegmentIOTracker;
}

declare const SegmentIOTracker: KelvarClass & {
  alloc(): SegmentIOTrackerAllocated;
};

interface CounterTracker extends Tracker {
  get storage(): () => any[];
  set storage(value: any[] | null);
  get uploadsCount(): () => number;
  set uploadsCount(value: number);
  timesStarted(): number;
  timesFinished(): number;
  tracksCount(): number;
  events(): any[];
  setStorage_(storage: any[] | null): void;
  setStorage(storage: any[] | null): void;
  setUploadsCount_(count: number): void;
  setUploadsCount(count: number): void;
}

interface CounterTrackerAllocated {
  init(): CounterTracker;
}

declare const CounterTracker: KelvarClass & {
  alloc(): CounterTrackerAllocated;
  "new"(): CounterTracker;
};

interface MockedTracker extends Tracker {
  get startedEvent(): () => string;
  set startedEvent(value: string | null);
  get name(): () => string;
  set name(value: string | null);
  get properties(): () => Record<string, any>;
  set properties(value: Record<string, any> | null);
  get sessionLength(): () => number;
  set sessionLength(value: number);
  get globalProperties(): () => Record<string, any>;
  set globalProperties(value: Record<string, any> | null);
  setStartedEvent_(event: string | null): void;
  setStartedEvent(event: string | null): void;
  setName_(name: string | null): void;
  setName(name: string | null): void;
  setProperties_(properties: Record<string, any> | null): void;
  setProperties(properties: Record<string, any> | null): void;
  setSessionLength_(length: number): void;
  setSessionLength(length: number): void;
  setGlobalProperties_(properties: Record<string, any> | null): void;
  setGlobalProperties(properties: Record<string, any> | null): void;
}

interface MockedTrackerAllocated {
  init(): MockedTracker;
}

declare const MockedTracker: KelvarClass & {
  alloc(): MockedTrackerAllocated;
  "new"(): MockedTracker;
};

interface DeferableTracker extends Tracker {
  get enabled(): () => boolean;
  set enabled(value: boolean);
  enableStateDidChange_(change: boolean): void;
  enableStateDidChange(change: boolean): void;
  setEnabled_(enabled: boolean): void;
  setEnabled(enabled: boolean): void;
}

interface DeferableTrackerAllocated {
  init(): DeferableTracker;
}

declare const DeferableTracker: KelvarClass & {
  alloc(): DeferableTrackerAllocated;
  deferredTracker(): DeferableTracker;
  "new"(): DeferableTracker;
};

interface Event extends NSObject {
  get name(): () => string;
  set name(value: string | null);
  get properties(): () => Record<string, any>;
  set properties(value: Record<string, any> | null);
  isEqual_(equal: Event | null): boolean;
  isEqual(equal: Event | null): boolean;
  setName_(name: string | null): void;
  setName(name: string | null): void;
  setProperties_(properties: Record<string, any> | null): void;
  setProperties(properties: Record<string, any> | null): void;
}

interface EventAllocated {
  init(): Event;
}

declare const Event: KelvarClass & {
  alloc(): EventAllocated;
  "new"(): Event;
  eventWithName_properties_(name: string | null, properties: Record<string, any> | null): Event;
  eventWithName_properties(name: string | null, properties: Record<string, any> | null): Event;
};

interface SketchDocument extends NSObject {
  path(): string;
  pages(): any[];
  artboards(): any[];
  currentPage(): SketchLayer;
  mappedLayers(): any[];
  appVersion(): string;
  build(): string;
  warnings(): string[];
  layersNamed_(named: string | null): any[];
  layersNamed(named: string | null): any[];
  settingsOfLayer_(layer: SketchLayer | null): any;
  settingsOfLayer(layer: SketchLayer | null): any;
  imageOfArtboard_forTransform_(artboard: SketchLayer | null, transform: KVImageTransform | null): NSImage;
  imageOfArtboard_forTransform(artboard: SketchLayer | null, transform: KVImageTransform | null): NSImage;
  fillLayer_withImage_settings_(layer: SketchLayer | null, image: NSImage | null, settings: Record<string, any> | null): void;
  fillLayer_withImage_settings(layer: SketchLayer | null, image: NSImage | null, settings: Record<string, any> | null): void;
  save(): void;
  saveAs_(as: string | null): void;
  saveAs(as: string | null): void;
}

interface SketchDocumentAllocated {
}

declare const SketchDocument: KelvarClass & {
  alloc(): SketchDocumentAllocated;
};

interface SketchLayer extends NSObject {
  get name(): () => string;
  set name(value: string | null);
  get frame(): () => KVRect;
  set frame(value: KVRect | null);
  get isVisible(): () => boolean;
  set isVisible(value: boolean);
  setName_(name: string | null): void;
  setName(name: string | null): void;
  kind(): string;
  objectID(): string;
  setFrame_(frame: KVRect | null): void;
  setFrame(frame: KVRect | null): void;
  setIsVisible_(visible: boolean): void;
  setIsVisible(visible: boolean): void;
  rotation(): number;
  isFlippedHorizontal(): boolean;
  isFlippedVertical(): boolean;
  layers(): any[];
  artboards(): any[];
  bezierPath(): NSBezierPath;
  parent(): SketchLayer;
  artboard(): SketchLayer;
  page(): SketchLayer;
}

interface SketchLayerAllocated {
}

declare const SketchLayer: KelvarClass & {
  alloc(): SketchLayerAllocated;
};

interface NSImage extends NSObject {
  get size(): () => NSSize;
  set size(value: NSSize);
  setSize_(size: NSSize): void;
  setSize(size: NSSize): void;
  isValid(): boolean;
  writeToFile_(file: string | null): boolean;
  writeToFile(file: string | null): boolean;
}

interface NSImageAllocated {
  initWithContentsOfFile_(file: string | null): NSImage;
  initWithContentsOfFile(file: string | null): NSImage;
}

declare const NSImage: KelvarClass & {
  alloc(): NSImageAllocated;
};

interface NSURL extends NSObject {
  absoluteString(): string;
  scheme(): string;
  host(): string;
  path(): string;
  lastPathComponent(): string;
}

interface NSURLAllocated {
}

declare const NSURL: KelvarClass & {
  alloc(): NSURLAllocated;
  URLWithString_(string: string | null): any;
  URLWithString(string: string | null): any;
  fileURLWithPath_(path: string | null): NSURL;
  fileURLWithPath(path: string | null): NSURL;
};

interface NSColor extends NSObject {
  redComponent(): number;
  greenComponent(): number;
  blueComponent(): number;
  alphaComponent(): number;
}

interface NSColorAllocated {
}

declare const NSColor: KelvarClass & {
  alloc(): NSColorAllocated;
  colorWithRed_green_blue_alpha_(red: number, green: number, blue: number, alpha: number): NSColor;
  colorWithRed_green_blue_alpha(red: number, green: number, blue: number, alpha: number): NSColor;
};

interface NSBezierPath extends NSObject {
}

interface NSBezierPathAllocated {
}

declare const NSBezierPath: KelvarClass & {
  alloc(): NSBezierPathAllocated;
};

interface NSView extends NSObject {
  get hidden(): () => boolean;
  set hidden(value: boolean);
  setHidden_(hidden: boolean): void;
  setHidden(hidden: boolean): void;
}

interface NSViewAllocated {
}

declare const NSView: KelvarClass & {
  alloc(): NSViewAllocated;
};

interface NSMenuItem extends NSObject {
  get title(): () => string;
  set title(value: string | null);
  get image(): () => NSImage;
  set image(value: NSImage | null);
  get representedObject(): () => any;
  set representedObject(value: any);
  get state(): () => number;
  set state(value: number);
  isSeparatorItem(): boolean;
  setTitle_(title: string | null): void;
  setTitle(title: string | null): void;
  setImage_(image: NSImage | null): void;
  setImage(image: NSImage | null): void;
  setRepresentedObject_(object: any): void;
  setRepresentedObject(object: any): void;
  setState_(state: number): void;
  setState(state: number): void;
}

interface NSMenuItemAllocated {
  init(): NSMenuItem;
}

declare const NSMenuItem: KelvarClass & {
  alloc(): NSMenuItemAllocated;
  "new"(): NSMenuItem;
  separatorItem(): NSMenuItem;
};

interface NSShadow extends NSObject {
  get shadowOffset(): () => NSSize;
  set shadowOffset(value: NSSize);
  get shadowBlurRadius(): () => number;
  set shadowBlurRadius(value: number);
  get shadowColor(): () => NSColor;
  set shadowColor(value: NSColor | null);
  setShadowOffset_(offset: NSSize): void;
  setShadowOffset(offset: NSSize): void;
  setShadowBlurRadius_(radius: number): void;
  setShadowBlurRadius(radius: number): void;
  setShadowColor_(color: NSColor | null): void;
  setShadowColor(color: NSColor | null): void;
}

interface NSShadowAllocated {
  init(): NSShadow;
}

declare const NSShadow: KelvarClass & {
  alloc(): NSShadowAllocated;
  "new"(): NSShadow;
};

interface TimedTracker extends NSObject {
  get events(): () => Record<string, any>;
  set events(value: Record<string, any> | null);
  get delay(): () => number;
  set delay(value: number);
  get delegate(): () => TimedTrackerDelegate;
  set delegate(value: TimedTrackerDelegate | null);
  start_(start: string | null): void;
  start(start: string | null): void;
  start_sinceTime_(start: string | null, time: number): void;
  start_sinceTime(start: string | null, time: number): void;
  track_properties_(track: string | null, properties: Record<string, any> | null): MutableTimedEvent;
  track_properties(track: string | null, properties: Record<string, any> | null): MutableTimedEvent;
  track_properties_atTime_(track: string | null, properties: Record<string, any> | null, time: number): MutableTimedEvent;
  track_properties_atTime(track: string | null, properties: Record<string, any> | null, time: number): MutableTimedEvent;
  track_properties_atTime_delay_(track: string | null, properties: Record<string, any> | null, time: number, delay: number): MutableTimedEvent;
  track_properties_atTime_delay(track: string | null, properties: Record<string, any> | null, time: number, delay: number): MutableTimedEvent;
  flushEvent_(event: string | null): void;
  flushEvent(event: string | null): void;
  event_increment_(event: string | null, increment: string | null): void;
  event_increment(event: string | null, increment: string | null): void;
  event_increment_by_(event: string | null, increment: string | null, by: any): void;
  event_increment_by(event: string | null, increment: string | null, by: any): void;
  timedEvents(): Record<string, any>;
  setEvents_(events: Record<string, any> | null): void;
  setEvents(events: Record<string, any> | null): void;
  setDelay_(delay: number): void;
  setDelay(delay: number): void;
  setDelegate_(delegate: TimedTrackerDelegate | null): void;
  setDelegate(delegate: TimedTrackerDelegate | null): void;
}

interface TimedTrackerAllocated {
  init(): TimedTracker;
}

declare const TimedTracker: KelvarClass & {
  alloc(): TimedTrackerAllocated;
  "new"(): TimedTracker;
};

interface TimedEvent extends NSObject {
  get name(): () => string;
  set name(value: string | null);
  get properties(): () => Record<string, any>;
  set properties(value: Record<string, any> | null);
  get sessionLength(): () => number;
  set sessionLength(value: number);
  setName_(name: string | null): void;
  setName(name: string | null): void;
  setProperties_(properties: Record<string, any> | null): void;
  setProperties(properties: Record<string, any> | null): void;
  setSessionLength_(length: number): void;
  setSessionLength(length: number): void;
}

interface TimedEventAllocated {
  init(): TimedEvent;
}

declare const TimedEvent: KelvarClass & {
  alloc(): TimedEventAllocated;
  "new"(): TimedEvent;
  timedEventWithName_properties_sessionLength_(name: string | null, properties: Record<string, any> | null, length: number): TimedEvent;
  timedEventWithName_properties_sessionLength(name: string | null, properties: Record<string, any> | null, length: number): TimedEvent;
};

interface TrackerPersister extends NSObject {
  setObject_forKey_(object: any, key: string | null): void;
  setObject_forKey(object: any, key: string | null): void;
  objectForKey_(key: string | null): any;
  objectForKey(key: string | null): any;
  removeObjectForKey_(key: string | null): void;
  removeObjectForKey(key: string | null): void;
}

interface TrackerPersisterAllocated {
  init(): TrackerPersister;
}

declare const TrackerPersister: KelvarClass & {
  alloc(): TrackerPersisterAllocated;
  "new"(): TrackerPersister;
};

interface MutableTimedEvent extends TimedEvent {
  get lastStartTime(): () => number;
  set lastStartTime(value: number);
  appendProperties_(properties: Record<string, any> | null): void;
  appendProperties(properties: Record<string, any> | null): void;
  incrementProperty_(property: string | null): void;
  incrementProperty(property: string | null): void;
  incrementProperty_by_(property: string | null, by: any): void;
  incrementProperty_by(property: string | null, by: any): void;
  appendSessionLength_(length: number): void;
  appendSessionLength(length: number): void;
  setLastStartTime_(time: number): void;
  setLastStartTime(time: number): void;
}

interface MutableTimedEventAllocated {
  init(): MutableTimedEvent;
}

declare const MutableTimedEvent: KelvarClass & {
  alloc(): MutableTimedEventAllocated;
  "new"(): MutableTimedEvent;
  timedEventWithName_properties_sessionLength_(name: string | null, properties: Record<string, any> | null, length: number): MutableTimedEvent;
  timedEventWithName_properties_sessionLength(name: string | null, properties: Record<string, any> | null, length: number): MutableTimedEvent;
};

interface PluginCommand extends NSObject {
  identifier(): string;
  name(): string;
}

interface PluginBundle extends NSObject {
  identifier(): string;
  name(): string;
  version(): string;
  url(): NSURL;
  urlForResourceNamed_(named: string | null): any;
  urlForResourceNamed(named: string | null): any;
}

interface KVVersionCheckerDelegate {
  checkerDidFinish_?(finish: KVVersionChecker): void | null;
  checkerDidFinish?(finish: KVVersionChecker): void | null;
}

interface KVViewControllerDelegate {
  controller_didToggleIncludeInArtboards_?(controller: KVViewController, artboards: any): void | null;
  controller_didToggleIncludeInArtboards?(controller: KVViewController, artboards: any): void | null;
  controllerDidPressRefreshLayer_?(layer: KVViewController): void | null;
  controllerDidPressRefreshLayer?(layer: KVViewController): void | null;
  controllerDidPressFlipLayer_?(layer: KVViewController): void | null;
  controllerDidPressFlipLayer?(layer: KVViewController): void | null;
  controllerDidPressRotateLayer_?(layer: KVViewController): void | null;
  controllerDidPressRotateLayer?(layer: KVViewController): void | null;
  controller_didSelectImageQuality_?(controller: KVViewController, quality: any): void | null;
  controller_didSelectImageQuality?(controller: KVViewController, quality: any): void | null;
  controllerDidPressActionButton_?(button: KVViewController): void | null;
  controllerDidPressActionButton?(button: KVViewController): void | null;
  controllerNeedToUpdateLayout_?(layout: KVViewController): void | null;
  controllerNeedToUpdateLayout?(layout: KVViewController): void | null;
  controllerDidPressSoftBannerActionButton_messageId_?(button: KVViewController, id: any): void | null;
  controllerDidPressSoftBannerActionButton_messageId?(button: KVViewController, id: any): void | null;
  controllerDidPressReadMessageButton_messageId_?(button: KVViewController, id: any): void | null;
  controllerDidPressReadMessageButton_messageId?(button: KVViewController, id: any): void | null;
}

interface KVPopupCellDelegate {
  popupCellSelectedDidChange_?(change: KVPopupCell): void | null;
  popupCellSelectedDidChange?(change: KVPopupCell): void | null;
}

interface TimedTrackerDelegate {
  timedTracker_eventStarted_?(tracker: TimedTracker, started: string): void | null;
  timedTracker_eventStarted?(tracker: TimedTracker, started: string): void | null;
  timedTracker_eventFinished_?(tracker: TimedTracker, finished: TimedEvent): void | null;
  timedTracker_eventFinished?(tracker: TimedTracker, finished: TimedEvent): void | null;
}

declare function KVRectMake(make: number, argument2: number, argument3: number, argument4: number): KVRect;
declare function KVRectFromCGRect(rect: NSRect): KVRect;
declare function CGRectAspectFittingSize(size: NSSize, argument2: NSRect): NSRect;
declare function NSPointFromString(string: string | null): NSPoint;
declare function NSStringFromPoint(point: NSPoint): string;
declare function NSMakePoint(point: number, argument2: number): NSPoint;
declare function NSMakeSize(size: number, argument2: number): NSSize;
declare function NSMakeRect(rect: number, argument2: number, argument3: number, argument4: number): NSRect;
declare const KelvarVersionNumber: number;
declare const KelvarVersionString: string;
declare const TrackerManagerEventSessionEnded: string;
declare const HRCoderException: string;
declare const HRCoderClassNameKey: string;
declare const HRCoderRootObjectKey: string;
declare const HRCoderObjectAliasKey: string;
declare const HRCoderBase64DataKey: string;
