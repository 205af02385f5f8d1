// Kelvar's classes for scripts, made from their descriptions; do not edit.
// Each name may be written without its last underscore.

interface NSPoint { x: number; y: number; }
interface NSSize { width: number; height: number; }
interface NSRect { origin: NSPoint; size: NSSize; }
interface CGImage {}
interface NSBezierPath {}
interface NSColor {}
interface Array<T> {
  count(): number;
  objectAtIndex_(index: number): T;
  firstObject(): T | null;
  lastObject(): T | null;
}

declare const nil: null;
declare const context: any;
declare function log(...values: any[]): void;
declare function print(...values: any[]): void;
declare function setTimeout(call: () => void, milliseconds?: number): number;
declare function setInterval(call: () => void, milliseconds?: number): number;
declare function clearTimeout(timer: number): void;
declare function clearInterval(timer: number): void;

interface NSObject {
  description(): string;
  valueForKey_(key: string): any;
  valueForKeyPath_(path: string): any;
  setValue_forKey_(value: any, key: string): boolean;
}

interface NSObjectAllocated {
  init(): NSObject;
}

declare const NSObject: {
  alloc(): NSObjectAllocated;
  new(): NSObject;
};

interface KVPersister extends NSObject {
  setObject_forKey_(object: any, key: string): void;
  objectForKey_(key: string): any;
  removeObjectForKey_(key: string): void;
}

interface KVPersisterAllocated {
  init(): KVPersister;
}

declare const KVPersister: {
  alloc(): KVPersisterAllocated;
  new(): KVPersister;
};

interface Kelvar extends KVPersister {
  trackForEvent_properties_(event: string, properties: any): string;
  loadServerNotification(): void;
  tracker(): TrackerManager;
  setTracker_(tracker: TrackerManager): void;
  env(): string;
  setEnv_(env: string): void;
  pluginName(): string;
  setPluginName_(name: string): void;
  persister(): KVPersister;
  setPersister_(persister: KVPersister): void;
}

interface KelvarAllocated {
  init(): Kelvar;
}

declare const Kelvar: {
  alloc(): KelvarAllocated;
  new(): Kelvar;
};

interface KVVersionChecker extends NSObject {
  persist(): void;
  start(): void;
  identifier(): string;
  setIdentifier_(identifier: string): void;
  name(): string;
  setName_(name: string): void;
  finished(): boolean;
  setFinished_(finished: boolean): void;
  success(): boolean;
  setSuccess_(success: boolean): void;
  error(): any;
  setError_(error: any): void;
  result(): any;
  setResult_(result: any): void;
  isExpired(): boolean;
  setIsExpired_(expired: boolean): void;
  expiredMessage(): string;
  setExpiredMessage_(message: string): void;
  actionTitle(): string;
  setActionTitle_(title: string): void;
  actionURL(): NSURL;
  setActionURL_(l: NSURL): void;
  lastCheck(): Date;
  setLastCheck_(check: Date): void;
  delegate(): KVVersionCheckerDelegate;
  setDelegate_(delegate: KVVersionCheckerDelegate): void;
  persister(): KVPersister;
  setPersister_(persister: KVPersister): void;
}

interface KVVersionCheckerAllocated {
  initWithIdentifier_name_(identifier: string, name: string): KVVersionChecker;
}

declare const KVVersionChecker: {
  alloc(): KVVersionCheckerAllocated;
  checkerWithIdentifier_name_(identifier: string, name: string): KVVersionChecker;
};

interface KVRect extends NSObject {
  x(): number;
  setX_(x: number): void;
  y(): number;
  setY_(y: number): void;
  width(): number;
  setWidth_(width: number): void;
  height(): number;
  setHeight_(height: number): void;
  CGRect(): NSRect;
}

interface KVRectAllocated {
  init(): KVRect;
}

declare const KVRect: {
  alloc(): KVRectAllocated;
  new(): KVRect;
};

interface KVBezierPath {
}

interface KVBezierPathAllocated {
}

declare const KVBezierPath: {
  alloc(): KVBezierPathAllocated;
  pointsFromBezierPath_(path: NSBezierPath): string[];
  bezierPathWithPoints_(points: string[]): NSBezierPath;
  edgesLengthPoint1_point2_(1: NSPoint, 2: NSPoint): number;
  sumPoints_(points: string[]): number;
  bezierPathIsClockwise_(clockwise: NSBezierPath): boolean;
  bezierPathReversed_(reversed: NSBezierPath): NSBezierPath;
};

interface KVLayerIterator extends NSObject {
  extractPointsFromLayer_(layer: NSObject): string[];
}

interface KVLayerIteratorAllocated {
  init(): KVLayerIterator;
}

declare const KVLayerIterator: {
  alloc(): KVLayerIteratorAllocated;
  new(): KVLayerIterator;
};

interface KVShape extends NSObject {
  bounds(): KVRect;
  setBounds_(bounds: KVRect): void;
  path(): string[];
  setPath_(path: string[]): void;
  scale(): number;
  setScale_(scale: number): void;
  realSize(): NSSize;
  scaledSize(): NSSize;
  croppingRect(): KVRect;
  scaledCroppingRect(): KVRect;
  normalizedPoints(): string[];
}

interface KVShapeAllocated {
  initWithBounds_path_(bounds: KVRect, path: string[]): KVShape;
}

declare const KVShape: {
  alloc(): KVShapeAllocated;
  edgesLengthPoint1_point2_(1: NSPoint, 2: NSPoint): number;
  sumPoints_(points: string[]): number;
  pointsAreClockwised_(clockwised: string[]): boolean;
  reversedPoints_(points: string[]): string[];
};

interface KVImageTransform extends NSObject {
  input(): NSImage;
  setInput_(input: NSImage): void;
  scale(): number;
  setScale_(scale: number): void;
  rotation(): number;
  setRotation_(rotation: number): void;
  flipped(): boolean;
  setFlipped_(flipped: boolean): void;
  sampling(): string;
  setSampling_(sampling: string): void;
  extent(): NSSize;
  setExtent_(extent: NSSize): void;
  tl(): NSPoint;
  setTl_(tl: NSPoint): void;
  tr(): NSPoint;
  setTr_(tr: NSPoint): void;
  br(): NSPoint;
  setBr_(br: NSPoint): void;
  bl(): NSPoint;
  setBl_(bl: NSPoint): void;
  points(): string[];
  createOutput(): NSImage;
  getCIImageFromNSImage_(image: NSImage): CGImage;
  getNSImage_(image: CGImage): NSImage;
}

interface KVImageTransformAllocated {
  init(): KVImageTransform;
}

declare const KVImageTransform: {
  alloc(): KVImageTransformAllocated;
  new(): KVImageTransform;
};

interface KVImage {
}

interface KVImageAllocated {
}

declare const KVImage: {
  alloc(): KVImageAllocated;
  getCGImage_(image: NSImage): CGImage;
  scaleImage_size_(image: NSImage, size: NSSize): NSImage;
  fillImage_insideBounds_scale_shouldTrimTransparent_(image: NSImage, bounds: KVRect, scale: number, transparent: boolean): NSImage;
  fillImage_insideBounds_scale_shouldTrimTransparent_shadow_(image: NSImage, bounds: KVRect, scale: number, transparent: boolean, shadow: NSSize): NSImage;
  cropImage_withBounds_(image: NSImage, bounds: KVRect): NSImage;
};

interface KVViewController extends KVPersister {
  nibName(): string;
  view(): NSView;
  viewDidLoad(): void;
  reloadData(): void;
  enableLayerButton(): void;
  disableLayerButton(): void;
  includeInArtboardButtonDidChange_(change: NSView): void;
  refreshButtonDidPress_(press: NSView): void;
  flipButtonDidPress_(press: NSView): void;
  rotateButtonDidPress_(press: NSView): void;
  imageQualityPopupButtonDidChange_(change: NSView): void;
  activateButtonDidPress_(press: NSView): void;
  softBannerMessageAction_(action: NSView): void;
  readSoftMessage_(message: NSView): void;
  showSoftMessage_action_messageId_(message: string, action: string, id: number): void;
  setMessageRead(): void;
  persister(): KVPersister;
  setPersister_(persister: KVPersister): void;
  reuseIdentifier(): string;
  setReuseIdentifier_(identifier: string): void;
  imageQualityPopupButton(): NSView;
  setImageQualityPopupButton_(button: NSView): void;
  layerRotateButton(): NSView;
  setLayerRotateButton_(button: NSView): void;
  layerFlipButton(): NSView;
  setLayerFlipButton_(button: NSView): void;
  includeInArtboardButton(): NSView;
  setIncludeInArtboardButton_(button: NSView): void;
  imageView(): NSView;
  setImageView_(view: NSView): void;
  imageQuality(): any;
  setImageQuality_(quality: any): void;
  includeInArtboards(): any;
  setIncludeInArtboards_(artboards: any): void;
  previewImage(): NSImage;
  setPreviewImage_(image: NSImage): void;
  referenceID(): string;
  setReferenceID_(d: string): void;
  messageLabel(): NSView;
  setMessageLabel_(label: NSView): void;
  actionButton(): NSView;
  setActionButton_(button: NSView): void;
  message(): string;
  setMessage_(message: string): void;
  actionTitle(): string;
  setActionTitle_(title: string): void;
  actionURL(): NSURL;
  setActionURL_(l: NSURL): void;
  action(): KVAction;
  setAction_(action: KVAction): void;
  softMessageLabel(): NSView;
  setSoftMessageLabel_(label: NSView): void;
  softCloseButton(): NSView;
  setSoftCloseButton_(button: NSView): void;
  messageId(): any;
  setMessageId_(id: any): void;
  softActionUrlString(): string;
  setSoftActionUrlString_(string: string): void;
  delegate(): KVViewControllerDelegate;
  setDelegate_(delegate: KVViewControllerDelegate): void;
}

interface KVViewControllerAllocated {
  init(): KVViewController;
  initWithNibName_bundle_(name: string, argument2: string): KVViewController;
}

declare const KVViewController: {
  alloc(): KVViewControllerAllocated;
  new(): KVViewController;
};

interface KVPopupCell extends NSObject {
  nibName(): string;
  view(): NSView;
  viewDidLoad(): void;
  reloadData(): void;
  selectedItem(): NSMenuItem;
  representedObject(): any;
  popupButtonDidPop_(pop: NSView): void;
  itemDidSelect_(select: NSView): void;
  popupButton(): NSView;
  setPopupButton_(button: NSView): void;
  titleField(): NSView;
  setTitleField_(field: NSView): void;
  imageView(): NSView;
  setImageView_(view: NSView): void;
  reuseIdentifier(): string;
  setReuseIdentifier_(identifier: string): void;
  image(): NSImage;
  setImage_(image: NSImage): void;
  name(): string;
  setName_(name: string): void;
  selectedIdentifier(): string;
  setSelectedIdentifier_(identifier: string): void;
  layerID(): string;
  setLayerID_(d: string): void;
  popupMenu(): KVMenu;
  setPopupMenu_(menu: KVMenu): void;
  delegate(): KVPopupCellDelegate;
  setDelegate_(delegate: KVPopupCellDelegate): void;
}

interface KVPopupCellAllocated {
  init(): KVPopupCell;
  initWithNibName_bundle_(name: string, argument2: string): KVPopupCell;
}

declare const KVPopupCell: {
  alloc(): KVPopupCellAllocated;
  new(): KVPopupCell;
};

interface KVMenu extends NSObject {
  addItem_(item: NSMenuItem): void;
  itemArray(): any[];
}

interface KVMenuAllocated {
  init(): KVMenu;
}

declare const KVMenu: {
  alloc(): KVMenuAllocated;
  new(): KVMenu;
  menuWithItems_(items: any[]): KVMenu;
};

interface KVView extends NSObject {
  hidden(): boolean;
  setHidden_(hidden: boolean): void;
  isOpaque(): boolean;
  refreshShadow(): void;
  dropShadow(): NSShadow;
  setDropShadow_(shadow: NSShadow): void;
  backgroundColor(): any;
  setBackgroundColor_(color: NSColor): void;
  borderColor(): any;
  setBorderColor_(color: NSColor): void;
  borderWidth(): number;
  setBorderWidth_(width: number): void;
  innerShadowSize(): NSPoint;
  setInnerShadowSize_(size: NSPoint): void;
  innerShadowBlur(): number;
  setInnerShadowBlur_(blur: number): void;
  innerShadowColor(): any;
  setInnerShadowColor_(color: NSColor): void;
  shadowSize(): NSPoint;
  setShadowSize_(size: NSPoint): void;
  shadowBlur(): number;
  setShadowBlur_(blur: number): void;
  shadowColor(): any;
  setShadowColor_(color: NSColor): void;
}

interface KVViewAllocated {
  init(): KVView;
  initWithCoder_(coder: any): KVView;
}

declare const KVView: {
  alloc(): KVViewAllocated;
  new(): KVView;
};

interface KVButton extends NSObject {
  hidden(): boolean;
  setHidden_(hidden: boolean): void;
  awakeFromNib(): void;
  title(): string;
  setTitle_(title: string): void;
  backgroundColor(): any;
  setBackgroundColor_(color: NSColor): void;
  textColor(): any;
  setTextColor_(color: NSColor): void;
}

interface KVButtonAllocated {
  init(): KVButton;
}

declare const KVButton: {
  alloc(): KVButtonAllocated;
  new(): KVButton;
};

interface KVAction extends NSObject {
  exec(): boolean;
}

interface KVActionAllocated {
}

declare const KVAction: {
  alloc(): KVActionAllocated;
};

interface KVOpenURLAction extends KVAction {
}

interface KVOpenURLActionAllocated {
  init(): KVOpenURLAction;
}

declare const KVOpenURLAction: {
  alloc(): KVOpenURLActionAllocated;
  new(): KVOpenURLAction;
  openURL_(l: any): KVOpenURLAction;
};

interface KVBashAction extends KVAction {
  command(): string;
  setCommand_(command: string): void;
}

interface KVBashActionAllocated {
  init(): KVBashAction;
}

declare const KVBashAction: {
  alloc(): KVBashActionAllocated;
  new(): KVBashAction;
  bash_(bash: string): KVBashAction;
  restart(): KVBashAction;
  nothing(): KVBashAction;
};

interface CMD extends NSObject {
  exec_(exec: string): string;
  cd(): string;
  setCd_(cd: string): void;
  exports(): string;
  setExports_(exports: string): void;
}

interface CMDAllocated {
  init(): CMD;
}

declare const CMD: {
  alloc(): CMDAllocated;
  new(): CMD;
};

interface KVExternalActionsHandler extends NSObject {
  urlWithPath_(path: string): NSURL;
  homepageButtonDidPress_(press: any): void;
  feedbackForumButtonDidPress_(press: any): void;
  supportButtonDidPress_(press: any): void;
  visitStoreButtonDidPress_(press: any): void;
}

interface KVExternalActionsHandlerAllocated {
  init(): KVExternalActionsHandler;
}

declare const KVExternalActionsHandler: {
  alloc(): KVExternalActionsHandlerAllocated;
  new(): KVExternalActionsHandler;
};

interface Tracker extends NSObject {
  event_increment_(event: string, increment: string): void;
  timedTrack_(track: string): void;
  timedFinish_properties_(finish: string, properties: any): void;
  timedFinish_properties_mergeFutureEventsWithinTimeInterval_(finish: string, properties: any, interval: number): void;
  timedFlush_(flush: string): void;
  track_properties_(track: string, properties: any): void;
  setSuperProperties_(properties: any): void;
  identifyEmail_(email: string): void;
  aliasId_fromOld_(id: string, old: string): void;
  aliasFromUUIDTo_(to: string): void;
  uuid(): string;
  setUuid_(uuid: string): void;
  email(): string;
  setEmail_(email: string): void;
  timed(): TimedTracker;
  setTimed_(timed: TimedTracker): void;
}

interface TrackerAllocated {
  init(): Tracker;
}

declare const Tracker: {
  alloc(): TrackerAllocated;
  new(): Tracker;
};

interface TrackerManager extends Tracker {
  setAsSharedInstance(): void;
  addSuperProperties_(properties: Record<string, any>): void;
  configureChild(): void;
  allTrackers(): any[];
  trackers(): any[];
  setTrackers_(trackers: any[]): void;
  persister(): TrackerPersister;
  setPersister_(persister: TrackerPersister): void;
  identifier(): string;
  setIdentifier_(identifier: string): void;
}

interface TrackerManagerAllocated {
  initWithTrackers_identifier_(trackers: any[], identifier: string): TrackerManager;
  initWithTrackers_persister_identifier_(trackers: any[], persister: TrackerPersister, identifier: string): TrackerManager;
}

declare const TrackerManager: {
  alloc(): TrackerManagerAllocated;
  sharedInstance(): TrackerManager;
};

interface SketchDocument extends NSObject {
  path(): string;
  pages(): any[];
  artboards(): any[];
  currentPage(): SketchLayer;
  mappedLayers(): any[];
  appVersion(): string;
  build(): string;
  layersNamed_(named: string): any[];
  settingsOfLayer_(layer: SketchLayer): any;
  imageOfArtboard_forTransform_(artboard: SketchLayer, transform: KVImageTransform): NSImage;
  fillLayer_withImage_settings_(layer: SketchLayer, image: NSImage, settings: Record<string, any>): void;
  save(): void;
  saveAs_(as: string): void;
}

interface SketchDocumentAllocated {
}

declare const SketchDocument: {
  alloc(): SketchDocumentAllocated;
};

interface SketchLayer extends NSObject {
  name(): string;
  setName_(name: string): void;
  kind(): string;
  objectID(): string;
  frame(): KVRect;
  setFrame_(frame: KVRect): void;
  isVisible(): boolean;
  setIsVisible_(visible: boolean): void;
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

declare const SketchLayer: {
  alloc(): SketchLayerAllocated;
};

interface NSImage extends NSObject {
  size(): NSSize;
  setSize_(size: NSSize): void;
  isValid(): boolean;
  writeToFile_(file: string): boolean;
}

interface NSImageAllocated {
  initWithContentsOfFile_(file: string): NSImage;
}

declare const NSImage: {
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

declare const NSURL: {
  alloc(): NSURLAllocated;
  URLWithString_(string: string): any;
  fileURLWithPath_(path: string): NSURL;
};

interface NSColor extends NSObject {
  redComponent(): number;
  greenComponent(): number;
  blueComponent(): number;
  alphaComponent(): number;
}

interface NSColorAllocated {
}

declare const NSColor: {
  alloc(): NSColorAllocated;
  colorWithRed_green_blue_alpha_(red: number, green: number, blue: number, alpha: number): NSColor;
};

interface NSBezierPath extends NSObject {
}

interface NSBezierPathAllocated {
}

declare const NSBezierPath: {
  alloc(): NSBezierPathAllocated;
};

interface NSView extends NSObject {
  hidden(): boolean;
  setHidden_(hidden: boolean): void;
}

interface NSViewAllocated {
}

declare const NSView: {
  alloc(): NSViewAllocated;
};

interface NSMenuItem extends NSObject {
  isSeparatorItem(): boolean;
  title(): string;
  setTitle_(title: string): void;
  image(): NSImage;
  setImage_(image: NSImage): void;
  representedObject(): any;
  setRepresentedObject_(object: any): void;
  state(): number;
  setState_(state: number): void;
}

interface NSMenuItemAllocated {
  init(): NSMenuItem;
}

declare const NSMenuItem: {
  alloc(): NSMenuItemAllocated;
  new(): NSMenuItem;
  separatorItem(): NSMenuItem;
};

interface NSShadow extends NSObject {
  shadowOffset(): NSSize;
  setShadowOffset_(offset: NSSize): void;
  shadowBlurRadius(): number;
  setShadowBlurRadius_(radius: number): void;
  shadowColor(): NSColor;
  setShadowColor_(color: NSColor): void;
}

interface NSShadowAllocated {
  init(): NSShadow;
}

declare const NSShadow: {
  alloc(): NSShadowAllocated;
  new(): NSShadow;
};

interface TimedTracker extends NSObject {
  start_(start: string): void;
  start_sinceTime_(start: string, time: number): void;
  track_properties_(track: string, properties: any): MutableTimedEvent;
  track_properties_atTime_(track: string, properties: any, time: number): MutableTimedEvent;
  track_properties_atTime_delay_(track: string, properties: any, time: number, delay: number): MutableTimedEvent;
  flushEvent_(event: string): void;
  event_increment_(event: string, increment: string): void;
  event_increment_by_(event: string, increment: string, by: any): void;
  timedEvents(): Record<string, any>;
  events(): Record<string, any>;
  delay(): number;
  setDelay_(delay: number): void;
}

interface TimedTrackerAllocated {
  init(): TimedTracker;
}

declare const TimedTracker: {
  alloc(): TimedTrackerAllocated;
  new(): TimedTracker;
};

interface TrackerPersister extends NSObject {
  setObject_forKey_(object: any, key: string): void;
  objectForKey_(key: string): any;
  removeObjectForKey_(key: string): void;
}

interface TrackerPersisterAllocated {
  init(): TrackerPersister;
}

declare const TrackerPersister: {
  alloc(): TrackerPersisterAllocated;
  new(): TrackerPersister;
};

interface TimedEvent extends NSObject {
  name(): string;
  setName_(name: string): void;
  properties(): any;
  setProperties_(properties: any): void;
  sessionLength(): number;
  setSessionLength_(length: number): void;
}

interface TimedEventAllocated {
  init(): TimedEvent;
}

declare const TimedEvent: {
  alloc(): TimedEventAllocated;
  new(): TimedEvent;
  timedEventWithName_properties_sessionLength_(name: string, properties: any, length: number): TimedEvent;
};

interface MutableTimedEvent extends TimedEvent {
  appendProperties_(properties: any): void;
  incrementProperty_(property: string): void;
  incrementProperty_by_(property: string, by: any): void;
  appendSessionLength_(length: number): void;
  lastStartTime(): number;
  setLastStartTime_(time: number): void;
}

interface MutableTimedEventAllocated {
  init(): MutableTimedEvent;
}

declare const MutableTimedEvent: {
  alloc(): MutableTimedEventAllocated;
  new(): MutableTimedEvent;
  timedEventWithName_properties_sessionLength_(name: string, properties: any, length: number): MutableTimedEvent;
};

interface KVVersionCheckerDelegate {
  checkerDidFinish_?(finish: KVVersionChecker): void;
}

interface KVViewControllerDelegate {
  controller_didToggleIncludeInArtboards_?(controller: KVViewController, artboards: any): void;
  controllerDidPressRefreshLayer_?(layer: KVViewController): void;
  controllerDidPressFlipLayer_?(layer: KVViewController): void;
  controllerDidPressRotateLayer_?(layer: KVViewController): void;
  controller_didSelectImageQuality_?(controller: KVViewController, quality: any): void;
  controllerDidPressActionButton_?(button: KVViewController): void;
  controllerNeedToUpdateLayout_?(layout: KVViewController): void;
  controllerDidPressSoftBannerActionButton_messageId_?(button: KVViewController, id: any): void;
  controllerDidPressReadMessageButton_messageId_?(button: KVViewController, id: any): void;
}

interface KVPopupCellDelegate {
  popupCellSelectedDidChange_?(change: KVPopupCell): void;
}

declare function KVRectMake(make: number, argument2: number, argument3: number, argument4: number): KVRect;
declare function KVRectFromCGRect(rect: NSRect): KVRect;
declare function CGRectAspectFittingSize(size: NSSize, argument2: NSRect): NSRect;
declare function NSPointFromString(string: string): NSPoint;
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
