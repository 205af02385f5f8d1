// Kelvar's classes for scripts, generated from their descriptions; do not edit. Needs TypeScript 5.1.
// Methods that return an object, string or array may also return nil.

// Scripts do not run in a browser, whose Event is a different class.
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
  base64UrlEncodedString(): string;
}
interface Uint8Array {
  base64String(): string;
  base64UrlEncodedString(): string;
}
declare const Each: {
  alloc(): {
    init(): any;
    initWithArray_(array: any[]): any;
    initWithArray(array: any[]): any;
  };
  "new"(): any;
};

/** Methods of every class. */
interface KelvarClass {
  name(): string;
  class(): KelvarClass;
  [Symbol.hasInstance](value: any): boolean;
}
/** Methods of every object. */
interface NSObject {
  class(): KelvarClass;
  className(): string;
  isKindOfClass_(class_: KelvarClass): boolean;
  isKindOfClass(class_: KelvarClass): boolean;
  respondsToSelector_(selector: string): boolean;
  respondsToSelector(selector: string): boolean;
}

/** The argument of a command's function. */
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
  /** Returns one line of text about the object, for logs and people. */
  description(): string;
  /** Returns the value of the property with this key, or nil if there is none. */
  valueForKey_(key: string | null): any;
  /** Returns the value of the property with this key, or nil if there is none. */
  valueForKey(key: string | null): any;
  /** Follows keys joined by dots, each in the value of the one before; a list returns the values of its elements. */
  valueForKeyPath_(path: string | null): any;
  /** Follows keys joined by dots, each in the value of the one before; a list returns the values of its elements. */
  valueForKeyPath(path: string | null): any;
  /** Sets the property with this key; false if there is no such property or the value has the wrong type. */
  setValue_forKey_(value: any, key: string | null): boolean;
  /** Sets the property with this key; false if there is no such property or the value has the wrong type. */
  setValue_forKey(value: any, key: string | null): boolean;
}

interface NSObjectAllocated {
  /** Creates a plain object. */
  init(): NSObject;
}

declare const NSObject: KelvarClass & {
  alloc(): NSObjectAllocated;
  /** Creates a plain object. */
  "new"(): NSObject;
};

interface KVPersister extends NSObject {
  /** Stores a property-list value under the key; nil removes the key, and any other value is an error. */
  setObject_forKey_(object: any, key: string | null): void;
  /** Stores a property-list value under the key; nil removes the key, and any other value is an error. */
  setObject_forKey(object: any, key: string | null): void;
  /** Returns the value stored under the key, or nil. */
  objectForKey_(key: string | null): any;
  /** Returns the value stored under the key, or nil. */
  objectForKey(key: string | null): any;
  /** Removes the value stored under the key. */
  removeObjectForKey_(key: string | null): void;
  /** Removes the value stored under the key. */
  removeObjectForKey(key: string | null): void;
}

interface KVPersisterImplementation {
  /** Stores a property-list value under the key; nil removes the key, and any other value is an error. */
  setObject_forKey_?(object: any, key: string): void | null;
  /** Stores a property-list value under the key; nil removes the key, and any other value is an error. */
  setObject_forKey?(object: any, key: string): void | null;
  /** Returns the value stored under the key, or nil. */
  objectForKey_?(key: string): any;
  /** Returns the value stored under the key, or nil. */
  objectForKey?(key: string): any;
  /** Removes the value stored under the key. */
  removeObjectForKey_?(key: string): void | null;
  /** Removes the value stored under the key. */
  removeObjectForKey?(key: string): void | null;
}

interface KVPersisterAllocated {
  /** Creates a store; all stores share the user's settings. */
  init(): KVPersister;
}

declare const KVPersister: KelvarClass & {
  alloc(): KVPersisterAllocated;
  /** Creates a store; all stores share the user's settings. */
  "new"(): KVPersister;
};

interface Kelvar extends KVPersister {
  /** The tracker that records events, shared by all objects of the process. */
  get tracker(): () => TrackerManager;
  set tracker(value: TrackerManager | null);
  /** The plug-in's environment, which is sent with every event. */
  get env(): () => string;
  set env(value: string | null);
  /** The plug-in's name, which is sent with every event. */
  get pluginName(): () => string;
  set pluginName(value: string | null);
  /** The store for the server's messages; without one they are dropped. */
  get persister(): () => KVPersister;
  set persister(value: KVPersister | KVPersisterImplementation | null);
  /** Records an event with its properties and returns the event's name. */
  trackForEvent_properties_(event: string | null, properties: Record<string, any> | null): string;
  /** Records an event with its properties and returns the event's name. */
  trackForEvent_properties(event: string | null, properties: Record<string, any> | null): string;
  /** Fetches the server's messages in the background and adds the new ones to the list in `persister`. */
  loadServerNotification(): void;
  /** The tracker that records events, shared by all objects of the process. */
  setTracker_(tracker: TrackerManager | null): void;
  /** The tracker that records events, shared by all objects of the process. */
  setTracker(tracker: TrackerManager | null): void;
  /** The plug-in's environment, which is sent with every event. */
  setEnv_(env: string | null): void;
  /** The plug-in's environment, which is sent with every event. */
  setEnv(env: string | null): void;
  /** The plug-in's name, which is sent with every event. */
  setPluginName_(name: string | null): void;
  /** The plug-in's name, which is sent with every event. */
  setPluginName(name: string | null): void;
  /** The store for the server's messages; without one they are dropped. */
  setPersister_(persister: KVPersister | KVPersisterImplementation | null): void;
  /** The store for the server's messages; without one they are dropped. */
  setPersister(persister: KVPersister | KVPersisterImplementation | null): void;
}

interface KelvarAllocated {
  /** Creates the plug-in's main object; the first one in a process starts analytics. */
  init(): Kelvar;
}

declare const Kelvar: KelvarClass & {
  alloc(): KelvarAllocated;
  /** Creates the plug-in's main object; the first one in a process starts analytics. */
  "new"(): Kelvar;
};

interface KVVersionChecker extends NSObject {
  /** Identifies the checker in the settings. */
  get identifier(): () => string;
  set identifier(value: string | null);
  /** The version to ask about, as the server knows it. */
  get name(): () => string;
  set name(value: string | null);
  /** Whether a check has finished, in this session or an earlier one. */
  get finished(): () => boolean;
  set finished(value: boolean);
  /** Whether a check of this session got a valid answer. */
  get success(): () => boolean;
  set success(value: boolean);
  /** The last failure, a dictionary with a "message" or what the server sent; a later success does not clear it. */
  get error(): () => any;
  set error(value: any);
  /** The server's last valid answer, a dictionary. */
  get result(): () => any;
  set result(value: any);
  /** Whether the server considers the version outdated. */
  get isExpired(): () => boolean;
  set isExpired(value: boolean);
  /** The server's message about the outdated version. */
  get expiredMessage(): () => string;
  set expiredMessage(value: string | null);
  /** The title of the update button. */
  get actionTitle(): () => string;
  set actionTitle(value: string | null);
  /** The URL that the update button opens. */
  get actionURL(): () => NSURL;
  set actionURL(value: NSURL | null);
  /** When the last check finished. */
  get lastCheck(): () => Date;
  set lastCheck(value: Date | null);
  /** Told when a check has finished; held weakly. */
  get delegate(): () => KVVersionCheckerDelegate;
  set delegate(value: KVVersionCheckerDelegate | null);
  /** The store that `persist` writes to. */
  get persister(): () => KVPersister;
  set persister(value: KVPersister | KVPersisterImplementation | null);
  /** Stores the checker in the settings. */
  persist(): void;
  /** Starts a check and returns at once; the delegate is called when it has finished. */
  start(): void;
  /** Identifies the checker in the settings. */
  setIdentifier_(identifier: string | null): void;
  /** Identifies the checker in the settings. */
  setIdentifier(identifier: string | null): void;
  /** The version to ask about, as the server knows it. */
  setName_(name: string | null): void;
  /** The version to ask about, as the server knows it. */
  setName(name: string | null): void;
  /** Whether a check has finished, in this session or an earlier one. */
  setFinished_(finished: boolean): void;
  /** Whether a check has finished, in this session or an earlier one. */
  setFinished(finished: boolean): void;
  /** Whether a check of this session got a valid answer. */
  setSuccess_(success: boolean): void;
  /** Whether a check of this session got a valid answer. */
  setSuccess(success: boolean): void;
  /** The last failure, a dictionary with a "message" or what the server sent; a later success does not clear it. */
  setError_(error: any): void;
  /** The last failure, a dictionary with a "message" or what the server sent; a later success does not clear it. */
  setError(error: any): void;
  /** The server's last valid answer, a dictionary. */
  setResult_(result: any): void;
  /** The server's last valid answer, a dictionary. */
  setResult(result: any): void;
  /** Whether the server considers the version outdated. */
  setIsExpired_(expired: boolean): void;
  /** Whether the server considers the version outdated. */
  setIsExpired(expired: boolean): void;
  /** The server's message about the outdated version. */
  setExpiredMessage_(message: string | null): void;
  /** The server's message about the outdated version. */
  setExpiredMessage(message: string | null): void;
  /** The title of the update button. */
  setActionTitle_(title: string | null): void;
  /** The title of the update button. */
  setActionTitle(title: string | null): void;
  /** The URL that the update button opens. */
  setActionURL_(url: NSURL | null): void;
  /** The URL that the update button opens. */
  setActionURL(url: NSURL | null): void;
  /** When the last check finished. */
  setLastCheck_(check: Date | null): void;
  /** When the last check finished. */
  setLastCheck(check: Date | null): void;
  /** Told when a check has finished; held weakly. */
  setDelegate_(delegate: KVVersionCheckerDelegate | null): void;
  /** Told when a check has finished; held weakly. */
  setDelegate(delegate: KVVersionCheckerDelegate | null): void;
  /** The store that `persist` writes to. */
  setPersister_(persister: KVPersister | KVPersisterImplementation | null): void;
  /** The store that `persist` writes to. */
  setPersister(persister: KVPersister | KVPersisterImplementation | null): void;
}

interface KVVersionCheckerAllocated {
  /** Creates a checker without an identifier or a name. */
  init(): KVVersionChecker;
  /** Creates a checker that is stored under the identifier and asks about the version with this name. */
  initWithIdentifier_name_(identifier: string | null, name: string | null): KVVersionChecker;
  /** Creates a checker that is stored under the identifier and asks about the version with this name. */
  initWithIdentifier_name(identifier: string | null, name: string | null): KVVersionChecker;
}

declare const KVVersionChecker: KelvarClass & {
  alloc(): KVVersionCheckerAllocated;
  /** Returns the stored checker for this identifier and version name, or a new one. */
  checkerWithIdentifier_name_(identifier: string | null, name: string | null): KVVersionChecker;
  /** Returns the stored checker for this identifier and version name, or a new one. */
  checkerWithIdentifier_name(identifier: string | null, name: string | null): KVVersionChecker;
  /** Creates a checker without an identifier or a name. */
  "new"(): KVVersionChecker;
};

interface KVRect extends NSObject {
  /** Left edge, in document units. */
  get x(): () => number;
  set x(value: number);
  /** Top edge, in document units, growing downward. */
  get y(): () => number;
  set y(value: number);
  /** Width, in document units. */
  get width(): () => number;
  set width(value: number);
  /** Height, in document units. */
  get height(): () => number;
  set height(value: number);
  /** Left edge, in document units. */
  setX_(x: number): void;
  /** Left edge, in document units. */
  setX(x: number): void;
  /** Top edge, in document units, growing downward. */
  setY_(y: number): void;
  /** Top edge, in document units, growing downward. */
  setY(y: number): void;
  /** Width, in document units. */
  setWidth_(width: number): void;
  /** Width, in document units. */
  setWidth(width: number): void;
  /** Height, in document units. */
  setHeight_(height: number): void;
  /** Height, in document units. */
  setHeight(height: number): void;
  /** Returns the same rectangle as a structure with origin and size. */
  CGRect(): NSRect;
}

interface KVRectAllocated {
  /** Creates a rectangle of size zero at the origin. */
  init(): KVRect;
}

declare const KVRect: KelvarClass & {
  alloc(): KVRectAllocated;
  /** Creates a rectangle of size zero at the origin. */
  "new"(): KVRect;
};

interface KVBezierPath {
}

interface KVBezierPathAllocated {
}

declare const KVBezierPath: KelvarClass & {
  alloc(): KVBezierPathAllocated;
  /** Returns the corners of the path's outline in drawing order, with curves flattened, as "{x, y}" strings. */
  pointsFromBezierPath_(path: NSBezierPath | null): string[];
  /** Returns the corners of the path's outline in drawing order, with curves flattened, as "{x, y}" strings. */
  pointsFromBezierPath(path: NSBezierPath | null): string[];
  /** Creates a closed path with straight edges through the points. */
  bezierPathWithPoints_(points: string[] | null): NSBezierPath;
  /** Creates a closed path with straight edges through the points. */
  bezierPathWithPoints(points: string[] | null): NSBezierPath;
  /** Returns the edge's term (x2 - x1) (y1 + y2) of the winding sum; despite the name, not a length. */
  edgesLengthPoint1_point2_(point1: NSPoint, point2: NSPoint): number;
  /** Returns the edge's term (x2 - x1) (y1 + y2) of the winding sum; despite the name, not a length. */
  edgesLengthPoint1_point2(point1: NSPoint, point2: NSPoint): number;
  /** Returns the winding sum of the polygon: minus twice its area if it runs clockwise on screen. */
  sumPoints_(points: string[] | null): number;
  /** Returns the winding sum of the polygon: minus twice its area if it runs clockwise on screen. */
  sumPoints(points: string[] | null): number;
  /** Returns whether the path's corners run clockwise on screen; a path without area does. */
  bezierPathIsClockwise_(clockwise: NSBezierPath | null): boolean;
  /** Returns whether the path's corners run clockwise on screen; a path without area does. */
  bezierPathIsClockwise(clockwise: NSBezierPath | null): boolean;
  /** Returns the path drawn in the opposite direction. */
  bezierPathReversed_(reversed: NSBezierPath | null): NSBezierPath;
  /** Returns the path drawn in the opposite direction. */
  bezierPathReversed(reversed: NSBezierPath | null): NSBezierPath;
};

interface KVLayerIterator extends NSObject {
  /** Returns the corners of the path of the layer's first child, clockwise on screen; an empty list if there is no path. A dictionary with "layers" may be the layer. */
  extractPointsFromLayer_(layer: any): string[];
  /** Returns the corners of the path of the layer's first child, clockwise on screen; an empty list if there is no path. A dictionary with "layers" may be the layer. */
  extractPointsFromLayer(layer: any): string[];
}

interface KVLayerIteratorAllocated {
  /** Creates a reader of corner points. */
  init(): KVLayerIterator;
}

declare const KVLayerIterator: KelvarClass & {
  alloc(): KVLayerIteratorAllocated;
  /** Creates a reader of corner points. */
  "new"(): KVLayerIterator;
};

interface KVShape extends NSObject {
  /** The layer's frame in the document; nil counts as the zero rectangle. */
  get bounds(): () => KVRect;
  set bounds(value: KVRect | null);
  /** The corner points in drawing order, in the layer's own coordinates. */
  get path(): () => string[];
  set path(value: string[] | null);
  /** Factor for the scaled sizes; 0 counts as 1. */
  get scale(): () => number;
  set scale(value: number);
  /** The layer's frame in the document; nil counts as the zero rectangle. */
  setBounds_(bounds: KVRect | null): void;
  /** The layer's frame in the document; nil counts as the zero rectangle. */
  setBounds(bounds: KVRect | null): void;
  /** The corner points in drawing order, in the layer's own coordinates. */
  setPath_(path: string[] | null): void;
  /** The corner points in drawing order, in the layer's own coordinates. */
  setPath(path: string[] | null): void;
  /** Factor for the scaled sizes; 0 counts as 1. */
  setScale_(scale: number): void;
  /** Factor for the scaled sizes; 0 counts as 1. */
  setScale(scale: number): void;
  /** Returns the extent of the points together with the layer's origin, unscaled. */
  realSize(): NSSize;
  /** Returns `realSize` times the scale. */
  scaledSize(): NSSize;
  /** Returns the bounds shifted right and down by as much as the points extend past the layer's left and top edges. */
  croppingRect(): KVRect;
  /** Returns `croppingRect` with origin and size times the scale. */
  scaledCroppingRect(): KVRect;
  /** Returns the points shifted so that none is negative, in clockwise order, starting with the same point. */
  normalizedPoints(): string[];
}

interface KVShapeAllocated {
  /** Creates a shape with a zero frame and no points. */
  init(): KVShape;
  /** Creates a shape from a layer's frame and its corners in the layer's own coordinates. */
  initWithBounds_path_(bounds: KVRect | null, path: string[] | null): KVShape;
  /** Creates a shape from a layer's frame and its corners in the layer's own coordinates. */
  initWithBounds_path(bounds: KVRect | null, path: string[] | null): KVShape;
}

declare const KVShape: KelvarClass & {
  alloc(): KVShapeAllocated;
  /** Creates a shape with a zero frame and no points. */
  "new"(): KVShape;
  /** Returns the edge's term (x2 - x1) (y1 + y2) of the winding sum; despite the name, not a length. */
  edgesLengthPoint1_point2_(point1: NSPoint, point2: NSPoint): number;
  /** Returns the edge's term (x2 - x1) (y1 + y2) of the winding sum; despite the name, not a length. */
  edgesLengthPoint1_point2(point1: NSPoint, point2: NSPoint): number;
  /** Returns the winding sum of the points: minus twice the area if they run clockwise on screen. */
  sumPoints_(points: string[] | null): number;
  /** Returns the winding sum of the points: minus twice the area if they run clockwise on screen. */
  sumPoints(points: string[] | null): number;
  /** Returns whether the points run clockwise on screen; points without area do. */
  pointsAreClockwised_(clockwised: string[] | null): boolean;
  /** Returns whether the points run clockwise on screen; points without area do. */
  pointsAreClockwised(clockwised: string[] | null): boolean;
  /** Returns the points in the opposite direction, starting with the same point. */
  reversedPoints_(points: string[] | null): string[];
  /** Returns the points in the opposite direction, starting with the same point. */
  reversedPoints(points: string[] | null): string[];
};

interface KVImageTransform extends NSObject {
  /** The image to warp; setting it moves the four corners to the image's own rectangle. */
  get input(): () => NSImage;
  set input(value: NSImage | null);
  /** Factor for the four corners; 0 counts as 1. */
  get scale(): () => number;
  set scale(value: number);
  /** Quarter turns of the image within the shape, counter-clockwise on screen, applied after the flip. */
  get rotation(): () => number;
  set rotation(value: number);
  /** Whether the image is mirrored left to right. */
  get flipped(): () => boolean;
  set flipped(value: boolean);
  /** How pixels are read: "bilinear", or "best" for area filtering and smooth edges. */
  get sampling(): () => string;
  set sampling(value: string | null);
  /** Size that the output covers from (0, 0), in the corners' units; empty for the corners' bounding box. */
  get extent(): () => NSSize;
  set extent(value: NSSize);
  /** Where the image's top-left corner goes, in the target shape's units. */
  get tl(): () => NSPoint;
  set tl(value: NSPoint);
  /** Where the image's top-right corner goes. */
  get tr(): () => NSPoint;
  set tr(value: NSPoint);
  /** Where the image's bottom-right corner goes. */
  get br(): () => NSPoint;
  set br(value: NSPoint);
  /** Where the image's bottom-left corner goes. */
  get bl(): () => NSPoint;
  set bl(value: NSPoint);
  /** The image to warp; setting it moves the four corners to the image's own rectangle. */
  setInput_(input: NSImage | null): void;
  /** The image to warp; setting it moves the four corners to the image's own rectangle. */
  setInput(input: NSImage | null): void;
  /** Factor for the four corners; 0 counts as 1. */
  setScale_(scale: number): void;
  /** Factor for the four corners; 0 counts as 1. */
  setScale(scale: number): void;
  /** Quarter turns of the image within the shape, counter-clockwise on screen, applied after the flip. */
  setRotation_(rotation: number): void;
  /** Quarter turns of the image within the shape, counter-clockwise on screen, applied after the flip. */
  setRotation(rotation: number): void;
  /** Whether the image is mirrored left to right. */
  setFlipped_(flipped: boolean): void;
  /** Whether the image is mirrored left to right. */
  setFlipped(flipped: boolean): void;
  /** How pixels are read: "bilinear", or "best" for area filtering and smooth edges. */
  setSampling_(sampling: string | null): void;
  /** How pixels are read: "bilinear", or "best" for area filtering and smooth edges. */
  setSampling(sampling: string | null): void;
  /** Size that the output covers from (0, 0), in the corners' units; empty for the corners' bounding box. */
  setExtent_(extent: NSSize): void;
  /** Size that the output covers from (0, 0), in the corners' units; empty for the corners' bounding box. */
  setExtent(extent: NSSize): void;
  /** Where the image's top-left corner goes, in the target shape's units. */
  setTl_(tl: NSPoint): void;
  /** Where the image's top-left corner goes, in the target shape's units. */
  setTl(tl: NSPoint): void;
  /** Where the image's top-right corner goes. */
  setTr_(tr: NSPoint): void;
  /** Where the image's top-right corner goes. */
  setTr(tr: NSPoint): void;
  /** Where the image's bottom-right corner goes. */
  setBr_(br: NSPoint): void;
  /** Where the image's bottom-right corner goes. */
  setBr(br: NSPoint): void;
  /** Where the image's bottom-left corner goes. */
  setBl_(bl: NSPoint): void;
  /** Where the image's bottom-left corner goes. */
  setBl(bl: NSPoint): void;
  /** Returns where the image's top-left, top-right, bottom-right and bottom-left corners go after flip and rotation, unscaled. */
  points(): string[];
  /** Returns the warped image, transparent outside the corners; an invalid image of size zero if it cannot be made. */
  createOutput(): NSImage;
  /** Returns the image's pixels without its nominal size. */
  getCIImageFromNSImage_(image: NSImage | null): CGImage;
  /** Returns the image's pixels without its nominal size. */
  getCIImageFromNSImage(image: NSImage | null): CGImage;
  /** Returns an image of these pixels, one point each. */
  getNSImage_(image: CGImage | null): NSImage;
  /** Returns an image of these pixels, one point each. */
  getNSImage(image: CGImage | null): NSImage;
}

interface KVImageTransformAllocated {
  /** Creates a transform without an input. */
  init(): KVImageTransform;
}

declare const KVImageTransform: KelvarClass & {
  alloc(): KVImageTransformAllocated;
  /** Creates a transform without an input. */
  "new"(): KVImageTransform;
};

interface KVImage {
}

interface KVImageAllocated {
}

declare const KVImage: KelvarClass & {
  alloc(): KVImageAllocated;
  /** Returns the image drawn into a bitmap of its nominal size, or nil if that is less than a pixel. */
  getCGImage_(image: NSImage | null): CGImage;
  /** Returns the image drawn into a bitmap of its nominal size, or nil if that is less than a pixel. */
  getCGImage(image: NSImage | null): CGImage;
  /** Returns a new image of this size and changes the nominal size of the given image to it; nil for an invalid image. */
  scaleImage_size_(image: NSImage | null, size: NSSize): NSImage;
  /** Returns a new image of this size and changes the nominal size of the given image to it; nil for an invalid image. */
  scaleImage_size(image: NSImage | null, size: NSSize): NSImage;
  /** Returns the image fitted into the scaled bounds, in proportion and centered; trimmed, the result is as large as the fitted image. */
  fillImage_insideBounds_scale_shouldTrimTransparent_(image: NSImage | null, bounds: KVRect | null, scale: number, transparent: boolean): NSImage;
  /** Returns the image fitted into the scaled bounds, in proportion and centered; trimmed, the result is as large as the fitted image. */
  fillImage_insideBounds_scale_shouldTrimTransparent(image: NSImage | null, bounds: KVRect | null, scale: number, transparent: boolean): NSImage;
  /** Fits the image like the selector without a shadow, with the image's faint drop shadow moved by this offset. */
  fillImage_insideBounds_scale_shouldTrimTransparent_shadow_(image: NSImage | null, bounds: KVRect | null, scale: number, transparent: boolean, shadow: NSSize): NSImage;
  /** Fits the image like the selector without a shadow, with the image's faint drop shadow moved by this offset. */
  fillImage_insideBounds_scale_shouldTrimTransparent_shadow(image: NSImage | null, bounds: KVRect | null, scale: number, transparent: boolean, shadow: NSSize): NSImage;
  /** Returns the part of the image within the bounds, measured in pixels from its top left. */
  cropImage_withBounds_(image: NSImage | null, bounds: KVRect | null): NSImage;
  /** Returns the part of the image within the bounds, measured in pixels from its top left. */
  cropImage_withBounds(image: NSImage | null, bounds: KVRect | null): NSImage;
};

interface KVViewController extends KVPersister {
  /** The store for the read messages; created by `viewDidLoad`. */
  get persister(): () => KVPersister;
  set persister(value: KVPersister | KVPersisterImplementation | null);
  /** An identifier for the owner's use. */
  get reuseIdentifier(): () => string;
  set reuseIdentifier(value: string | null);
  /** The quality menu of the form. */
  get imageQualityPopupButton(): () => NSView;
  set imageQualityPopupButton(value: NSView | null);
  /** The rotate button of the form. */
  get layerRotateButton(): () => NSView;
  set layerRotateButton(value: NSView | null);
  /** The flip button of the form. */
  get layerFlipButton(): () => NSView;
  set layerFlipButton(value: NSView | null);
  /** The check box of the form. */
  get includeInArtboardButton(): () => NSView;
  set includeInArtboardButton(value: NSView | null);
  /** The preview of the form. */
  get imageView(): () => NSView;
  set imageView(value: NSView | null);
  /** Index of the shown quality; -1 if the row's layers differ, nil for 0. */
  get imageQuality(): () => any;
  set imageQuality(value: any);
  /** State of the check box: 0 off, 1 on, -1 mixed, nil for 0. */
  get includeInArtboards(): () => any;
  set includeInArtboards(value: any);
  /** The preview; the controller keeps a copy. */
  get previewImage(): () => NSImage;
  set previewImage(value: NSImage | null);
  /** A reference for the owner's use. */
  get referenceID(): () => string;
  set referenceID(value: string | null);
  /** The message's label of the form. */
  get messageLabel(): () => NSView;
  set messageLabel(value: NSView | null);
  /** The message's button of the form. */
  get actionButton(): () => NSView;
  set actionButton(value: NSView | null);
  /** The text of the message; nil leaves the label unchanged. */
  get message(): () => string;
  set message(value: string | null);
  /** The title of the message's button; nil leaves it unchanged. */
  get actionTitle(): () => string;
  set actionTitle(value: string | null);
  /** The URL that the message's button opens if there is no action. */
  get actionURL(): () => NSURL;
  set actionURL(value: NSURL | null);
  /** The action that the message's button runs, or nil. */
  get action(): () => KVAction;
  set action(value: KVAction | KVActionImplementation | null);
  /** The banner's label of the form. */
  get softMessageLabel(): () => NSView;
  set softMessageLabel(value: NSView | null);
  /** The banner's close button of the form. */
  get softCloseButton(): () => NSView;
  set softCloseButton(value: NSView | null);
  /** The number of the banner's message. */
  get messageId(): () => any;
  set messageId(value: any);
  /** The URL that the banner opens. */
  get softActionUrlString(): () => string;
  set softActionUrlString(value: string | null);
  /** Told what the user does with the controls; held weakly. */
  get delegate(): () => KVViewControllerDelegate;
  set delegate(value: KVViewControllerDelegate | null);
  /** Returns the name of the form. */
  nibName(): string;
  /** Returns the controller's view, loading the form on first use. */
  view(): NSView;
  /** Called when the form has loaded; creates the store and shows the properties. */
  viewDidLoad(): void;
  /** Shows the current properties and enables image quality, flip and rotate. */
  reloadData(): void;
  /** Enables image quality, flip and rotate. */
  enableLayerButton(): void;
  /** Disables image quality, flip and rotate, on the main thread's next turn. */
  disableLayerButton(): void;
  /** Action of the check box: tells the delegate its new state. */
  includeInArtboardButtonDidChange_(change: NSView | null): void;
  /** Action of the check box: tells the delegate its new state. */
  includeInArtboardButtonDidChange(change: NSView | null): void;
  /** Action of the refresh button: tells the delegate. */
  refreshButtonDidPress_(press: NSView | null): void;
  /** Action of the refresh button: tells the delegate. */
  refreshButtonDidPress(press: NSView | null): void;
  /** Action of the flip button: tells the delegate. */
  flipButtonDidPress_(press: NSView | null): void;
  /** Action of the flip button: tells the delegate. */
  flipButtonDidPress(press: NSView | null): void;
  /** Action of the rotate button: tells the delegate. */
  rotateButtonDidPress_(press: NSView | null): void;
  /** Action of the rotate button: tells the delegate. */
  rotateButtonDidPress(press: NSView | null): void;
  /** Action of the quality menu: tells the delegate the index of the chosen item. */
  imageQualityPopupButtonDidChange_(change: NSView | null): void;
  /** Action of the quality menu: tells the delegate the index of the chosen item. */
  imageQualityPopupButtonDidChange(change: NSView | null): void;
  /** Action of the message's button: runs `action`, or without one opens `actionURL` and tells the delegate. */
  activateButtonDidPress_(press: NSView | null): void;
  /** Action of the message's button: runs `action`, or without one opens `actionURL` and tells the delegate. */
  activateButtonDidPress(press: NSView | null): void;
  /** Action of the banner: marks its message as read, opens its URL and tells the delegate, if that handles it. */
  softBannerMessageAction_(action: NSView | null): void;
  /** Action of the banner: marks its message as read, opens its URL and tells the delegate, if that handles it. */
  softBannerMessageAction(action: NSView | null): void;
  /** Action of the banner's close button: marks its message as read, tells the delegate and hides the banner, if the delegate handles it. */
  readSoftMessage_(message: NSView | null): void;
  /** Action of the banner's close button: marks its message as read, tells the delegate and hides the banner, if the delegate handles it. */
  readSoftMessage(message: NSView | null): void;
  /** Shows the banner with a message and a URL ("" for none), on the main thread's next turn. */
  showSoftMessage_action_messageId_(message: string | null, action: string | null, id: number): void;
  /** Shows the banner with a message and a URL ("" for none), on the main thread's next turn. */
  showSoftMessage_action_messageId(message: string | null, action: string | null, id: number): void;
  /** Marks the banner's message as read in the settings. */
  setMessageRead(): void;
  /** The store for the read messages; created by `viewDidLoad`. */
  setPersister_(persister: KVPersister | KVPersisterImplementation | null): void;
  /** The store for the read messages; created by `viewDidLoad`. */
  setPersister(persister: KVPersister | KVPersisterImplementation | null): void;
  /** An identifier for the owner's use. */
  setReuseIdentifier_(identifier: string | null): void;
  /** An identifier for the owner's use. */
  setReuseIdentifier(identifier: string | null): void;
  /** The quality menu of the form. */
  setImageQualityPopupButton_(button: NSView | null): void;
  /** The quality menu of the form. */
  setImageQualityPopupButton(button: NSView | null): void;
  /** The rotate button of the form. */
  setLayerRotateButton_(button: NSView | null): void;
  /** The rotate button of the form. */
  setLayerRotateButton(button: NSView | null): void;
  /** The flip button of the form. */
  setLayerFlipButton_(button: NSView | null): void;
  /** The flip button of the form. */
  setLayerFlipButton(button: NSView | null): void;
  /** The check box of the form. */
  setIncludeInArtboardButton_(button: NSView | null): void;
  /** The check box of the form. */
  setIncludeInArtboardButton(button: NSView | null): void;
  /** The preview of the form. */
  setImageView_(view: NSView | null): void;
  /** The preview of the form. */
  setImageView(view: NSView | null): void;
  /** Index of the shown quality; -1 if the row's layers differ, nil for 0. */
  setImageQuality_(quality: any): void;
  /** Index of the shown quality; -1 if the row's layers differ, nil for 0. */
  setImageQuality(quality: any): void;
  /** State of the check box: 0 off, 1 on, -1 mixed, nil for 0. */
  setIncludeInArtboards_(artboards: any): void;
  /** State of the check box: 0 off, 1 on, -1 mixed, nil for 0. */
  setIncludeInArtboards(artboards: any): void;
  /** The preview; the controller keeps a copy. */
  setPreviewImage_(image: NSImage | null): void;
  /** The preview; the controller keeps a copy. */
  setPreviewImage(image: NSImage | null): void;
  /** A reference for the owner's use. */
  setReferenceID_(id: string | null): void;
  /** A reference for the owner's use. */
  setReferenceID(id: string | null): void;
  /** The message's label of the form. */
  setMessageLabel_(label: NSView | null): void;
  /** The message's label of the form. */
  setMessageLabel(label: NSView | null): void;
  /** The message's button of the form. */
  setActionButton_(button: NSView | null): void;
  /** The message's button of the form. */
  setActionButton(button: NSView | null): void;
  /** The text of the message; nil leaves the label unchanged. */
  setMessage_(message: string | null): void;
  /** The text of the message; nil leaves the label unchanged. */
  setMessage(message: string | null): void;
  /** The title of the message's button; nil leaves it unchanged. */
  setActionTitle_(title: string | null): void;
  /** The title of the message's button; nil leaves it unchanged. */
  setActionTitle(title: string | null): void;
  /** The URL that the message's button opens if there is no action. */
  setActionURL_(url: NSURL | null): void;
  /** The URL that the message's button opens if there is no action. */
  setActionURL(url: NSURL | null): void;
  /** The action that the message's button runs, or nil. */
  setAction_(action: KVAction | KVActionImplementation | null): void;
  /** The action that the message's button runs, or nil. */
  setAction(action: KVAction | KVActionImplementation | null): void;
  /** The banner's label of the form. */
  setSoftMessageLabel_(label: NSView | null): void;
  /** The banner's label of the form. */
  setSoftMessageLabel(label: NSView | null): void;
  /** The banner's close button of the form. */
  setSoftCloseButton_(button: NSView | null): void;
  /** The banner's close button of the form. */
  setSoftCloseButton(button: NSView | null): void;
  /** The number of the banner's message. */
  setMessageId_(id: any): void;
  /** The number of the banner's message. */
  setMessageId(id: any): void;
  /** The URL that the banner opens. */
  setSoftActionUrlString_(string: string | null): void;
  /** The URL that the banner opens. */
  setSoftActionUrlString(string: string | null): void;
  /** Told what the user does with the controls; held weakly. */
  setDelegate_(delegate: KVViewControllerDelegate | null): void;
  /** Told what the user does with the controls; held weakly. */
  setDelegate(delegate: KVViewControllerDelegate | null): void;
}

interface KVViewControllerAllocated {
  /** Creates a controller for the row of a layer. */
  init(): KVViewController;
  /** Creates a controller for a form; nil if there is no such form. */
  initWithNibName_bundle_(name: string | null, bundle: string | null): KVViewController;
  /** Creates a controller for a form; nil if there is no such form. */
  initWithNibName_bundle(name: string | null, bundle: string | null): KVViewController;
}

declare const KVViewController: KelvarClass & {
  alloc(): KVViewControllerAllocated;
  /** Creates a controller for the row of a layer. */
  "new"(): KVViewController;
};

interface KVPopupCell extends NSObject {
  /** The pop-up button of the form. */
  get popupButton(): () => NSView;
  set popupButton(value: NSView | null);
  /** The title's label of the form. */
  get titleField(): () => NSView;
  set titleField(value: NSView | null);
  /** The image view of the form. */
  get imageView(): () => NSView;
  set imageView(value: NSView | null);
  /** An identifier for the owner's use. */
  get reuseIdentifier(): () => string;
  set reuseIdentifier(value: string | null);
  /** The image beside the title; the chooser keeps a copy. */
  get image(): () => NSImage;
  set image(value: NSImage | null);
  /** The title. */
  get name(): () => string;
  set name(value: string | null);
  /** The identifier of the selected item, or nil for no selection. */
  get selectedIdentifier(): () => string;
  set selectedIdentifier(value: string | null);
  /** A layer's identifier, for the owner's use. */
  get layerID(): () => string;
  set layerID(value: string | null);
  /** The menu of the pop-up button. */
  get popupMenu(): () => KVMenu;
  set popupMenu(value: KVMenu | null);
  /** Told when the user chooses an item; held weakly. */
  get delegate(): () => KVPopupCellDelegate;
  set delegate(value: KVPopupCellDelegate | null);
  /** Returns the name of the form. */
  nibName(): string;
  /** Returns the chooser's view, loading the form on first use. */
  view(): NSView;
  /** Called when the form has loaded; shows the properties. */
  viewDidLoad(): void;
  /** Shows the current properties. */
  reloadData(): void;
  /** Returns the first item of the menu with the selected identifier, or nil. */
  selectedItem(): NSMenuItem;
  /** Returns the dictionary of the selected item, or nil. */
  representedObject(): any;
  /** Called when a pop-up button is about to open; if it is this chooser's, the chooser reloads and becomes its target. */
  popupButtonDidPop_(pop: NSView | null): void;
  /** Called when a pop-up button is about to open; if it is this chooser's, the chooser reloads and becomes its target. */
  popupButtonDidPop(pop: NSView | null): void;
  /** Action of the menu's items: selects the item, reloads and tells the delegate. */
  itemDidSelect_(select: NSView | null): void;
  /** Action of the menu's items: selects the item, reloads and tells the delegate. */
  itemDidSelect(select: NSView | null): void;
  /** The pop-up button of the form. */
  setPopupButton_(button: NSView | null): void;
  /** The pop-up button of the form. */
  setPopupButton(button: NSView | null): void;
  /** The title's label of the form. */
  setTitleField_(field: NSView | null): void;
  /** The title's label of the form. */
  setTitleField(field: NSView | null): void;
  /** The image view of the form. */
  setImageView_(view: NSView | null): void;
  /** The image view of the form. */
  setImageView(view: NSView | null): void;
  /** An identifier for the owner's use. */
  setReuseIdentifier_(identifier: string | null): void;
  /** An identifier for the owner's use. */
  setReuseIdentifier(identifier: string | null): void;
  /** The image beside the title; the chooser keeps a copy. */
  setImage_(image: NSImage | null): void;
  /** The image beside the title; the chooser keeps a copy. */
  setImage(image: NSImage | null): void;
  /** The title. */
  setName_(name: string | null): void;
  /** The title. */
  setName(name: string | null): void;
  /** The identifier of the selected item, or nil for no selection. */
  setSelectedIdentifier_(identifier: string | null): void;
  /** The identifier of the selected item, or nil for no selection. */
  setSelectedIdentifier(identifier: string | null): void;
  /** A layer's identifier, for the owner's use. */
  setLayerID_(id: string | null): void;
  /** A layer's identifier, for the owner's use. */
  setLayerID(id: string | null): void;
  /** The menu of the pop-up button. */
  setPopupMenu_(menu: KVMenu | null): void;
  /** The menu of the pop-up button. */
  setPopupMenu(menu: KVMenu | null): void;
  /** Told when the user chooses an item; held weakly. */
  setDelegate_(delegate: KVPopupCellDelegate | null): void;
  /** Told when the user chooses an item; held weakly. */
  setDelegate(delegate: KVPopupCellDelegate | null): void;
}

interface KVPopupCellAllocated {
  /** Creates a chooser. */
  init(): KVPopupCell;
  /** Creates a chooser for a form; nil if there is no such form. */
  initWithNibName_bundle_(name: string | null, bundle: string | null): KVPopupCell;
  /** Creates a chooser for a form; nil if there is no such form. */
  initWithNibName_bundle(name: string | null, bundle: string | null): KVPopupCell;
}

declare const KVPopupCell: KelvarClass & {
  alloc(): KVPopupCellAllocated;
  /** Creates a chooser. */
  "new"(): KVPopupCell;
};

interface KVMenu extends NSObject {
  /** Appends an item. */
  addItem_(item: NSMenuItem | null): void;
  /** Appends an item. */
  addItem(item: NSMenuItem | null): void;
  /** The items in order. */
  itemArray(): any[];
  /** Returns the number of items, separators included. */
  numberOfItems(): number;
  /** Returns an item by its position. */
  itemAtIndex_(index: number): NSMenuItem;
  /** Returns an item by its position. */
  itemAtIndex(index: number): NSMenuItem;
  /** Returns the first item with that title, or nil. */
  itemWithTitle_(title: string | null): NSMenuItem;
  /** Returns the first item with that title, or nil. */
  itemWithTitle(title: string | null): NSMenuItem;
  /** Returns the position of the first item with that title, or -1. */
  indexOfItemWithTitle_(title: string | null): number;
  /** Returns the position of the first item with that title, or -1. */
  indexOfItemWithTitle(title: string | null): number;
  /** Inserts an item. */
  insertItem_atIndex_(item: NSMenuItem | null, index: number): void;
  /** Inserts an item. */
  insertItem_atIndex(item: NSMenuItem | null, index: number): void;
  /** Removes an item. */
  removeItemAtIndex_(index: number): void;
  /** Removes an item. */
  removeItemAtIndex(index: number): void;
  /** Removes all items. */
  removeAllItems(): void;
  /** Does what choosing the item does in the pop-up button that shows the menu. */
  performActionForItemAtIndex_(index: number): void;
  /** Does what choosing the item does in the pop-up button that shows the menu. */
  performActionForItemAtIndex(index: number): void;
}

interface KVMenuAllocated {
  /** Creates an empty menu. */
  init(): KVMenu;
}

declare const KVMenu: KelvarClass & {
  alloc(): KVMenuAllocated;
  /** Creates an empty menu. */
  "new"(): KVMenu;
  /** Creates a menu from dictionaries with "title", and optionally "identifier", "image" and "type" ("separator" for a line). */
  menuWithItems_(items: any[] | null): KVMenu;
  /** Creates a menu from dictionaries with "title", and optionally "identifier", "image" and "type" ("separator" for a line). */
  menuWithItems(items: any[] | null): KVMenu;
};

interface NSView extends NSObject {
  /** Position and size in points, in the superview's coordinates: from its bottom left, y up. */
  get frame(): () => NSRect;
  set frame(value: NSRect);
  /** What follows when the superview is resized: a sum of `NSViewWidthSizable`, `NSViewMinYMargin` and the others; 0 for nothing. */
  get autoresizingMask(): () => number;
  set autoresizingMask(value: number);
  /** Whether the view is hidden; a view without a superview is shown as a window. */
  get hidden(): () => boolean;
  set hidden(value: boolean);
  /** A number for the owner's use. */
  get tag(): () => number;
  set tag(value: number);
  /** An identifier for the owner's use; in a form, the name that the form gives it. */
  get identifier(): () => string;
  set identifier(value: string | null);
  /** The text that appears when the pointer rests on the view, or nil. */
  get toolTip(): () => string;
  set toolTip(value: string | null);
  /** Position and size in points, in the superview's coordinates: from its bottom left, y up. */
  setFrame_(frame: NSRect): void;
  /** Position and size in points, in the superview's coordinates: from its bottom left, y up. */
  setFrame(frame: NSRect): void;
  /** The view's own rectangle in points, which starts at 0. */
  bounds(): NSRect;
  /** Moves the view. */
  setFrameOrigin_(origin: NSPoint): void;
  /** Moves the view. */
  setFrameOrigin(origin: NSPoint): void;
  /** Resizes the view; its bottom left stays where it is. */
  setFrameSize_(size: NSSize): void;
  /** Resizes the view; its bottom left stays where it is. */
  setFrameSize(size: NSSize): void;
  /** What follows when the superview is resized: a sum of `NSViewWidthSizable`, `NSViewMinYMargin` and the others; 0 for nothing. */
  setAutoresizingMask_(mask: number): void;
  /** What follows when the superview is resized: a sum of `NSViewWidthSizable`, `NSViewMinYMargin` and the others; 0 for nothing. */
  setAutoresizingMask(mask: number): void;
  /** Returns the size in points that the contents need, at the current width if their height depends on it. */
  fittingSize(): NSSize;
  /** Returns false: y grows upward in every view. */
  isFlipped(): boolean;
  /** Puts a view into this one, in front of its other subviews. */
  addSubview_(subview: NSView | null): void;
  /** Puts a view into this one, in front of its other subviews. */
  addSubview(subview: NSView | null): void;
  /** Takes the view out of its superview. */
  removeFromSuperview(): void;
  /** The view that this one is in, or nil. */
  superview(): NSView;
  /** The views in this one, from back to front. */
  subviews(): any[];
  /** The window that the view is in, or nil. */
  window(): NSWindow;
  /** Returns whether the view is the other one or inside it. */
  isDescendantOf_(of: NSView | null): boolean;
  /** Returns whether the view is the other one or inside it. */
  isDescendantOf(of: NSView | null): boolean;
  /** Says which view of the window gets the focus after this one, when the window is shown. */
  setNextKeyView_(view: NSView | null): void;
  /** Says which view of the window gets the focus after this one, when the window is shown. */
  setNextKeyView(view: NSView | null): void;
  /** Returns the first of the view and those inside it with that tag, or nil. */
  viewWithTag_(tag: number): NSView;
  /** Returns the first of the view and those inside it with that tag, or nil. */
  viewWithTag(tag: number): NSView;
  /** Whether the view is hidden; a view without a superview is shown as a window. */
  setHidden_(hidden: boolean): void;
  /** Whether the view is hidden; a view without a superview is shown as a window. */
  setHidden(hidden: boolean): void;
  /** Returns whether the view is hidden. */
  isHidden(): boolean;
  /** Has the view drawn again, where it is shown. */
  setNeedsDisplay_(display: boolean): void;
  /** Has the view drawn again, where it is shown. */
  setNeedsDisplay(display: boolean): void;
  /** A number for the owner's use. */
  setTag_(tag: number): void;
  /** A number for the owner's use. */
  setTag(tag: number): void;
  /** An identifier for the owner's use; in a form, the name that the form gives it. */
  setIdentifier_(identifier: string | null): void;
  /** An identifier for the owner's use; in a form, the name that the form gives it. */
  setIdentifier(identifier: string | null): void;
  /** The text that appears when the pointer rests on the view, or nil. */
  setToolTip_(tip: string | null): void;
  /** The text that appears when the pointer rests on the view, or nil. */
  setToolTip(tip: string | null): void;
}

interface NSViewAllocated {
  /** Creates an empty view of size zero. */
  init(): NSView;
  /** Creates an empty view. */
  initWithFrame_(frame: NSRect): NSView;
  /** Creates an empty view. */
  initWithFrame(frame: NSRect): NSView;
}

declare const NSView: KelvarClass & {
  alloc(): NSViewAllocated;
  /** Creates an empty view of size zero. */
  "new"(): NSView;
};

interface KVView extends NSView {
  /** The shadow around the view and its contents, or nil. */
  get dropShadow(): () => NSShadow;
  set dropShadow(value: NSShadow | null);
  /** The fill color; nil for black. */
  get backgroundColor(): () => any;
  set backgroundColor(value: any);
  /** The border's color, or nil for no border. */
  get borderColor(): () => any;
  set borderColor(value: any);
  /** The border's width in points, centered on the view's edge; 0 for no border. */
  get borderWidth(): () => number;
  set borderWidth(value: number);
  /** How far the shadow of fill and border is moved, in points: x to the right, y up. */
  get innerShadowSize(): () => NSPoint;
  set innerShadowSize(value: NSPoint);
  /** The blur radius of the shadow of fill and border, in points. */
  get innerShadowBlur(): () => number;
  set innerShadowBlur(value: number);
  /** The color of the shadow of fill and border, or nil for none. */
  get innerShadowColor(): () => any;
  set innerShadowColor(value: any);
  /** How far the drop shadow is moved, in points: x to the right, y up. */
  get shadowSize(): () => NSPoint;
  set shadowSize(value: NSPoint);
  /** The drop shadow's blur radius, in points. */
  get shadowBlur(): () => number;
  set shadowBlur(value: number);
  /** The drop shadow's color, or nil for none. */
  get shadowColor(): () => any;
  set shadowColor(value: any);
  /** Returns false: what is behind the view shows through. */
  isOpaque(): boolean;
  /** Copies `shadowSize`, `shadowBlur` and `shadowColor` to the drop shadow. */
  refreshShadow(): void;
  /** The shadow around the view and its contents, or nil. */
  setDropShadow_(shadow: NSShadow | null): void;
  /** The shadow around the view and its contents, or nil. */
  setDropShadow(shadow: NSShadow | null): void;
  /** The fill color; nil for black. */
  setBackgroundColor_(color: NSColor | null): void;
  /** The fill color; nil for black. */
  setBackgroundColor(color: NSColor | null): void;
  /** The border's color, or nil for no border. */
  setBorderColor_(color: NSColor | null): void;
  /** The border's color, or nil for no border. */
  setBorderColor(color: NSColor | null): void;
  /** The border's width in points, centered on the view's edge; 0 for no border. */
  setBorderWidth_(width: number): void;
  /** The border's width in points, centered on the view's edge; 0 for no border. */
  setBorderWidth(width: number): void;
  /** How far the shadow of fill and border is moved, in points: x to the right, y up. */
  setInnerShadowSize_(size: NSPoint): void;
  /** How far the shadow of fill and border is moved, in points: x to the right, y up. */
  setInnerShadowSize(size: NSPoint): void;
  /** The blur radius of the shadow of fill and border, in points. */
  setInnerShadowBlur_(blur: number): void;
  /** The blur radius of the shadow of fill and border, in points. */
  setInnerShadowBlur(blur: number): void;
  /** The color of the shadow of fill and border, or nil for none. */
  setInnerShadowColor_(color: NSColor | null): void;
  /** The color of the shadow of fill and border, or nil for none. */
  setInnerShadowColor(color: NSColor | null): void;
  /** How far the drop shadow is moved, in points: x to the right, y up. */
  setShadowSize_(size: NSPoint): void;
  /** How far the drop shadow is moved, in points: x to the right, y up. */
  setShadowSize(size: NSPoint): void;
  /** The drop shadow's blur radius, in points. */
  setShadowBlur_(blur: number): void;
  /** The drop shadow's blur radius, in points. */
  setShadowBlur(blur: number): void;
  /** The drop shadow's color, or nil for none. */
  setShadowColor_(color: NSColor | null): void;
  /** The drop shadow's color, or nil for none. */
  setShadowColor(color: NSColor | null): void;
}

interface KVViewAllocated {
  /** Creates a view without a drop shadow. */
  init(): KVView;
  /** Creates a view without a drop shadow. */
  initWithFrame_(frame: NSRect): KVView;
  /** Creates a view without a drop shadow. */
  initWithFrame(frame: NSRect): KVView;
  /** Creates a view as a form does, with a drop shadow that is invisible until it has a color. */
  initWithCoder_(coder: any): KVView;
  /** Creates a view as a form does, with a drop shadow that is invisible until it has a color. */
  initWithCoder(coder: any): KVView;
}

declare const KVView: KelvarClass & {
  alloc(): KVViewAllocated;
  /** Creates a view without a drop shadow. */
  "new"(): KVView;
};

interface NSControl extends NSView {
  /** Whether the user can use it. */
  get enabled(): () => boolean;
  set enabled(value: boolean);
  /** The value as text. */
  get stringValue(): () => string;
  set stringValue(value: string | null);
  /** The value as text. */
  get objectValue(): () => string;
  set objectValue(value: string | null);
  /** The value as a number; 0 for text that does not start with one. */
  get doubleValue(): () => number;
  set doubleValue(value: number);
  /** The value as a number; 0 for text that does not start with one. */
  get floatValue(): () => number;
  set floatValue(value: number);
  /** The value as a whole number; 0 for text that does not start with one. */
  get integerValue(): () => number;
  set integerValue(value: number);
  /** The value as a whole number; 0 for text that does not start with one. */
  get intValue(): () => number;
  set intValue(value: number);
  /** The font; nil for the default one. */
  get font(): () => NSFont;
  set font(value: NSFont | null);
  /** A function that is called with the control when the user has used it, after the form's own action. */
  get COSJSTargetFunction(): () => ControlAction;
  set COSJSTargetFunction(value: ControlAction | null);
  /** Whether the user can use it. */
  setEnabled_(enabled: boolean): void;
  /** Whether the user can use it. */
  setEnabled(enabled: boolean): void;
  /** Returns whether the user can use it. */
  isEnabled(): boolean;
  /** The value as text. */
  setStringValue_(value: string | null): void;
  /** The value as text. */
  setStringValue(value: string | null): void;
  /** The value as text. */
  setObjectValue_(value: string | null): void;
  /** The value as text. */
  setObjectValue(value: string | null): void;
  /** The value as a number; 0 for text that does not start with one. */
  setDoubleValue_(value: number): void;
  /** The value as a number; 0 for text that does not start with one. */
  setDoubleValue(value: number): void;
  /** The value as a number; 0 for text that does not start with one. */
  setFloatValue_(value: number): void;
  /** The value as a number; 0 for text that does not start with one. */
  setFloatValue(value: number): void;
  /** The value as a whole number; 0 for text that does not start with one. */
  setIntegerValue_(value: number): void;
  /** The value as a whole number; 0 for text that does not start with one. */
  setIntegerValue(value: number): void;
  /** The value as a whole number; 0 for text that does not start with one. */
  setIntValue_(value: number): void;
  /** The value as a whole number; 0 for text that does not start with one. */
  setIntValue(value: number): void;
  /** The font; nil for the default one. */
  setFont_(font: NSFont | null): void;
  /** The font; nil for the default one. */
  setFont(font: NSFont | null): void;
  /** Gives the control the size that its contents need; its top left stays. */
  sizeToFit(): void;
  /** Does what a click of the user does, if the control is enabled; the argument has no effect. */
  performClick_(click: any): void;
  /** Does what a click of the user does, if the control is enabled; the argument has no effect. */
  performClick(click: any): void;
  /** A function that is called with the control when the user has used it, after the form's own action. */
  setCOSJSTargetFunction_(argument1: ControlAction | null): void;
  /** A function that is called with the control when the user has used it, after the form's own action. */
  setCOSJSTargetFunction(argument1: ControlAction | null): void;
}

interface NSControlAllocated {
}

declare const NSControl: KelvarClass & {
  alloc(): NSControlAllocated;
};

interface NSButton extends NSControl {
  /** The title. */
  get title(): () => string;
  set title(value: string | null);
  /** Off is 0, on is 1, mixed is -1. */
  get state(): () => number;
  set state(value: number);
  /** Whether a check box can be mixed. */
  get allowsMixedState(): () => boolean;
  set allowsMixedState(value: boolean);
  /** The bezel that was asked for; the desktop decides on its look. */
  get bezelStyle(): () => number;
  set bezelStyle(value: number);
  /** The image beside the title, or nil. */
  get image(): () => NSImage;
  set image(value: NSImage | null);
  /** Whether a push button has a bezel. */
  get bordered(): () => boolean;
  set bordered(value: boolean);
  /** The key that presses it: "\r" for Return, "\x1b" for Escape, else a character that is typed with Ctrl. */
  get keyEquivalent(): () => string;
  set keyEquivalent(value: string | null);
  /** The title. */
  setTitle_(title: string | null): void;
  /** The title. */
  setTitle(title: string | null): void;
  /** Off is 0, on is 1, mixed is -1. */
  setState_(state: number): void;
  /** Off is 0, on is 1, mixed is -1. */
  setState(state: number): void;
  /** Whether a check box can be mixed. */
  setAllowsMixedState_(state: boolean): void;
  /** Whether a check box can be mixed. */
  setAllowsMixedState(state: boolean): void;
  /** Makes it a check box (`NSSwitchButton`), a radio button (`NSRadioButton`), a button that stays pressed (`NSPushOnPushOffButton`) or a push button. */
  setButtonType_(type: number): void;
  /** Makes it a check box (`NSSwitchButton`), a radio button (`NSRadioButton`), a button that stays pressed (`NSPushOnPushOffButton`) or a push button. */
  setButtonType(type: number): void;
  /** The bezel that was asked for; the desktop decides on its look. */
  setBezelStyle_(style: number): void;
  /** The bezel that was asked for; the desktop decides on its look. */
  setBezelStyle(style: number): void;
  /** The image beside the title, or nil. */
  setImage_(image: NSImage | null): void;
  /** The image beside the title, or nil. */
  setImage(image: NSImage | null): void;
  /** Whether a push button has a bezel. */
  setBordered_(bordered: boolean): void;
  /** Whether a push button has a bezel. */
  setBordered(bordered: boolean): void;
  /** The key that presses it: "\r" for Return, "\x1b" for Escape, else a character that is typed with Ctrl. */
  setKeyEquivalent_(equivalent: string | null): void;
  /** The key that presses it: "\r" for Return, "\x1b" for Escape, else a character that is typed with Ctrl. */
  setKeyEquivalent(equivalent: string | null): void;
}

interface NSButtonAllocated {
  /** Creates a push button of size zero. */
  init(): NSButton;
  /** Creates a push button. */
  initWithFrame_(frame: NSRect): NSButton;
  /** Creates a push button. */
  initWithFrame(frame: NSRect): NSButton;
}

declare const NSButton: KelvarClass & {
  alloc(): NSButtonAllocated;
  /** Creates a push button of size zero. */
  "new"(): NSButton;
};

interface KVButton extends NSButton {
  /** The color behind the button, or nil for none. */
  get backgroundColor(): () => any;
  set backgroundColor(value: any);
  /** The color that `awakeFromNib` gives the title, or nil for the palette's. */
  get textColor(): () => any;
  set textColor(value: any);
  /** Gives the title its color; called once when the form has loaded. */
  awakeFromNib(): void;
  /** The color behind the button, or nil for none. */
  setBackgroundColor_(color: NSColor | null): void;
  /** The color behind the button, or nil for none. */
  setBackgroundColor(color: NSColor | null): void;
  /** The color that `awakeFromNib` gives the title, or nil for the palette's. */
  setTextColor_(color: NSColor | null): void;
  /** The color that `awakeFromNib` gives the title, or nil for the palette's. */
  setTextColor(color: NSColor | null): void;
}

interface KVButtonAllocated {
  /** Creates a button without a title. */
  init(): KVButton;
  /** Creates a button without a title. */
  initWithFrame_(frame: NSRect): KVButton;
  /** Creates a button without a title. */
  initWithFrame(frame: NSRect): KVButton;
}

declare const KVButton: KelvarClass & {
  alloc(): KVButtonAllocated;
  /** Creates a button without a title. */
  "new"(): KVButton;
};

interface NSTextField extends NSControl {
  /** Whether the user can type; otherwise it is a label, whose text wraps. */
  get editable(): () => boolean;
  set editable(value: boolean);
  /** Whether it has a frame. */
  get bezeled(): () => boolean;
  set bezeled(value: boolean);
  /** Whether it has a frame. */
  get bordered(): () => boolean;
  set bordered(value: boolean);
  /** The text that an empty field shows. */
  get placeholderString(): () => string;
  set placeholderString(value: string | null);
  /** The color of the text, or nil for the palette's. */
  get textColor(): () => any;
  set textColor(value: any);
  /** Whether the text of a label can be selected; that of a field always can. */
  get selectable(): () => boolean;
  set selectable(value: boolean);
  /** Whether the background has its color. */
  get drawsBackground(): () => boolean;
  set drawsBackground(value: boolean);
  /** The color of the background, or nil for the palette's. */
  get backgroundColor(): () => any;
  set backgroundColor(value: any);
  /** Where lines start: `NSLeftTextAlignment`, `NSRightTextAlignment` or `NSCenterTextAlignment`. */
  get alignment(): () => number;
  set alignment(value: number);
  /** Whether the user can type; otherwise it is a label, whose text wraps. */
  setEditable_(editable: boolean): void;
  /** Whether the user can type; otherwise it is a label, whose text wraps. */
  setEditable(editable: boolean): void;
  /** Returns whether the user can type. */
  isEditable(): boolean;
  /** Whether it has a frame. */
  setBezeled_(bezeled: boolean): void;
  /** Whether it has a frame. */
  setBezeled(bezeled: boolean): void;
  /** Whether it has a frame. */
  setBordered_(bordered: boolean): void;
  /** Whether it has a frame. */
  setBordered(bordered: boolean): void;
  /** The text that an empty field shows. */
  setPlaceholderString_(string: string | null): void;
  /** The text that an empty field shows. */
  setPlaceholderString(string: string | null): void;
  /** The color of the text, or nil for the palette's. */
  setTextColor_(color: NSColor | null): void;
  /** The color of the text, or nil for the palette's. */
  setTextColor(color: NSColor | null): void;
  /** Whether the text of a label can be selected; that of a field always can. */
  setSelectable_(selectable: boolean): void;
  /** Whether the text of a label can be selected; that of a field always can. */
  setSelectable(selectable: boolean): void;
  /** Returns whether the text can be selected. */
  isSelectable(): boolean;
  /** Whether the background has its color. */
  setDrawsBackground_(background: boolean): void;
  /** Whether the background has its color. */
  setDrawsBackground(background: boolean): void;
  /** The color of the background, or nil for the palette's. */
  setBackgroundColor_(color: NSColor | null): void;
  /** The color of the background, or nil for the palette's. */
  setBackgroundColor(color: NSColor | null): void;
  /** Where lines start: `NSLeftTextAlignment`, `NSRightTextAlignment` or `NSCenterTextAlignment`. */
  setAlignment_(alignment: number): void;
  /** Where lines start: `NSLeftTextAlignment`, `NSRightTextAlignment` or `NSCenterTextAlignment`. */
  setAlignment(alignment: number): void;
}

interface NSTextFieldAllocated {
  /** Creates a field of size zero. */
  init(): NSTextField;
  /** Creates a field to type into. */
  initWithFrame_(frame: NSRect): NSTextField;
  /** Creates a field to type into. */
  initWithFrame(frame: NSRect): NSTextField;
}

declare const NSTextField: KelvarClass & {
  alloc(): NSTextFieldAllocated;
  /** Creates a field of size zero. */
  "new"(): NSTextField;
  /** Creates a label of the size of its text. */
  labelWithString_(string: string | null): NSTextField;
  /** Creates a label of the size of its text. */
  labelWithString(string: string | null): NSTextField;
};

interface NSSecureTextField extends NSTextField {
}

interface NSSecureTextFieldAllocated {
  /** Creates a field of size zero. */
  init(): NSSecureTextField;
  /** Creates a field that shows dots instead of what is typed. */
  initWithFrame_(frame: NSRect): NSSecureTextField;
  /** Creates a field that shows dots instead of what is typed. */
  initWithFrame(frame: NSRect): NSSecureTextField;
}

declare const NSSecureTextField: KelvarClass & {
  alloc(): NSSecureTextFieldAllocated;
  /** Creates a field of size zero. */
  "new"(): NSSecureTextField;
};

interface NSPopUpButton extends NSControl {
  /** The menu with the items. */
  get menu(): () => KVMenu;
  set menu(value: KVMenu | null);
  /** The text on the button; setting it selects no item. */
  get title(): () => string;
  set title(value: string | null);
  /** The menu with the items. */
  setMenu_(menu: KVMenu | null): void;
  /** The menu with the items. */
  setMenu(menu: KVMenu | null): void;
  /** The items in order. */
  itemArray(): any[];
  /** The titles of the items in order. */
  itemTitles(): string[];
  /** Returns the number of items, separators included. */
  numberOfItems(): number;
  /** Appends an item; the first one is selected. */
  addItemWithTitle_(title: string | null): void;
  /** Appends an item; the first one is selected. */
  addItemWithTitle(title: string | null): void;
  /** Appends items; the first one is selected. */
  addItemsWithTitles_(titles: string[] | null): void;
  /** Appends items; the first one is selected. */
  addItemsWithTitles(titles: string[] | null): void;
  /** Removes an item by its position. */
  removeItemAtIndex_(index: number): void;
  /** Removes an item by its position. */
  removeItemAtIndex(index: number): void;
  /** Removes the first item with that title, if there is one. */
  removeItemWithTitle_(title: string | null): void;
  /** Removes the first item with that title, if there is one. */
  removeItemWithTitle(title: string | null): void;
  /** Inserts an item at a position. */
  insertItemWithTitle_atIndex_(title: string | null, index: number): void;
  /** Inserts an item at a position. */
  insertItemWithTitle_atIndex(title: string | null, index: number): void;
  /** Removes all items. */
  removeAllItems(): void;
  /** Returns an item by its position. */
  itemAtIndex_(index: number): NSMenuItem;
  /** Returns an item by its position. */
  itemAtIndex(index: number): NSMenuItem;
  /** Returns the title of an item by its position. */
  itemTitleAtIndex_(index: number): string;
  /** Returns the title of an item by its position. */
  itemTitleAtIndex(index: number): string;
  /** Returns the position of the first item with that title, or -1. */
  indexOfItemWithTitle_(title: string | null): number;
  /** Returns the position of the first item with that title, or -1. */
  indexOfItemWithTitle(title: string | null): number;
  /** The position of the selected item, or -1. */
  indexOfSelectedItem(): number;
  /** The selected item, or nil. */
  selectedItem(): NSMenuItem;
  /** The title of the selected item, or nil. */
  titleOfSelectedItem(): string;
  /** Selects an item by its position, or none for -1; the action does not run. */
  selectItemAtIndex_(index: number): void;
  /** Selects an item by its position, or none for -1; the action does not run. */
  selectItemAtIndex(index: number): void;
  /** Selects the first item with that title, or none; the action does not run. */
  selectItemWithTitle_(title: string | null): void;
  /** Selects the first item with that title, or none; the action does not run. */
  selectItemWithTitle(title: string | null): void;
  /** Selects the item, or none for nil; the action does not run. */
  selectItem_(item: NSMenuItem | null): void;
  /** Selects the item, or none for nil; the action does not run. */
  selectItem(item: NSMenuItem | null): void;
  /** The text on the button; setting it selects no item. */
  setTitle_(title: string | null): void;
  /** The text on the button; setting it selects no item. */
  setTitle(title: string | null): void;
  /** Returns the last item, or nil. */
  lastItem(): NSMenuItem;
  /** Returns the first item with that title, or nil. */
  itemWithTitle_(title: string | null): NSMenuItem;
  /** Returns the first item with that title, or nil. */
  itemWithTitle(title: string | null): NSMenuItem;
  /** Returns the position of the first item with that tag, or -1. */
  indexOfItemWithTag_(tag: number): number;
  /** Returns the position of the first item with that tag, or -1. */
  indexOfItemWithTag(tag: number): number;
  /** Selects the first item with that tag, and returns whether there is one; the action does not run. */
  selectItemWithTag_(tag: number): boolean;
  /** Selects the first item with that tag, and returns whether there is one; the action does not run. */
  selectItemWithTag(tag: number): boolean;
  /** Returns the tag of the selected item, or -1. */
  selectedTag(): number;
}

interface NSPopUpButtonAllocated {
  /** Creates a button of size zero. */
  init(): NSPopUpButton;
  /** Creates a pop-up button without items; menus that pull down are refused. */
  initWithFrame_pullsDown_(frame: NSRect, down: boolean): NSPopUpButton;
  /** Creates a pop-up button without items; menus that pull down are refused. */
  initWithFrame_pullsDown(frame: NSRect, down: boolean): NSPopUpButton;
  /** Creates a pop-up button without items. */
  initWithFrame_(frame: NSRect): NSPopUpButton;
  /** Creates a pop-up button without items. */
  initWithFrame(frame: NSRect): NSPopUpButton;
}

declare const NSPopUpButton: KelvarClass & {
  alloc(): NSPopUpButtonAllocated;
  /** Creates a button of size zero. */
  "new"(): NSPopUpButton;
};

interface NSComboBox extends NSControl {
  /** Whether the user may also type. */
  get editable(): () => boolean;
  set editable(value: boolean);
  /** How many items its list shows at a time. */
  get numberOfVisibleItems(): () => number;
  set numberOfVisibleItems(value: number);
  /** Whether the user may also type. */
  setEditable_(editable: boolean): void;
  /** Whether the user may also type. */
  setEditable(editable: boolean): void;
  /** How many items its list shows at a time. */
  setNumberOfVisibleItems_(items: number): void;
  /** How many items its list shows at a time. */
  setNumberOfVisibleItems(items: number): void;
  /** The items in order. */
  objectValues(): string[];
  /** Appends an item. */
  addItemWithObjectValue_(value: any): void;
  /** Appends an item. */
  addItemWithObjectValue(value: any): void;
  /** Appends items. */
  addItemsWithObjectValues_(values: any[] | null): void;
  /** Appends items. */
  addItemsWithObjectValues(values: any[] | null): void;
  /** Removes all items. */
  removeAllItems(): void;
  /** Returns the number of items. */
  numberOfItems(): number;
  /** Returns an item by its position. */
  itemObjectValueAtIndex_(index: number): string;
  /** Returns an item by its position. */
  itemObjectValueAtIndex(index: number): string;
  /** Returns the position of an item, or -1. */
  indexOfItemWithObjectValue_(value: any): number;
  /** Returns the position of an item, or -1. */
  indexOfItemWithObjectValue(value: any): number;
  /** The position of the item that the text is, or -1. */
  indexOfSelectedItem(): number;
  /** Returns the item that the text is, or nil. */
  objectValueOfSelectedItem(): string;
  /** Makes an item the text; the action does not run. */
  selectItemAtIndex_(index: number): void;
  /** Makes an item the text; the action does not run. */
  selectItemAtIndex(index: number): void;
  /** Makes an item the text, if there is such a one; the action does not run. */
  selectItemWithObjectValue_(value: any): void;
  /** Makes an item the text, if there is such a one; the action does not run. */
  selectItemWithObjectValue(value: any): void;
}

interface NSComboBoxAllocated {
  /** Creates a combo box of size zero. */
  init(): NSComboBox;
  /** Creates a combo box without items. */
  initWithFrame_(frame: NSRect): NSComboBox;
  /** Creates a combo box without items. */
  initWithFrame(frame: NSRect): NSComboBox;
}

declare const NSComboBox: KelvarClass & {
  alloc(): NSComboBoxAllocated;
  /** Creates a combo box of size zero. */
  "new"(): NSComboBox;
};

interface NSImageView extends NSControl {
  /** The image, which is centered and scaled down to fit, or nil. */
  get image(): () => NSImage;
  set image(value: NSImage | null);
  /** The image, which is centered and scaled down to fit, or nil. */
  setImage_(image: NSImage | null): void;
  /** The image, which is centered and scaled down to fit, or nil. */
  setImage(image: NSImage | null): void;
}

interface NSImageViewAllocated {
  /** Creates an image view of size zero. */
  init(): NSImageView;
  /** Creates an image view without image. */
  initWithFrame_(frame: NSRect): NSImageView;
  /** Creates an image view without image. */
  initWithFrame(frame: NSRect): NSImageView;
}

declare const NSImageView: KelvarClass & {
  alloc(): NSImageViewAllocated;
  /** Creates an image view of size zero. */
  "new"(): NSImageView;
};

interface NSMatrix extends NSControl {
  /** The size of each cell. */
  get cellSize(): () => NSSize;
  set cellSize(value: NSSize);
  /** The space between cells. */
  get intercellSpacing(): () => NSSize;
  set intercellSpacing(value: NSSize);
  /** The cells, row by row. */
  cells(): any[];
  /** How many rows there are. */
  numberOfRows(): number;
  /** How many columns there are. */
  numberOfColumns(): number;
  /** The size of each cell. */
  setCellSize_(size: NSSize): void;
  /** The size of each cell. */
  setCellSize(size: NSSize): void;
  /** The space between cells. */
  setIntercellSpacing_(spacing: NSSize): void;
  /** The space between cells. */
  setIntercellSpacing(spacing: NSSize): void;
  /** Returns a cell, or nil. */
  cellAtRow_column_(row: number, column: number): NSButtonCell;
  /** Returns a cell, or nil. */
  cellAtRow_column(row: number, column: number): NSButtonCell;
  /** Returns the first cell that is on, or nil. */
  selectedCell(): NSButtonCell;
  /** Returns the row of the first cell that is on, or -1. */
  selectedRow(): number;
  /** Returns the column of the first cell that is on, or -1. */
  selectedColumn(): number;
  /** Returns the tag of the first cell that is on, or -1. */
  selectedTag(): number;
  /** Switches a cell on and, among radio buttons, the others off; the action does not run. */
  selectCellAtRow_column_(row: number, column: number): void;
  /** Switches a cell on and, among radio buttons, the others off; the action does not run. */
  selectCellAtRow_column(row: number, column: number): void;
  /** Selects the first cell with that tag, and returns whether there is one. */
  selectCellWithTag_(tag: number): boolean;
  /** Selects the first cell with that tag, and returns whether there is one. */
  selectCellWithTag(tag: number): boolean;
}

interface NSMatrixAllocated {
  /** Creates rows of buttons that are copies of the prototype; with `NSRadioModeMatrix` one of them is on. */
  initWithFrame_mode_prototype_numberOfRows_numberOfColumns_(frame: NSRect, mode: number, prototype: NSButtonCell | null, rows: number, columns: number): NSMatrix;
  /** Creates rows of buttons that are copies of the prototype; with `NSRadioModeMatrix` one of them is on. */
  initWithFrame_mode_prototype_numberOfRows_numberOfColumns(frame: NSRect, mode: number, prototype: NSButtonCell | null, rows: number, columns: number): NSMatrix;
}

declare const NSMatrix: KelvarClass & {
  alloc(): NSMatrixAllocated;
};

interface NSScreen extends NSObject {
  /** Returns position and size in points, from the bottom left of the main screen. */
  frame(): NSRect;
  /** Returns what the bars of the desktop leave of it. */
  visibleFrame(): NSRect;
  /** Returns the pixels per point. */
  backingScaleFactor(): number;
}

interface NSScreenAllocated {
}

declare const NSScreen: KelvarClass & {
  alloc(): NSScreenAllocated;
  /** Returns the main screen. */
  mainScreen(): NSScreen;
  /** Returns all screens, the main one first. */
  screens(): any[];
};

interface NSScrollView extends NSView {
  /** The view that is scrolled, or nil; its top left is shown at first. */
  get documentView(): () => NSView;
  set documentView(value: NSView | null);
  /** Whether a vertical scroll bar appears where it is needed; false at first. */
  get hasVerticalScroller(): () => boolean;
  set hasVerticalScroller(value: boolean);
  /** Whether a horizontal scroll bar appears where it is needed; false at first. */
  get hasHorizontalScroller(): () => boolean;
  set hasHorizontalScroller(value: boolean);
  /** The view that is scrolled, or nil; its top left is shown at first. */
  setDocumentView_(view: NSView | null): void;
  /** The view that is scrolled, or nil; its top left is shown at first. */
  setDocumentView(view: NSView | null): void;
  /** Whether a vertical scroll bar appears where it is needed; false at first. */
  setHasVerticalScroller_(scroller: boolean): void;
  /** Whether a vertical scroll bar appears where it is needed; false at first. */
  setHasVerticalScroller(scroller: boolean): void;
  /** Whether a horizontal scroll bar appears where it is needed; false at first. */
  setHasHorizontalScroller_(scroller: boolean): void;
  /** Whether a horizontal scroll bar appears where it is needed; false at first. */
  setHasHorizontalScroller(scroller: boolean): void;
  /** Returns the size in points that the scroll bars leave for the document view. */
  contentSize(): NSSize;
  /** Scrolls as little as shows the rectangle of the document view. */
  scrollRectToVisible_(visible: NSRect): void;
  /** Scrolls as little as shows the rectangle of the document view. */
  scrollRectToVisible(visible: NSRect): void;
}

interface NSScrollViewAllocated {
  /** Creates a scroll view of size zero. */
  init(): NSScrollView;
  /** Creates an empty scroll view. */
  initWithFrame_(frame: NSRect): NSScrollView;
  /** Creates an empty scroll view. */
  initWithFrame(frame: NSRect): NSScrollView;
}

declare const NSScrollView: KelvarClass & {
  alloc(): NSScrollViewAllocated;
  /** Creates a scroll view of size zero. */
  "new"(): NSScrollView;
};

interface NSSlider extends NSControl {
  /** The smallest value. */
  get minValue(): () => number;
  set minValue(value: number);
  /** The largest value. */
  get maxValue(): () => number;
  set maxValue(value: number);
  /** How many marks are drawn along it. */
  get numberOfTickMarks(): () => number;
  set numberOfTickMarks(value: number);
  /** The smallest value. */
  setMinValue_(value: number): void;
  /** The smallest value. */
  setMinValue(value: number): void;
  /** The largest value. */
  setMaxValue_(value: number): void;
  /** The largest value. */
  setMaxValue(value: number): void;
  /** How many marks are drawn along it. */
  setNumberOfTickMarks_(marks: number): void;
  /** How many marks are drawn along it. */
  setNumberOfTickMarks(marks: number): void;
  /** Returns whether it is upright. */
  isVertical(): boolean;
}

interface NSSliderAllocated {
  /** Creates a slider of size zero. */
  init(): NSSlider;
  /** Creates a slider from 0 to 1, upright if the frame is higher than wide. */
  initWithFrame_(frame: NSRect): NSSlider;
  /** Creates a slider from 0 to 1, upright if the frame is higher than wide. */
  initWithFrame(frame: NSRect): NSSlider;
}

declare const NSSlider: KelvarClass & {
  alloc(): NSSliderAllocated;
  /** Creates a slider of size zero. */
  "new"(): NSSlider;
};

interface NSStepper extends NSControl {
  /** The smallest value. */
  get minValue(): () => number;
  set minValue(value: number);
  /** The largest value. */
  get maxValue(): () => number;
  set maxValue(value: number);
  /** How much the value changes at a time. */
  get increment(): () => number;
  set increment(value: number);
  /** Whether it goes on at the other end of its range. */
  get valueWraps(): () => boolean;
  set valueWraps(value: boolean);
  /** The smallest value. */
  setMinValue_(value: number): void;
  /** The smallest value. */
  setMinValue(value: number): void;
  /** The largest value. */
  setMaxValue_(value: number): void;
  /** The largest value. */
  setMaxValue(value: number): void;
  /** How much the value changes at a time. */
  setIncrement_(increment: number): void;
  /** How much the value changes at a time. */
  setIncrement(increment: number): void;
  /** Whether it goes on at the other end of its range. */
  setValueWraps_(wraps: boolean): void;
  /** Whether it goes on at the other end of its range. */
  setValueWraps(wraps: boolean): void;
}

interface NSStepperAllocated {
  /** Creates a stepper of size zero. */
  init(): NSStepper;
  /** Creates a stepper from 0 to 59, which goes on at the other end. */
  initWithFrame_(frame: NSRect): NSStepper;
  /** Creates a stepper from 0 to 59, which goes on at the other end. */
  initWithFrame(frame: NSRect): NSStepper;
}

declare const NSStepper: KelvarClass & {
  alloc(): NSStepperAllocated;
  /** Creates a stepper of size zero. */
  "new"(): NSStepper;
};

interface NSWindow extends NSObject {
  /** The view that fills the window. */
  get contentView(): () => NSView;
  set contentView(value: NSView | null);
  /** The title of the window. */
  get title(): () => string;
  set title(value: string | null);
  /** The view that has the focus when the window appears, or nil. */
  get initialFirstResponder(): () => NSView;
  set initialFirstResponder(value: NSView | null);
  /** The view that fills the window. */
  setContentView_(view: NSView | null): void;
  /** The view that fills the window. */
  setContentView(view: NSView | null): void;
  /** The title of the window. */
  setTitle_(title: string | null): void;
  /** The title of the window. */
  setTitle(title: string | null): void;
  /** Position and size with the title bar in points, from the bottom left of the screen. */
  frame(): NSRect;
  /** Moves and resizes the window. */
  setFrame_display_(frame: NSRect, display: boolean): void;
  /** Moves and resizes the window. */
  setFrame_display(frame: NSRect, display: boolean): void;
  /** Resizes the content view, in points. */
  setContentSize_(size: NSSize): void;
  /** Resizes the content view, in points. */
  setContentSize(size: NSSize): void;
  /** Moves the window to the middle of the screen. */
  center(): void;
  /** The view that has the focus when the window appears, or nil. */
  setInitialFirstResponder_(responder: NSView | null): void;
  /** The view that has the focus when the window appears, or nil. */
  setInitialFirstResponder(responder: NSView | null): void;
  /** Gives a view of the window the focus, or none for nil; returns whether that was possible. */
  makeFirstResponder_(responder: NSView | null): boolean;
  /** Gives a view of the window the focus, or none for nil; returns whether that was possible. */
  makeFirstResponder(responder: NSView | null): boolean;
  /** Whether the window is on screen. */
  isVisible(): boolean;
  /** Shows the window in front of the others; the argument has no effect. */
  makeKeyAndOrderFront_(front: any): void;
  /** Shows the window in front of the others; the argument has no effect. */
  makeKeyAndOrderFront(front: any): void;
  /** Shows the window in front of the others; the argument has no effect. */
  orderFront_(front: any): void;
  /** Shows the window in front of the others; the argument has no effect. */
  orderFront(front: any): void;
  /** Hides the window; the argument has no effect. */
  orderOut_(out: any): void;
  /** Hides the window; the argument has no effect. */
  orderOut(out: any): void;
  /** Hides the window and lets go of it. */
  close(): void;
}

interface NSWindowAllocated {
  /** Creates a hidden window of size zero with a title bar. */
  init(): NSWindow;
  /** Creates a hidden window with an empty view of that size; the rest of the rectangle and the last two arguments have no effect. */
  initWithContentRect_styleMask_backing_defer_(rect: NSRect, mask: number, backing: any, defer: boolean): NSWindow;
  /** Creates a hidden window with an empty view of that size; the rest of the rectangle and the last two arguments have no effect. */
  initWithContentRect_styleMask_backing_defer(rect: NSRect, mask: number, backing: any, defer: boolean): NSWindow;
}

declare const NSWindow: KelvarClass & {
  alloc(): NSWindowAllocated;
  /** Creates a hidden window of size zero with a title bar. */
  "new"(): NSWindow;
};

interface NSPanel extends NSWindow {
}

interface NSPanelAllocated {
  /** Creates a hidden window of size zero with a title bar. */
  init(): NSPanel;
  /** Creates a hidden window with an empty view of that size; the rest of the rectangle and the last two arguments have no effect. */
  initWithContentRect_styleMask_backing_defer_(rect: NSRect, mask: number, backing: any, defer: boolean): NSPanel;
  /** Creates a hidden window with an empty view of that size; the rest of the rectangle and the last two arguments have no effect. */
  initWithContentRect_styleMask_backing_defer(rect: NSRect, mask: number, backing: any, defer: boolean): NSPanel;
}

declare const NSPanel: KelvarClass & {
  alloc(): NSPanelAllocated;
  /** Creates a hidden window of size zero with a title bar. */
  "new"(): NSPanel;
};

interface KVResizeViewController extends KVViewController {
}

interface KVResizeViewControllerAllocated {
  /** Creates a controller for the wide row of a layer. */
  init(): KVResizeViewController;
  /** Creates a controller for a form; nil if there is no such form. */
  initWithNibName_bundle_(name: string | null, bundle: string | null): KVResizeViewController;
  /** Creates a controller for a form; nil if there is no such form. */
  initWithNibName_bundle(name: string | null, bundle: string | null): KVResizeViewController;
}

declare const KVResizeViewController: KelvarClass & {
  alloc(): KVResizeViewControllerAllocated;
  /** Creates a controller for the wide row of a layer. */
  "new"(): KVResizeViewController;
};

interface KVAction extends NSObject {
  /** Runs the action and returns whether it succeeded. */
  exec(): boolean;
}

interface KVActionImplementation {
  /** Runs the action and returns whether it succeeded. */
  exec?(): boolean;
}

interface KVActionAllocated {
}

declare const KVAction: KelvarClass & {
  alloc(): KVActionAllocated;
};

interface KVOpenURLAction extends KVAction {
}

interface KVOpenURLActionAllocated {
  /** Creates an action without a URL. */
  init(): KVOpenURLAction;
}

declare const KVOpenURLAction: KelvarClass & {
  alloc(): KVOpenURLActionAllocated;
  /** Creates an action without a URL. */
  "new"(): KVOpenURLAction;
  /** Creates an action that opens a URL, given as a string or an NSURL, with the user's default program. */
  openURL_(url: any): KVOpenURLAction;
  /** Creates an action that opens a URL, given as a string or an NSURL, with the user's default program. */
  openURL(url: any): KVOpenURLAction;
};

interface KVBashAction extends KVAction {
  /** The command line; words are separated by single spaces. */
  get command(): () => string;
  set command(value: string | null);
  /** The command line; words are separated by single spaces. */
  setCommand_(command: string | null): void;
  /** The command line; words are separated by single spaces. */
  setCommand(command: string | null): void;
}

interface KVBashActionAllocated {
  /** Creates an action without a command. */
  init(): KVBashAction;
}

declare const KVBashAction: KelvarClass & {
  alloc(): KVBashActionAllocated;
  /** Creates an action without a command. */
  "new"(): KVBashAction;
  /** Creates an action that runs a command line, without a shell. */
  bash_(bash: string | null): KVBashAction;
  /** Creates an action that runs a command line, without a shell. */
  bash(bash: string | null): KVBashAction;
  /** Creates an action that asks the host application to quit. */
  restart(): KVBashAction;
  /** Creates an action that only tells the user to restart. */
  nothing(): KVBashAction;
};

interface CMD extends NSObject {
  /** The directory to run programs in. */
  get cd(): () => string;
  set cd(value: string | null);
  /** The directories to search for programs, separated by colons. */
  get exports(): () => string;
  set exports(value: string | null);
  /** Runs a command line without a shell, waits, and returns everything that it printed; nil if it could not run. */
  exec_(exec: string | null): string;
  /** Runs a command line without a shell, waits, and returns everything that it printed; nil if it could not run. */
  exec(exec: string | null): string;
  /** The directory to run programs in. */
  setCd_(cd: string | null): void;
  /** The directory to run programs in. */
  setCd(cd: string | null): void;
  /** The directories to search for programs, separated by colons. */
  setExports_(exports: string | null): void;
  /** The directories to search for programs, separated by colons. */
  setExports(exports: string | null): void;
}

interface CMDAllocated {
  /** Creates a runner that works in the host application's directory. */
  init(): CMD;
}

declare const CMD: KelvarClass & {
  alloc(): CMDAllocated;
  /** Creates a runner that works in the host application's directory. */
  "new"(): CMD;
};

interface KVExternalActionsHandler extends NSObject {
  /** Returns the URL with the user's setup as its query. */
  urlWithPath_(path: string | null): NSURL;
  /** Returns the URL with the user's setup as its query. */
  urlWithPath(path: string | null): NSURL;
  /** Records the click and opens the vendor's home page. */
  homepageButtonDidPress_(press: any): void;
  /** Records the click and opens the vendor's home page. */
  homepageButtonDidPress(press: any): void;
  /** Records the click and opens the feedback forum. */
  feedbackForumButtonDidPress_(press: any): void;
  /** Records the click and opens the feedback forum. */
  feedbackForumButtonDidPress(press: any): void;
  /** Records the click and opens the support page. */
  supportButtonDidPress_(press: any): void;
  /** Records the click and opens the support page. */
  supportButtonDidPress(press: any): void;
  /** Records the click and opens the store. */
  visitStoreButtonDidPress_(press: any): void;
  /** Records the click and opens the store. */
  visitStoreButtonDidPress(press: any): void;
}

interface KVExternalActionsHandlerAllocated {
  /** Creates a handler for the buttons that link to the vendor's web site. */
  init(): KVExternalActionsHandler;
}

declare const KVExternalActionsHandler: KelvarClass & {
  alloc(): KVExternalActionsHandlerAllocated;
  /** Creates a handler for the buttons that link to the vendor's web site. */
  "new"(): KVExternalActionsHandler;
};

interface Tracker extends NSObject {
  /** The anonymous identity of this installation. */
  get uuid(): () => string;
  set uuid(value: string | null);
  /** The user's email address, or nil if it is unknown. */
  get email(): () => string;
  set email(value: string | null);
  /** The tracker that times events; nil for no timing. */
  get timed(): () => TimedTracker;
  set timed(value: TimedTracker | null);
  /** Adds 1 to a property of the timed event with this name, if it is running. */
  event_increment_(event: string | null, increment: string | null): void;
  /** Adds 1 to a property of the timed event with this name, if it is running. */
  event_increment(event: string | null, increment: string | null): void;
  /** Starts the timed event with this name. */
  timedTrack_(track: string | null): void;
  /** Starts the timed event with this name. */
  timedTrack(track: string | null): void;
  /** Finishes the timed event with this name. */
  timedFinish_properties_(finish: string | null, properties: Record<string, any> | null): void;
  /** Finishes the timed event with this name. */
  timedFinish_properties(finish: string | null, properties: Record<string, any> | null): void;
  /** Finishes the timed event, but lets a start within so many seconds resume it. */
  timedFinish_properties_mergeFutureEventsWithinTimeInterval_(finish: string | null, properties: Record<string, any> | null, interval: number): void;
  /** Finishes the timed event, but lets a start within so many seconds resume it. */
  timedFinish_properties_mergeFutureEventsWithinTimeInterval(finish: string | null, properties: Record<string, any> | null, interval: number): void;
  /** Ends the timed event with this name for good. */
  timedFlush_(flush: string | null): void;
  /** Ends the timed event with this name for good. */
  timedFlush(flush: string | null): void;
  /** Records an event. */
  track_properties_(track: string | null, properties: Record<string, any> | null): void;
  /** Records an event. */
  track_properties(track: string | null, properties: Record<string, any> | null): void;
  /** Handles the start of a timed event, as the delegate of `timed`. */
  timedTracker_eventStarted_(tracker: TimedTracker | null, started: string | null): void;
  /** Handles the start of a timed event, as the delegate of `timed`. */
  timedTracker_eventStarted(tracker: TimedTracker | null, started: string | null): void;
  /** Handles the end of a timed event, as the delegate of `timed`. */
  timedTracker_eventFinished_(tracker: TimedTracker | null, finished: TimedEvent | null): void;
  /** Handles the end of a timed event, as the delegate of `timed`. */
  timedTracker_eventFinished(tracker: TimedTracker | null, finished: TimedEvent | null): void;
  /** Replaces the properties that are recorded with every event. */
  setSuperProperties_(properties: Record<string, any> | null): void;
  /** Replaces the properties that are recorded with every event. */
  setSuperProperties(properties: Record<string, any> | null): void;
  /** Links the anonymous user to an email address. */
  identifyEmail_(email: string | null): void;
  /** Links the anonymous user to an email address. */
  identifyEmail(email: string | null): void;
  /** Tells the server that a new identity belongs to the same user as an old one. */
  aliasId_fromOld_(id: string | null, old: string | null): void;
  /** Tells the server that a new identity belongs to the same user as an old one. */
  aliasId_fromOld(id: string | null, old: string | null): void;
  /** Tells the server that a new identity belongs to the user with this tracker's uuid. */
  aliasFromUUIDTo_(to: string | null): void;
  /** Tells the server that a new identity belongs to the user with this tracker's uuid. */
  aliasFromUUIDTo(to: string | null): void;
  /** The anonymous identity of this installation. */
  setUuid_(uuid: string | null): void;
  /** The anonymous identity of this installation. */
  setUuid(uuid: string | null): void;
  /** The user's email address, or nil if it is unknown. */
  setEmail_(email: string | null): void;
  /** The user's email address, or nil if it is unknown. */
  setEmail(email: string | null): void;
  /** The tracker that times events; nil for no timing. */
  setTimed_(timed: TimedTracker | null): void;
  /** The tracker that times events; nil for no timing. */
  setTimed(timed: TimedTracker | null): void;
}

interface TrackerImplementation {
  /** Adds 1 to a property of the timed event with this name, if it is running. */
  event_increment_?(event: string, increment: string): void | null;
  /** Adds 1 to a property of the timed event with this name, if it is running. */
  event_increment?(event: string, increment: string): void | null;
  /** Starts the timed event with this name. */
  timedTrack_?(track: string): void | null;
  /** Starts the timed event with this name. */
  timedTrack?(track: string): void | null;
  /** Finishes the timed event with this name. */
  timedFinish_properties_?(finish: string, properties: Record<string, any>): void | null;
  /** Finishes the timed event with this name. */
  timedFinish_properties?(finish: string, properties: Record<string, any>): void | null;
  /** Finishes the timed event, but lets a start within so many seconds resume it. */
  timedFinish_properties_mergeFutureEventsWithinTimeInterval_?(finish: string, properties: Record<string, any>, interval: number): void | null;
  /** Finishes the timed event, but lets a start within so many seconds resume it. */
  timedFinish_properties_mergeFutureEventsWithinTimeInterval?(finish: string, properties: Record<string, any>, interval: number): void | null;
  /** Ends the timed event with this name for good. */
  timedFlush_?(flush: string): void | null;
  /** Ends the timed event with this name for good. */
  timedFlush?(flush: string): void | null;
  /** Records an event. */
  track_properties_?(track: string, properties: Record<string, any>): void | null;
  /** Records an event. */
  track_properties?(track: string, properties: Record<string, any>): void | null;
  /** Handles the start of a timed event, as the delegate of `timed`. */
  timedTracker_eventStarted_?(tracker: TimedTracker, started: string): void | null;
  /** Handles the start of a timed event, as the delegate of `timed`. */
  timedTracker_eventStarted?(tracker: TimedTracker, started: string): void | null;
  /** Handles the end of a timed event, as the delegate of `timed`. */
  timedTracker_eventFinished_?(tracker: TimedTracker, finished: TimedEvent): void | null;
  /** Handles the end of a timed event, as the delegate of `timed`. */
  timedTracker_eventFinished?(tracker: TimedTracker, finished: TimedEvent): void | null;
  /** Replaces the properties that are recorded with every event. */
  setSuperProperties_?(properties: Record<string, any>): void | null;
  /** Replaces the properties that are recorded with every event. */
  setSuperProperties?(properties: Record<string, any>): void | null;
  /** Links the anonymous user to an email address. */
  identifyEmail_?(email: string): void | null;
  /** Links the anonymous user to an email address. */
  identifyEmail?(email: string): void | null;
  /** Tells the server that a new identity belongs to the same user as an old one. */
  aliasId_fromOld_?(id: string, old: string): void | null;
  /** Tells the server that a new identity belongs to the same user as an old one. */
  aliasId_fromOld?(id: string, old: string): void | null;
  /** Tells the server that a new identity belongs to the user with this tracker's uuid. */
  aliasFromUUIDTo_?(to: string): void | null;
  /** Tells the server that a new identity belongs to the user with this tracker's uuid. */
  aliasFromUUIDTo?(to: string): void | null;
}

interface TrackerAllocated {
  /** Creates a tracker that times events and otherwise ignores them. */
  init(): Tracker;
}

declare const Tracker: KelvarClass & {
  alloc(): TrackerAllocated;
  /** Creates a tracker that times events and otherwise ignores them. */
  "new"(): Tracker;
};

interface TrackerManager extends Tracker {
  /** The trackers in the order of their calls. */
  get trackers(): () => Tracker[];
  set trackers(value: (Tracker | TrackerImplementation)[] | null);
  /** The store for the user's identities. */
  get persister(): () => TrackerPersister;
  set persister(value: TrackerPersister | TrackerPersisterImplementation | null);
  /** The prefix of the keys in the store. */
  get identifier(): () => string;
  set identifier(value: string | null);
  /** Makes this the manager of the process. */
  setAsSharedInstance(): void;
  /** Adds to the properties that are recorded with every event; new values replace old ones. */
  addSuperProperties_(properties: Record<string, any> | null): void;
  /** Adds to the properties that are recorded with every event; new values replace old ones. */
  addSuperProperties(properties: Record<string, any> | null): void;
  /** Passes the uuid and the email address on to every tracker. */
  configureChild(): void;
  /** Returns the trackers in the order of their calls. */
  allTrackers(): Tracker[];
  /** The trackers in the order of their calls. */
  setTrackers_(trackers: (Tracker | TrackerImplementation)[] | null): void;
  /** The trackers in the order of their calls. */
  setTrackers(trackers: (Tracker | TrackerImplementation)[] | null): void;
  /** The store for the user's identities. */
  setPersister_(persister: TrackerPersister | TrackerPersisterImplementation | null): void;
  /** The store for the user's identities. */
  setPersister(persister: TrackerPersister | TrackerPersisterImplementation | null): void;
  /** The prefix of the keys in the store. */
  setIdentifier_(identifier: string | null): void;
  /** The prefix of the keys in the store. */
  setIdentifier(identifier: string | null): void;
}

interface TrackerManagerAllocated {
  /** Creates a manager without trackers, a store or identities. */
  init(): TrackerManager;
  /** Creates a manager over the trackers that keeps identities in the user's settings. */
  initWithTrackers_identifier_(trackers: (Tracker | TrackerImplementation)[] | null, identifier: string | null): TrackerManager;
  /** Creates a manager over the trackers that keeps identities in the user's settings. */
  initWithTrackers_identifier(trackers: (Tracker | TrackerImplementation)[] | null, identifier: string | null): TrackerManager;
  /** Creates a manager over the trackers that keeps identities in this store, under keys that begin with the identifier. */
  initWithTrackers_persister_identifier_(trackers: (Tracker | TrackerImplementation)[] | null, persister: TrackerPersister | TrackerPersisterImplementation | null, identifier: string | null): TrackerManager;
  /** Creates a manager over the trackers that keeps identities in this store, under keys that begin with the identifier. */
  initWithTrackers_persister_identifier(trackers: (Tracker | TrackerImplementation)[] | null, persister: TrackerPersister | TrackerPersisterImplementation | null, identifier: string | null): TrackerManager;
}

declare const TrackerManager: KelvarClass & {
  alloc(): TrackerManagerAllocated;
  /** Returns the manager of this process. */
  sharedInstance(): TrackerManager;
  /** Creates a manager without trackers, a store or identities. */
  "new"(): TrackerManager;
};

interface SegmentIOTracker extends Tracker {
  /** Whether the location service has been asked. */
  get isObtainingLocation(): () => boolean;
  set isObtainingLocation(value: boolean);
  /** The key of the analytics project. */
  get writeKey(): () => string;
  set writeKey(value: string | null);
  /** What the location service answered. */
  get context(): () => Record<string, any>;
  set context(value: Record<string, any> | null);
  /** The events that are waiting: dictionaries with "event", "properties" and "_date". */
  get pendingEvents(): () => any[];
  set pendingEvents(value: any[] | null);
  /** The properties that are sent with every event: a copy, nil for none. */
  get superProperties(): () => Record<string, any>;
  set superProperties(value: Record<string, any> | null);
  /** Sends the events that are waiting for the location. */
  handlePendingRequests(): void;
  /** Adds to the properties that are sent with every event, if any were set; new values replace old ones. */
  addSuperProperties_(properties: Record<string, any> | null): void;
  /** Adds to the properties that are sent with every event, if any were set; new values replace old ones. */
  addSuperProperties(properties: Record<string, any> | null): void;
  /** Whether the location service has been asked. */
  setIsObtainingLocation_(location: boolean): void;
  /** Whether the location service has been asked. */
  setIsObtainingLocation(location: boolean): void;
  /** The key of the analytics project. */
  setWriteKey_(key: string | null): void;
  /** The key of the analytics project. */
  setWriteKey(key: string | null): void;
  /** What the location service answered. */
  setContext_(context: Record<string, any> | null): void;
  /** What the location service answered. */
  setContext(context: Record<string, any> | null): void;
  /** The events that are waiting: dictionaries with "event", "properties" and "_date". */
  setPendingEvents_(events: any[] | null): void;
  /** The events that are waiting: dictionaries with "event", "properties" and "_date". */
  setPendingEvents(events: any[] | null): void;
  /** The properties that are sent with every event: a copy, nil for none. */
  setSuperProperties_(properties: Record<string, any> | null): void;
  /** The properties that are sent with every event: a copy, nil for none. */
  setSuperProperties(properties: Record<string, any> | null): void;
  /** Returns the requests for the events that are waiting, in their order. */
  preparedRequests(): any[];
}

interface SegmentIOTrackerAllocated {
  /** Creates a tracker without a project key. */
  init(): SegmentIOTracker;
  /** Creates a tracker that sends events to the analytics server with this project key. */
  initWithWriteKey_(key: string | null): SegmentIOTracker;
  /** Creates a tracker that sends events to the analytics server with this project key. */
  initWithWriteKey(key: string | null): SegmentIOTracker;
}

declare const SegmentIOTracker: KelvarClass & {
  alloc(): SegmentIOTrackerAllocated;
  /** Creates a tracker without a project key. */
  "new"(): SegmentIOTracker;
  /** Returns the credential of a request's Authorization header; nil counts as empty. */
  basicAuthValueForUsername_password_(username: string | null, password: string | null): string;
  /** Returns the credential of a request's Authorization header; nil counts as empty. */
  basicAuthValueForUsername_password(username: string | null, password: string | null): string;
  /** Returns the machine's model for "hw.model", its architecture for "hw.machine", and an empty string for any other name. */
  getSystemStringForKey_(key: string | null): string;
  /** Returns the machine's model for "hw.model", its architecture for "hw.machine", and an empty string for any other name. */
  getSystemStringForKey(key: string | null): string;
  /** Returns the request that reports an event; what is nil is left out. */
  trackingRequestWithEvent_date_writeKey_userID_anonymousID_context_properties_(event: string | null, date: Date | null, key: string | null, id: string | null, argument5: string | null, context: Record<string, any> | null, properties: Record<string, any> | null): NSURLRequest;
  /** Returns the request that reports an event; what is nil is left out. */
  trackingRequestWithEvent_date_writeKey_userID_anonymousID_context_properties(event: string | null, date: Date | null, key: string | null, id: string | null, argument5: string | null, context: Record<string, any> | null, properties: Record<string, any> | null): NSURLRequest;
  /** Returns the request that links an email address to the "uuid" among the properties. */
  identifyRequestWithEmail_userID_writeKey_properties_(email: string | null, id: string | null, key: string | null, properties: Record<string, any> | null): NSURLRequest;
  /** Returns the request that links an email address to the "uuid" among the properties. */
  identifyRequestWithEmail_userID_writeKey_properties(email: string | null, id: string | null, key: string | null, properties: Record<string, any> | null): NSURLRequest;
  /** Returns the request that links a new identity to an old one. */
  aliasWithId_fromOld_writeKey_(id: string | null, old: string | null, key: string | null): NSURLRequest;
  /** Returns the request that links a new identity to an old one. */
  aliasWithId_fromOld_writeKey(id: string | null, old: string | null, key: string | null): NSURLRequest;
  /** Returns the request's body read as JSON; nil if it is none. */
  bodyForRequest_(request: NSURLRequest | null): any;
  /** Returns the request's body read as JSON; nil if it is none. */
  bodyForRequest(request: NSURLRequest | null): any;
};

interface CounterTracker extends Tracker {
  /** The stored events; replaces them when set. */
  get storage(): () => Event[];
  set storage(value: Event[] | null);
  /** A counter for the caller's own use. */
  get uploadsCount(): () => number;
  set uploadsCount(value: number);
  /** How many timed events were started. */
  timesStarted(): number;
  /** How many timed events were finished. */
  timesFinished(): number;
  /** How many events are stored. */
  tracksCount(): number;
  /** The stored events in the order of recording. */
  events(): Event[];
  /** The stored events; replaces them when set. */
  setStorage_(storage: Event[] | null): void;
  /** The stored events; replaces them when set. */
  setStorage(storage: Event[] | null): void;
  /** A counter for the caller's own use. */
  setUploadsCount_(count: number): void;
  /** A counter for the caller's own use. */
  setUploadsCount(count: number): void;
}

interface CounterTrackerAllocated {
  /** Creates a tracker that keeps its events in memory. */
  init(): CounterTracker;
}

declare const CounterTracker: KelvarClass & {
  alloc(): CounterTrackerAllocated;
  /** Creates a tracker that keeps its events in memory. */
  "new"(): CounterTracker;
};

interface MockedTracker extends Tracker {
  /** The name of the timed event that was started last. */
  get startedEvent(): () => string;
  set startedEvent(value: string | null);
  /** The name of the event that was recorded or finished last. */
  get name(): () => string;
  set name(value: string | null);
  /** The properties of the last event, merged with `globalProperties`. */
  get properties(): () => Record<string, any>;
  set properties(value: Record<string, any> | null);
  /** The length of the timed event that was finished last, in seconds. */
  get sessionLength(): () => number;
  set sessionLength(value: number);
  /** The properties that are merged into every event. */
  get globalProperties(): () => Record<string, any>;
  set globalProperties(value: Record<string, any> | null);
  /** The name of the timed event that was started last. */
  setStartedEvent_(event: string | null): void;
  /** The name of the timed event that was started last. */
  setStartedEvent(event: string | null): void;
  /** The name of the event that was recorded or finished last. */
  setName_(name: string | null): void;
  /** The name of the event that was recorded or finished last. */
  setName(name: string | null): void;
  /** The properties of the last event, merged with `globalProperties`. */
  setProperties_(properties: Record<string, any> | null): void;
  /** The properties of the last event, merged with `globalProperties`. */
  setProperties(properties: Record<string, any> | null): void;
  /** The length of the timed event that was finished last, in seconds. */
  setSessionLength_(length: number): void;
  /** The length of the timed event that was finished last, in seconds. */
  setSessionLength(length: number): void;
  /** The properties that are merged into every event. */
  setGlobalProperties_(properties: Record<string, any> | null): void;
  /** The properties that are merged into every event. */
  setGlobalProperties(properties: Record<string, any> | null): void;
}

interface MockedTrackerAllocated {
  /** Creates a tracker that remembers the last event. */
  init(): MockedTracker;
}

declare const MockedTracker: KelvarClass & {
  alloc(): MockedTrackerAllocated;
  /** Creates a tracker that remembers the last event. */
  "new"(): MockedTracker;
};

interface DeferableTracker extends Tracker {
  /** Whether the tracker is switched on. */
  get enabled(): () => boolean;
  set enabled(value: boolean);
  /** Called with the new value each time `enabled` is set; does nothing in this class. */
  enableStateDidChange_(change: boolean): void;
  /** Called with the new value each time `enabled` is set; does nothing in this class. */
  enableStateDidChange(change: boolean): void;
  /** Whether the tracker is switched on. */
  setEnabled_(enabled: boolean): void;
  /** Whether the tracker is switched on. */
  setEnabled(enabled: boolean): void;
}

interface DeferableTrackerAllocated {
  /** Creates a tracker that is switched off. */
  init(): DeferableTracker;
}

declare const DeferableTracker: KelvarClass & {
  alloc(): DeferableTrackerAllocated;
  /** Creates a tracker that is switched off. */
  deferredTracker(): DeferableTracker;
  /** Creates a tracker that is switched off. */
  "new"(): DeferableTracker;
};

interface Event extends NSObject {
  /** The event's name. */
  get name(): () => string;
  set name(value: string | null);
  /** What is recorded about the event; nil is not the same as an empty dictionary. */
  get properties(): () => Record<string, any>;
  set properties(value: Record<string, any> | null);
  /** Returns whether this is the same event, or one with an equal name and equal properties. */
  isEqual_(equal: Event | null): boolean;
  /** Returns whether this is the same event, or one with an equal name and equal properties. */
  isEqual(equal: Event | null): boolean;
  /** The event's name. */
  setName_(name: string | null): void;
  /** The event's name. */
  setName(name: string | null): void;
  /** What is recorded about the event; nil is not the same as an empty dictionary. */
  setProperties_(properties: Record<string, any> | null): void;
  /** What is recorded about the event; nil is not the same as an empty dictionary. */
  setProperties(properties: Record<string, any> | null): void;
}

interface EventAllocated {
  /** Creates an event without a name or properties. */
  init(): Event;
}

declare const Event: KelvarClass & {
  alloc(): EventAllocated;
  /** Creates an event without a name or properties. */
  "new"(): Event;
  /** Creates an event. */
  eventWithName_properties_(name: string | null, properties: Record<string, any> | null): Event;
  /** Creates an event. */
  eventWithName_properties(name: string | null, properties: Record<string, any> | null): Event;
};

interface TimedEvent extends NSObject {
  /** The event's name. */
  get name(): () => string;
  set name(value: string | null);
  /** What is recorded about the event. */
  get properties(): () => Record<string, any>;
  set properties(value: Record<string, any> | null);
  /** How long the event lasted, in seconds. */
  get sessionLength(): () => number;
  set sessionLength(value: number);
  /** The event's name. */
  setName_(name: string | null): void;
  /** The event's name. */
  setName(name: string | null): void;
  /** What is recorded about the event. */
  setProperties_(properties: Record<string, any> | null): void;
  /** What is recorded about the event. */
  setProperties(properties: Record<string, any> | null): void;
  /** How long the event lasted, in seconds. */
  setSessionLength_(length: number): void;
  /** How long the event lasted, in seconds. */
  setSessionLength(length: number): void;
}

interface TimedEventAllocated {
  /** Creates a finished event without a name or properties. */
  init(): TimedEvent;
}

declare const TimedEvent: KelvarClass & {
  alloc(): TimedEventAllocated;
  /** Creates a finished event without a name or properties. */
  "new"(): TimedEvent;
  /** Creates a finished event that lasted this many seconds. */
  timedEventWithName_properties_sessionLength_(name: string | null, properties: Record<string, any> | null, length: number): TimedEvent;
  /** Creates a finished event that lasted this many seconds. */
  timedEventWithName_properties_sessionLength(name: string | null, properties: Record<string, any> | null, length: number): TimedEvent;
};

interface HRCoder extends NSObject {
  /** The form to write: 0 is an XML property list, 1 JSON, 2 a binary property list. */
  get outputFormat(): () => number;
  set outputFormat(value: number);
  /** The key path of the value that is being written or read; nil at the root. */
  get keyPath(): () => string;
  set keyPath(value: string | null);
  /** What `finishEncoding` writes into. */
  get data(): () => NSMutableData;
  set data(value: NSMutableData | null);
  /** Returns the archive of the value as a tree in the form for `outputFormat`. */
  archiveRootObject_(object: any): any;
  /** Returns the archive of the value as a tree in the form for `outputFormat`. */
  archiveRootObject(object: any): any;
  /** Returns the value of a tree; nil if it cannot be read. */
  unarchiveRootObjectWithPlistOrJSON_(json: any): any;
  /** Returns the value of a tree; nil if it cannot be read. */
  unarchiveRootObjectWithPlistOrJSON(json: any): any;
  /** Replaces what was encoded by the archive of the value. */
  encodeRootObject_(object: any): void;
  /** Replaces what was encoded by the archive of the value. */
  encodeRootObject(object: any): void;
  /** Encodes a value; a list, a dictionary or an object that was encoded before becomes a reference to that. */
  encodeObject_forKey_(object: any, key: string | null): void;
  /** Encodes a value; a list, a dictionary or an object that was encoded before becomes a reference to that. */
  encodeObject_forKey(object: any, key: string | null): void;
  /** Encodes a reference to an object that was encoded before; otherwise does nothing. */
  encodeConditionalObject_forKey_(object: any, key: string | null): void;
  /** Encodes a reference to an object that was encoded before; otherwise does nothing. */
  encodeConditionalObject_forKey(object: any, key: string | null): void;
  /** Returns the tree of the value under the key without writing it. */
  encodedObject_forKey_(object: any, key: string | null): any;
  /** Returns the tree of the value under the key without writing it. */
  encodedObject_forKey(object: any, key: string | null): any;
  /** Encodes a boolean. */
  encodeBool_forKey_(bool: boolean, key: string | null): void;
  /** Encodes a boolean. */
  encodeBool_forKey(bool: boolean, key: string | null): void;
  /** Encodes a 32-bit integer. */
  encodeInt_forKey_(int: number, key: string | null): void;
  /** Encodes a 32-bit integer. */
  encodeInt_forKey(int: number, key: string | null): void;
  /** Encodes a 32-bit integer. */
  encodeInt32_forKey_(int32: number, key: string | null): void;
  /** Encodes a 32-bit integer. */
  encodeInt32_forKey(int32: number, key: string | null): void;
  /** Encodes a 64-bit integer. */
  encodeInt64_forKey_(int64: number, key: string | null): void;
  /** Encodes a 64-bit integer. */
  encodeInt64_forKey(int64: number, key: string | null): void;
  /** Encodes a 64-bit integer. */
  encodeInteger_forKey_(integer: number, key: string | null): void;
  /** Encodes a 64-bit integer. */
  encodeInteger_forKey(integer: number, key: string | null): void;
  /** Encodes a single-precision number. */
  encodeFloat_forKey_(float: number, key: string | null): void;
  /** Encodes a single-precision number. */
  encodeFloat_forKey(float: number, key: string | null): void;
  /** Encodes a double-precision number. */
  encodeDouble_forKey_(double: number, key: string | null): void;
  /** Encodes a double-precision number. */
  encodeDouble_forKey(double: number, key: string | null): void;
  /** Encodes the first bytes, always in full. */
  encodeBytes_length_forKey_(bytes: any, length: number, key: string | null): void;
  /** Encodes the first bytes, always in full. */
  encodeBytes_length_forKey(bytes: any, length: number, key: string | null): void;
  /** Writes to the data, if there is any, and starts over; false if that failed. */
  finishEncoding(): boolean;
  /** Returns whether there is a value under the key. */
  containsValueForKey_(key: string | null): boolean;
  /** Returns whether there is a value under the key. */
  containsValueForKey(key: string | null): boolean;
  /** Returns the value under the key; nil if there is none. */
  decodeObjectForKey_(key: string | null): any;
  /** Returns the value under the key; nil if there is none. */
  decodeObjectForKey(key: string | null): any;
  /** Returns the value of a tree, which is known under the key from then on. */
  decodeObject_forKey_(object: any, key: string | null): any;
  /** Returns the value of a tree, which is known under the key from then on. */
  decodeObject_forKey(object: any, key: string | null): any;
  /** Returns a boolean; false for none. */
  decodeBoolForKey_(key: string | null): boolean;
  /** Returns a boolean; false for none. */
  decodeBoolForKey(key: string | null): boolean;
  /** Returns a 32-bit integer; 0 for none. */
  decodeIntForKey_(key: string | null): number;
  /** Returns a 32-bit integer; 0 for none. */
  decodeIntForKey(key: string | null): number;
  /** Returns a 64-bit integer cut to 32 bits; 0 for none. */
  decodeInt32ForKey_(key: string | null): number;
  /** Returns a 64-bit integer cut to 32 bits; 0 for none. */
  decodeInt32ForKey(key: string | null): number;
  /** Returns a 64-bit integer; 0 for none. */
  decodeInt64ForKey_(key: string | null): number;
  /** Returns a 64-bit integer; 0 for none. */
  decodeInt64ForKey(key: string | null): number;
  /** Returns a 64-bit integer; 0 for none. */
  decodeIntegerForKey_(key: string | null): number;
  /** Returns a 64-bit integer; 0 for none. */
  decodeIntegerForKey(key: string | null): number;
  /** Returns a single-precision number; 0 for none. */
  decodeFloatForKey_(key: string | null): number;
  /** Returns a single-precision number; 0 for none. */
  decodeFloatForKey(key: string | null): number;
  /** Returns a double-precision number; 0 for none. */
  decodeDoubleForKey_(key: string | null): number;
  /** Returns a double-precision number; 0 for none. */
  decodeDoubleForKey(key: string | null): number;
  /** Returns the bytes under the key, all of them; none if there are none. */
  decodeBytesForKey_(key: string | null): Uint8Array;
  /** Returns the bytes under the key, all of them; none if there are none. */
  decodeBytesForKey(key: string | null): Uint8Array;
  /** Forgets what was read. */
  finishDecoding(): void;
  /** Returns true. */
  allowsKeyedCoding(): boolean;
  /** The form to write: 0 is an XML property list, 1 JSON, 2 a binary property list. */
  setOutputFormat_(format: number): void;
  /** The form to write: 0 is an XML property list, 1 JSON, 2 a binary property list. */
  setOutputFormat(format: number): void;
  /** The dictionaries that are being written or read, the innermost last. */
  stack(): any;
  /** The values so far, by key path. */
  knownObjects(): any;
  /** The references that are not resolved yet: from the key path of each to the one that it names. */
  unresolvedAliases(): Record<string, any>;
  /** The key path of the value that is being written or read; nil at the root. */
  setKeyPath_(path: string | null): void;
  /** The key path of the value that is being written or read; nil at the root. */
  setKeyPath(path: string | null): void;
  /** What `finishEncoding` writes into. */
  setData_(data: NSMutableData | null): void;
  /** What `finishEncoding` writes into. */
  setData(data: NSMutableData | null): void;
}

interface HRCoderAllocated {
  /** Creates a coder with nothing to read or to write to. */
  init(): HRCoder;
  /** Creates a coder whose `finishEncoding` writes into the data. */
  initForWritingWithMutableData_(data: NSMutableData | null): HRCoder;
  /** Creates a coder whose `finishEncoding` writes into the data. */
  initForWritingWithMutableData(data: NSMutableData | null): HRCoder;
  /** Creates a coder that reads by key from a dictionary in a property list or JSON; raises HRCoderException for any other data. */
  initForReadingWithData_(data: any): HRCoder;
  /** Creates a coder that reads by key from a dictionary in a property list or JSON; raises HRCoderException for any other data. */
  initForReadingWithData(data: any): HRCoder;
}

declare const HRCoder: KelvarClass & {
  alloc(): HRCoderAllocated;
  /** Returns "$class", the key of the class's name. */
  classNameKey(): string;
  /** Returns the archive of the value as a tree of property-list values. */
  archivedPlistWithRootObject_(object: any): any;
  /** Returns the archive of the value as a tree of property-list values. */
  archivedPlistWithRootObject(object: any): any;
  /** Returns the archive of the value as a tree of JSON values. */
  archivedJSONWithRootObject_(object: any): any;
  /** Returns the archive of the value as a tree of JSON values. */
  archivedJSONWithRootObject(object: any): any;
  /** Returns the archive of the value as the bytes of an XML property list. */
  archivedDataWithRootObject_(object: any): any;
  /** Returns the archive of the value as the bytes of an XML property list. */
  archivedDataWithRootObject(object: any): any;
  /** Writes the archive of the value to a file and returns whether that worked. */
  archiveRootObject_toFile_(object: any, file: string | null): boolean;
  /** Writes the archive of the value to a file and returns whether that worked. */
  archiveRootObject_toFile(object: any, file: string | null): boolean;
  /** Returns the value of a tree; nil if it cannot be read. */
  unarchiveObjectWithPlistOrJSON_(json: any): any;
  /** Returns the value of a tree; nil if it cannot be read. */
  unarchiveObjectWithPlistOrJSON(json: any): any;
  /** Returns the value of a property list or JSON in bytes; nil if it cannot be read. */
  unarchiveObjectWithData_(data: any): any;
  /** Returns the value of a property list or JSON in bytes; nil if it cannot be read. */
  unarchiveObjectWithData(data: any): any;
  /** Returns the value of a file; nil if it cannot be read. */
  unarchiveObjectWithFile_(file: string | null): any;
  /** Returns the value of a file; nil if it cannot be read. */
  unarchiveObjectWithFile(file: string | null): any;
  /** Creates a coder with nothing to read or to write to. */
  "new"(): HRCoder;
};

interface MF_Base64Codec {
}

interface MF_Base64CodecAllocated {
}

declare const MF_Base64Codec: KelvarClass & {
  alloc(): MF_Base64CodecAllocated;
  /** Returns the bytes in standard Base64, padded. */
  base64StringFromData_(data: Uint8Array | null): string;
  /** Returns the bytes in standard Base64, padded. */
  base64StringFromData(data: Uint8Array | null): string;
  /** Returns the bytes of standard Base64; other characters are skipped. */
  dataFromBase64String_(string: string | null): Uint8Array;
  /** Returns the bytes of standard Base64; other characters are skipped. */
  dataFromBase64String(string: string | null): Uint8Array;
  /** Returns standard Base64 in the form for URLs, without padding. */
  base64UrlEncodedStringFromBase64String_(string: string | null): string;
  /** Returns standard Base64 in the form for URLs, without padding. */
  base64UrlEncodedStringFromBase64String(string: string | null): string;
  /** Returns Base64 from a URL in the standard form, padded. */
  base64StringFromBase64UrlEncodedString_(string: string | null): string;
  /** Returns Base64 from a URL in the standard form, padded. */
  base64StringFromBase64UrlEncodedString(string: string | null): string;
};

interface SketchDocument extends NSObject {
  /** Where the document was opened or last saved. */
  path(): string;
  /** The pages in order. */
  pages(): any[];
  /** All artboards and symbol masters, in the order of the pages. */
  artboards(): any[];
  /** The page that was open when the document was last saved. */
  currentPage(): SketchLayer;
  /** The layers that show an artboard, in the order in which they have to be mapped again. */
  mappedLayers(): any[];
  /** The version of the Sketch that wrote the document, such as "52.1". */
  appVersion(): string;
  /** The build of the Sketch that wrote the document, such as "67048". */
  build(): string;
  /** One sentence for each thing that could not be drawn as the document asks. */
  warnings(): string[];
  /** Returns the layers with this identifier, or else those with this name. */
  layersNamed_(named: string | null): any[];
  /** Returns the layers with this identifier, or else those with this name. */
  layersNamed(named: string | null): any[];
  /** Returns the settings that were remembered when an image was mapped onto the layer, or nil. */
  settingsOfLayer_(layer: SketchLayer | null): any;
  /** Returns the settings that were remembered when an image was mapped onto the layer, or nil. */
  settingsOfLayer(layer: SketchLayer | null): any;
  /** Returns the artboard drawn as finely as the transform, whose corners must be set, can use it. */
  imageOfArtboard_forTransform_(artboard: SketchLayer | null, transform: KVImageTransform | null): NSImage;
  /** Returns the artboard drawn as finely as the transform, whose corners must be set, can use it. */
  imageOfArtboard_forTransform(artboard: SketchLayer | null, transform: KVImageTransform | null): NSImage;
  /** Makes the image the layer's fill and remembers the settings; those left out stay as they were. */
  fillLayer_withImage_settings_(layer: SketchLayer | null, image: NSImage | null, settings: Record<string, any> | null): void;
  /** Makes the image the layer's fill and remembers the settings; those left out stay as they were. */
  fillLayer_withImage_settings(layer: SketchLayer | null, image: NSImage | null, settings: Record<string, any> | null): void;
  /** Saves the document where it was opened or, with -o, there; with a new preview. */
  save(): void;
  /** Saves the document like save, whoever the sender is. */
  saveDocument_(document: any): void;
  /** Saves the document like save, whoever the sender is. */
  saveDocument(document: any): void;
  /** Saves the document to a path, with a new preview. */
  saveAs_(as: string | null): void;
  /** Saves the document to a path, with a new preview. */
  saveAs(as: string | null): void;
}

interface SketchDocumentAllocated {
}

declare const SketchDocument: KelvarClass & {
  alloc(): SketchDocumentAllocated;
};

interface SketchLayer extends NSObject {
  /** The layer's name. */
  get name(): () => string;
  set name(value: string | null);
  /** The layer's frame in its parent; the contents stay as they are. */
  get frame(): () => KVRect;
  set frame(value: KVRect | null);
  /** Whether the layer is drawn. */
  get isVisible(): () => boolean;
  set isVisible(value: boolean);
  /** The layer's name. */
  setName_(name: string | null): void;
  /** The layer's name. */
  setName(name: string | null): void;
  /** The kind of layer as the document names it, such as "artboard", "shapeGroup" or "rectangle". */
  kind(): string;
  /** The layer's identifier. */
  objectID(): string;
  /** The layer's frame in its parent; the contents stay as they are. */
  setFrame_(frame: KVRect | null): void;
  /** The layer's frame in its parent; the contents stay as they are. */
  setFrame(frame: KVRect | null): void;
  /** Whether the layer is drawn. */
  setIsVisible_(visible: boolean): void;
  /** Whether the layer is drawn. */
  setIsVisible(visible: boolean): void;
  /** Rotation in degrees, counter-clockwise on screen. */
  rotation(): number;
  /** Whether the layer is mirrored left to right. */
  isFlippedHorizontal(): boolean;
  /** Whether the layer is mirrored top to bottom. */
  isFlippedVertical(): boolean;
  /** The layers inside, lowest first. The key path of a shape outside a shape group leads to the shape itself, so that the outline is found in all documents. */
  layers(): any[];
  /** The artboards on the page. */
  artboards(): any[];
  /** The shape's outline: in its shape group's coordinates, or before its own flips and rotation if it stands alone. */
  bezierPath(): NSBezierPath;
  /** The layer around this one, or nil for a page. */
  parent(): SketchLayer;
  /** The artboard around the layer, or the layer itself; nil if it lies directly on the page. */
  artboard(): SketchLayer;
  /** The page that the layer is on. */
  page(): SketchLayer;
}

interface SketchLayerAllocated {
}

declare const SketchLayer: KelvarClass & {
  alloc(): SketchLayerAllocated;
};

interface NSImage extends NSObject {
  /** The nominal size in points, which may differ from the size in pixels. */
  get size(): () => NSSize;
  set size(value: NSSize);
  /** The nominal size in points, which may differ from the size in pixels. */
  setSize_(size: NSSize): void;
  /** The nominal size in points, which may differ from the size in pixels. */
  setSize(size: NSSize): void;
  /** Whether the image has pixels. */
  isValid(): boolean;
  /** Writes a PNG, JPEG or WebP file, by the path's extension, and returns whether that succeeded. */
  writeToFile_(file: string | null): boolean;
  /** Writes a PNG, JPEG or WebP file, by the path's extension, and returns whether that succeeded. */
  writeToFile(file: string | null): boolean;
}

interface NSImageAllocated {
  /** Creates a transparent image of this size, with a pixel for each point. */
  initWithSize_(size: NSSize): NSImage;
  /** Creates a transparent image of this size, with a pixel for each point. */
  initWithSize(size: NSSize): NSImage;
  /** Reads an image from a PNG, JPEG or WebP file; nil if that fails. */
  initWithContentsOfFile_(file: string | null): NSImage;
  /** Reads an image from a PNG, JPEG or WebP file; nil if that fails. */
  initWithContentsOfFile(file: string | null): NSImage;
  /** Reads an image from a PNG, JPEG or WebP file; nil if that fails. */
  initByReferencingFile_(file: string | null): NSImage;
  /** Reads an image from a PNG, JPEG or WebP file; nil if that fails. */
  initByReferencingFile(file: string | null): NSImage;
  /** Reads an image from the bytes of a PNG, JPEG or WebP file; nil if they are none. */
  initWithData_(data: Uint8Array | null): NSImage;
  /** Reads an image from the bytes of a PNG, JPEG or WebP file; nil if they are none. */
  initWithData(data: Uint8Array | null): NSImage;
  /** Reads an image from the URL of a file; nil if that fails. */
  initWithContentsOfURL_(url: NSURL | null): NSImage;
  /** Reads an image from the URL of a file; nil if that fails. */
  initWithContentsOfURL(url: NSURL | null): NSImage;
  /** Reads an image from the URL of a file; nil if that fails. */
  initByReferencingURL_(url: NSURL | null): NSImage;
  /** Reads an image from the URL of a file; nil if that fails. */
  initByReferencingURL(url: NSURL | null): NSImage;
}

declare const NSImage: KelvarClass & {
  alloc(): NSImageAllocated;
  /** Returns nil, as the desktop has no images for scripts. */
  imageNamed_(named: string | null): any;
  /** Returns nil, as the desktop has no images for scripts. */
  imageNamed(named: string | null): any;
};

interface NSURL extends NSObject {
  /** The whole URL, percent-encoded. */
  absoluteString(): string;
  /** The URL itself. */
  absoluteURL(): NSURL;
  /** The scheme, such as "https". */
  scheme(): string;
  /** The host name. */
  host(): string;
  /** The port; nil if the URL has none. */
  port(): any;
  /** The user name. */
  user(): string;
  /** The path, without a slash at its end. */
  path(): string;
  /** The same as the path. */
  relativePath(): string;
  /** What follows the question mark; nil without one. */
  query(): string;
  /** What follows the number sign; nil without one. */
  fragment(): string;
  /** The path's components. */
  pathComponents(): string[];
  /** The path's last component. */
  lastPathComponent(): string;
  /** The extension of the last component. */
  pathExtension(): string;
  /** Whether it is the URL of a file. */
  isFileURL(): boolean;
  /** Returns the URL of something in this folder. */
  URLByAppendingPathComponent_(component: string | null): NSURL;
  /** Returns the URL of something in this folder. */
  URLByAppendingPathComponent(component: string | null): NSURL;
  /** Returns the URL with an extension added. */
  URLByAppendingPathExtension_(extension: string | null): NSURL;
  /** Returns the URL with an extension added. */
  URLByAppendingPathExtension(extension: string | null): NSURL;
  /** Returns the URL of the folder that contains this one. */
  URLByDeletingLastPathComponent(): NSURL;
  /** Returns the URL without its extension. */
  URLByDeletingPathExtension(): NSURL;
}

interface NSURLAllocated {
  /** Creates a URL; nil if the string is not a valid one. */
  initWithString_(string: string | null): NSURL;
  /** Creates a URL; nil if the string is not a valid one. */
  initWithString(string: string | null): NSURL;
  /** Creates the URL of a file. */
  initFileURLWithPath_(path: string | null): NSURL;
  /** Creates the URL of a file. */
  initFileURLWithPath(path: string | null): NSURL;
}

declare const NSURL: KelvarClass & {
  alloc(): NSURLAllocated;
  /** Creates a URL; nil if the string is not a valid one. */
  URLWithString_(string: string | null): any;
  /** Creates a URL; nil if the string is not a valid one. */
  URLWithString(string: string | null): any;
  /** Resolves a relative URL; nil if the string is not a valid one. */
  URLWithString_relativeToURL_(string: string | null, url: NSURL | null): any;
  /** Resolves a relative URL; nil if the string is not a valid one. */
  URLWithString_relativeToURL(string: string | null, url: NSURL | null): any;
  /** Creates the URL of a file. */
  fileURLWithPath_(path: string | null): NSURL;
  /** Creates the URL of a file. */
  fileURLWithPath(path: string | null): NSURL;
  /** Creates the URL of a file or folder. */
  fileURLWithPath_isDirectory_(path: string | null, directory: boolean): NSURL;
  /** Creates the URL of a file or folder. */
  fileURLWithPath_isDirectory(path: string | null, directory: boolean): NSURL;
};

interface NSURLRequest extends NSObject {
  /** Where it is sent to. */
  URL(): NSURL;
  /** The method, "GET" or "POST". */
  HTTPMethod(): string;
  /** The bytes sent. */
  HTTPBody(): Uint8Array;
  /** The headers by name. */
  allHTTPHeaderFields(): Record<string, any>;
  /** Returns the header's value; nil if there is none. */
  valueForHTTPHeaderField_(field: string | null): string;
  /** Returns the header's value; nil if there is none. */
  valueForHTTPHeaderField(field: string | null): string;
}

interface NSURLRequestAllocated {
  /** Creates a GET request. */
  initWithURL_(url: NSURL | null): NSURLRequest;
  /** Creates a GET request. */
  initWithURL(url: NSURL | null): NSURLRequest;
}

declare const NSURLRequest: KelvarClass & {
  alloc(): NSURLRequestAllocated;
  /** Creates a GET request. */
  requestWithURL_(url: NSURL | null): NSURLRequest;
  /** Creates a GET request. */
  requestWithURL(url: NSURL | null): NSURLRequest;
  /** Creates a GET request. Nothing is cached, and the time is limited to 30 seconds in any case. */
  requestWithURL_cachePolicy_timeoutInterval_(url: NSURL | null, policy: number, interval: number): NSURLRequest;
  /** Creates a GET request. Nothing is cached, and the time is limited to 30 seconds in any case. */
  requestWithURL_cachePolicy_timeoutInterval(url: NSURL | null, policy: number, interval: number): NSURLRequest;
};

interface NSMutableURLRequest extends NSURLRequest {
  /** Sets where it is sent to. */
  setURL_(url: NSURL | null): void;
  /** Sets where it is sent to. */
  setURL(url: NSURL | null): void;
  /** Sets the method, GET or POST. */
  setHTTPMethod_(method: string | null): void;
  /** Sets the method, GET or POST. */
  setHTTPMethod(method: string | null): void;
  /** Sets the bytes to send. */
  setHTTPBody_(body: Uint8Array | null): void;
  /** Sets the bytes to send. */
  setHTTPBody(body: Uint8Array | null): void;
  /** Sets a header; nil removes it. */
  setValue_forHTTPHeaderField_(value: string | null, field: string | null): void;
  /** Sets a header; nil removes it. */
  setValue_forHTTPHeaderField(value: string | null, field: string | null): void;
  /** Adds a value to a header, after a comma if it has one. */
  addValue_forHTTPHeaderField_(value: string | null, field: string | null): void;
  /** Adds a value to a header, after a comma if it has one. */
  addValue_forHTTPHeaderField(value: string | null, field: string | null): void;
  /** Replaces the headers. */
  setAllHTTPHeaderFields_(fields: Record<string, any> | null): void;
  /** Replaces the headers. */
  setAllHTTPHeaderFields(fields: Record<string, any> | null): void;
}

interface NSMutableURLRequestAllocated {
  /** Creates a GET request. */
  initWithURL_(url: NSURL | null): NSMutableURLRequest;
  /** Creates a GET request. */
  initWithURL(url: NSURL | null): NSMutableURLRequest;
  /** Creates a GET request to nowhere yet. */
  init(): NSMutableURLRequest;
}

declare const NSMutableURLRequest: KelvarClass & {
  alloc(): NSMutableURLRequestAllocated;
  /** Creates a GET request. */
  requestWithURL_(url: NSURL | null): NSMutableURLRequest;
  /** Creates a GET request. */
  requestWithURL(url: NSURL | null): NSMutableURLRequest;
  /** Creates a GET request. Nothing is cached, and the time is limited to 30 seconds in any case. */
  requestWithURL_cachePolicy_timeoutInterval_(url: NSURL | null, policy: number, interval: number): NSMutableURLRequest;
  /** Creates a GET request. Nothing is cached, and the time is limited to 30 seconds in any case. */
  requestWithURL_cachePolicy_timeoutInterval(url: NSURL | null, policy: number, interval: number): NSMutableURLRequest;
  /** Creates a GET request to nowhere yet. */
  "new"(): NSMutableURLRequest;
};

interface NSColor extends NSObject {
  /** Returns the color itself, as there is one color space. */
  colorUsingColorSpaceName_(name: any): any;
  /** Returns the color itself, as there is one color space. */
  colorUsingColorSpaceName(name: any): any;
  /** Returns the color itself, as there is one color space. */
  colorUsingColorSpace_(space: any): any;
  /** Returns the color itself, as there is one color space. */
  colorUsingColorSpace(space: any): any;
  /** Returns the color with another opacity. */
  colorWithAlphaComponent_(component: number): NSColor;
  /** Returns the color with another opacity. */
  colorWithAlphaComponent(component: number): NSColor;
  /** Hue, between 0 and 1. */
  hueComponent(): number;
  /** Saturation, between 0 and 1. */
  saturationComponent(): number;
  /** Brightness, between 0 and 1. */
  brightnessComponent(): number;
  /** Red, between 0 and 1. */
  redComponent(): number;
  /** Green, between 0 and 1. */
  greenComponent(): number;
  /** Blue, between 0 and 1. */
  blueComponent(): number;
  /** Opacity, between 0 and 1. */
  alphaComponent(): number;
}

interface NSColorAllocated {
}

declare const NSColor: KelvarClass & {
  alloc(): NSColorAllocated;
  /** Creates a color from components between 0 and 1. */
  colorWithRed_green_blue_alpha_(red: number, green: number, blue: number, alpha: number): NSColor;
  /** Creates a color from components between 0 and 1. */
  colorWithRed_green_blue_alpha(red: number, green: number, blue: number, alpha: number): NSColor;
  /** Creates a color from components between 0 and 1. */
  colorWithCalibratedRed_green_blue_alpha_(red: number, green: number, blue: number, alpha: number): NSColor;
  /** Creates a color from components between 0 and 1. */
  colorWithCalibratedRed_green_blue_alpha(red: number, green: number, blue: number, alpha: number): NSColor;
  /** Creates a color from components between 0 and 1. */
  colorWithDeviceRed_green_blue_alpha_(red: number, green: number, blue: number, alpha: number): NSColor;
  /** Creates a color from components between 0 and 1. */
  colorWithDeviceRed_green_blue_alpha(red: number, green: number, blue: number, alpha: number): NSColor;
  /** Creates a color from components between 0 and 1. */
  colorWithSRGBRed_green_blue_alpha_(red: number, green: number, blue: number, alpha: number): NSColor;
  /** Creates a color from components between 0 and 1. */
  colorWithSRGBRed_green_blue_alpha(red: number, green: number, blue: number, alpha: number): NSColor;
  /** Creates a gray from components between 0 and 1. */
  colorWithWhite_alpha_(white: number, alpha: number): NSColor;
  /** Creates a gray from components between 0 and 1. */
  colorWithWhite_alpha(white: number, alpha: number): NSColor;
  /** Creates a gray from components between 0 and 1. */
  colorWithCalibratedWhite_alpha_(white: number, alpha: number): NSColor;
  /** Creates a gray from components between 0 and 1. */
  colorWithCalibratedWhite_alpha(white: number, alpha: number): NSColor;
  /** Creates a color from components between 0 and 1. */
  colorWithHue_saturation_brightness_alpha_(hue: number, saturation: number, brightness: number, alpha: number): NSColor;
  /** Creates a color from components between 0 and 1. */
  colorWithHue_saturation_brightness_alpha(hue: number, saturation: number, brightness: number, alpha: number): NSColor;
  /** Creates a color from components between 0 and 1. */
  colorWithCalibratedHue_saturation_brightness_alpha_(hue: number, saturation: number, brightness: number, alpha: number): NSColor;
  /** Creates a color from components between 0 and 1. */
  colorWithCalibratedHue_saturation_brightness_alpha(hue: number, saturation: number, brightness: number, alpha: number): NSColor;
  /** Creates a gray from components between 0 and 1. */
  colorWithDeviceWhite_alpha_(white: number, alpha: number): NSColor;
  /** Creates a gray from components between 0 and 1. */
  colorWithDeviceWhite_alpha(white: number, alpha: number): NSColor;
  /** Orange. */
  orangeColor(): NSColor;
  /** Purple. */
  purpleColor(): NSColor;
  /** Brown. */
  brownColor(): NSColor;
  /** Light gray. */
  lightGrayColor(): NSColor;
  /** Dark gray. */
  darkGrayColor(): NSColor;
  /** Transparent black. */
  clearColor(): NSColor;
  /** Black. */
  blackColor(): NSColor;
  /** White. */
  whiteColor(): NSColor;
  /** Gray. */
  grayColor(): NSColor;
  /** Red. */
  redColor(): NSColor;
  /** Green. */
  greenColor(): NSColor;
  /** Blue. */
  blueColor(): NSColor;
  /** Cyan. */
  cyanColor(): NSColor;
  /** Magenta. */
  magentaColor(): NSColor;
  /** Yellow. */
  yellowColor(): NSColor;
};

interface NSBezierPath extends NSObject {
  /** Begins a part at a point. */
  moveToPoint_(point: NSPoint): void;
  /** Begins a part at a point. */
  moveToPoint(point: NSPoint): void;
  /** Adds a line. */
  lineToPoint_(point: NSPoint): void;
  /** Adds a line. */
  lineToPoint(point: NSPoint): void;
  /** Adds a cubic curve. */
  curveToPoint_controlPoint1_controlPoint2_(point: NSPoint, point1: NSPoint, point2: NSPoint): void;
  /** Adds a cubic curve. */
  curveToPoint_controlPoint1_controlPoint2(point: NSPoint, point1: NSPoint, point2: NSPoint): void;
  /** Begins a part, from the current point. */
  relativeMoveToPoint_(point: NSPoint): void;
  /** Begins a part, from the current point. */
  relativeMoveToPoint(point: NSPoint): void;
  /** Adds a line, from the current point. */
  relativeLineToPoint_(point: NSPoint): void;
  /** Adds a line, from the current point. */
  relativeLineToPoint(point: NSPoint): void;
  /** Adds a line to the beginning of the part. */
  closePath(): void;
  /** Adds what is in another path. */
  appendBezierPath_(path: NSBezierPath | null): void;
  /** Adds what is in another path. */
  appendBezierPath(path: NSBezierPath | null): void;
  /** Adds a rectangle. */
  appendBezierPathWithRect_(rect: NSRect): void;
  /** Adds a rectangle. */
  appendBezierPathWithRect(rect: NSRect): void;
  /** Adds an oval. */
  appendBezierPathWithOvalInRect_(rect: NSRect): void;
  /** Adds an oval. */
  appendBezierPathWithOvalInRect(rect: NSRect): void;
  /** Adds a rectangle with rounded corners. */
  appendBezierPathWithRoundedRect_xRadius_yRadius_(rect: NSRect, radius: number, argument3: number): void;
  /** Adds a rectangle with rounded corners. */
  appendBezierPathWithRoundedRect_xRadius_yRadius(rect: NSRect, radius: number, argument3: number): void;
  /** Empties the path. */
  removeAllPoints(): void;
  /** Returns a copy. */
  copy(): NSBezierPath;
  /** The same path, traversed backwards. */
  bezierPathByReversingPath(): NSBezierPath;
  /** The same path with lines instead of curves. */
  bezierPathByFlatteningPath(): NSBezierPath;
  /** The smallest rectangle around what the path draws; zero for an empty path. */
  bounds(): NSRect;
  /** The rectangle around all points, with those that control curves. */
  controlPointBounds(): NSRect;
  /** Where the next element begins. */
  currentPoint(): NSPoint;
  /** Whether there is nothing in it. */
  isEmpty(): boolean;
  /** How many elements it has. */
  elementCount(): number;
  /** Returns the kind of an element: move (0), line (1), curve (2) or close (3). */
  elementAtIndex_(index: number): number;
  /** Returns the kind of an element: move (0), line (1), curve (2) or close (3). */
  elementAtIndex(index: number): number;
}

interface NSBezierPathAllocated {
  /** Creates an empty path. */
  init(): NSBezierPath;
}

declare const NSBezierPath: KelvarClass & {
  alloc(): NSBezierPathAllocated;
  /** Creates an empty path. */
  "new"(): NSBezierPath;
  /** Creates an empty path. */
  bezierPath(): NSBezierPath;
  /** Creates a rectangle. */
  bezierPathWithRect_(rect: NSRect): NSBezierPath;
  /** Creates a rectangle. */
  bezierPathWithRect(rect: NSRect): NSBezierPath;
  /** Creates an oval. */
  bezierPathWithOvalInRect_(rect: NSRect): NSBezierPath;
  /** Creates an oval. */
  bezierPathWithOvalInRect(rect: NSRect): NSBezierPath;
  /** Creates a rectangle with rounded corners. */
  bezierPathWithRoundedRect_xRadius_yRadius_(rect: NSRect, radius: number, argument3: number): NSBezierPath;
  /** Creates a rectangle with rounded corners. */
  bezierPathWithRoundedRect_xRadius_yRadius(rect: NSRect, radius: number, argument3: number): NSBezierPath;
};

interface MSDocument extends SketchDocument {
  /** The open page. */
  get currentPage(): () => SketchLayer;
  set currentPage(value: SketchLayer | null);
  /** The open page. */
  setCurrentPage_(page: SketchLayer | null): void;
  /** The open page. */
  setCurrentPage(page: SketchLayer | null): void;
  /** Returns all artboards and symbol masters, in the order of the pages. */
  allArtboards(): any[];
  /** Returns the symbol masters, in the order of the pages. */
  allSymbols(): any[];
  /** Returns the symbol master with this symbolID, or nil. */
  symbolWithID_(id: string | null): SketchLayer;
  /** Returns the symbol master with this symbolID, or nil. */
  symbolWithID(id: string | null): SketchLayer;
  /** Returns the layer with this identifier, or nil. */
  layerWithID_(id: string | null): SketchLayer;
  /** Returns the layer with this identifier, or nil. */
  layerWithID(id: string | null): SketchLayer;
  /** Adds a page, opens it and returns it. */
  addBlankPage(): SketchLayer;
  /** Removes a page, which must not be the only one. */
  removePage_(page: SketchLayer | null): void;
  /** Removes a page, which must not be the only one. */
  removePage(page: SketchLayer | null): void;
  /** Where the document was opened or last saved, as the URL of a file. */
  fileURL(): NSURL;
  /** The name of the file, without its extension. */
  displayName(): string;
  /** Returns whether there are changes that are not saved. */
  isDocumentEdited(): boolean;
  /** Returns 1, as there is no canvas that could be zoomed. */
  zoomValue(): number;
  /** Does nothing, as there is no inspector. */
  reloadInspector(): void;
  /** Returns nil, as there is no window. */
  window(): any;
  /** Returns nil, as there is no window. */
  documentWindow(): any;
  /** Returns the view of a canvas, which is not there. */
  contentDrawView(): MSContentDrawView;
  /** Returns the view of a canvas, which is not there. */
  currentView(): MSContentDrawView;
  /** Shows a message to the user, on standard error. */
  showMessage_(message: string | null): void;
  /** Shows a message to the user, on standard error. */
  showMessage(message: string | null): void;
  /** Shows a message to the user, on standard error. */
  displayMessage_(message: string | null): void;
  /** Shows a message to the user, on standard error. */
  displayMessage(message: string | null): void;
  /** Asks the user for a text and returns it; an empty one if nobody answers. */
  askForUserInput_initialValue_(input: string | null, value: string | null): string;
  /** Asks the user for a text and returns it; an empty one if nobody answers. */
  askForUserInput_initialValue(input: string | null, value: string | null): string;
  /** Asks the user for a text and returns it as it is, whatever the type; an empty one if nobody answers. */
  askForUserInput_ofType_initialValue_(input: string | null, type: number, value: string | null): string;
  /** Asks the user for a text and returns it as it is, whatever the type; an empty one if nobody answers. */
  askForUserInput_ofType_initialValue(input: string | null, type: number, value: string | null): string;
  /** The pages, symbols and layers. */
  documentData(): MSDocumentData;
  /** The artboard that is selected or has a selected layer, or nil. */
  currentArtboard(): SketchLayer;
  /** Returns the artboard that is selected or has a selected layer, or nil. */
  findCurrentArtboardGroup(): SketchLayer;
  /** Returns the selected layers. */
  selectedLayers(): MSLayerArray;
  /** Returns the selected layers as an ordinary list. */
  selection(): any[];
  /** Returns the selected layers as an ordinary list. */
  findSelectedLayers(): any[];
  /** Draws a layer, or what an MSExportRequest says, into a PNG, JPEG or WebP file, by the path's extension. Folders that are missing are made. */
  saveArtboardOrSlice_toFile_(slice: any, file: string | null): void;
  /** Draws a layer, or what an MSExportRequest says, into a PNG, JPEG or WebP file, by the path's extension. Folders that are missing are made. */
  saveArtboardOrSlice_toFile(slice: any, file: string | null): void;
}

interface MSDocumentAllocated {
}

declare const MSDocument: KelvarClass & {
  alloc(): MSDocumentAllocated;
  /** Returns the document that the script was given, or nil. */
  currentDocument(): SketchDocument;
};

interface MSContentDrawView extends NSObject {
  /** Does nothing, as there is no canvas. */
  refresh(): void;
  /** Does nothing, as there is no canvas. */
  zoomToSelection(): void;
  /** Does nothing, as there is no canvas. */
  zoomToFitRect_(rect: NSRect): void;
  /** Does nothing, as there is no canvas. */
  zoomToFitRect(rect: NSRect): void;
  /** Does nothing, as there is no canvas. */
  centerRect_(rect: NSRect): void;
  /** Does nothing, as there is no canvas. */
  centerRect(rect: NSRect): void;
  /** Does nothing, as there is no canvas. */
  centerRect_animated_(rect: NSRect, animated: boolean): void;
  /** Does nothing, as there is no canvas. */
  centerRect_animated(rect: NSRect, animated: boolean): void;
}

interface MSContentDrawViewAllocated {
}

declare const MSContentDrawView: KelvarClass & {
  alloc(): MSContentDrawViewAllocated;
};

interface NSUserDefaults extends NSObject {
  /** Returns the value, or nil. */
  objectForKey_(key: string | null): any;
  /** Returns the value, or nil. */
  objectForKey(key: string | null): any;
  /** Returns the value, or nil. */
  valueForKey_(key: string | null): any;
  /** Returns the value, or nil. */
  valueForKey(key: string | null): any;
  /** Returns a text or a number as text, or nil. */
  stringForKey_(key: string | null): string;
  /** Returns a text or a number as text, or nil. */
  stringForKey(key: string | null): string;
  /** Returns whether the value is true, a number other than 0, or text that says so. */
  boolForKey_(key: string | null): boolean;
  /** Returns whether the value is true, a number other than 0, or text that says so. */
  boolForKey(key: string | null): boolean;
  /** Returns the whole number, or 0. */
  integerForKey_(key: string | null): number;
  /** Returns the whole number, or 0. */
  integerForKey(key: string | null): number;
  /** Returns the number, or 0. */
  doubleForKey_(key: string | null): number;
  /** Returns the number, or 0. */
  doubleForKey(key: string | null): number;
  /** Returns the number, or 0. */
  floatForKey_(key: string | null): number;
  /** Returns the number, or 0. */
  floatForKey(key: string | null): number;
  /** Returns the URL that was stored, or nil. */
  URLForKey_(key: string | null): NSURL;
  /** Returns the URL that was stored, or nil. */
  URLForKey(key: string | null): NSURL;
  /** Returns the list, or nil. */
  arrayForKey_(key: string | null): any;
  /** Returns the list, or nil. */
  arrayForKey(key: string | null): any;
  /** Returns the list, or nil. */
  stringArrayForKey_(key: string | null): any;
  /** Returns the list, or nil. */
  stringArrayForKey(key: string | null): any;
  /** Returns the dictionary, or nil. */
  dictionaryForKey_(key: string | null): any;
  /** Returns the dictionary, or nil. */
  dictionaryForKey(key: string | null): any;
  /** Returns the bytes, or nil. */
  dataForKey_(key: string | null): any;
  /** Returns the bytes, or nil. */
  dataForKey(key: string | null): any;
  /** Returns all keys with their values, including registered ones. */
  dictionaryRepresentation(): Record<string, any>;
  /** Stores a property-list value; nil removes what was stored. */
  setObject_forKey_(object: any, key: string | null): void;
  /** Stores a property-list value; nil removes what was stored. */
  setObject_forKey(object: any, key: string | null): void;
  /** Stores a property-list value; nil removes what was stored. Returns true. */
  setValue_forKey_(value: any, key: string | null): boolean;
  /** Stores a property-list value; nil removes what was stored. Returns true. */
  setValue_forKey(value: any, key: string | null): boolean;
  /** Stores a boolean. */
  setBool_forKey_(bool: boolean, key: string | null): void;
  /** Stores a boolean. */
  setBool_forKey(bool: boolean, key: string | null): void;
  /** Stores a whole number. */
  setInteger_forKey_(integer: number, key: string | null): void;
  /** Stores a whole number. */
  setInteger_forKey(integer: number, key: string | null): void;
  /** Stores a number. */
  setDouble_forKey_(double: number, key: string | null): void;
  /** Stores a number. */
  setDouble_forKey(double: number, key: string | null): void;
  /** Stores a number. */
  setFloat_forKey_(float: number, key: string | null): void;
  /** Stores a number. */
  setFloat_forKey(float: number, key: string | null): void;
  /** Stores a URL as text; nil removes what was stored. */
  setURL_forKey_(url: NSURL | null, key: string | null): void;
  /** Stores a URL as text; nil removes what was stored. */
  setURL_forKey(url: NSURL | null, key: string | null): void;
  /** Returns what is stored under the name of a suite, or nil. */
  persistentDomainForName_(name: string | null): any;
  /** Returns what is stored under the name of a suite, or nil. */
  persistentDomainForName(name: string | null): any;
  /** Replaces what is stored under the name of a suite. */
  setPersistentDomain_forName_(domain: Record<string, any> | null, name: string | null): void;
  /** Replaces what is stored under the name of a suite. */
  setPersistentDomain_forName(domain: Record<string, any> | null, name: string | null): void;
  /** Removes what is stored under the name of a suite. */
  removePersistentDomainForName_(name: string | null): void;
  /** Removes what is stored under the name of a suite. */
  removePersistentDomainForName(name: string | null): void;
  /** Removes what was stored. */
  removeObjectForKey_(key: string | null): void;
  /** Removes what was stored. */
  removeObjectForKey(key: string | null): void;
  /** Gives values for keys without a stored one, until the program ends. */
  registerDefaults_(defaults: Record<string, any> | null): void;
  /** Gives values for keys without a stored one, until the program ends. */
  registerDefaults(defaults: Record<string, any> | null): void;
  /** Returns true, as everything is stored at once. */
  synchronize(): boolean;
}

interface NSUserDefaultsAllocated {
  /** Returns the settings of Kelvar. */
  init(): NSUserDefaults;
  /** Returns settings with keys of their own; nil for an empty name. */
  initWithSuiteName_(name: string | null): NSUserDefaults;
  /** Returns settings with keys of their own; nil for an empty name. */
  initWithSuiteName(name: string | null): NSUserDefaults;
}

declare const NSUserDefaults: KelvarClass & {
  alloc(): NSUserDefaultsAllocated;
  /** Returns the settings of Kelvar. */
  "new"(): NSUserDefaults;
  /** Returns the settings of Kelvar. */
  standardUserDefaults(): NSUserDefaults;
};

interface NSWorkspace extends NSObject {
  /** Opens an http, https or mailto URL with the user's program for it, and returns whether there was one; others are refused. */
  openURL_(url: NSURL | null): boolean;
  /** Opens an http, https or mailto URL with the user's program for it, and returns whether there was one; others are refused. */
  openURL(url: NSURL | null): boolean;
  /** Shows a folder to the user, and returns whether that could be done; files are refused. */
  openFile_(file: string | null): boolean;
  /** Shows a folder to the user, and returns whether that could be done; files are refused. */
  openFile(file: string | null): boolean;
  /** Shows the folder of a file to the user, and returns whether that could be done. */
  selectFile_inFileViewerRootedAtPath_(file: string | null, path: any): boolean;
  /** Shows the folder of a file to the user, and returns whether that could be done. */
  selectFile_inFileViewerRootedAtPath(file: string | null, path: any): boolean;
  /** Shows the folders of files to the user. */
  activateFileViewerSelectingURLs_(ls: any[] | null): void;
  /** Shows the folders of files to the user. */
  activateFileViewerSelectingURLs(ls: any[] | null): void;
}

interface NSWorkspaceAllocated {
}

declare const NSWorkspace: KelvarClass & {
  alloc(): NSWorkspaceAllocated;
  /** Returns the user's desktop. */
  sharedWorkspace(): NSWorkspace;
};

interface NSFontManager extends NSObject {
  /** Returns the families. */
  availableFontFamilies(): string[];
  /** Returns the PostScript names. */
  availableFonts(): string[];
  /** Returns lists of PostScript name, style, weight (5 is regular, 9 bold) and traits; nil for an unknown family. */
  availableMembersOfFontFamily_(family: string | null): any;
  /** Returns lists of PostScript name, style, weight (5 is regular, 9 bold) and traits; nil for an unknown family. */
  availableMembersOfFontFamily(family: string | null): any;
  /** Returns the font of a family with exactly these traits, italic (1) and bold (2), or nil. */
  fontWithFamily_traits_weight_size_(family: string | null, traits: number, weight: number, size: number): NSFont;
  /** Returns the font of a family with exactly these traits, italic (1) and bold (2), or nil. */
  fontWithFamily_traits_weight_size(family: string | null, traits: number, weight: number, size: number): NSFont;
  /** Returns the traits, italic (1) and bold (2). */
  traitsOfFont_(font: NSFont | null): number;
  /** Returns the traits, italic (1) and bold (2). */
  traitsOfFont(font: NSFont | null): number;
  /** Returns the font with a trait, or the font itself if its family has none. */
  convertFont_toHaveTrait_(font: NSFont | null, trait: number): NSFont;
  /** Returns the font with a trait, or the font itself if its family has none. */
  convertFont_toHaveTrait(font: NSFont | null, trait: number): NSFont;
  /** Returns the font without a trait, or the font itself if its family has none. */
  convertFont_toNotHaveTrait_(font: NSFont | null, trait: number): NSFont;
  /** Returns the font without a trait, or the font itself if its family has none. */
  convertFont_toNotHaveTrait(font: NSFont | null, trait: number): NSFont;
  /** Returns the font in another size. */
  convertFont_toSize_(font: NSFont | null, size: number): NSFont;
  /** Returns the font in another size. */
  convertFont_toSize(font: NSFont | null, size: number): NSFont;
}

interface NSFontManagerAllocated {
}

declare const NSFontManager: KelvarClass & {
  alloc(): NSFontManagerAllocated;
  /** Returns the only one. */
  sharedFontManager(): NSFontManager;
};

interface MSDocumentData extends NSObject {
  /** The open page. */
  get currentPage(): () => SketchLayer;
  set currentPage(value: SketchLayer | null);
  /** Returns the symbol masters, in the order of the pages. */
  localSymbols(): any[];
  /** Returns the symbols of libraries that the document uses. */
  foreignSymbols(): any[];
  /** Returns the page Symbols, or nil. */
  symbolsPage(): SketchLayer;
  /** Returns the page Symbols, which is added if there is none. */
  symbolsPageOrCreateIfNecessary(): SketchLayer;
  /** Returns the shared styles of layers. */
  layerStyles(): MSSharedStyleContainer;
  /** Returns the shared styles of texts. */
  layerTextStyles(): MSSharedStyleContainer;
  /** Returns the shared style of layers with this identifier, or nil. */
  layerStyleWithID_(id: string | null): MSModelObject;
  /** Returns the shared style of layers with this identifier, or nil. */
  layerStyleWithID(id: string | null): MSModelObject;
  /** Returns the shared style of texts with this identifier, or nil. */
  textStyleWithID_(id: string | null): MSModelObject;
  /** Returns the shared style of texts with this identifier, or nil. */
  textStyleWithID(id: string | null): MSModelObject;
  /** Returns the shared styles of layers as an ordinary list, also those of libraries. */
  allLayerStyles(): any[];
  /** Returns the shared styles of texts as an ordinary list, also those of libraries. */
  allTextStyles(): any[];
  /** The open page. */
  setCurrentPage_(page: SketchLayer | null): void;
  /** The open page. */
  setCurrentPage(page: SketchLayer | null): void;
  /** Returns all artboards and symbol masters, in the order of the pages. */
  allArtboards(): any[];
  /** Returns the symbol masters, in the order of the pages. */
  allSymbols(): any[];
  /** Returns the symbol master with this symbolID, or nil. */
  symbolWithID_(id: string | null): SketchLayer;
  /** Returns the symbol master with this symbolID, or nil. */
  symbolWithID(id: string | null): SketchLayer;
  /** Returns the layer with this identifier, or nil. */
  layerWithID_(id: string | null): SketchLayer;
  /** Returns the layer with this identifier, or nil. */
  layerWithID(id: string | null): SketchLayer;
  /** The pages in order. */
  pages(): any[];
  /** Puts a new page after the others and returns it. */
  addPage_(page: SketchLayer | null): SketchLayer;
  /** Puts a new page after the others and returns it. */
  addPage(page: SketchLayer | null): SketchLayer;
  /** Removes a page, which must not be the only one. */
  removePage_(page: SketchLayer | null): void;
  /** Removes a page, which must not be the only one. */
  removePage(page: SketchLayer | null): void;
  /** Returns the colors and gradients that the document offers. */
  assets(): MSAssetCollection;
}

interface MSDocumentDataAllocated {
}

declare const MSDocumentData: KelvarClass & {
  alloc(): MSDocumentDataAllocated;
};

interface MSExportRequest extends NSObject {
  /** Pixels per unit. */
  get scale(): () => number;
  set scale(value: number);
  /** The extension of the file, such as "png". */
  get format(): () => string;
  set format(value: string | null);
  /** What the file is to be called, without its extension. */
  get name(): () => string;
  set name(value: string | null);
  /** Pixels per unit. */
  setScale_(scale: number): void;
  /** Pixels per unit. */
  setScale(scale: number): void;
  /** The extension of the file, such as "png". */
  setFormat_(format: string | null): void;
  /** The extension of the file, such as "png". */
  setFormat(format: string | null): void;
  /** What the file is to be called, without its extension. */
  setName_(name: string | null): void;
  /** What the file is to be called, without its extension. */
  setName(name: string | null): void;
}

interface MSExportRequestAllocated {
}

declare const MSExportRequest: KelvarClass & {
  alloc(): MSExportRequestAllocated;
  /** Returns a request for each export format of a layer, or for a PNG in its natural size. */
  exportRequestsFromExportableLayer_(layer: SketchLayer | null): any[];
  /** Returns a request for each export format of a layer, or for a PNG in its natural size. */
  exportRequestsFromExportableLayer(layer: SketchLayer | null): any[];
  /** Returns the same; the rectangle must contain all that the layer covers, as a part of a layer cannot be exported. */
  exportRequestsFromExportableLayer_inRect_useIDForName_(layer: SketchLayer | null, rect: NSRect, name: boolean): any[];
  /** Returns the same; the rectangle must contain all that the layer covers, as a part of a layer cannot be exported. */
  exportRequestsFromExportableLayer_inRect_useIDForName(layer: SketchLayer | null, rect: NSRect, name: boolean): any[];
  /** Returns a request for a layer in one format. */
  exportRequestFromLayerAncestry_exportFormat_(ancestry: MSImmutableLayerAncestry | null, format: MSModelObject | null): MSExportRequest;
  /** Returns a request for a layer in one format. */
  exportRequestFromLayerAncestry_exportFormat(ancestry: MSImmutableLayerAncestry | null, format: MSModelObject | null): MSExportRequest;
  /** Returns a request for a layer in one format; the rectangle must contain all that the layer covers. */
  exportRequestFromExportFormat_layer_inRect_useIDForName_(format: MSModelObject | null, layer: SketchLayer | null, rect: NSRect, name: boolean): MSExportRequest;
  /** Returns a request for a layer in one format; the rectangle must contain all that the layer covers. */
  exportRequestFromExportFormat_layer_inRect_useIDForName(format: MSModelObject | null, layer: SketchLayer | null, rect: NSRect, name: boolean): MSExportRequest;
  /** Returns a request for each export format of a layer, or for a PNG in its natural size. */
  exportRequestsFromLayerAncestry_(ancestry: MSImmutableLayerAncestry | null): any[];
  /** Returns a request for each export format of a layer, or for a PNG in its natural size. */
  exportRequestsFromLayerAncestry(ancestry: MSImmutableLayerAncestry | null): any[];
  /** Returns a request for a layer in each of the formats. */
  exportRequestsFromLayerAncestry_exportFormats_(ancestry: MSImmutableLayerAncestry | null, formats: any[] | null): any[];
  /** Returns a request for a layer in each of the formats. */
  exportRequestsFromLayerAncestry_exportFormats(ancestry: MSImmutableLayerAncestry | null, formats: any[] | null): any[];
  /** Returns a request for a layer in each of the formats, named by the layer or by its identifier. */
  exportRequestsFromExportableLayer_exportFormats_useIDForName_(layer: SketchLayer | null, formats: any[] | null, name: boolean): any[];
  /** Returns a request for a layer in each of the formats, named by the layer or by its identifier. */
  exportRequestsFromExportableLayer_exportFormats_useIDForName(layer: SketchLayer | null, formats: any[] | null, name: boolean): any[];
};

interface MSImmutableLayerAncestry extends NSObject {
  /** Returns the layer. */
  layer(): SketchLayer;
}

interface MSImmutableLayerAncestryAllocated {
  /** Creates the place of a layer, for MSExportRequest. */
  initWithLayer_(layer: SketchLayer | null): MSImmutableLayerAncestry;
  /** Creates the place of a layer, for MSExportRequest. */
  initWithLayer(layer: SketchLayer | null): MSImmutableLayerAncestry;
}

declare const MSImmutableLayerAncestry: KelvarClass & {
  alloc(): MSImmutableLayerAncestryAllocated;
  /** Returns the place of a layer, for MSExportRequest. */
  ancestryWithMSLayer_(layer: SketchLayer | null): MSImmutableLayerAncestry;
  /** Returns the place of a layer, for MSExportRequest. */
  ancestryWithMSLayer(layer: SketchLayer | null): MSImmutableLayerAncestry;
};

interface MSLayer extends SketchLayer {
  /** The layer's frame in its parent, whose sides can be set; the contents stay as they are. */
  get frame(): () => KVRect;
  set frame(value: KVRect | null);
  /** The layer's frame as a structure. */
  get rect(): () => NSRect;
  set rect(value: NSRect);
  /** The frame's top left corner. */
  get origin(): () => NSPoint;
  set origin(value: NSPoint);
  /** The middle of the frame, in the parent. */
  get center(): () => NSPoint;
  set center(value: NSPoint);
  /** The top left corner on the page. */
  get absolutePosition(): () => NSPoint;
  set absolutePosition(value: NSPoint);
  /** Rotation in degrees, counter-clockwise on screen. */
  get rotation(): () => number;
  set rotation(value: number);
  /** Whether the layer is mirrored left to right. */
  get isFlippedHorizontal(): () => boolean;
  set isFlippedHorizontal(value: boolean);
  /** Whether the layer is mirrored top to bottom. */
  get isFlippedVertical(): () => boolean;
  set isFlippedVertical(value: boolean);
  /** Whether the host keeps the proportions when the layer is resized by hand. */
  get constrainProportions(): () => boolean;
  set constrainProportions(value: boolean);
  /** Which sides and sizes are fixed, as a bit mask of documents. */
  get resizingConstraint(): () => number;
  set resizingConstraint(value: number);
  /** Where a click leads in a prototype; nil for nowhere. */
  get flow(): () => MSModelObject;
  set flow(value: MSModelObject | null);
  /** Whether the layer stays in place when a prototype scrolls. */
  get isFixedToViewport(): () => boolean;
  set isFixedToViewport(value: boolean);
  /** Whether the host protects the layer from changes by hand. */
  get isLocked(): () => boolean;
  set isLocked(value: boolean);
  /** Whether the host keeps the name when the content changes. */
  get nameIsFixed(): () => boolean;
  set nameIsFixed(value: boolean);
  /** Whether the layer is a mask for those above it. */
  get hasClippingMask(): () => boolean;
  set hasClippingMask(value: boolean);
  /** What a mask goes by: its outline (0) or its opacity (1). */
  get clippingMaskMode(): () => number;
  set clippingMaskMode(value: number);
  /** Whether the mask below does not apply. */
  get shouldBreakMaskChain(): () => boolean;
  set shouldBreakMaskChain(value: boolean);
  /** Whether the host's list shows what is in the layer: undecided (0), no (1) or yes (2). */
  get layerListExpandedType(): () => number;
  set layerListExpandedType(value: number);
  /** What plug-ins have stored on the layer. */
  get userInfo(): () => Record<string, any>;
  set userInfo(value: Record<string, any> | null);
  /** The layer around this one, or nil for a page. */
  parentGroup(): SketchLayer;
  /** The artboard around the layer, or the layer itself; nil if it lies directly on the page. */
  parentArtboard(): SketchLayer;
  /** The page that the layer is on. */
  parentPage(): SketchLayer;
  /** The symbol master around the layer, or the layer itself; nil for none. */
  parentSymbol(): SketchLayer;
  /** The artboard around the layer or, if there is none, its page. */
  parentRoot(): SketchLayer;
  /** The layers around this one, the page first. */
  ancestors(): any[];
  /** The layer itself and all layers in it, in drawing order. */
  children(): any[];
  /** Returns all layers in this one, with or without the layer itself, in drawing order. */
  childrenIncludingSelf_(self: boolean): any[];
  /** Returns all layers in this one, with or without the layer itself, in drawing order. */
  childrenIncludingSelf(self: boolean): any[];
  /** Returns whether there are layers in it. */
  containsLayers(): boolean;
  /** Takes the layer out of the document. */
  removeFromParent(): void;
  /** Puts a copy above the layer and returns it. */
  duplicate(): SketchLayer;
  /** Returns the layer itself. */
  immutableModelObject(): SketchLayer;
  /** Returns a copy that is in no document. */
  copy(): SketchLayer;
  /** Puts the layer below another one, or above all layers of a group if that is nil. */
  moveToLayer_beforeLayer_(layer: SketchLayer | null, argument2: SketchLayer | null): void;
  /** Puts the layer below another one, or above all layers of a group if that is nil. */
  moveToLayer_beforeLayer(layer: SketchLayer | null, argument2: SketchLayer | null): void;
  /** Returns whether the layer is selected. */
  isSelected(): boolean;
  /** Selects or deselects the layer. */
  setIsSelected_(selected: boolean): void;
  /** Selects or deselects the layer. */
  setIsSelected(selected: boolean): void;
  /** Selects or deselects the layer; others stay selected only if the selection is expanded. */
  select_byExpandingSelection_(select: boolean, selection: boolean): void;
  /** Selects or deselects the layer; others stay selected only if the selection is expanded. */
  select_byExpandingSelection(select: boolean, selection: boolean): void;
  /** Selects or deselects the layer; others stay selected only if the selection is extended. */
  select_byExtendingSelection_(select: boolean, selection: boolean): void;
  /** Selects or deselects the layer; others stay selected only if the selection is extended. */
  select_byExtendingSelection(select: boolean, selection: boolean): void;
  /** The layer's frame in its parent, whose sides can be set; the contents stay as they are. */
  setFrame_(frame: KVRect | null): void;
  /** The layer's frame in its parent, whose sides can be set; the contents stay as they are. */
  setFrame(frame: KVRect | null): void;
  /** The layer's frame as a structure. */
  setRect_(rect: NSRect): void;
  /** The layer's frame as a structure. */
  setRect(rect: NSRect): void;
  /** The layer's frame on its page, whose sides can be set. */
  absoluteRect(): MSAbsoluteRect;
  /** The frame in the layer's own coordinates. */
  bounds(): NSRect;
  /** The frame's top left corner. */
  setOrigin_(origin: NSPoint): void;
  /** The frame's top left corner. */
  setOrigin(origin: NSPoint): void;
  /** The middle of the frame, in the parent. */
  setCenter_(center: NSPoint): void;
  /** The middle of the frame, in the parent. */
  setCenter(center: NSPoint): void;
  /** The top left corner on the page. */
  setAbsolutePosition_(position: NSPoint): void;
  /** The top left corner on the page. */
  setAbsolutePosition(position: NSPoint): void;
  /** Returns the layer's frame in its parent, before it is rotated and mirrored. */
  frameForTransforms(): NSRect;
  /** What the layer covers on its page, with borders, shadows and blurs. */
  absoluteInfluenceRect(): NSRect;
  /** Rotation in degrees, counter-clockwise on screen. */
  setRotation_(rotation: number): void;
  /** Rotation in degrees, counter-clockwise on screen. */
  setRotation(rotation: number): void;
  /** Whether the layer is mirrored left to right. */
  setIsFlippedHorizontal_(horizontal: boolean): void;
  /** Whether the layer is mirrored left to right. */
  setIsFlippedHorizontal(horizontal: boolean): void;
  /** Whether the layer is mirrored top to bottom. */
  setIsFlippedVertical_(vertical: boolean): void;
  /** Whether the layer is mirrored top to bottom. */
  setIsFlippedVertical(vertical: boolean): void;
  /** Whether the host keeps the proportions when the layer is resized by hand. */
  setConstrainProportions_(proportions: boolean): void;
  /** Whether the host keeps the proportions when the layer is resized by hand. */
  setConstrainProportions(proportions: boolean): void;
  /** Which sides and sizes are fixed, as a bit mask of documents. */
  setResizingConstraint_(constraint: number): void;
  /** Which sides and sizes are fixed, as a bit mask of documents. */
  setResizingConstraint(constraint: number): void;
  /** Where a click leads in a prototype; nil for nowhere. */
  setFlow_(flow: MSModelObject | null): void;
  /** Where a click leads in a prototype; nil for nowhere. */
  setFlow(flow: MSModelObject | null): void;
  /** Whether the layer stays in place when a prototype scrolls. */
  setIsFixedToViewport_(viewport: boolean): void;
  /** Whether the layer stays in place when a prototype scrolls. */
  setIsFixedToViewport(viewport: boolean): void;
  /** Whether the host protects the layer from changes by hand. */
  setIsLocked_(locked: boolean): void;
  /** Whether the host protects the layer from changes by hand. */
  setIsLocked(locked: boolean): void;
  /** Whether the host keeps the name when the content changes. */
  setNameIsFixed_(fixed: boolean): void;
  /** Whether the host keeps the name when the content changes. */
  setNameIsFixed(fixed: boolean): void;
  /** Whether the layer is a mask for those above it. */
  setHasClippingMask_(mask: boolean): void;
  /** Whether the layer is a mask for those above it. */
  setHasClippingMask(mask: boolean): void;
  /** What a mask goes by: its outline (0) or its opacity (1). */
  setClippingMaskMode_(mode: number): void;
  /** What a mask goes by: its outline (0) or its opacity (1). */
  setClippingMaskMode(mode: number): void;
  /** Whether the mask below does not apply. */
  setShouldBreakMaskChain_(chain: boolean): void;
  /** Whether the mask below does not apply. */
  setShouldBreakMaskChain(chain: boolean): void;
  /** Whether the host's list shows what is in the layer: undecided (0), no (1) or yes (2). */
  setLayerListExpandedType_(type: number): void;
  /** Whether the host's list shows what is in the layer: undecided (0), no (1) or yes (2). */
  setLayerListExpandedType(type: number): void;
  /** What plug-ins have stored on the layer. */
  setUserInfo_(info: Record<string, any> | null): void;
  /** What plug-ins have stored on the layer. */
  setUserInfo(info: Record<string, any> | null): void;
  /** Returns a copy of what the document has of the layer, without the layers in it. */
  treeAsDictionary(): Record<string, any>;
  /** Returns how the layer is exported. */
  exportOptions(): MSModelObject;
  /** Returns whether the layer has export formats. */
  isLayerExportable(): boolean;
}

interface MSLayerAllocated {
}

declare const MSLayer: KelvarClass & {
  alloc(): MSLayerAllocated;
};

interface MSStyledLayer extends MSLayer {
  /** The layer's style. One that is set is copied, and the layer gets its shared style, if any. */
  get style(): () => MSModelObject;
  set style(value: MSModelObject | null);
  /** The shared style that the layer refers to; nil for none. One that is set gives the layer a copy of its style. */
  get sharedStyle(): () => MSModelObject;
  set sharedStyle(value: MSModelObject | null);
  /** The identifier of the shared style that the layer refers to; nil for none. */
  get sharedStyleID(): () => string;
  set sharedStyleID(value: string | null);
  /** The layer's style. One that is set is copied, and the layer gets its shared style, if any. */
  setStyle_(style: MSModelObject | null): void;
  /** The layer's style. One that is set is copied, and the layer gets its shared style, if any. */
  setStyle(style: MSModelObject | null): void;
  /** Returns the layer's style. */
  usedStyle(): MSModelObject;
  /** The shared style that the layer refers to; nil for none. One that is set gives the layer a copy of its style. */
  setSharedStyle_(style: MSModelObject | null): void;
  /** The shared style that the layer refers to; nil for none. One that is set gives the layer a copy of its style. */
  setSharedStyle(style: MSModelObject | null): void;
  /** The identifier of the shared style that the layer refers to; nil for none. */
  setSharedStyleID_(id: string | null): void;
  /** The identifier of the shared style that the layer refers to; nil for none. */
  setSharedStyleID(id: string | null): void;
}

interface MSStyledLayerAllocated {
}

declare const MSStyledLayer: KelvarClass & {
  alloc(): MSStyledLayerAllocated;
};

interface MSLayerGroup extends MSStyledLayer {
  /** Whether a click in the host selects what is in the group. */
  get hasClickThrough(): () => boolean;
  set hasClickThrough(value: boolean);
  /** Puts a layer above the others. */
  addLayer_(layer: any): void;
  /** Puts a layer above the others. */
  addLayer(layer: any): void;
  /** Puts layers above the others. */
  addLayers_(layers: any): void;
  /** Puts layers above the others. */
  addLayers(layers: any): void;
  /** Puts a layer above as many others. */
  insertLayer_atIndex_(layer: any, index: number): void;
  /** Puts a layer above as many others. */
  insertLayer_atIndex(layer: any, index: number): void;
  /** Puts layers above as many others. */
  insertLayers_atIndex_(layers: any, index: number): void;
  /** Puts layers above as many others. */
  insertLayers_atIndex(layers: any, index: number): void;
  /** Puts a layer above another one. */
  insertLayer_afterLayer_(layer: any, argument2: SketchLayer | null): void;
  /** Puts a layer above another one. */
  insertLayer_afterLayer(layer: any, argument2: SketchLayer | null): void;
  /** Puts layers above another one. */
  insertLayers_afterLayer_(layers: any, layer: SketchLayer | null): void;
  /** Puts layers above another one. */
  insertLayers_afterLayer(layers: any, layer: SketchLayer | null): void;
  /** Puts a layer below another one. */
  insertLayer_beforeLayer_(layer: any, argument2: SketchLayer | null): void;
  /** Puts a layer below another one. */
  insertLayer_beforeLayer(layer: any, argument2: SketchLayer | null): void;
  /** Puts layers below another one. */
  insertLayers_beforeLayer_(layers: any, layer: SketchLayer | null): void;
  /** Puts layers below another one. */
  insertLayers_beforeLayer(layers: any, layer: SketchLayer | null): void;
  /** Takes a layer out. */
  removeLayer_(layer: SketchLayer | null): void;
  /** Takes a layer out. */
  removeLayer(layer: SketchLayer | null): void;
  /** Takes all layers out. */
  removeAllLayers(): void;
  /** Returns a layer by its index, from the lowest. */
  layerAtIndex_(index: number): SketchLayer;
  /** Returns a layer by its index, from the lowest. */
  layerAtIndex(index: number): SketchLayer;
  /** Returns the index of a layer, from the lowest; -1 if it is not in the group. */
  indexOfLayer_(layer: SketchLayer | null): number;
  /** Returns the index of a layer, from the lowest; -1 if it is not in the group. */
  indexOfLayer(layer: SketchLayer | null): number;
  /** Returns the lowest layer, or nil. */
  firstLayer(): SketchLayer;
  /** Returns the highest layer, or nil. */
  lastLayer(): SketchLayer;
  /** Returns the layer with this identifier, at any depth, or nil. */
  layerWithID_(id: string | null): SketchLayer;
  /** Returns the layer with this identifier, at any depth, or nil. */
  layerWithID(id: string | null): SketchLayer;
  /** Returns the layers with export formats, at any depth. */
  exportableLayers(): any[];
  /** Whether a click in the host selects what is in the group. */
  setHasClickThrough_(through: boolean): void;
  /** Whether a click in the host selects what is in the group. */
  setHasClickThrough(through: boolean): void;
  /** Makes the frame as large as the layers in it, which stay where they are; the option has no meaning here. */
  resizeToFitChildrenWithOption_(option: number): void;
  /** Makes the frame as large as the layers in it, which stay where they are; the option has no meaning here. */
  resizeToFitChildrenWithOption(option: number): void;
  /** Makes the frame as large as the layers in it, which stay where they are; the options have no meaning here. */
  fixGeometryWithOptions_(options: number): void;
  /** Makes the frame as large as the layers in it, which stay where they are; the options have no meaning here. */
  fixGeometryWithOptions(options: number): void;
  /** Puts the layers in the place of the group and returns them. */
  ungroup(): any[];
}

interface MSLayerGroupAllocated {
  /** Creates an empty group. */
  init(): MSLayerGroup;
  /** Creates an empty group with this frame. */
  initWithFrame_(frame: NSRect): MSLayerGroup;
  /** Creates an empty group with this frame. */
  initWithFrame(frame: NSRect): MSLayerGroup;
}

declare const MSLayerGroup: KelvarClass & {
  alloc(): MSLayerGroupAllocated;
  /** Creates an empty group. */
  "new"(): MSLayerGroup;
  /** Puts layers of one parent into a new group in the place of the highest. */
  groupFromLayers_(layers: any): SketchLayer;
  /** Puts layers of one parent into a new group in the place of the highest. */
  groupFromLayers(layers: any): SketchLayer;
  /** Puts layers of one parent into a new group in the place of the highest. */
  groupWithLayers_(layers: any): SketchLayer;
  /** Puts layers of one parent into a new group in the place of the highest. */
  groupWithLayers(layers: any): SketchLayer;
};

interface MSPage extends MSLayerGroup {
  /** The horizontal ruler with its vertical guides. */
  get horizontalRulerData(): () => MSModelObject;
  set horizontalRulerData(value: MSModelObject | null);
  /** The vertical ruler with its horizontal guides. */
  get verticalRulerData(): () => MSModelObject;
  set verticalRulerData(value: MSModelObject | null);
  /** The grid; nil for none. */
  get grid(): () => MSModelObject;
  set grid(value: MSModelObject | null);
  /** The layout of columns and rows; nil for none. */
  get layout(): () => MSModelObject;
  set layout(value: MSModelObject | null);
  /** Returns the selected layers on the page. */
  selectedLayers(): MSLayerArray;
  /** Returns the selected layers on the page as an ordinary list. */
  selection(): any[];
  /** Selects these layers and no others; nil for none. */
  selectLayers_(layers: any): void;
  /** Selects these layers and no others; nil for none. */
  selectLayers(layers: any): void;
  /** Selects these layers and no others. */
  changeSelectionBySelectingLayers_(layers: any): void;
  /** Selects these layers and no others. */
  changeSelectionBySelectingLayers(layers: any): void;
  /** Selects these layers and no others. */
  changeSelectionToLayers_(layers: any): void;
  /** Selects these layers and no others. */
  changeSelectionToLayers(layers: any): void;
  /** Deselects the layers on the page. */
  deselectAllLayers(): void;
  /** Returns the artboard that is selected or has a selected layer, or nil. */
  currentArtboard(): SketchLayer;
  /** The horizontal ruler with its vertical guides. */
  setHorizontalRulerData_(data: MSModelObject | null): void;
  /** The horizontal ruler with its vertical guides. */
  setHorizontalRulerData(data: MSModelObject | null): void;
  /** The vertical ruler with its horizontal guides. */
  setVerticalRulerData_(data: MSModelObject | null): void;
  /** The vertical ruler with its horizontal guides. */
  setVerticalRulerData(data: MSModelObject | null): void;
  /** The grid; nil for none. */
  setGrid_(grid: MSModelObject | null): void;
  /** The grid; nil for none. */
  setGrid(grid: MSModelObject | null): void;
  /** The layout of columns and rows; nil for none. */
  setLayout_(layout: MSModelObject | null): void;
  /** The layout of columns and rows; nil for none. */
  setLayout(layout: MSModelObject | null): void;
  /** The symbol masters on the page. */
  symbols(): any[];
  /** Returns the layers with export formats, at any depth. */
  allExportableLayers(): any[];
  /** The slices on the page, at any depth. */
  slices(): any[];
  /** Returns the rectangle around the frames of the layers on the page. */
  contentBounds(): NSRect;
}

interface MSPageAllocated {
  /** Creates an empty page, which is in no document yet. */
  init(): MSPage;
}

declare const MSPage: KelvarClass & {
  alloc(): MSPageAllocated;
  /** Creates an empty page, which is in no document yet. */
  "new"(): MSPage;
};

interface MSArtboardGroup extends MSLayerGroup {
  /** The horizontal ruler with its vertical guides. */
  get horizontalRulerData(): () => MSModelObject;
  set horizontalRulerData(value: MSModelObject | null);
  /** The vertical ruler with its horizontal guides. */
  get verticalRulerData(): () => MSModelObject;
  set verticalRulerData(value: MSModelObject | null);
  /** The grid; nil for none. */
  get grid(): () => MSModelObject;
  set grid(value: MSModelObject | null);
  /** The layout of columns and rows; nil for none. */
  get layout(): () => MSModelObject;
  set layout(value: MSModelObject | null);
  /** Whether a prototype begins here. */
  get isFlowHome(): () => boolean;
  set isFlowHome(value: boolean);
  /** Whether the background is drawn. */
  get hasBackgroundColor(): () => boolean;
  set hasBackgroundColor(value: boolean);
  /** The background. */
  get backgroundColor(): () => MSColor;
  set backgroundColor(value: MSColor | null);
  /** Whether the background is exported. */
  get includeBackgroundColorInExport(): () => boolean;
  set includeBackgroundColorInExport(value: boolean);
  /** Whether the host resizes what is in it. */
  get resizesContent(): () => boolean;
  set resizesContent(value: boolean);
  /** The horizontal ruler with its vertical guides. */
  setHorizontalRulerData_(data: MSModelObject | null): void;
  /** The horizontal ruler with its vertical guides. */
  setHorizontalRulerData(data: MSModelObject | null): void;
  /** The vertical ruler with its horizontal guides. */
  setVerticalRulerData_(data: MSModelObject | null): void;
  /** The vertical ruler with its horizontal guides. */
  setVerticalRulerData(data: MSModelObject | null): void;
  /** The grid; nil for none. */
  setGrid_(grid: MSModelObject | null): void;
  /** The grid; nil for none. */
  setGrid(grid: MSModelObject | null): void;
  /** The layout of columns and rows; nil for none. */
  setLayout_(layout: MSModelObject | null): void;
  /** The layout of columns and rows; nil for none. */
  setLayout(layout: MSModelObject | null): void;
  /** Whether a prototype begins here. */
  setIsFlowHome_(home: boolean): void;
  /** Whether a prototype begins here. */
  setIsFlowHome(home: boolean): void;
  /** Whether the background is drawn. */
  setHasBackgroundColor_(color: boolean): void;
  /** Whether the background is drawn. */
  setHasBackgroundColor(color: boolean): void;
  /** The background. */
  setBackgroundColor_(color: any): void;
  /** The background. */
  setBackgroundColor(color: any): void;
  /** Whether the background is exported. */
  setIncludeBackgroundColorInExport_(argument1: boolean): void;
  /** Whether the background is exported. */
  setIncludeBackgroundColorInExport(argument1: boolean): void;
  /** Whether the host resizes what is in it. */
  setResizesContent_(content: boolean): void;
  /** Whether the host resizes what is in it. */
  setResizesContent(content: boolean): void;
}

interface MSArtboardGroupAllocated {
  /** Creates an empty artboard. */
  init(): MSArtboardGroup;
  /** Creates an empty artboard with this frame. */
  initWithFrame_(frame: NSRect): MSArtboardGroup;
  /** Creates an empty artboard with this frame. */
  initWithFrame(frame: NSRect): MSArtboardGroup;
}

declare const MSArtboardGroup: KelvarClass & {
  alloc(): MSArtboardGroupAllocated;
  /** Creates an empty artboard. */
  "new"(): MSArtboardGroup;
};

interface MSSymbolMaster extends MSArtboardGroup {
  /** The identifier that instances refer to. */
  get symbolID(): () => string;
  set symbolID(value: string | null);
  /** Whether instances show the background. */
  get includeBackgroundColorInInstance(): () => boolean;
  set includeBackgroundColorInInstance(value: boolean);
  /** The identifier that instances refer to. */
  setSymbolID_(id: string | null): void;
  /** The identifier that instances refer to. */
  setSymbolID(id: string | null): void;
  /** Returns a new instance, which is in no document yet. */
  newSymbolInstance(): SketchLayer;
  /** Returns the instances in the document. */
  allInstances(): any[];
  /** Returns whether there are instances in the document. */
  hasInstances(): boolean;
  /** Returns whether the symbol is on no page, as those of libraries are. */
  isForeign(): boolean;
  /** Returns what can differ in instances. */
  overridePoints(): any[];
  /** Whether instances show the background. */
  setIncludeBackgroundColorInInstance_(instance: boolean): void;
  /** Whether instances show the background. */
  setIncludeBackgroundColorInInstance(instance: boolean): void;
}

interface MSSymbolMasterAllocated {
  /** Creates an empty symbol. */
  init(): MSSymbolMaster;
  /** Creates an empty symbol with this frame. */
  initWithFrame_(frame: NSRect): MSSymbolMaster;
  /** Creates an empty symbol with this frame. */
  initWithFrame(frame: NSRect): MSSymbolMaster;
}

declare const MSSymbolMaster: KelvarClass & {
  alloc(): MSSymbolMasterAllocated;
  /** Creates an empty symbol. */
  "new"(): MSSymbolMaster;
  /** Puts a symbol with the same layers in the place of an artboard and returns it. */
  convertArtboardToSymbol_(symbol: SketchLayer | null): SketchLayer;
  /** Puts a symbol with the same layers in the place of an artboard and returns it. */
  convertArtboardToSymbol(symbol: SketchLayer | null): SketchLayer;
  /** Puts an artboard with the same layers in the place of a symbol and returns it; instances are left without their symbol. */
  convertSymbolToArtboard_(artboard: SketchLayer | null): SketchLayer;
  /** Puts an artboard with the same layers in the place of a symbol and returns it; instances are left without their symbol. */
  convertSymbolToArtboard(artboard: SketchLayer | null): SketchLayer;
};

interface MSShapeGroup extends MSLayerGroup {
  /** How it is combined with the shape below: none (-1), union (0), subtract (1), intersect (2) or difference (3). */
  get booleanOperation(): () => number;
  set booleanOperation(value: number);
  /** Returns the outline in the coordinates of its parent, rotated and mirrored like the layer. */
  bezierPathWithTransforms(): NSBezierPath;
  /** Returns the outline in the coordinates of its parent, rotated and mirrored like the layer. */
  pathInFrameWithTransforms(): NSBezierPath;
  /** Returns the outline in the coordinates of its parent, neither rotated nor mirrored. */
  pathInFrame(): NSBezierPath;
  /** How it is combined with the shape below: none (-1), union (0), subtract (1), intersect (2) or difference (3). */
  setBooleanOperation_(operation: number): void;
  /** How it is combined with the shape below: none (-1), union (0), subtract (1), intersect (2) or difference (3). */
  setBooleanOperation(operation: number): void;
}

interface MSShapeGroupAllocated {
  /** Creates an empty shape group. */
  init(): MSShapeGroup;
}

declare const MSShapeGroup: KelvarClass & {
  alloc(): MSShapeGroupAllocated;
  /** Creates an empty shape group. */
  "new"(): MSShapeGroup;
  /** Creates a shape group of a path, or of a shape that is taken out of where it is. */
  shapeWithPath_(path: any): SketchLayer;
  /** Creates a shape group of a path, or of a shape that is taken out of where it is. */
  shapeWithPath(path: any): SketchLayer;
  /** Creates a shape group of a path, or of a shape that is taken out of where it is. */
  layerWithPath_(path: any): SketchLayer;
  /** Creates a shape group of a path, or of a shape that is taken out of where it is. */
  layerWithPath(path: any): SketchLayer;
  /** Creates a shape group of a path, or of a shape that is taken out of where it is. */
  shapeWithBezierPath_(path: any): SketchLayer;
  /** Creates a shape group of a path, or of a shape that is taken out of where it is. */
  shapeWithBezierPath(path: any): SketchLayer;
  /** Creates a shape group of a rectangle. */
  shapeWithRect_(rect: NSRect): SketchLayer;
  /** Creates a shape group of a rectangle. */
  shapeWithRect(rect: NSRect): SketchLayer;
};

interface MSShapePathLayer extends MSStyledLayer {
  /** Whether the outline ends where it began. */
  get isClosed(): () => boolean;
  set isClosed(value: boolean);
  /** How it is combined with the shape below: none (-1), union (0), subtract (1), intersect (2) or difference (3). */
  get booleanOperation(): () => number;
  set booleanOperation(value: number);
  /** The points of the outline. */
  get points(): () => any[];
  set points(value: any[] | null);
  /** Returns an empty list: only its key path leads to the shape itself. */
  layers(): any[];
  /** Returns the outline in the coordinates of its parent, rotated and mirrored like the layer. */
  bezierPathWithTransforms(): NSBezierPath;
  /** Returns the outline in the coordinates of its parent, rotated and mirrored like the layer. */
  pathInFrameWithTransforms(): NSBezierPath;
  /** Returns the outline in the coordinates of its parent, neither rotated nor mirrored. */
  pathInFrame(): NSBezierPath;
  /** Whether the outline ends where it began. */
  setIsClosed_(closed: boolean): void;
  /** Whether the outline ends where it began. */
  setIsClosed(closed: boolean): void;
  /** Whether the points were moved by hand. */
  edited(): boolean;
  /** How it is combined with the shape below: none (-1), union (0), subtract (1), intersect (2) or difference (3). */
  setBooleanOperation_(operation: number): void;
  /** How it is combined with the shape below: none (-1), union (0), subtract (1), intersect (2) or difference (3). */
  setBooleanOperation(operation: number): void;
  /** The points of the outline. */
  setPoints_(points: any[] | null): void;
  /** The points of the outline. */
  setPoints(points: any[] | null): void;
  /** How many points the outline has. */
  numberOfPoints(): number;
}

interface MSShapePathLayerAllocated {
  /** Creates a shape without points. */
  init(): MSShapePathLayer;
}

declare const MSShapePathLayer: KelvarClass & {
  alloc(): MSShapePathLayerAllocated;
  /** Creates a shape without points. */
  "new"(): MSShapePathLayer;
  /** Creates a shape that has the outline of a path. */
  layerWithPath_(path: NSBezierPath | null): SketchLayer;
  /** Creates a shape that has the outline of a path. */
  layerWithPath(path: NSBezierPath | null): SketchLayer;
  /** Creates a shape that has the outline of a path. */
  shapeWithBezierPath_(path: NSBezierPath | null): SketchLayer;
  /** Creates a shape that has the outline of a path. */
  shapeWithBezierPath(path: NSBezierPath | null): SketchLayer;
};

interface MSRectangleShape extends MSShapePathLayer {
  /** The radii of the corners, such as 8/8/0/0, from the top left one clockwise. */
  get cornerRadiusString(): () => string;
  set cornerRadiusString(value: string | null);
  /** The radius of the corners; of the first one, if they differ. */
  get cornerRadiusFloat(): () => number;
  set cornerRadiusFloat(value: number);
  /** The radius of the corners; of the first one, if they differ. */
  get fixedRadius(): () => number;
  set fixedRadius(value: number);
  /** The radii of the corners, such as 8/8/0/0, from the top left one clockwise. */
  setCornerRadiusString_(string: string | null): void;
  /** The radii of the corners, such as 8/8/0/0, from the top left one clockwise. */
  setCornerRadiusString(string: string | null): void;
  /** Sets the radii of the corners, such as 8/8/0/0, from the top left one clockwise; one radius is for all. */
  setCornerRadiusFromComponents_(components: string | null): void;
  /** Sets the radii of the corners, such as 8/8/0/0, from the top left one clockwise; one radius is for all. */
  setCornerRadiusFromComponents(components: string | null): void;
  /** The radius of the corners; of the first one, if they differ. */
  setCornerRadiusFloat_(float: number): void;
  /** The radius of the corners; of the first one, if they differ. */
  setCornerRadiusFloat(float: number): void;
  /** The radius of the corners; of the first one, if they differ. */
  setFixedRadius_(radius: number): void;
  /** The radius of the corners; of the first one, if they differ. */
  setFixedRadius(radius: number): void;
}

interface MSRectangleShapeAllocated {
  /** Creates a rectangle. */
  init(): MSRectangleShape;
  /** Creates a rectangle. */
  initWithFrame_(frame: NSRect): MSRectangleShape;
  /** Creates a rectangle. */
  initWithFrame(frame: NSRect): MSRectangleShape;
}

declare const MSRectangleShape: KelvarClass & {
  alloc(): MSRectangleShapeAllocated;
  /** Creates a rectangle. */
  "new"(): MSRectangleShape;
  /** Creates a rectangle with rounded corners. */
  rectangleWithRect_cornerRadius_(rect: NSRect, radius: number): SketchLayer;
  /** Creates a rectangle with rounded corners. */
  rectangleWithRect_cornerRadius(rect: NSRect, radius: number): SketchLayer;
};

interface MSOvalShape extends MSShapePathLayer {
}

interface MSOvalShapeAllocated {
  /** Creates an oval. */
  init(): MSOvalShape;
  /** Creates an oval. */
  initWithFrame_(frame: NSRect): MSOvalShape;
  /** Creates an oval. */
  initWithFrame(frame: NSRect): MSOvalShape;
}

declare const MSOvalShape: KelvarClass & {
  alloc(): MSOvalShapeAllocated;
  /** Creates an oval. */
  "new"(): MSOvalShape;
};

interface MSTriangleShape extends MSShapePathLayer {
}

interface MSTriangleShapeAllocated {
  /** Creates a triangle. */
  init(): MSTriangleShape;
  /** Creates a triangle. */
  initWithFrame_(frame: NSRect): MSTriangleShape;
  /** Creates a triangle. */
  initWithFrame(frame: NSRect): MSTriangleShape;
}

declare const MSTriangleShape: KelvarClass & {
  alloc(): MSTriangleShapeAllocated;
  /** Creates a triangle. */
  "new"(): MSTriangleShape;
};

interface MSPolygonShape extends MSShapePathLayer {
  /** How many corners it has. */
  get numberOfPoints(): () => number;
  set numberOfPoints(value: number);
  /** How many corners it has. */
  setNumberOfPoints_(points: number): void;
  /** How many corners it has. */
  setNumberOfPoints(points: number): void;
}

interface MSPolygonShapeAllocated {
  /** Creates a pentagon. */
  init(): MSPolygonShape;
  /** Creates a pentagon. */
  initWithFrame_(frame: NSRect): MSPolygonShape;
  /** Creates a pentagon. */
  initWithFrame(frame: NSRect): MSPolygonShape;
}

declare const MSPolygonShape: KelvarClass & {
  alloc(): MSPolygonShapeAllocated;
  /** Creates a pentagon. */
  "new"(): MSPolygonShape;
};

interface MSStarShape extends MSShapePathLayer {
  /** How many tips it has. */
  get numberOfPoints(): () => number;
  set numberOfPoints(value: number);
  /** How far out its inner corners are, between 0 and 1. */
  get radius(): () => number;
  set radius(value: number);
  /** How many tips it has. */
  setNumberOfPoints_(points: number): void;
  /** How many tips it has. */
  setNumberOfPoints(points: number): void;
  /** How far out its inner corners are, between 0 and 1. */
  setRadius_(radius: number): void;
  /** How far out its inner corners are, between 0 and 1. */
  setRadius(radius: number): void;
}

interface MSStarShapeAllocated {
  /** Creates a star. */
  init(): MSStarShape;
  /** Creates a star. */
  initWithFrame_(frame: NSRect): MSStarShape;
  /** Creates a star. */
  initWithFrame(frame: NSRect): MSStarShape;
}

declare const MSStarShape: KelvarClass & {
  alloc(): MSStarShapeAllocated;
  /** Creates a star. */
  "new"(): MSStarShape;
};

interface MSTextLayer extends MSStyledLayer {
  /** The characters. When they are set, all look like the first one before, and the frame is fitted to them as textBehaviour says. */
  get stringValue(): () => string;
  set stringValue(value: string | null);
  /** The size of the font, of the first character. */
  get fontSize(): () => number;
  set fontSize(value: number);
  /** The name of the font, of the first character. */
  get fontPostscriptName(): () => string;
  set fontPostscriptName(value: string | null);
  /** The color, of the first character. */
  get textColor(): () => MSColor;
  set textColor(value: MSColor | null);
  /** The height of lines; 0 leaves it to the font. */
  get lineHeight(): () => number;
  set lineHeight(value: number);
  /** What is added after each character. */
  get characterSpacing(): () => number;
  set characterSpacing(value: number);
  /** What is added after each character, like characterSpacing. */
  get kerning(): () => number;
  set kerning(value: number);
  /** How lines are aligned: left (0), right (1), center (2), justified (3) or by the language (4). */
  get textAlignment(): () => number;
  set textAlignment(value: number);
  /** The case that is shown: as typed (0), upper (1) or lower (2). */
  get textTransform(): () => number;
  set textTransform(value: number);
  /** The font, of the first character. */
  get font(): () => NSFont;
  set font(value: NSFont | null);
  /** The characters with their attributes, as an NSAttributedString. */
  get attributedStringValue(): () => any;
  set attributedStringValue(value: any);
  /** The characters with their attributes, as an NSAttributedString. */
  get attributedString(): () => any;
  set attributedString(value: any);
  /** What the host fits to the text: width and height (0), the height (1) or nothing (2). */
  get textBehaviour(): () => number;
  set textBehaviour(value: number);
  /** Where the lines are in the frame: at its top (0), middle (1) or bottom (2). */
  get verticalAlignment(): () => number;
  set verticalAlignment(value: number);
  /** The characters. When they are set, all look like the first one before, and the frame is fitted to them as textBehaviour says. */
  setStringValue_(value: string | null): void;
  /** The characters. When they are set, all look like the first one before, and the frame is fitted to them as textBehaviour says. */
  setStringValue(value: string | null): void;
  /** Returns whether there are no characters. */
  isEmpty(): boolean;
  /** The size of the font, of the first character. */
  setFontSize_(size: number): void;
  /** The size of the font, of the first character. */
  setFontSize(size: number): void;
  /** The name of the font, of the first character. */
  setFontPostscriptName_(name: string | null): void;
  /** The name of the font, of the first character. */
  setFontPostscriptName(name: string | null): void;
  /** The color, of the first character. */
  setTextColor_(color: any): void;
  /** The color, of the first character. */
  setTextColor(color: any): void;
  /** The height of lines; 0 leaves it to the font. */
  setLineHeight_(height: number): void;
  /** The height of lines; 0 leaves it to the font. */
  setLineHeight(height: number): void;
  /** What is added after each character. */
  setCharacterSpacing_(spacing: number): void;
  /** What is added after each character. */
  setCharacterSpacing(spacing: number): void;
  /** What is added after each character, like characterSpacing. */
  setKerning_(kerning: number): void;
  /** What is added after each character, like characterSpacing. */
  setKerning(kerning: number): void;
  /** How lines are aligned: left (0), right (1), center (2), justified (3) or by the language (4). */
  setTextAlignment_(alignment: number): void;
  /** How lines are aligned: left (0), right (1), center (2), justified (3) or by the language (4). */
  setTextAlignment(alignment: number): void;
  /** The case that is shown: as typed (0), upper (1) or lower (2). */
  setTextTransform_(transform: number): void;
  /** The case that is shown: as typed (0), upper (1) or lower (2). */
  setTextTransform(transform: number): void;
  /** The font, of the first character. */
  setFont_(font: NSFont | null): void;
  /** The font, of the first character. */
  setFont(font: NSFont | null): void;
  /** The different fonts of the characters. */
  fonts(): any[];
  /** The characters with their attributes, as an NSAttributedString. */
  setAttributedStringValue_(value: any): void;
  /** The characters with their attributes, as an NSAttributedString. */
  setAttributedStringValue(value: any): void;
  /** The characters with their attributes, as an NSAttributedString. */
  setAttributedString_(string: any): void;
  /** The characters with their attributes, as an NSAttributedString. */
  setAttributedString(string: any): void;
  /** Returns false, as there is no canvas to edit the text on. */
  isEditingText(): boolean;
  /** Returns the attributes of the first character. */
  styleAttributes(): Record<string, any>;
  /** Sets an attribute of all characters, such as NSColor. */
  addAttribute_value_(attribute: string | null, value: any): void;
  /** Sets an attribute of all characters, such as NSColor. */
  addAttribute_value(attribute: string | null, value: any): void;
  /** Sets an attribute of some characters, such as NSColor. */
  addAttribute_value_forRange_(attribute: string | null, value: any, range: Record<string, any> | null): void;
  /** Sets an attribute of some characters, such as NSColor. */
  addAttribute_value_forRange(attribute: string | null, value: any, range: Record<string, any> | null): void;
  /** Sets attributes of some characters, by names such as NSColor. */
  addAttributes_forRange_(attributes: Record<string, any> | null, range: Record<string, any> | null): void;
  /** Sets attributes of some characters, by names such as NSColor. */
  addAttributes_forRange(attributes: Record<string, any> | null, range: Record<string, any> | null): void;
  /** Sets the color of all characters. */
  changeTextColorTo_(to: any): void;
  /** Sets the color of all characters. */
  changeTextColorTo(to: any): void;
  /** Fits the frame to the text as textBehaviour says, which also happens when the text or its font changes. */
  adjustFrameToFit(): void;
  /** What the host fits to the text: width and height (0), the height (1) or nothing (2). */
  setTextBehaviour_(behaviour: number): void;
  /** What the host fits to the text: width and height (0), the height (1) or nothing (2). */
  setTextBehaviour(behaviour: number): void;
  /** Where the lines are in the frame: at its top (0), middle (1) or bottom (2). */
  setVerticalAlignment_(alignment: number): void;
  /** Where the lines are in the frame: at its top (0), middle (1) or bottom (2). */
  setVerticalAlignment(alignment: number): void;
}

interface MSTextLayerAllocated {
  /** Creates a text, "Text". */
  init(): MSTextLayer;
  /** Creates a text, "Text", whose frame begins there. */
  initWithFrame_(frame: NSRect): MSTextLayer;
  /** Creates a text, "Text", whose frame begins there. */
  initWithFrame(frame: NSRect): MSTextLayer;
}

declare const MSTextLayer: KelvarClass & {
  alloc(): MSTextLayerAllocated;
  /** Creates a text, "Text". */
  "new"(): MSTextLayer;
};

interface MSBitmapLayer extends MSStyledLayer {
  /** Whether the fills are seen instead. */
  get fillReplacesImage(): () => boolean;
  set fillReplacesImage(value: boolean);
  /** Returns the image; nil for none. */
  image(): MSImageData;
  /** Replaces the image. */
  setImage_(image: MSImageData | null): void;
  /** Replaces the image. */
  setImage(image: MSImageData | null): void;
  /** Returns the image as an NSImage; nil for none. */
  NSImage(): NSImage;
  /** Whether the fills are seen instead. */
  setFillReplacesImage_(image: boolean): void;
  /** Whether the fills are seen instead. */
  setFillReplacesImage(image: boolean): void;
}

interface MSBitmapLayerAllocated {
  /** Creates a bitmap without an image. */
  init(): MSBitmapLayer;
  /** Creates a bitmap of image data. */
  initWithFrame_image_(frame: NSRect, image: MSImageData | null): MSBitmapLayer;
  /** Creates a bitmap of image data. */
  initWithFrame_image(frame: NSRect, image: MSImageData | null): MSBitmapLayer;
}

declare const MSBitmapLayer: KelvarClass & {
  alloc(): MSBitmapLayerAllocated;
  /** Creates a bitmap without an image. */
  "new"(): MSBitmapLayer;
  /** Creates a bitmap of an image; nil if it has no pixels. */
  bitmapWithImage_frame_(image: NSImage | null, frame: NSRect): SketchLayer;
  /** Creates a bitmap of an image; nil if it has no pixels. */
  bitmapWithImage_frame(image: NSImage | null, frame: NSRect): SketchLayer;
};

interface MSSymbolInstance extends MSStyledLayer {
  /** The symbol's identifier. */
  get symbolID(): () => string;
  set symbolID(value: string | null);
  /** How much larger than the symbol it is drawn. */
  get scale(): () => number;
  set scale(value: number);
  /** What differs from the symbol, by the identifiers of its layers; for nested symbols, in dictionaries. */
  get overrides(): () => Record<string, any>;
  set overrides(value: Record<string, any> | null);
  /** The symbol's identifier. */
  setSymbolID_(id: string | null): void;
  /** The symbol's identifier. */
  setSymbolID(id: string | null): void;
  /** The symbol; nil if the document does not have it. */
  symbolMaster(): SketchLayer;
  /** How much larger than the symbol it is drawn. */
  setScale_(scale: number): void;
  /** How much larger than the symbol it is drawn. */
  setScale(scale: number): void;
  /** Makes it show another symbol. */
  changeInstanceToSymbol_(symbol: SketchLayer | null): void;
  /** Makes it show another symbol. */
  changeInstanceToSymbol(symbol: SketchLayer | null): void;
  /** What differs from the symbol, by the identifiers of its layers; for nested symbols, in dictionaries. */
  setOverrides_(overrides: Record<string, any> | null): void;
  /** What differs from the symbol, by the identifiers of its layers; for nested symbols, in dictionaries. */
  setOverrides(overrides: Record<string, any> | null): void;
  /** What differs from the symbol, one by one. */
  overrideValues(): any[];
  /** Returns what can differ from the symbol. */
  overridePoints(): any[];
  /** Returns what can differ from the symbol, with its values. */
  availableOverrides(): any[];
  /** Makes it as large as its symbol. */
  resetSizeToMaster(): void;
  /** Sets what differs from the symbol at a point. */
  setValue_forOverridePoint_(value: any, point: any): void;
  /** Sets what differs from the symbol at a point. */
  setValue_forOverridePoint(value: any, point: any): void;
  /** Puts a group of ordinary layers in the place of the instance and returns it. */
  detachByReplacingWithGroup(): SketchLayer;
  /** Puts a group of ordinary layers in the place of the instance and returns it; nested instances stay instances. */
  detachStylesAndReplaceWithGroupRecursively_(recursively: boolean): SketchLayer;
  /** Puts a group of ordinary layers in the place of the instance and returns it; nested instances stay instances. */
  detachStylesAndReplaceWithGroupRecursively(recursively: boolean): SketchLayer;
}

interface MSSymbolInstanceAllocated {
  /** Creates an instance of no symbol. */
  init(): MSSymbolInstance;
}

declare const MSSymbolInstance: KelvarClass & {
  alloc(): MSSymbolInstanceAllocated;
  /** Creates an instance of no symbol. */
  "new"(): MSSymbolInstance;
};

interface MSSliceLayer extends MSLayer {
  /** Whether the slice has a background. */
  get hasBackgroundColor(): () => boolean;
  set hasBackgroundColor(value: boolean);
  /** Whether the slice has a background. */
  setHasBackgroundColor_(color: boolean): void;
  /** Whether the slice has a background. */
  setHasBackgroundColor(color: boolean): void;
}

interface MSSliceLayerAllocated {
  /** Creates a slice. */
  init(): MSSliceLayer;
  /** Creates a slice. */
  initWithFrame_(frame: NSRect): MSSliceLayer;
  /** Creates a slice. */
  initWithFrame(frame: NSRect): MSSliceLayer;
}

declare const MSSliceLayer: KelvarClass & {
  alloc(): MSSliceLayerAllocated;
  /** Creates a slice. */
  "new"(): MSSliceLayer;
  /** Puts a slice of the same frame above a layer and returns it. */
  sliceLayerFromLayer_(layer: SketchLayer | null): SketchLayer;
  /** Puts a slice of the same frame above a layer and returns it. */
  sliceLayerFromLayer(layer: SketchLayer | null): SketchLayer;
};

interface MSHotspotLayer extends MSLayer {
}

interface MSHotspotLayerAllocated {
  /** Creates a hotspot. */
  init(): MSHotspotLayer;
  /** Creates a hotspot. */
  initWithFrame_(frame: NSRect): MSHotspotLayer;
  /** Creates a hotspot. */
  initWithFrame(frame: NSRect): MSHotspotLayer;
}

declare const MSHotspotLayer: KelvarClass & {
  alloc(): MSHotspotLayerAllocated;
  /** Creates a hotspot. */
  "new"(): MSHotspotLayer;
};

interface MSLayerArray extends NSObject {
  /** Returns the layers as an ordinary list. */
  layers(): any[];
  /** Returns the layers as an ordinary list. */
  containedLayers(): any[];
  /** Returns how many layers there are. */
  count(): number;
  /** Returns how many layers there are. */
  containedLayersCount(): number;
  /** Returns a layer by its index. */
  objectAtIndex_(index: number): SketchLayer;
  /** Returns a layer by its index. */
  objectAtIndex(index: number): SketchLayer;
  /** Returns a layer by its index. */
  layerAtIndex_(index: number): SketchLayer;
  /** Returns a layer by its index. */
  layerAtIndex(index: number): SketchLayer;
  /** Returns the first layer, or nil. */
  firstObject(): SketchLayer;
  /** Returns the first layer, or nil. */
  firstLayer(): SketchLayer;
  /** Returns the last layer, or nil. */
  lastObject(): SketchLayer;
  /** Returns the last layer, or nil. */
  lastLayer(): SketchLayer;
  /** Returns whether the layer is in the list. */
  containsObject_(object: SketchLayer | null): boolean;
  /** Returns whether the layer is in the list. */
  containsObject(object: SketchLayer | null): boolean;
  /** Returns whether there are no layers. */
  isEmpty(): boolean;
  /** Returns an object whose nextObject steps through the layers. */
  objectEnumerator(): MSLayerEnumerator;
}

interface MSLayerArrayAllocated {
}

declare const MSLayerArray: KelvarClass & {
  alloc(): MSLayerArrayAllocated;
  /** Creates a list of these layers. */
  arrayWithLayers_(layers: any): MSLayerArray;
  /** Creates a list of these layers. */
  arrayWithLayers(layers: any): MSLayerArray;
  /** Creates a list of this layer. */
  arrayWithLayer_(layer: any): MSLayerArray;
  /** Creates a list of this layer. */
  arrayWithLayer(layer: any): MSLayerArray;
};

interface MSRect extends KVRect {
  /** Left edge of the layer; setting it moves the layer. */
  get x(): () => number;
  set x(value: number);
  /** Top edge of the layer; setting it moves the layer. */
  get y(): () => number;
  set y(value: number);
  /** Width of the layer; setting it leaves the layer's contents as they are. */
  get width(): () => number;
  set width(value: number);
  /** Height of the layer; setting it leaves the layer's contents as they are. */
  get height(): () => number;
  set height(value: number);
  /** Left edge; setting it moves the layer. */
  get minX(): () => number;
  set minX(value: number);
  /** Middle across; setting it moves the layer. */
  get midX(): () => number;
  set midX(value: number);
  /** Right edge; setting it moves the layer. */
  get maxX(): () => number;
  set maxX(value: number);
  /** Top edge; setting it moves the layer. */
  get minY(): () => number;
  set minY(value: number);
  /** Middle down; setting it moves the layer. */
  get midY(): () => number;
  set midY(value: number);
  /** Bottom edge; setting it moves the layer. */
  get maxY(): () => number;
  set maxY(value: number);
  /** Left edge; setting it moves the layer. */
  get left(): () => number;
  set left(value: number);
  /** Right edge; setting it moves the layer. */
  get right(): () => number;
  set right(value: number);
  /** Top edge; setting it moves the layer. */
  get top(): () => number;
  set top(value: number);
  /** Bottom edge; setting it moves the layer. */
  get bottom(): () => number;
  set bottom(value: number);
  /** The rectangle as a structure; setting it moves and resizes the layer. */
  get rect(): () => NSRect;
  set rect(value: NSRect);
  /** The top left corner; setting it moves the layer. */
  get origin(): () => NSPoint;
  set origin(value: NSPoint);
  /** Width and height; setting them leaves the layer's contents as they are. */
  get size(): () => NSSize;
  set size(value: NSSize);
  /** Whether the host keeps the proportions when the layer is resized by hand; no without a layer. */
  get constrainProportions(): () => boolean;
  set constrainProportions(value: boolean);
  /** Left edge of the layer; setting it moves the layer. */
  setX_(x: number): void;
  /** Left edge of the layer; setting it moves the layer. */
  setX(x: number): void;
  /** Top edge of the layer; setting it moves the layer. */
  setY_(y: number): void;
  /** Top edge of the layer; setting it moves the layer. */
  setY(y: number): void;
  /** Width of the layer; setting it leaves the layer's contents as they are. */
  setWidth_(width: number): void;
  /** Width of the layer; setting it leaves the layer's contents as they are. */
  setWidth(width: number): void;
  /** Height of the layer; setting it leaves the layer's contents as they are. */
  setHeight_(height: number): void;
  /** Height of the layer; setting it leaves the layer's contents as they are. */
  setHeight(height: number): void;
  /** Left edge; setting it moves the layer. */
  setMinX_(x: number): void;
  /** Left edge; setting it moves the layer. */
  setMinX(x: number): void;
  /** Middle across; setting it moves the layer. */
  setMidX_(x: number): void;
  /** Middle across; setting it moves the layer. */
  setMidX(x: number): void;
  /** Right edge; setting it moves the layer. */
  setMaxX_(x: number): void;
  /** Right edge; setting it moves the layer. */
  setMaxX(x: number): void;
  /** Top edge; setting it moves the layer. */
  setMinY_(y: number): void;
  /** Top edge; setting it moves the layer. */
  setMinY(y: number): void;
  /** Middle down; setting it moves the layer. */
  setMidY_(y: number): void;
  /** Middle down; setting it moves the layer. */
  setMidY(y: number): void;
  /** Bottom edge; setting it moves the layer. */
  setMaxY_(y: number): void;
  /** Bottom edge; setting it moves the layer. */
  setMaxY(y: number): void;
  /** Left edge; setting it moves the layer. */
  setLeft_(left: number): void;
  /** Left edge; setting it moves the layer. */
  setLeft(left: number): void;
  /** Right edge; setting it moves the layer. */
  setRight_(right: number): void;
  /** Right edge; setting it moves the layer. */
  setRight(right: number): void;
  /** Top edge; setting it moves the layer. */
  setTop_(top: number): void;
  /** Top edge; setting it moves the layer. */
  setTop(top: number): void;
  /** Bottom edge; setting it moves the layer. */
  setBottom_(bottom: number): void;
  /** Bottom edge; setting it moves the layer. */
  setBottom(bottom: number): void;
  /** The rectangle as a structure; setting it moves and resizes the layer. */
  setRect_(rect: NSRect): void;
  /** The rectangle as a structure; setting it moves and resizes the layer. */
  setRect(rect: NSRect): void;
  /** The top left corner; setting it moves the layer. */
  setOrigin_(origin: NSPoint): void;
  /** The top left corner; setting it moves the layer. */
  setOrigin(origin: NSPoint): void;
  /** Width and height; setting them leaves the layer's contents as they are. */
  setSize_(size: NSSize): void;
  /** Width and height; setting them leaves the layer's contents as they are. */
  setSize(size: NSSize): void;
  /** Moves the layer to the right. */
  addX_(x: number): void;
  /** Moves the layer to the right. */
  addX(x: number): void;
  /** Moves the layer down. */
  addY_(y: number): void;
  /** Moves the layer down. */
  addY(y: number): void;
  /** Moves the layer to the left. */
  subtractX_(x: number): void;
  /** Moves the layer to the left. */
  subtractX(x: number): void;
  /** Moves the layer up. */
  subtractY_(y: number): void;
  /** Moves the layer up. */
  subtractY(y: number): void;
  /** Multiplies width and height; the contents and the top left corner stay. */
  scaleBy_(by: number): void;
  /** Multiplies width and height; the contents and the top left corner stay. */
  scaleBy(by: number): void;
  /** Whether the host keeps the proportions when the layer is resized by hand; no without a layer. */
  setConstrainProportions_(proportions: boolean): void;
  /** Whether the host keeps the proportions when the layer is resized by hand; no without a layer. */
  setConstrainProportions(proportions: boolean): void;
}

interface MSRectAllocated {
  /** Creates the zero rectangle. */
  init(): MSRect;
  /** Creates a rectangle. */
  initWithRect_(rect: NSRect): MSRect;
  /** Creates a rectangle. */
  initWithRect(rect: NSRect): MSRect;
}

declare const MSRect: KelvarClass & {
  alloc(): MSRectAllocated;
  /** Creates the zero rectangle. */
  "new"(): MSRect;
  /** Creates a rectangle. */
  rectWithRect_(rect: NSRect): MSRect;
  /** Creates a rectangle. */
  rectWithRect(rect: NSRect): MSRect;
  /** Creates a rectangle. */
  rectWithX_y_width_height_(x: number, y: number, width: number, height: number): MSRect;
  /** Creates a rectangle. */
  rectWithX_y_width_height(x: number, y: number, width: number, height: number): MSRect;
};

interface MSAbsoluteRect extends KVRect {
  /** Left edge of the layer; setting it moves the layer. */
  get x(): () => number;
  set x(value: number);
  /** Top edge of the layer; setting it moves the layer. */
  get y(): () => number;
  set y(value: number);
  /** Width of the layer; setting it leaves the layer's contents as they are. */
  get width(): () => number;
  set width(value: number);
  /** Height of the layer; setting it leaves the layer's contents as they are. */
  get height(): () => number;
  set height(value: number);
  /** Left edge; setting it moves the layer. */
  get minX(): () => number;
  set minX(value: number);
  /** Middle across; setting it moves the layer. */
  get midX(): () => number;
  set midX(value: number);
  /** Right edge; setting it moves the layer. */
  get maxX(): () => number;
  set maxX(value: number);
  /** Top edge; setting it moves the layer. */
  get minY(): () => number;
  set minY(value: number);
  /** Middle down; setting it moves the layer. */
  get midY(): () => number;
  set midY(value: number);
  /** Bottom edge; setting it moves the layer. */
  get maxY(): () => number;
  set maxY(value: number);
  /** Left edge; setting it moves the layer. */
  get left(): () => number;
  set left(value: number);
  /** Right edge; setting it moves the layer. */
  get right(): () => number;
  set right(value: number);
  /** Top edge; setting it moves the layer. */
  get top(): () => number;
  set top(value: number);
  /** Bottom edge; setting it moves the layer. */
  get bottom(): () => number;
  set bottom(value: number);
  /** The rectangle as a structure; setting it moves and resizes the layer. */
  get rect(): () => NSRect;
  set rect(value: NSRect);
  /** The top left corner; setting it moves the layer. */
  get origin(): () => NSPoint;
  set origin(value: NSPoint);
  /** Width and height; setting them leaves the layer's contents as they are. */
  get size(): () => NSSize;
  set size(value: NSSize);
  /** Left edge on the artboard, or on the page; setting it moves the layer. */
  get rulerX(): () => number;
  set rulerX(value: number);
  /** Top edge on the artboard, or on the page; setting it moves the layer. */
  get rulerY(): () => number;
  set rulerY(value: number);
  /** Left edge of the layer; setting it moves the layer. */
  setX_(x: number): void;
  /** Left edge of the layer; setting it moves the layer. */
  setX(x: number): void;
  /** Top edge of the layer; setting it moves the layer. */
  setY_(y: number): void;
  /** Top edge of the layer; setting it moves the layer. */
  setY(y: number): void;
  /** Width of the layer; setting it leaves the layer's contents as they are. */
  setWidth_(width: number): void;
  /** Width of the layer; setting it leaves the layer's contents as they are. */
  setWidth(width: number): void;
  /** Height of the layer; setting it leaves the layer's contents as they are. */
  setHeight_(height: number): void;
  /** Height of the layer; setting it leaves the layer's contents as they are. */
  setHeight(height: number): void;
  /** Left edge; setting it moves the layer. */
  setMinX_(x: number): void;
  /** Left edge; setting it moves the layer. */
  setMinX(x: number): void;
  /** Middle across; setting it moves the layer. */
  setMidX_(x: number): void;
  /** Middle across; setting it moves the layer. */
  setMidX(x: number): void;
  /** Right edge; setting it moves the layer. */
  setMaxX_(x: number): void;
  /** Right edge; setting it moves the layer. */
  setMaxX(x: number): void;
  /** Top edge; setting it moves the layer. */
  setMinY_(y: number): void;
  /** Top edge; setting it moves the layer. */
  setMinY(y: number): void;
  /** Middle down; setting it moves the layer. */
  setMidY_(y: number): void;
  /** Middle down; setting it moves the layer. */
  setMidY(y: number): void;
  /** Bottom edge; setting it moves the layer. */
  setMaxY_(y: number): void;
  /** Bottom edge; setting it moves the layer. */
  setMaxY(y: number): void;
  /** Left edge; setting it moves the layer. */
  setLeft_(left: number): void;
  /** Left edge; setting it moves the layer. */
  setLeft(left: number): void;
  /** Right edge; setting it moves the layer. */
  setRight_(right: number): void;
  /** Right edge; setting it moves the layer. */
  setRight(right: number): void;
  /** Top edge; setting it moves the layer. */
  setTop_(top: number): void;
  /** Top edge; setting it moves the layer. */
  setTop(top: number): void;
  /** Bottom edge; setting it moves the layer. */
  setBottom_(bottom: number): void;
  /** Bottom edge; setting it moves the layer. */
  setBottom(bottom: number): void;
  /** The rectangle as a structure; setting it moves and resizes the layer. */
  setRect_(rect: NSRect): void;
  /** The rectangle as a structure; setting it moves and resizes the layer. */
  setRect(rect: NSRect): void;
  /** The top left corner; setting it moves the layer. */
  setOrigin_(origin: NSPoint): void;
  /** The top left corner; setting it moves the layer. */
  setOrigin(origin: NSPoint): void;
  /** Width and height; setting them leaves the layer's contents as they are. */
  setSize_(size: NSSize): void;
  /** Width and height; setting them leaves the layer's contents as they are. */
  setSize(size: NSSize): void;
  /** Moves the layer to the right. */
  addX_(x: number): void;
  /** Moves the layer to the right. */
  addX(x: number): void;
  /** Moves the layer down. */
  addY_(y: number): void;
  /** Moves the layer down. */
  addY(y: number): void;
  /** Moves the layer to the left. */
  subtractX_(x: number): void;
  /** Moves the layer to the left. */
  subtractX(x: number): void;
  /** Moves the layer up. */
  subtractY_(y: number): void;
  /** Moves the layer up. */
  subtractY(y: number): void;
  /** Multiplies width and height; the contents and the top left corner stay. */
  scaleBy_(by: number): void;
  /** Multiplies width and height; the contents and the top left corner stay. */
  scaleBy(by: number): void;
  /** Left edge on the artboard, or on the page; setting it moves the layer. */
  setRulerX_(x: number): void;
  /** Left edge on the artboard, or on the page; setting it moves the layer. */
  setRulerX(x: number): void;
  /** Top edge on the artboard, or on the page; setting it moves the layer. */
  setRulerY_(y: number): void;
  /** Top edge on the artboard, or on the page; setting it moves the layer. */
  setRulerY(y: number): void;
}

interface MSAbsoluteRectAllocated {
}

declare const MSAbsoluteRect: KelvarClass & {
  alloc(): MSAbsoluteRectAllocated;
};

interface MSSharedStyleContainer extends NSObject {
  /** Returns the shared styles. */
  objects(): any[];
  /** Returns the shared styles. */
  sharedStyles(): any[];
  /** Returns how many there are. */
  numberOfSharedStyles(): number;
  /** Returns the shared style with this identifier, or nil. */
  sharedStyleWithID_(id: string | null): MSModelObject;
  /** Returns the shared style with this identifier, or nil. */
  sharedStyleWithID(id: string | null): MSModelObject;
  /** Adds a shared style with a copy of a style and returns it. The layer that has the style refers to it. */
  addSharedStyleWithName_firstInstance_(name: string | null, instance: MSModelObject | null): MSModelObject;
  /** Adds a shared style with a copy of a style and returns it. The layer that has the style refers to it. */
  addSharedStyleWithName_firstInstance(name: string | null, instance: MSModelObject | null): MSModelObject;
  /** Adds a shared style. */
  addSharedObject_(object: MSModelObject | null): void;
  /** Adds a shared style. */
  addSharedObject(object: MSModelObject | null): void;
  /** Removes a shared style. Layers keep how they look. */
  removeSharedStyle_(style: MSModelObject | null): void;
  /** Removes a shared style. Layers keep how they look. */
  removeSharedStyle(style: MSModelObject | null): void;
  /** Removes a shared style. Layers keep how they look. */
  removeSharedObject_(object: MSModelObject | null): void;
  /** Removes a shared style. Layers keep how they look. */
  removeSharedObject(object: MSModelObject | null): void;
  /** Removes a shared style by its index. Layers keep how they look. */
  removeSharedStyleAtIndex_(index: number): void;
  /** Removes a shared style by its index. Layers keep how they look. */
  removeSharedStyleAtIndex(index: number): void;
  /** Returns a shared style by its index. */
  sharedStyleAtIndex_(index: number): MSModelObject;
  /** Returns a shared style by its index. */
  sharedStyleAtIndex(index: number): MSModelObject;
  /** Returns the index of a shared style; -1 for none of these. */
  indexOfSharedStyle_(style: MSModelObject | null): number;
  /** Returns the index of a shared style; -1 for none of these. */
  indexOfSharedStyle(style: MSModelObject | null): number;
  /** Gives a shared style a copy of a style. Layers keep theirs until resetReferencingInstances. */
  updateValueOfSharedObject_byCopyingInstance_(object: MSModelObject | null, instance: MSModelObject | null): void;
  /** Gives a shared style a copy of a style. Layers keep theirs until resetReferencingInstances. */
  updateValueOfSharedObject_byCopyingInstance(object: MSModelObject | null, instance: MSModelObject | null): void;
}

interface MSSharedStyleContainerAllocated {
}

declare const MSSharedStyleContainer: KelvarClass & {
  alloc(): MSSharedStyleContainerAllocated;
};

interface MSModelObject extends NSObject {
  /** The identifier; nil where documents give none. */
  objectID(): string;
}

interface MSModelObjectAllocated {
}

declare const MSModelObject: KelvarClass & {
  alloc(): MSModelObjectAllocated;
};

interface MSSharedStyle extends MSModelObject {
  /** The name. */
  get name(): () => string;
  set name(value: string | null);
  /** The name. */
  setName_(name: string | null): void;
  /** The name. */
  setName(name: string | null): void;
  /** Returns a copy of the style. A layer that gets it refers to the shared style. */
  newInstance(): MSModelObject;
  /** Takes a copy of a style. Layers keep theirs until resetReferencingInstances. */
  updateToMatch_(match: MSModelObject | null): void;
  /** Takes a copy of a style. Layers keep theirs until resetReferencingInstances. */
  updateToMatch(match: MSModelObject | null): void;
  /** Gives copies of the style to the layers that refer to it. */
  resetReferencingInstances(): void;
  /** Returns the style. What is set in it goes into the document, but not into layers, which have copies. */
  style(): MSModelObject;
  /** Returns the style. What is set in it goes into the document, but not into layers, which have copies. */
  value(): MSModelObject;
  /** Returns the layers that refer to the shared style. */
  allLayersInstances(): any[];
}

interface MSSharedStyleAllocated {
  /** Creates a shared style with a copy of a style. The layer that has the style refers to it. */
  initWithName_firstInstance_(name: string | null, instance: MSModelObject | null): MSSharedStyle;
  /** Creates a shared style with a copy of a style. The layer that has the style refers to it. */
  initWithName_firstInstance(name: string | null, instance: MSModelObject | null): MSSharedStyle;
  /** Creates a shared style with a copy of a style. The layer that has the style refers to it. */
  initWithName_style_(name: string | null, style: MSModelObject | null): MSSharedStyle;
  /** Creates a shared style with a copy of a style. The layer that has the style refers to it. */
  initWithName_style(name: string | null, style: MSModelObject | null): MSSharedStyle;
}

declare const MSSharedStyle: KelvarClass & {
  alloc(): MSSharedStyleAllocated;
};

interface MSStyle extends MSModelObject {
  /** All of them, lowest first. */
  get fills(): () => any[];
  set fills(value: any[] | null);
  /** All of them, lowest first. */
  get borders(): () => any[];
  set borders(value: any[] | null);
  /** All of them, lowest first. */
  get shadows(): () => any[];
  set shadows(value: any[] | null);
  /** All of them, lowest first. */
  get innerShadows(): () => any[];
  set innerShadows(value: any[] | null);
  /** How far the corners of borders may reach, in border widths. */
  get miterLimit(): () => number;
  set miterLimit(value: number);
  /** How overlapping parts are filled: nonzero (0) or even-odd (1). */
  get windingRule(): () => number;
  set windingRule(value: number);
  /** What an open line begins with; 0 for nothing. */
  get startMarkerType(): () => number;
  set startMarkerType(value: number);
  /** What an open line ends with; 0 for nothing. */
  get endMarkerType(): () => number;
  set endMarkerType(value: number);
  /** The identifier of the shared style that it is a copy of; nil for none. */
  get sharedObjectID(): () => string;
  set sharedObjectID(value: string | null);
  /** All of them, lowest first. */
  setFills_(fills: any[] | null): void;
  /** All of them, lowest first. */
  setFills(fills: any[] | null): void;
  /** Returns the lowest one, or nil. */
  fill(): MSModelObject;
  /** Returns those that are switched on, lowest first. */
  enabledFills(): any[];
  /** Returns the lowest one that is switched on, or nil. */
  firstEnabledFill(): MSModelObject;
  /** Returns whether one is switched on. */
  hasEnabledFill(): boolean;
  /** Puts one above the others. */
  addStyleFill_(fill: MSModelObject | null): void;
  /** Puts one above the others. */
  addStyleFill(fill: MSModelObject | null): void;
  /** Removes one by its index. */
  removeStyleFillAtIndex_(index: number): void;
  /** Removes one by its index. */
  removeStyleFillAtIndex(index: number): void;
  /** Removes all of them. */
  removeAllStyleFills(): void;
  /** Switches all of them off. */
  disableAllFills(): void;
  /** All of them, lowest first. */
  setBorders_(borders: any[] | null): void;
  /** All of them, lowest first. */
  setBorders(borders: any[] | null): void;
  /** Returns the lowest one, or nil. */
  border(): MSModelObject;
  /** Returns those that are switched on, lowest first. */
  enabledBorders(): any[];
  /** Returns the lowest one that is switched on, or nil. */
  firstEnabledBorder(): MSModelObject;
  /** Returns whether one is switched on. */
  hasEnabledBorder(): boolean;
  /** Puts one above the others. */
  addStyleBorder_(border: MSModelObject | null): void;
  /** Puts one above the others. */
  addStyleBorder(border: MSModelObject | null): void;
  /** Removes one by its index. */
  removeStyleBorderAtIndex_(index: number): void;
  /** Removes one by its index. */
  removeStyleBorderAtIndex(index: number): void;
  /** Removes all of them. */
  removeAllStyleBorders(): void;
  /** Switches all of them off. */
  disableAllBorders(): void;
  /** All of them, lowest first. */
  setShadows_(shadows: any[] | null): void;
  /** All of them, lowest first. */
  setShadows(shadows: any[] | null): void;
  /** Returns the lowest one, or nil. */
  shadow(): MSModelObject;
  /** Returns those that are switched on, lowest first. */
  enabledShadows(): any[];
  /** Returns the lowest one that is switched on, or nil. */
  firstEnabledShadow(): MSModelObject;
  /** Returns whether one is switched on. */
  hasEnabledShadow(): boolean;
  /** Puts one above the others. */
  addStyleShadow_(shadow: MSModelObject | null): void;
  /** Puts one above the others. */
  addStyleShadow(shadow: MSModelObject | null): void;
  /** Removes one by its index. */
  removeStyleShadowAtIndex_(index: number): void;
  /** Removes one by its index. */
  removeStyleShadowAtIndex(index: number): void;
  /** Removes all of them. */
  removeAllStyleShadows(): void;
  /** Switches all of them off. */
  disableAllShadows(): void;
  /** All of them, lowest first. */
  setInnerShadows_(shadows: any[] | null): void;
  /** All of them, lowest first. */
  setInnerShadows(shadows: any[] | null): void;
  /** Returns the lowest one, or nil. */
  innerShadow(): MSModelObject;
  /** Returns those that are switched on, lowest first. */
  enabledInnerShadows(): any[];
  /** Returns the lowest one that is switched on, or nil. */
  firstEnabledInnerShadow(): MSModelObject;
  /** Returns whether one is switched on. */
  hasEnabledInnerShadow(): boolean;
  /** Puts one above the others. */
  addStyleInnerShadow_(shadow: MSModelObject | null): void;
  /** Puts one above the others. */
  addStyleInnerShadow(shadow: MSModelObject | null): void;
  /** Removes one by its index. */
  removeStyleInnerShadowAtIndex_(index: number): void;
  /** Removes one by its index. */
  removeStyleInnerShadowAtIndex(index: number): void;
  /** Removes all of them. */
  removeAllStyleInnerShadows(): void;
  /** Switches all of them off. */
  disableAllInnerShadows(): void;
  /** Adds a fill (0), border (1), shadow (2) or inner shadow (3) and returns it. */
  addStylePartOfType_(type: number): MSModelObject;
  /** Adds a fill (0), border (1), shadow (2) or inner shadow (3) and returns it. */
  addStylePartOfType(type: number): MSModelObject;
  /** Removes a fill, border, shadow or inner shadow of this style. */
  removeStylePart_(part: MSModelObject | null): void;
  /** Removes a fill, border, shadow or inner shadow of this style. */
  removeStylePart(part: MSModelObject | null): void;
  /** What all borders have in common. */
  borderOptions(): MSModelObject;
  /** Opacity and blend mode of the whole layer. */
  contextSettings(): MSModelObject;
  /** The blur; switched off where there is none. */
  blur(): MSModelObject;
  /** How far the corners of borders may reach, in border widths. */
  setMiterLimit_(limit: number): void;
  /** How far the corners of borders may reach, in border widths. */
  setMiterLimit(limit: number): void;
  /** How overlapping parts are filled: nonzero (0) or even-odd (1). */
  setWindingRule_(rule: number): void;
  /** How overlapping parts are filled: nonzero (0) or even-odd (1). */
  setWindingRule(rule: number): void;
  /** What an open line begins with; 0 for nothing. */
  setStartMarkerType_(type: number): void;
  /** What an open line begins with; 0 for nothing. */
  setStartMarkerType(type: number): void;
  /** What an open line ends with; 0 for nothing. */
  setEndMarkerType_(type: number): void;
  /** What an open line ends with; 0 for nothing. */
  setEndMarkerType(type: number): void;
  /** The identifier of the shared style that it is a copy of; nil for none. */
  setSharedObjectID_(id: string | null): void;
  /** The identifier of the shared style that it is a copy of; nil for none. */
  setSharedObjectID(id: string | null): void;
  /** How texts look; nil in a style that says nothing of them. */
  textStyle(): MSModelObject;
  /** Returns a copy that is in no layer. */
  copy(): MSModelObject;
}

interface MSStyleAllocated {
  /** Creates a style without fills, borders and shadows. */
  init(): MSStyle;
}

declare const MSStyle: KelvarClass & {
  alloc(): MSStyleAllocated;
  /** Creates a style without fills, borders and shadows. */
  "new"(): MSStyle;
};

interface MSStyleFill extends MSModelObject {
  /** Whether it is drawn. */
  get isEnabled(): () => boolean;
  set isEnabled(value: boolean);
  /** What it is painted with: a color (0), a gradient (1), an image (4) or noise (5). */
  get fillType(): () => number;
  set fillType(value: number);
  /** The color. */
  get color(): () => MSColor;
  set color(value: MSColor | null);
  /** The gradient. */
  get gradient(): () => MSModelObject;
  set gradient(value: MSModelObject | null);
  /** The image; nil for none. */
  get image(): () => MSImageData;
  set image(value: MSImageData | null);
  /** How an image is laid out: tiled (0), filling (1), stretched (2) or fitting (3). */
  get patternFillType(): () => number;
  set patternFillType(value: number);
  /** The scale of a tiled image. */
  get patternTileScale(): () => number;
  set patternTileScale(value: number);
  /** The kind of noise. */
  get noiseIndex(): () => number;
  set noiseIndex(value: number);
  /** How much of the noise is seen, between 0 and 1. */
  get noiseIntensity(): () => number;
  set noiseIntensity(value: number);
  /** Whether it is drawn. */
  setIsEnabled_(enabled: boolean): void;
  /** Whether it is drawn. */
  setIsEnabled(enabled: boolean): void;
  /** What it is painted with: a color (0), a gradient (1), an image (4) or noise (5). */
  setFillType_(type: number): void;
  /** What it is painted with: a color (0), a gradient (1), an image (4) or noise (5). */
  setFillType(type: number): void;
  /** The color. */
  setColor_(color: any): void;
  /** The color. */
  setColor(color: any): void;
  /** The gradient. */
  setGradient_(gradient: MSModelObject | null): void;
  /** The gradient. */
  setGradient(gradient: MSModelObject | null): void;
  /** Opacity and blend mode. */
  contextSettings(): MSModelObject;
  /** The image; nil for none. */
  setImage_(image: MSImageData | null): void;
  /** The image; nil for none. */
  setImage(image: MSImageData | null): void;
  /** How an image is laid out: tiled (0), filling (1), stretched (2) or fitting (3). */
  setPatternFillType_(type: number): void;
  /** How an image is laid out: tiled (0), filling (1), stretched (2) or fitting (3). */
  setPatternFillType(type: number): void;
  /** The scale of a tiled image. */
  setPatternTileScale_(scale: number): void;
  /** The scale of a tiled image. */
  setPatternTileScale(scale: number): void;
  /** The kind of noise. */
  setNoiseIndex_(index: number): void;
  /** The kind of noise. */
  setNoiseIndex(index: number): void;
  /** How much of the noise is seen, between 0 and 1. */
  setNoiseIntensity_(intensity: number): void;
  /** How much of the noise is seen, between 0 and 1. */
  setNoiseIntensity(intensity: number): void;
}

interface MSStyleFillAllocated {
  /** Creates a gray fill. */
  init(): MSStyleFill;
}

declare const MSStyleFill: KelvarClass & {
  alloc(): MSStyleFillAllocated;
  /** Creates a gray fill. */
  "new"(): MSStyleFill;
};

interface MSStyleBorder extends MSModelObject {
  /** Whether it is drawn. */
  get isEnabled(): () => boolean;
  set isEnabled(value: boolean);
  /** What it is painted with: a color (0), a gradient (1), an image (4) or noise (5). */
  get fillType(): () => number;
  set fillType(value: number);
  /** The color. */
  get color(): () => MSColor;
  set color(value: MSColor | null);
  /** The gradient. */
  get gradient(): () => MSModelObject;
  set gradient(value: MSModelObject | null);
  /** How thick it is. */
  get thickness(): () => number;
  set thickness(value: number);
  /** Where it is: on the outline (0), inside (1) or outside (2). */
  get position(): () => number;
  set position(value: number);
  /** Whether it is drawn. */
  setIsEnabled_(enabled: boolean): void;
  /** Whether it is drawn. */
  setIsEnabled(enabled: boolean): void;
  /** What it is painted with: a color (0), a gradient (1), an image (4) or noise (5). */
  setFillType_(type: number): void;
  /** What it is painted with: a color (0), a gradient (1), an image (4) or noise (5). */
  setFillType(type: number): void;
  /** The color. */
  setColor_(color: any): void;
  /** The color. */
  setColor(color: any): void;
  /** The gradient. */
  setGradient_(gradient: MSModelObject | null): void;
  /** The gradient. */
  setGradient(gradient: MSModelObject | null): void;
  /** Opacity and blend mode. */
  contextSettings(): MSModelObject;
  /** How thick it is. */
  setThickness_(thickness: number): void;
  /** How thick it is. */
  setThickness(thickness: number): void;
  /** Where it is: on the outline (0), inside (1) or outside (2). */
  setPosition_(position: number): void;
  /** Where it is: on the outline (0), inside (1) or outside (2). */
  setPosition(position: number): void;
}

interface MSStyleBorderAllocated {
  /** Creates a gray border, one unit thick. */
  init(): MSStyleBorder;
}

declare const MSStyleBorder: KelvarClass & {
  alloc(): MSStyleBorderAllocated;
  /** Creates a gray border, one unit thick. */
  "new"(): MSStyleBorder;
};

interface MSStyleBorderOptions extends MSModelObject {
  /** Whether the dashes are drawn. */
  get isEnabled(): () => boolean;
  set isEnabled(value: boolean);
  /** The lengths of dashes and gaps, in turn; empty for solid borders. */
  get dashPattern(): () => any[];
  set dashPattern(value: any[] | null);
  /** How lines end: butt (0), round (1) or square (2). */
  get lineCapStyle(): () => number;
  set lineCapStyle(value: number);
  /** How corners are drawn: miter (0), round (1) or bevel (2). */
  get lineJoinStyle(): () => number;
  set lineJoinStyle(value: number);
  /** Whether the dashes are drawn. */
  setIsEnabled_(enabled: boolean): void;
  /** Whether the dashes are drawn. */
  setIsEnabled(enabled: boolean): void;
  /** The lengths of dashes and gaps, in turn; empty for solid borders. */
  setDashPattern_(pattern: any[] | null): void;
  /** The lengths of dashes and gaps, in turn; empty for solid borders. */
  setDashPattern(pattern: any[] | null): void;
  /** How lines end: butt (0), round (1) or square (2). */
  setLineCapStyle_(style: number): void;
  /** How lines end: butt (0), round (1) or square (2). */
  setLineCapStyle(style: number): void;
  /** How corners are drawn: miter (0), round (1) or bevel (2). */
  setLineJoinStyle_(style: number): void;
  /** How corners are drawn: miter (0), round (1) or bevel (2). */
  setLineJoinStyle(style: number): void;
}

interface MSStyleBorderOptionsAllocated {
}

declare const MSStyleBorderOptions: KelvarClass & {
  alloc(): MSStyleBorderOptionsAllocated;
};

interface MSStyleShadow extends MSModelObject {
  /** Whether it is drawn. */
  get isEnabled(): () => boolean;
  set isEnabled(value: boolean);
  /** The color. */
  get color(): () => MSColor;
  set color(value: MSColor | null);
  /** How far it is moved to the right. */
  get offsetX(): () => number;
  set offsetX(value: number);
  /** How far it is moved down. */
  get offsetY(): () => number;
  set offsetY(value: number);
  /** How soft its edge is. */
  get blurRadius(): () => number;
  set blurRadius(value: number);
  /** How much larger it is. */
  get spread(): () => number;
  set spread(value: number);
  /** Whether it is drawn. */
  setIsEnabled_(enabled: boolean): void;
  /** Whether it is drawn. */
  setIsEnabled(enabled: boolean): void;
  /** The color. */
  setColor_(color: any): void;
  /** The color. */
  setColor(color: any): void;
  /** How far it is moved to the right. */
  setOffsetX_(x: number): void;
  /** How far it is moved to the right. */
  setOffsetX(x: number): void;
  /** How far it is moved down. */
  setOffsetY_(y: number): void;
  /** How far it is moved down. */
  setOffsetY(y: number): void;
  /** How soft its edge is. */
  setBlurRadius_(radius: number): void;
  /** How soft its edge is. */
  setBlurRadius(radius: number): void;
  /** How much larger it is. */
  setSpread_(spread: number): void;
  /** How much larger it is. */
  setSpread(spread: number): void;
  /** Opacity and blend mode. */
  contextSettings(): MSModelObject;
}

interface MSStyleShadowAllocated {
  /** Creates a soft black shadow. */
  init(): MSStyleShadow;
}

declare const MSStyleShadow: KelvarClass & {
  alloc(): MSStyleShadowAllocated;
  /** Creates a soft black shadow. */
  "new"(): MSStyleShadow;
};

interface MSStyleInnerShadow extends MSStyleShadow {
  /** Whether it is drawn. */
  get isEnabled(): () => boolean;
  set isEnabled(value: boolean);
  /** The color. */
  get color(): () => MSColor;
  set color(value: MSColor | null);
  /** How far it is moved to the right. */
  get offsetX(): () => number;
  set offsetX(value: number);
  /** How far it is moved down. */
  get offsetY(): () => number;
  set offsetY(value: number);
  /** How soft its edge is. */
  get blurRadius(): () => number;
  set blurRadius(value: number);
  /** How much larger it is. */
  get spread(): () => number;
  set spread(value: number);
  /** Whether it is drawn. */
  setIsEnabled_(enabled: boolean): void;
  /** Whether it is drawn. */
  setIsEnabled(enabled: boolean): void;
  /** The color. */
  setColor_(color: any): void;
  /** The color. */
  setColor(color: any): void;
  /** How far it is moved to the right. */
  setOffsetX_(x: number): void;
  /** How far it is moved to the right. */
  setOffsetX(x: number): void;
  /** How far it is moved down. */
  setOffsetY_(y: number): void;
  /** How far it is moved down. */
  setOffsetY(y: number): void;
  /** How soft its edge is. */
  setBlurRadius_(radius: number): void;
  /** How soft its edge is. */
  setBlurRadius(radius: number): void;
  /** How much larger it is. */
  setSpread_(spread: number): void;
  /** How much larger it is. */
  setSpread(spread: number): void;
  /** Opacity and blend mode. */
  contextSettings(): MSModelObject;
}

interface MSStyleInnerShadowAllocated {
  /** Creates a soft black inner shadow. */
  init(): MSStyleInnerShadow;
}

declare const MSStyleInnerShadow: KelvarClass & {
  alloc(): MSStyleInnerShadowAllocated;
  /** Creates a soft black inner shadow. */
  "new"(): MSStyleInnerShadow;
};

interface MSStyleBlur extends MSModelObject {
  /** Whether it is drawn. */
  get isEnabled(): () => boolean;
  set isEnabled(value: boolean);
  /** How far it blurs. */
  get radius(): () => number;
  set radius(value: number);
  /** Its kind: Gaussian (0), motion (1), zoom (2) or background (3). */
  get type(): () => number;
  set type(value: number);
  /** The direction of a motion blur, in degrees. */
  get motionAngle(): () => number;
  set motionAngle(value: number);
  /** The saturation of what is seen through a background blur. */
  get saturation(): () => number;
  set saturation(value: number);
  /** Whether it is drawn. */
  setIsEnabled_(enabled: boolean): void;
  /** Whether it is drawn. */
  setIsEnabled(enabled: boolean): void;
  /** How far it blurs. */
  setRadius_(radius: number): void;
  /** How far it blurs. */
  setRadius(radius: number): void;
  /** Its kind: Gaussian (0), motion (1), zoom (2) or background (3). */
  setType_(type: number): void;
  /** Its kind: Gaussian (0), motion (1), zoom (2) or background (3). */
  setType(type: number): void;
  /** The direction of a motion blur, in degrees. */
  setMotionAngle_(angle: number): void;
  /** The direction of a motion blur, in degrees. */
  setMotionAngle(angle: number): void;
  /** The saturation of what is seen through a background blur. */
  setSaturation_(saturation: number): void;
  /** The saturation of what is seen through a background blur. */
  setSaturation(saturation: number): void;
}

interface MSStyleBlurAllocated {
}

declare const MSStyleBlur: KelvarClass & {
  alloc(): MSStyleBlurAllocated;
};

interface MSGraphicsContextSettings extends MSModelObject {
  /** Opacity, between 0 and 1. */
  get opacity(): () => number;
  set opacity(value: number);
  /** The blend mode by its number in documents; 0 is normal. */
  get blendMode(): () => number;
  set blendMode(value: number);
  /** Opacity, between 0 and 1. */
  setOpacity_(opacity: number): void;
  /** Opacity, between 0 and 1. */
  setOpacity(opacity: number): void;
  /** The blend mode by its number in documents; 0 is normal. */
  setBlendMode_(mode: number): void;
  /** The blend mode by its number in documents; 0 is normal. */
  setBlendMode(mode: number): void;
}

interface MSGraphicsContextSettingsAllocated {
}

declare const MSGraphicsContextSettings: KelvarClass & {
  alloc(): MSGraphicsContextSettingsAllocated;
};

interface MSGradient extends MSModelObject {
  /** Its kind: linear (0), radial (1) or angular (2). */
  get gradientType(): () => number;
  set gradientType(value: number);
  /** Where it begins, in parts of the layer's width and height. */
  get from(): () => NSPoint;
  set from(value: NSPoint);
  /** Where it ends, in parts of the layer's width and height. */
  get to(): () => NSPoint;
  set to(value: NSPoint);
  /** The proportions of a radial gradient; 0 for a circle. */
  get elipseLength(): () => number;
  set elipseLength(value: number);
  /** The stops. */
  get stops(): () => any[];
  set stops(value: any[] | null);
  /** Its kind: linear (0), radial (1) or angular (2). */
  setGradientType_(type: number): void;
  /** Its kind: linear (0), radial (1) or angular (2). */
  setGradientType(type: number): void;
  /** Where it begins, in parts of the layer's width and height. */
  setFrom_(from: NSPoint): void;
  /** Where it begins, in parts of the layer's width and height. */
  setFrom(from: NSPoint): void;
  /** Where it ends, in parts of the layer's width and height. */
  setTo_(to: NSPoint): void;
  /** Where it ends, in parts of the layer's width and height. */
  setTo(to: NSPoint): void;
  /** The proportions of a radial gradient; 0 for a circle. */
  setElipseLength_(length: number): void;
  /** The proportions of a radial gradient; 0 for a circle. */
  setElipseLength(length: number): void;
  /** The stops. */
  setStops_(stops: any[] | null): void;
  /** The stops. */
  setStops(stops: any[] | null): void;
  /** Returns a stop by its index. */
  stopAtIndex_(index: number): MSModelObject;
  /** Returns a stop by its index. */
  stopAtIndex(index: number): MSModelObject;
  /** Sets the color of a stop by its index. */
  setColor_atIndex_(color: any, index: number): void;
  /** Sets the color of a stop by its index. */
  setColor_atIndex(color: any, index: number): void;
  /** Puts a copy of a stop after the others. */
  addStop_(stop: MSModelObject | null): void;
  /** Puts a copy of a stop after the others. */
  addStop(stop: MSModelObject | null): void;
  /** Removes a stop by its index. */
  removeStopAtIndex_(index: number): void;
  /** Removes a stop by its index. */
  removeStopAtIndex(index: number): void;
}

interface MSGradientAllocated {
  /** Creates a gradient from white to black, from top to bottom. */
  init(): MSGradient;
  /** Creates a gradient from white to black, from top to bottom. */
  initBlankGradient(): MSGradient;
}

declare const MSGradient: KelvarClass & {
  alloc(): MSGradientAllocated;
  /** Creates a gradient from white to black, from top to bottom. */
  "new"(): MSGradient;
};

interface MSGradientStop extends MSModelObject {
  /** Its position, between 0 and 1. */
  get position(): () => number;
  set position(value: number);
  /** The color. */
  get color(): () => MSColor;
  set color(value: MSColor | null);
  /** Its position, between 0 and 1. */
  setPosition_(position: number): void;
  /** Its position, between 0 and 1. */
  setPosition(position: number): void;
  /** The color. */
  setColor_(color: any): void;
  /** The color. */
  setColor(color: any): void;
}

interface MSGradientStopAllocated {
}

declare const MSGradientStop: KelvarClass & {
  alloc(): MSGradientStopAllocated;
  /** Creates a stop at a position between 0 and 1. */
  stopWithPosition_color_(position: number, color: any): MSModelObject;
  /** Creates a stop at a position between 0 and 1. */
  stopWithPosition_color(position: number, color: any): MSModelObject;
};

interface MSColor extends NSObject {
  /** Red, between 0 and 1. */
  get red(): () => number;
  set red(value: number);
  /** Green, between 0 and 1. */
  get green(): () => number;
  set green(value: number);
  /** Blue, between 0 and 1. */
  get blue(): () => number;
  set blue(value: number);
  /** Opacity, between 0 and 1. */
  get alpha(): () => number;
  set alpha(value: number);
  /** Returns the digits, such as "FF8800". */
  hexValue(): string;
  /** Returns "#FF8800", or with alpha "rgba(255,136,0,0.50)" if it is not opaque. */
  stringValueWithAlpha_(alpha: boolean): string;
  /** Returns "#FF8800", or with alpha "rgba(255,136,0,0.50)" if it is not opaque. */
  stringValueWithAlpha(alpha: boolean): string;
  /** Returns the color as SVG writes it: "#FF8800", or "rgba(255,136,0,0.50)" if it is not opaque. */
  svgRepresentation(): string;
  /** Returns the same components as an NSColor; there is one color space. */
  NSColorWithColorSpace_(space: any): NSColor;
  /** Returns the same components as an NSColor; there is one color space. */
  NSColorWithColorSpace(space: any): NSColor;
  /** Returns the components as r, g, b and a. */
  RGBADictionary(): Record<string, any>;
  /** Returns whether the other is a color of the same components. */
  isEqual_(equal: any): boolean;
  /** Returns whether the other is a color of the same components. */
  isEqual(equal: any): boolean;
  /** Returns a number that is the same for equal colors. */
  hash(): number;
  /** Returns whether the two colors look the same. */
  fuzzyIsEqual_(equal: MSColor | null): boolean;
  /** Returns whether the two colors look the same. */
  fuzzyIsEqual(equal: MSColor | null): boolean;
  /** Returns a copy to be changed. */
  newMutableCounterpart(): MSColor;
  /** Returns a copy that cannot be changed. */
  immutableModelObject(): MSColor;
  /** Red, between 0 and 1. */
  setRed_(red: number): void;
  /** Red, between 0 and 1. */
  setRed(red: number): void;
  /** Green, between 0 and 1. */
  setGreen_(green: number): void;
  /** Green, between 0 and 1. */
  setGreen(green: number): void;
  /** Blue, between 0 and 1. */
  setBlue_(blue: number): void;
  /** Blue, between 0 and 1. */
  setBlue(blue: number): void;
  /** Opacity, between 0 and 1. */
  setAlpha_(alpha: number): void;
  /** Opacity, between 0 and 1. */
  setAlpha(alpha: number): void;
}

interface MSColorAllocated {
  /** Creates black. */
  init(): MSColor;
}

declare const MSColor: KelvarClass & {
  alloc(): MSColorAllocated;
  /** Creates black. */
  "new"(): MSColor;
  /** Creates a color from components between 0 and 1. */
  colorWithRed_green_blue_alpha_(red: number, green: number, blue: number, alpha: number): MSColor;
  /** Creates a color from components between 0 and 1. */
  colorWithRed_green_blue_alpha(red: number, green: number, blue: number, alpha: number): MSColor;
  /** Creates a color from components between 0 and 1. */
  rgbColorRed_green_blue_alpha_(red: number, green: number, blue: number, alpha: number): MSColor;
  /** Creates a color from components between 0 and 1. */
  rgbColorRed_green_blue_alpha(red: number, green: number, blue: number, alpha: number): MSColor;
  /** Creates a color from the components r, g, b and a, between 0 and 1. */
  colorWithRGBADictionary_(dictionary: Record<string, any> | null): MSColor;
  /** Creates a color from the components r, g, b and a, between 0 and 1. */
  colorWithRGBADictionary(dictionary: Record<string, any> | null): MSColor;
  /** Creates a color from components between 0 and 1. */
  colorWithHue_saturation_brightness_alpha_(hue: number, saturation: number, brightness: number, alpha: number): MSColor;
  /** Creates a color from components between 0 and 1. */
  colorWithHue_saturation_brightness_alpha(hue: number, saturation: number, brightness: number, alpha: number): MSColor;
  /** Creates a color like the other. */
  colorWithNSColor_(color: NSColor | null): MSColor;
  /** Creates a color like the other. */
  colorWithNSColor(color: NSColor | null): MSColor;
  /** Creates a color from digits such as "FF8800"; nil if they are not valid. */
  colorWithHex_alpha_(hex: string | null, alpha: number): MSColor;
  /** Creates a color from digits such as "FF8800"; nil if they are not valid. */
  colorWithHex_alpha(hex: string | null, alpha: number): MSColor;
  /** Creates a color from text such as "#f80", "rgba(255,136,0,0.5)" or "orange"; nil if it is not valid. */
  colorWithSVGString_(string: string | null): MSColor;
  /** Creates a color from text such as "#f80", "rgba(255,136,0,0.5)" or "orange"; nil if it is not valid. */
  colorWithSVGString(string: string | null): MSColor;
  /** Returns white. */
  whiteColor(): MSColor;
  /** Returns black. */
  blackColor(): MSColor;
};

interface MSImmutableColor extends NSObject {
  /** Returns the digits, such as "FF8800". */
  hexValue(): string;
  /** Returns "#FF8800", or with alpha "rgba(255,136,0,0.50)" if it is not opaque. */
  stringValueWithAlpha_(alpha: boolean): string;
  /** Returns "#FF8800", or with alpha "rgba(255,136,0,0.50)" if it is not opaque. */
  stringValueWithAlpha(alpha: boolean): string;
  /** Returns the color as SVG writes it: "#FF8800", or "rgba(255,136,0,0.50)" if it is not opaque. */
  svgRepresentation(): string;
  /** Returns the same components as an NSColor; there is one color space. */
  NSColorWithColorSpace_(space: any): NSColor;
  /** Returns the same components as an NSColor; there is one color space. */
  NSColorWithColorSpace(space: any): NSColor;
  /** Returns the components as r, g, b and a. */
  RGBADictionary(): Record<string, any>;
  /** Returns whether the other is a color of the same components. */
  isEqual_(equal: any): boolean;
  /** Returns whether the other is a color of the same components. */
  isEqual(equal: any): boolean;
  /** Returns a number that is the same for equal colors. */
  hash(): number;
  /** Returns whether the two colors look the same. */
  fuzzyIsEqual_(equal: MSColor | null): boolean;
  /** Returns whether the two colors look the same. */
  fuzzyIsEqual(equal: MSColor | null): boolean;
  /** Returns a copy to be changed. */
  newMutableCounterpart(): MSColor;
  /** Returns a copy that cannot be changed. */
  immutableModelObject(): MSColor;
  /** Red, between 0 and 1. */
  red(): number;
  /** Green, between 0 and 1. */
  green(): number;
  /** Blue, between 0 and 1. */
  blue(): number;
  /** Opacity, between 0 and 1. */
  alpha(): number;
}

interface MSImmutableColorAllocated {
  /** Creates black. */
  init(): MSImmutableColor;
}

declare const MSImmutableColor: KelvarClass & {
  alloc(): MSImmutableColorAllocated;
  /** Creates black. */
  "new"(): MSImmutableColor;
  /** Creates a color from components between 0 and 1. */
  colorWithRed_green_blue_alpha_(red: number, green: number, blue: number, alpha: number): MSColor;
  /** Creates a color from components between 0 and 1. */
  colorWithRed_green_blue_alpha(red: number, green: number, blue: number, alpha: number): MSColor;
  /** Creates a color from components between 0 and 1. */
  rgbColorRed_green_blue_alpha_(red: number, green: number, blue: number, alpha: number): MSColor;
  /** Creates a color from components between 0 and 1. */
  rgbColorRed_green_blue_alpha(red: number, green: number, blue: number, alpha: number): MSColor;
  /** Creates a color from the components r, g, b and a, between 0 and 1. */
  colorWithRGBADictionary_(dictionary: Record<string, any> | null): MSColor;
  /** Creates a color from the components r, g, b and a, between 0 and 1. */
  colorWithRGBADictionary(dictionary: Record<string, any> | null): MSColor;
  /** Creates a color from components between 0 and 1. */
  colorWithHue_saturation_brightness_alpha_(hue: number, saturation: number, brightness: number, alpha: number): MSColor;
  /** Creates a color from components between 0 and 1. */
  colorWithHue_saturation_brightness_alpha(hue: number, saturation: number, brightness: number, alpha: number): MSColor;
  /** Creates a color like the other. */
  colorWithNSColor_(color: NSColor | null): MSColor;
  /** Creates a color like the other. */
  colorWithNSColor(color: NSColor | null): MSColor;
  /** Creates a color from digits such as "FF8800"; nil if they are not valid. */
  colorWithHex_alpha_(hex: string | null, alpha: number): MSColor;
  /** Creates a color from digits such as "FF8800"; nil if they are not valid. */
  colorWithHex_alpha(hex: string | null, alpha: number): MSColor;
  /** Creates a color from text such as "#f80", "rgba(255,136,0,0.5)" or "orange"; nil if it is not valid. */
  colorWithSVGString_(string: string | null): MSColor;
  /** Creates a color from text such as "#f80", "rgba(255,136,0,0.5)" or "orange"; nil if it is not valid. */
  colorWithSVGString(string: string | null): MSColor;
  /** Returns white. */
  whiteColor(): MSColor;
  /** Returns black. */
  blackColor(): MSColor;
};

interface MSImageData extends NSObject {
  /** Returns the image; nil if it is damaged. */
  image(): NSImage;
  /** Returns the bytes of the image file. */
  data(): Uint8Array;
  /** Returns the hash of the bytes, in digits. */
  sha1(): string;
}

interface MSImageDataAllocated {
  /** Creates image data from an image; nil if it has no pixels. */
  initWithImage_(image: NSImage | null): MSImageData;
  /** Creates image data from an image; nil if it has no pixels. */
  initWithImage(image: NSImage | null): MSImageData;
  /** Creates image data from an image, whose colors are sRGB already. */
  initWithImage_convertColorSpace_(image: NSImage | null, space: boolean): MSImageData;
  /** Creates image data from an image, whose colors are sRGB already. */
  initWithImage_convertColorSpace(image: NSImage | null, space: boolean): MSImageData;
  /** Creates image data from the bytes of an image file; nil if they are none. */
  initWithData_(data: Uint8Array | null): MSImageData;
  /** Creates image data from the bytes of an image file; nil if they are none. */
  initWithData(data: Uint8Array | null): MSImageData;
  /** Creates image data from the bytes of an image file, whose hash is calculated. */
  initWithData_sha1_(data: Uint8Array | null, sha1: any): MSImageData;
  /** Creates image data from the bytes of an image file, whose hash is calculated. */
  initWithData_sha1(data: Uint8Array | null, sha1: any): MSImageData;
}

declare const MSImageData: KelvarClass & {
  alloc(): MSImageDataAllocated;
};

interface MSExportOptions extends MSModelObject {
  /** The formats. */
  get exportFormats(): () => any[];
  set exportFormats(value: any[] | null);
  /** Whether the host cuts off what is transparent. */
  get shouldTrim(): () => boolean;
  set shouldTrim(value: boolean);
  /** The formats. */
  setExportFormats_(formats: any[] | null): void;
  /** The formats. */
  setExportFormats(formats: any[] | null): void;
  /** Adds a PNG in its natural size and returns it. */
  addExportFormat(): MSModelObject;
  /** Removes a format by its index. */
  removeExportFormatAtIndex_(index: number): void;
  /** Removes a format by its index. */
  removeExportFormatAtIndex(index: number): void;
  /** Removes all formats. */
  removeAllExportFormats(): void;
  /** Whether the host cuts off what is transparent. */
  setShouldTrim_(trim: boolean): void;
  /** Whether the host cuts off what is transparent. */
  setShouldTrim(trim: boolean): void;
}

interface MSExportOptionsAllocated {
}

declare const MSExportOptions: KelvarClass & {
  alloc(): MSExportOptionsAllocated;
};

interface MSExportFormat extends MSModelObject {
  /** The extension, such as "png". */
  get fileFormat(): () => string;
  set fileFormat(value: string | null);
  /** Pixels per unit. */
  get scale(): () => number;
  set scale(value: number);
  /** What is added to the name of the file. */
  get name(): () => string;
  set name(value: string | null);
  /** What is added to the name of the file, like name. */
  get suffix(): () => string;
  set suffix(value: string | null);
  /** Where it is added: at the end (0) or at the beginning (1). */
  get namingScheme(): () => number;
  set namingScheme(value: number);
  /** The extension, such as "png". */
  setFileFormat_(format: string | null): void;
  /** The extension, such as "png". */
  setFileFormat(format: string | null): void;
  /** Pixels per unit. */
  setScale_(scale: number): void;
  /** Pixels per unit. */
  setScale(scale: number): void;
  /** What is added to the name of the file. */
  setName_(name: string | null): void;
  /** What is added to the name of the file. */
  setName(name: string | null): void;
  /** What is added to the name of the file, like name. */
  setSuffix_(suffix: string | null): void;
  /** What is added to the name of the file, like name. */
  setSuffix(suffix: string | null): void;
  /** Where it is added: at the end (0) or at the beginning (1). */
  setNamingScheme_(scheme: number): void;
  /** Where it is added: at the end (0) or at the beginning (1). */
  setNamingScheme(scheme: number): void;
}

interface MSExportFormatAllocated {
  /** Creates a PNG in its natural size. */
  init(): MSExportFormat;
}

declare const MSExportFormat: KelvarClass & {
  alloc(): MSExportFormatAllocated;
  /** Creates a PNG in its natural size. */
  "new"(): MSExportFormat;
  /** Creates a format from the pixels per unit, what is added to the name of the file, and the extension. */
  formatWithScale_name_fileFormat_(scale: number, name: string | null, format: string | null): MSModelObject;
  /** Creates a format from the pixels per unit, what is added to the name of the file, and the extension. */
  formatWithScale_name_fileFormat(scale: number, name: string | null, format: string | null): MSModelObject;
};

interface MSOverridePoint extends NSObject {
  /** What documents call it: "ID/ID_property". */
  name(): string;
  /** What can differ, such as "stringValue" or "symbolID". */
  property(): string;
  /** The layer's identifier. */
  layerID(): string;
  /** Returns whether a text can differ. */
  isTextOverride(): boolean;
  /** Returns whether the symbol of a nested instance can differ. */
  isSymbolOverride(): boolean;
  /** Returns whether an image can differ. */
  isImageOverride(): boolean;
}

interface MSOverridePointAllocated {
}

declare const MSOverridePoint: KelvarClass & {
  alloc(): MSOverridePointAllocated;
};

interface MSAvailableOverride extends NSObject {
  /** Returns what can differ. */
  overridePoint(): MSOverridePoint;
  /** Returns the layer of the symbol that shows it. */
  affectedLayer(): SketchLayer;
  /** Returns what the instance shows: a text, the identifier of a symbol, or image data. */
  currentValue(): any;
  /** Returns what the symbol shows. */
  defaultValue(): any;
  /** Returns whether the instance differs from the symbol. */
  hasOverride(): boolean;
}

interface MSAvailableOverrideAllocated {
}

declare const MSAvailableOverride: KelvarClass & {
  alloc(): MSAvailableOverrideAllocated;
};

interface MSPath {
}

interface MSPathAllocated {
}

declare const MSPath: KelvarClass & {
  alloc(): MSPathAllocated;
  /** Returns the same path, which all operations take as it is. */
  pathWithBezierPath_(path: NSBezierPath | null): NSBezierPath;
  /** Returns the same path, which all operations take as it is. */
  pathWithBezierPath(path: NSBezierPath | null): NSBezierPath;
};

interface MSSymbolCreator {
}

interface MSSymbolCreatorAllocated {
}

declare const MSSymbolCreator: KelvarClass & {
  alloc(): MSSymbolCreatorAllocated;
  /** Returns whether the layers are in one group. */
  canCreateSymbolFromLayers_(layers: any): boolean;
  /** Returns whether the layers are in one group. */
  canCreateSymbolFromLayers(layers: any): boolean;
  /** Moves layers into a new symbol, on the page Symbols or on their own, and returns the instance that is in their place. */
  createSymbolFromLayers_withName_onSymbolsPage_(layers: any, name: string | null, page: boolean): SketchLayer;
  /** Moves layers into a new symbol, on the page Symbols or on their own, and returns the instance that is in their place. */
  createSymbolFromLayers_withName_onSymbolsPage(layers: any, name: string | null, page: boolean): SketchLayer;
};

interface MSForeignSymbol extends MSModelObject {
  /** The library's identifier. */
  libraryID(): string;
  /** The library's name. */
  sourceLibraryName(): string;
  /** Returns the symbol, or nil if it is missing. */
  symbolMaster(): SketchLayer;
}

interface MSForeignSymbolAllocated {
}

declare const MSForeignSymbol: KelvarClass & {
  alloc(): MSForeignSymbolAllocated;
};

interface MSOverrideValue extends MSModelObject {
  /** What documents call it: "ID/ID_property". */
  overrideName(): string;
  /** What the instance shows. */
  value(): any;
}

interface MSOverrideValueAllocated {
}

declare const MSOverrideValue: KelvarClass & {
  alloc(): MSOverrideValueAllocated;
};

interface MSTextStyle extends MSModelObject {
  /** Where the lines are in the frame: at its top (0), middle (1) or bottom (2). */
  get verticalAlignment(): () => number;
  set verticalAlignment(value: number);
  /** How texts of the style look, by names such as NSFont. */
  attributes(): Record<string, any>;
  /** How texts of the style look, by names such as NSFont. */
  encodedAttributes(): Record<string, any>;
  /** Where the lines are in the frame: at its top (0), middle (1) or bottom (2). */
  setVerticalAlignment_(alignment: number): void;
  /** Where the lines are in the frame: at its top (0), middle (1) or bottom (2). */
  setVerticalAlignment(alignment: number): void;
}

interface MSTextStyleAllocated {
}

declare const MSTextStyle: KelvarClass & {
  alloc(): MSTextStyleAllocated;
};

interface MSAssetCollection extends NSObject {
  /** The colors, as copies. */
  get colors(): () => any[];
  set colors(value: any[] | null);
  /** The colors with their names, as copies. */
  get colorAssets(): () => any[];
  set colorAssets(value: any[] | null);
  /** The gradients, as copies. */
  get gradients(): () => any[];
  set gradients(value: any[] | null);
  /** The gradients with their names, as copies. */
  get gradientAssets(): () => any[];
  set gradientAssets(value: any[] | null);
  /** The colors, as copies. */
  setColors_(colors: any[] | null): void;
  /** The colors, as copies. */
  setColors(colors: any[] | null): void;
  /** Returns the colors, as copies. */
  primitiveColors(): any[];
  /** The colors with their names, as copies. */
  setColorAssets_(assets: any[] | null): void;
  /** The colors with their names, as copies. */
  setColorAssets(assets: any[] | null): void;
  /** Adds a color. */
  addColor_(color: any): void;
  /** Adds a color. */
  addColor(color: any): void;
  /** Adds colors. */
  addColors_(colors: any[] | null): void;
  /** Adds colors. */
  addColors(colors: any[] | null): void;
  /** Adds a color with a name. */
  addColorAsset_(asset: MSModelObject | null): void;
  /** Adds a color with a name. */
  addColorAsset(asset: MSModelObject | null): void;
  /** Removes the first color of these components, if there is one. */
  removeColor_(color: any): void;
  /** Removes the first color of these components, if there is one. */
  removeColor(color: any): void;
  /** Removes a color by its index. */
  removeColorAtIndex_(index: number): void;
  /** Removes a color by its index. */
  removeColorAtIndex(index: number): void;
  /** Removes a color by its index. */
  removeColorAssetAtIndex_(index: number): void;
  /** Removes a color by its index. */
  removeColorAssetAtIndex(index: number): void;
  /** Removes all colors. */
  removeAllColors(): void;
  /** Removes all colors. */
  removeAllColorAssets(): void;
  /** The gradients, as copies. */
  setGradients_(gradients: any[] | null): void;
  /** The gradients, as copies. */
  setGradients(gradients: any[] | null): void;
  /** The gradients with their names, as copies. */
  setGradientAssets_(assets: any[] | null): void;
  /** The gradients with their names, as copies. */
  setGradientAssets(assets: any[] | null): void;
  /** Adds a gradient. */
  addGradient_(gradient: any): void;
  /** Adds a gradient. */
  addGradient(gradient: any): void;
  /** Adds gradients. */
  addGradients_(gradients: any[] | null): void;
  /** Adds gradients. */
  addGradients(gradients: any[] | null): void;
  /** Adds a gradient with a name. */
  addGradientAsset_(asset: MSModelObject | null): void;
  /** Adds a gradient with a name. */
  addGradientAsset(asset: MSModelObject | null): void;
  /** Removes a gradient by its index. */
  removeGradientAtIndex_(index: number): void;
  /** Removes a gradient by its index. */
  removeGradientAtIndex(index: number): void;
  /** Removes all gradients. */
  removeAllGradients(): void;
  /** Removes all gradients. */
  removeAllGradientAssets(): void;
}

interface MSAssetCollectionAllocated {
}

declare const MSAssetCollection: KelvarClass & {
  alloc(): MSAssetCollectionAllocated;
};

interface MSColorAsset extends MSModelObject {
  /** The name. */
  get name(): () => string;
  set name(value: string | null);
  /** The color. */
  get color(): () => MSColor;
  set color(value: MSColor | null);
  /** The name. */
  setName_(name: string | null): void;
  /** The name. */
  setName(name: string | null): void;
  /** The color. */
  setColor_(color: any): void;
  /** The color. */
  setColor(color: any): void;
}

interface MSColorAssetAllocated {
  /** Creates a named copy of a color. */
  initWithAsset_name_(asset: any, name: string | null): MSColorAsset;
  /** Creates a named copy of a color. */
  initWithAsset_name(asset: any, name: string | null): MSColorAsset;
}

declare const MSColorAsset: KelvarClass & {
  alloc(): MSColorAssetAllocated;
};

interface MSGradientAsset extends MSModelObject {
  /** The name. */
  get name(): () => string;
  set name(value: string | null);
  /** The name. */
  setName_(name: string | null): void;
  /** The name. */
  setName(name: string | null): void;
  /** The gradient. */
  gradient(): MSModelObject;
}

interface MSGradientAssetAllocated {
  /** Creates a named copy of a gradient. */
  initWithAsset_name_(asset: any, name: string | null): MSGradientAsset;
  /** Creates a named copy of a gradient. */
  initWithAsset_name(asset: any, name: string | null): MSGradientAsset;
}

declare const MSGradientAsset: KelvarClass & {
  alloc(): MSGradientAssetAllocated;
};

interface MSCurvePoint extends MSModelObject {
  /** Where it is, in parts of the shape's width and height. */
  get point(): () => NSPoint;
  set point(value: NSPoint);
  /** The handle of the curve that begins here. */
  get curveFrom(): () => NSPoint;
  set curveFrom(value: NSPoint);
  /** The handle of the curve that ends here. */
  get curveTo(): () => NSPoint;
  set curveTo(value: NSPoint);
  /** Whether a curve begins here. */
  get hasCurveFrom(): () => boolean;
  set hasCurveFrom(value: boolean);
  /** Whether a curve ends here. */
  get hasCurveTo(): () => boolean;
  set hasCurveTo(value: boolean);
  /** How the handles depend on each other: straight (1), mirrored (2), asymmetric (3) or not at all (4). */
  get curveMode(): () => number;
  set curveMode(value: number);
  /** The radius of the corner. */
  get cornerRadius(): () => number;
  set cornerRadius(value: number);
  /** Where it is, in parts of the shape's width and height. */
  setPoint_(point: NSPoint): void;
  /** Where it is, in parts of the shape's width and height. */
  setPoint(point: NSPoint): void;
  /** The handle of the curve that begins here. */
  setCurveFrom_(from: NSPoint): void;
  /** The handle of the curve that begins here. */
  setCurveFrom(from: NSPoint): void;
  /** The handle of the curve that ends here. */
  setCurveTo_(to: NSPoint): void;
  /** The handle of the curve that ends here. */
  setCurveTo(to: NSPoint): void;
  /** Whether a curve begins here. */
  setHasCurveFrom_(from: boolean): void;
  /** Whether a curve begins here. */
  setHasCurveFrom(from: boolean): void;
  /** Whether a curve ends here. */
  setHasCurveTo_(to: boolean): void;
  /** Whether a curve ends here. */
  setHasCurveTo(to: boolean): void;
  /** How the handles depend on each other: straight (1), mirrored (2), asymmetric (3) or not at all (4). */
  setCurveMode_(mode: number): void;
  /** How the handles depend on each other: straight (1), mirrored (2), asymmetric (3) or not at all (4). */
  setCurveMode(mode: number): void;
  /** The radius of the corner. */
  setCornerRadius_(radius: number): void;
  /** The radius of the corner. */
  setCornerRadius(radius: number): void;
}

interface MSCurvePointAllocated {
}

declare const MSCurvePoint: KelvarClass & {
  alloc(): MSCurvePointAllocated;
  /** Creates a corner without handles. */
  pointWithPoint_(point: NSPoint): MSModelObject;
  /** Creates a corner without handles. */
  pointWithPoint(point: NSPoint): MSModelObject;
};

interface MSFlowConnection extends MSModelObject {
  /** The identifier of the artboard that it leads to; "back" for the previous one. */
  get destinationArtboardID(): () => string;
  set destinationArtboardID(value: string | null);
  /** How the artboard comes in: at once (-1), or from a side (0 to 4). */
  get animationType(): () => number;
  set animationType(value: number);
  /** Whether scrolling is kept. */
  get maintainScrollPosition(): () => boolean;
  set maintainScrollPosition(value: boolean);
  /** The identifier of the artboard that it leads to; "back" for the previous one. */
  setDestinationArtboardID_(id: string | null): void;
  /** The identifier of the artboard that it leads to; "back" for the previous one. */
  setDestinationArtboardID(id: string | null): void;
  /** The artboard that it leads to; nil if the document does not have it. */
  destinationArtboard(): SketchLayer;
  /** How the artboard comes in: at once (-1), or from a side (0 to 4). */
  setAnimationType_(type: number): void;
  /** How the artboard comes in: at once (-1), or from a side (0 to 4). */
  setAnimationType(type: number): void;
  /** Whether scrolling is kept. */
  setMaintainScrollPosition_(position: boolean): void;
  /** Whether scrolling is kept. */
  setMaintainScrollPosition(position: boolean): void;
  /** Returns whether it leads to the previous artboard. */
  isBackAction(): boolean;
  /** Returns whether it leads anywhere. */
  isValidFlowConnection(): boolean;
}

interface MSFlowConnectionAllocated {
  /** Creates a link to nowhere. */
  init(): MSFlowConnection;
}

declare const MSFlowConnection: KelvarClass & {
  alloc(): MSFlowConnectionAllocated;
  /** Creates a link to nowhere. */
  "new"(): MSFlowConnection;
};

interface MSRulerData extends MSModelObject {
  /** Where the ruler's 0 is. */
  get base(): () => number;
  set base(value: number);
  /** Where the ruler's 0 is. */
  setBase_(base: number): void;
  /** Where the ruler's 0 is. */
  setBase(base: number): void;
  /** Where the guides are. */
  guides(): any[];
  /** Returns how many guides there are. */
  numberOfGuides(): number;
  /** Returns where a guide is, by its index. */
  guideAtIndex_(index: number): number;
  /** Returns where a guide is, by its index. */
  guideAtIndex(index: number): number;
  /** Adds a guide. */
  addGuideWithValue_(value: number): void;
  /** Adds a guide. */
  addGuideWithValue(value: number): void;
  /** Removes a guide by its index. */
  removeGuideAtIndex_(index: number): void;
  /** Removes a guide by its index. */
  removeGuideAtIndex(index: number): void;
  /** Removes all guides. */
  removeAllGuides(): void;
}

interface MSRulerDataAllocated {
}

declare const MSRulerData: KelvarClass & {
  alloc(): MSRulerDataAllocated;
};

interface MSSimpleGrid extends MSModelObject {
  /** Whether the host shows it. */
  get isEnabled(): () => boolean;
  set isEnabled(value: boolean);
  /** How far its lines are apart. */
  get gridSize(): () => number;
  set gridSize(value: number);
  /** After how many lines one is thick; 0 for none. */
  get thickGridTimes(): () => number;
  set thickGridTimes(value: number);
  /** Whether the host shows it. */
  setIsEnabled_(enabled: boolean): void;
  /** Whether the host shows it. */
  setIsEnabled(enabled: boolean): void;
  /** How far its lines are apart. */
  setGridSize_(size: number): void;
  /** How far its lines are apart. */
  setGridSize(size: number): void;
  /** After how many lines one is thick; 0 for none. */
  setThickGridTimes_(times: number): void;
  /** After how many lines one is thick; 0 for none. */
  setThickGridTimes(times: number): void;
}

interface MSSimpleGridAllocated {
  /** Creates a grid of 20 units. */
  init(): MSSimpleGrid;
}

declare const MSSimpleGrid: KelvarClass & {
  alloc(): MSSimpleGridAllocated;
  /** Creates a grid of 20 units. */
  "new"(): MSSimpleGrid;
};

interface MSLayoutGrid extends MSModelObject {
  /** Whether the host shows it. */
  get isEnabled(): () => boolean;
  set isEnabled(value: boolean);
  /** The width of all columns together. */
  get totalWidth(): () => number;
  set totalWidth(value: number);
  /** Where the first column begins. */
  get horizontalOffset(): () => number;
  set horizontalOffset(value: number);
  /** How many columns there are. */
  get numberOfColumns(): () => number;
  set numberOfColumns(value: number);
  /** The width of a column. */
  get columnWidth(): () => number;
  set columnWidth(value: number);
  /** What is between two columns. */
  get gutterWidth(): () => number;
  set gutterWidth(value: number);
  /** What is between two rows. */
  get gutterHeight(): () => number;
  set gutterHeight(value: number);
  /** Whether half a gutter is left and right of the columns. */
  get guttersOutside(): () => boolean;
  set guttersOutside(value: boolean);
  /** The height of a row, in gutters. */
  get rowHeightMultiplication(): () => number;
  set rowHeightMultiplication(value: number);
  /** Whether columns are shown. */
  get drawVertical(): () => boolean;
  set drawVertical(value: boolean);
  /** Whether rows are shown. */
  get drawHorizontal(): () => boolean;
  set drawHorizontal(value: boolean);
  /** Whether the lines of rows are shown. */
  get drawHorizontalLines(): () => boolean;
  set drawHorizontalLines(value: boolean);
  /** Whether the host shows it. */
  setIsEnabled_(enabled: boolean): void;
  /** Whether the host shows it. */
  setIsEnabled(enabled: boolean): void;
  /** The width of all columns together. */
  setTotalWidth_(width: number): void;
  /** The width of all columns together. */
  setTotalWidth(width: number): void;
  /** Where the first column begins. */
  setHorizontalOffset_(offset: number): void;
  /** Where the first column begins. */
  setHorizontalOffset(offset: number): void;
  /** How many columns there are. */
  setNumberOfColumns_(columns: number): void;
  /** How many columns there are. */
  setNumberOfColumns(columns: number): void;
  /** The width of a column. */
  setColumnWidth_(width: number): void;
  /** The width of a column. */
  setColumnWidth(width: number): void;
  /** What is between two columns. */
  setGutterWidth_(width: number): void;
  /** What is between two columns. */
  setGutterWidth(width: number): void;
  /** What is between two rows. */
  setGutterHeight_(height: number): void;
  /** What is between two rows. */
  setGutterHeight(height: number): void;
  /** Whether half a gutter is left and right of the columns. */
  setGuttersOutside_(outside: boolean): void;
  /** Whether half a gutter is left and right of the columns. */
  setGuttersOutside(outside: boolean): void;
  /** The height of a row, in gutters. */
  setRowHeightMultiplication_(multiplication: number): void;
  /** The height of a row, in gutters. */
  setRowHeightMultiplication(multiplication: number): void;
  /** Whether columns are shown. */
  setDrawVertical_(vertical: boolean): void;
  /** Whether columns are shown. */
  setDrawVertical(vertical: boolean): void;
  /** Whether rows are shown. */
  setDrawHorizontal_(horizontal: boolean): void;
  /** Whether rows are shown. */
  setDrawHorizontal(horizontal: boolean): void;
  /** Whether the lines of rows are shown. */
  setDrawHorizontalLines_(lines: boolean): void;
  /** Whether the lines of rows are shown. */
  setDrawHorizontalLines(lines: boolean): void;
}

interface MSLayoutGridAllocated {
  /** Creates a layout of 12 columns. */
  init(): MSLayoutGrid;
}

declare const MSLayoutGrid: KelvarClass & {
  alloc(): MSLayoutGridAllocated;
  /** Creates a layout of 12 columns. */
  "new"(): MSLayoutGrid;
};

interface NSMenuItem extends NSObject {
  /** The text of the item. */
  get title(): () => string;
  set title(value: string | null);
  /** The image beside the title, or nil. */
  get image(): () => NSImage;
  set image(value: NSImage | null);
  /** The dictionary that the item was made from, or nil. */
  get representedObject(): () => any;
  set representedObject(value: any);
  /** A number for the owner's use. */
  get tag(): () => number;
  set tag(value: number);
  /** Whether the open menu shows a check mark beside the item: 1 or 0. */
  get state(): () => number;
  set state(value: number);
  /** Returns whether the item is a separator line. */
  isSeparatorItem(): boolean;
  /** The text of the item. */
  setTitle_(title: string | null): void;
  /** The text of the item. */
  setTitle(title: string | null): void;
  /** The image beside the title, or nil. */
  setImage_(image: NSImage | null): void;
  /** The image beside the title, or nil. */
  setImage(image: NSImage | null): void;
  /** The dictionary that the item was made from, or nil. */
  setRepresentedObject_(object: any): void;
  /** The dictionary that the item was made from, or nil. */
  setRepresentedObject(object: any): void;
  /** A number for the owner's use. */
  setTag_(tag: number): void;
  /** A number for the owner's use. */
  setTag(tag: number): void;
  /** Whether the open menu shows a check mark beside the item: 1 or 0. */
  setState_(state: number): void;
  /** Whether the open menu shows a check mark beside the item: 1 or 0. */
  setState(state: number): void;
}

interface NSMenuItemAllocated {
  /** Creates an item without a title. */
  init(): NSMenuItem;
  /** Creates an item; the last two arguments have no effect. */
  initWithTitle_action_keyEquivalent_(title: string | null, action: any, equivalent: any): NSMenuItem;
  /** Creates an item; the last two arguments have no effect. */
  initWithTitle_action_keyEquivalent(title: string | null, action: any, equivalent: any): NSMenuItem;
}

declare const NSMenuItem: KelvarClass & {
  alloc(): NSMenuItemAllocated;
  /** Creates an item without a title. */
  "new"(): NSMenuItem;
  /** Creates a separator line. */
  separatorItem(): NSMenuItem;
};

interface NSShadow extends NSObject {
  /** How far the shadow is moved, in points; a positive height moves it up. */
  get shadowOffset(): () => NSSize;
  set shadowOffset(value: NSSize);
  /** The blur radius in points, twice the standard deviation of the Gaussian. */
  get shadowBlurRadius(): () => number;
  set shadowBlurRadius(value: number);
  /** The shadow's color, or nil for no shadow. */
  get shadowColor(): () => NSColor;
  set shadowColor(value: NSColor | null);
  /** How far the shadow is moved, in points; a positive height moves it up. */
  setShadowOffset_(offset: NSSize): void;
  /** How far the shadow is moved, in points; a positive height moves it up. */
  setShadowOffset(offset: NSSize): void;
  /** The blur radius in points, twice the standard deviation of the Gaussian. */
  setShadowBlurRadius_(radius: number): void;
  /** The blur radius in points, twice the standard deviation of the Gaussian. */
  setShadowBlurRadius(radius: number): void;
  /** The shadow's color, or nil for no shadow. */
  setShadowColor_(color: NSColor | null): void;
  /** The shadow's color, or nil for no shadow. */
  setShadowColor(color: NSColor | null): void;
}

interface NSShadowAllocated {
  /** Creates a shadow without a color, which is invisible. */
  init(): NSShadow;
}

declare const NSShadow: KelvarClass & {
  alloc(): NSShadowAllocated;
  /** Creates a shadow without a color, which is invisible. */
  "new"(): NSShadow;
};

interface NSFont extends NSObject {
  /** The PostScript name, or the family. */
  fontName(): string;
  /** The family. */
  familyName(): string;
  /** The family and the style. */
  displayName(): string;
  /** The size in points. */
  pointSize(): number;
  /** How far letters reach above the baseline. */
  ascender(): number;
  /** How far letters reach below the baseline, as a negative number. */
  descender(): number;
  /** The height of capital letters. */
  capHeight(): number;
  /** The height of the letter x. */
  xHeight(): number;
}

interface NSFontAllocated {
}

declare const NSFont: KelvarClass & {
  alloc(): NSFontAllocated;
  /** Returns the application's font in that size in points, 0 for 13. */
  systemFontOfSize_(size: number): NSFont;
  /** Returns the application's font in that size in points, 0 for 13. */
  systemFontOfSize(size: number): NSFont;
  /** Returns the application's bold font in that size in points, 0 for 13. */
  boldSystemFontOfSize_(size: number): NSFont;
  /** Returns the application's bold font in that size in points, 0 for 13. */
  boldSystemFontOfSize(size: number): NSFont;
  /** Returns the font of that family or PostScript name, or nil if it is not installed. */
  fontWithName_size_(name: string | null, size: number): NSFont;
  /** Returns the font of that family or PostScript name, or nil if it is not installed. */
  fontWithName_size(name: string | null, size: number): NSFont;
};

interface NSButtonCell extends NSButton {
  /** Makes it a check box (`NSSwitchButton`), a radio button (`NSRadioButton`) or a push button. */
  setButtonType_(type: number): void;
  /** Makes it a check box (`NSSwitchButton`), a radio button (`NSRadioButton`) or a push button. */
  setButtonType(type: number): void;
}

interface NSButtonCellAllocated {
  /** Creates a push button for a matrix. */
  init(): NSButtonCell;
  /** Creates one with this title. */
  initTextCell_(cell: string | null): NSButtonCell;
  /** Creates one with this title. */
  initTextCell(cell: string | null): NSButtonCell;
}

declare const NSButtonCell: KelvarClass & {
  alloc(): NSButtonCellAllocated;
  /** Creates a push button for a matrix. */
  "new"(): NSButtonCell;
};

interface TimedTracker extends NSObject {
  /** The running events by name; replaces them when set. */
  get events(): () => Record<string, any>;
  set events(value: Record<string, any> | null);
  /** The delay of the last finish, in seconds. */
  get delay(): () => number;
  set delay(value: number);
  /** Told when events start and finish; held weakly. */
  get delegate(): () => TimedTrackerDelegate;
  set delegate(value: TimedTrackerDelegate | null);
  /** Starts or resumes the event with this name. */
  start_(start: string | null): void;
  /** Starts or resumes the event with this name. */
  start(start: string | null): void;
  /** Starts or resumes the event as of this time, in seconds on the run loop's clock. */
  start_sinceTime_(start: string | null, time: number): void;
  /** Starts or resumes the event as of this time, in seconds on the run loop's clock. */
  start_sinceTime(start: string | null, time: number): void;
  /** Finishes the event with this name and returns it, or nil if it is not running. */
  track_properties_(track: string | null, properties: Record<string, any> | null): MutableTimedEvent;
  /** Finishes the event with this name and returns it, or nil if it is not running. */
  track_properties(track: string | null, properties: Record<string, any> | null): MutableTimedEvent;
  /** Finishes the event as of this time and returns it, or nil if it is not running. */
  track_properties_atTime_(track: string | null, properties: Record<string, any> | null, time: number): MutableTimedEvent;
  /** Finishes the event as of this time and returns it, or nil if it is not running. */
  track_properties_atTime(track: string | null, properties: Record<string, any> | null, time: number): MutableTimedEvent;
  /** Finishes the event as of this time, but lets a start within the delay, in seconds, resume it. */
  track_properties_atTime_delay_(track: string | null, properties: Record<string, any> | null, time: number, delay: number): MutableTimedEvent;
  /** Finishes the event as of this time, but lets a start within the delay, in seconds, resume it. */
  track_properties_atTime_delay(track: string | null, properties: Record<string, any> | null, time: number, delay: number): MutableTimedEvent;
  /** Ends the event with this name for good and tells the delegate. */
  flushEvent_(event: string | null): void;
  /** Ends the event with this name for good and tells the delegate. */
  flushEvent(event: string | null): void;
  /** Adds 1 to a property of the running event with this name. */
  event_increment_(event: string | null, increment: string | null): void;
  /** Adds 1 to a property of the running event with this name. */
  event_increment(event: string | null, increment: string | null): void;
  /** Adds a number to a property of the running event with this name. */
  event_increment_by_(event: string | null, increment: string | null, by: any): void;
  /** Adds a number to a property of the running event with this name. */
  event_increment_by(event: string | null, increment: string | null, by: any): void;
  /** The running events by name. */
  timedEvents(): Record<string, any>;
  /** The running events by name; replaces them when set. */
  setEvents_(events: Record<string, any> | null): void;
  /** The running events by name; replaces them when set. */
  setEvents(events: Record<string, any> | null): void;
  /** The delay of the last finish, in seconds. */
  setDelay_(delay: number): void;
  /** The delay of the last finish, in seconds. */
  setDelay(delay: number): void;
  /** Told when events start and finish; held weakly. */
  setDelegate_(delegate: TimedTrackerDelegate | null): void;
  /** Told when events start and finish; held weakly. */
  setDelegate(delegate: TimedTrackerDelegate | null): void;
}

interface TimedTrackerAllocated {
  /** Creates a tracker on the current run loop's clock. */
  init(): TimedTracker;
}

declare const TimedTracker: KelvarClass & {
  alloc(): TimedTrackerAllocated;
  /** Creates a tracker on the current run loop's clock. */
  "new"(): TimedTracker;
};

interface TrackerPersister extends NSObject {
  /** Stores a property-list value under the key; nil removes the key, and any other value is an error. */
  setObject_forKey_(object: any, key: string | null): void;
  /** Stores a property-list value under the key; nil removes the key, and any other value is an error. */
  setObject_forKey(object: any, key: string | null): void;
  /** Returns the value stored under the key, or nil. */
  objectForKey_(key: string | null): any;
  /** Returns the value stored under the key, or nil. */
  objectForKey(key: string | null): any;
  /** Removes the value stored under the key. */
  removeObjectForKey_(key: string | null): void;
  /** Removes the value stored under the key. */
  removeObjectForKey(key: string | null): void;
}

interface TrackerPersisterImplementation {
  /** Stores a property-list value under the key; nil removes the key, and any other value is an error. */
  setObject_forKey_?(object: any, key: string): void | null;
  /** Stores a property-list value under the key; nil removes the key, and any other value is an error. */
  setObject_forKey?(object: any, key: string): void | null;
  /** Returns the value stored under the key, or nil. */
  objectForKey_?(key: string): any;
  /** Returns the value stored under the key, or nil. */
  objectForKey?(key: string): any;
  /** Removes the value stored under the key. */
  removeObjectForKey_?(key: string): void | null;
  /** Removes the value stored under the key. */
  removeObjectForKey?(key: string): void | null;
}

interface TrackerPersisterAllocated {
  /** Creates a store over the user's settings. */
  init(): TrackerPersister;
}

declare const TrackerPersister: KelvarClass & {
  alloc(): TrackerPersisterAllocated;
  /** Creates a store over the user's settings. */
  "new"(): TrackerPersister;
};

interface NSMutableData extends NSObject {
  /** The bytes. */
  get bytes(): () => Uint8Array;
  set bytes(value: Uint8Array | null);
  /** The bytes. */
  setBytes_(bytes: Uint8Array | null): void;
  /** The bytes. */
  setBytes(bytes: Uint8Array | null): void;
  /** Returns the number of bytes. */
  length(): number;
  /** Appends a copy of the bytes. */
  appendData_(data: Uint8Array | null): void;
  /** Appends a copy of the bytes. */
  appendData(data: Uint8Array | null): void;
}

interface NSMutableDataAllocated {
  /** Creates an object without bytes. */
  init(): NSMutableData;
}

declare const NSMutableData: KelvarClass & {
  alloc(): NSMutableDataAllocated;
  /** Creates an object without bytes. */
  data(): NSMutableData;
  /** Creates an object with a copy of the bytes. */
  dataWithData_(data: Uint8Array | null): NSMutableData;
  /** Creates an object with a copy of the bytes. */
  dataWithData(data: Uint8Array | null): NSMutableData;
  /** Creates an object without bytes. */
  "new"(): NSMutableData;
};

interface MSLayerEnumerator extends NSObject {
  /** Returns the next layer, or nil. */
  nextObject(): SketchLayer;
}

interface MSLayerEnumeratorAllocated {
}

declare const MSLayerEnumerator: KelvarClass & {
  alloc(): MSLayerEnumeratorAllocated;
};

interface MutableTimedEvent extends TimedEvent {
  /** When the event was last started, in seconds on its tracker's clock. */
  get lastStartTime(): () => number;
  set lastStartTime(value: number);
  /** Adds properties; new values replace old ones. */
  appendProperties_(properties: Record<string, any> | null): void;
  /** Adds properties; new values replace old ones. */
  appendProperties(properties: Record<string, any> | null): void;
  /** Adds 1 to a property; one that is not a number counts as 0. */
  incrementProperty_(property: string | null): void;
  /** Adds 1 to a property; one that is not a number counts as 0. */
  incrementProperty(property: string | null): void;
  /** Adds a number to a property; one that is not a number counts as 0. */
  incrementProperty_by_(property: string | null, by: any): void;
  /** Adds a number to a property; one that is not a number counts as 0. */
  incrementProperty_by(property: string | null, by: any): void;
  /** Adds seconds to the event's length. */
  appendSessionLength_(length: number): void;
  /** Adds seconds to the event's length. */
  appendSessionLength(length: number): void;
  /** When the event was last started, in seconds on its tracker's clock. */
  setLastStartTime_(time: number): void;
  /** When the event was last started, in seconds on its tracker's clock. */
  setLastStartTime(time: number): void;
}

interface MutableTimedEventAllocated {
  /** Creates a running event without a name or properties. */
  init(): MutableTimedEvent;
}

declare const MutableTimedEvent: KelvarClass & {
  alloc(): MutableTimedEventAllocated;
  /** Creates a running event without a name or properties. */
  "new"(): MutableTimedEvent;
  /** Creates a running event that has lasted this many seconds. */
  timedEventWithName_properties_sessionLength_(name: string | null, properties: Record<string, any> | null, length: number): MutableTimedEvent;
  /** Creates a running event that has lasted this many seconds. */
  timedEventWithName_properties_sessionLength(name: string | null, properties: Record<string, any> | null, length: number): MutableTimedEvent;
};

interface PluginCommand extends NSObject {
  /** The command's identifier. */
  identifier(): string;
  /** The command's name. */
  name(): string;
  /** The plug-in. */
  pluginBundle(): PluginBundle;
  /** Returns a value that the plug-in has set on the layer, or nil. */
  valueForKey_onLayer_(key: string | null, layer: any): any;
  /** Returns a value that the plug-in has set on the layer, or nil. */
  valueForKey_onLayer(key: string | null, layer: any): any;
  /** Sets a value of the plug-in on the layer, in the document; nil removes it. */
  setValue_forKey_onLayer_(value: any, key: string | null, layer: any): void;
  /** Sets a value of the plug-in on the layer, in the document; nil removes it. */
  setValue_forKey_onLayer(value: any, key: string | null, layer: any): void;
  /** Returns a value that the plug-in with this identifier has set on the layer, or nil. */
  valueForKey_onLayer_forPluginIdentifier_(key: string | null, layer: any, identifier: string | null): any;
  /** Returns a value that the plug-in with this identifier has set on the layer, or nil. */
  valueForKey_onLayer_forPluginIdentifier(key: string | null, layer: any, identifier: string | null): any;
  /** Sets a value on the layer as the plug-in with this identifier. */
  setValue_forKey_onLayer_forPluginIdentifier_(value: any, key: string | null, layer: any, identifier: string | null): void;
  /** Sets a value on the layer as the plug-in with this identifier. */
  setValue_forKey_onLayer_forPluginIdentifier(value: any, key: string | null, layer: any, identifier: string | null): void;
  /** Returns a value that the plug-in has set on the document, or nil. */
  valueForKey_onDocument_(key: string | null, document: any): any;
  /** Returns a value that the plug-in has set on the document, or nil. */
  valueForKey_onDocument(key: string | null, document: any): any;
  /** Sets a value of the plug-in on the document; nil removes it. */
  setValue_forKey_onDocument_(value: any, key: string | null, document: any): void;
  /** Sets a value of the plug-in on the document; nil removes it. */
  setValue_forKey_onDocument(value: any, key: string | null, document: any): void;
  /** Returns a value that the plug-in with this identifier has set on the document, or nil. */
  valueForKey_onDocument_forPluginIdentifier_(key: string | null, document: any, identifier: string | null): any;
  /** Returns a value that the plug-in with this identifier has set on the document, or nil. */
  valueForKey_onDocument_forPluginIdentifier(key: string | null, document: any, identifier: string | null): any;
  /** Sets a value on the document as the plug-in with this identifier. */
  setValue_forKey_onDocument_forPluginIdentifier_(value: any, key: string | null, document: any, identifier: string | null): void;
  /** Sets a value on the document as the plug-in with this identifier. */
  setValue_forKey_onDocument_forPluginIdentifier(value: any, key: string | null, document: any, identifier: string | null): void;
}

interface PluginBundle extends NSObject {
  /** The plug-in's identifier. */
  identifier(): string;
  /** The plug-in's name. */
  name(): string;
  /** The plug-in's version. */
  version(): string;
  /** The plug-in's author. */
  author(): string;
  /** The plug-in's web page, as a string. */
  homepageURL(): string;
  /** The version of Sketch that the plug-in requires. */
  compatibleVersion(): string;
  /** The commands by their identifiers. */
  commands(): Record<string, any>;
  /** The plug-in's folder. */
  url(): NSURL;
  /** Returns a file in Contents/Resources, or nil if there is no such file. */
  urlForResourceNamed_(named: string | null): any;
  /** Returns a file in Contents/Resources, or nil if there is no such file. */
  urlForResourceNamed(named: string | null): any;
}

type KVVersionCheckerDelegate = {
  /** Called on the main thread after a check has finished, successfully or not; the checker's properties say how. */
  checkerDidFinish_?(finish: KVVersionChecker): void | null;
  /** Called on the main thread after a check has finished, successfully or not; the checker's properties say how. */
  checkerDidFinish?(finish: KVVersionChecker): void | null;
} | ((finish: KVVersionChecker) => any);

interface KVViewControllerDelegate {
  /** Called after the user has changed the check box, with its new state: 0 off, 1 on, -1 mixed. */
  controller_didToggleIncludeInArtboards_?(controller: KVViewController, artboards: any): void | null;
  /** Called after the user has changed the check box, with its new state: 0 off, 1 on, -1 mixed. */
  controller_didToggleIncludeInArtboards?(controller: KVViewController, artboards: any): void | null;
  /** Called after the user has clicked the refresh button. */
  controllerDidPressRefreshLayer_?(layer: KVViewController): void | null;
  /** Called after the user has clicked the refresh button. */
  controllerDidPressRefreshLayer?(layer: KVViewController): void | null;
  /** Called after the user has clicked the flip button. */
  controllerDidPressFlipLayer_?(layer: KVViewController): void | null;
  /** Called after the user has clicked the flip button. */
  controllerDidPressFlipLayer?(layer: KVViewController): void | null;
  /** Called after the user has clicked the rotate button. */
  controllerDidPressRotateLayer_?(layer: KVViewController): void | null;
  /** Called after the user has clicked the rotate button. */
  controllerDidPressRotateLayer?(layer: KVViewController): void | null;
  /** Called after the user has chosen an image quality, with the index of the item. */
  controller_didSelectImageQuality_?(controller: KVViewController, quality: any): void | null;
  /** Called after the user has chosen an image quality, with the index of the item. */
  controller_didSelectImageQuality?(controller: KVViewController, quality: any): void | null;
  /** Called after the message's button has opened its URL; not called if the controller has an action. */
  controllerDidPressActionButton_?(button: KVViewController): void | null;
  /** Called after the message's button has opened its URL; not called if the controller has an action. */
  controllerDidPressActionButton?(button: KVViewController): void | null;
  /** Called after the banner has changed its height, so that the owner can lay out its views again. */
  controllerNeedToUpdateLayout_?(layout: KVViewController): void | null;
  /** Called after the banner has changed its height, so that the owner can lay out its views again. */
  controllerNeedToUpdateLayout?(layout: KVViewController): void | null;
  /** Called after the user has clicked the banner, with the number of its message, which is marked as read; without this operation the click does nothing. */
  controllerDidPressSoftBannerActionButton_messageId_?(button: KVViewController, id: any): void | null;
  /** Called after the user has clicked the banner, with the number of its message, which is marked as read; without this operation the click does nothing. */
  controllerDidPressSoftBannerActionButton_messageId?(button: KVViewController, id: any): void | null;
  /** Called after the user has clicked the banner's close button, with the number of its message, which is marked as read; the banner is hidden after this call, and without this operation the click does nothing. */
  controllerDidPressReadMessageButton_messageId_?(button: KVViewController, id: any): void | null;
  /** Called after the user has clicked the banner's close button, with the number of its message, which is marked as read; the banner is hidden after this call, and without this operation the click does nothing. */
  controllerDidPressReadMessageButton_messageId?(button: KVViewController, id: any): void | null;
}

type KVPopupCellDelegate = {
  /** Called after the user has chosen an item, even if it was already selected; the chooser already shows it. */
  popupCellSelectedDidChange_?(change: KVPopupCell): void | null;
  /** Called after the user has chosen an item, even if it was already selected; the chooser already shows it. */
  popupCellSelectedDidChange?(change: KVPopupCell): void | null;
} | ((change: KVPopupCell) => any);

type ControlAction = {
  /** Called with the control after the user has used it. */
  controlDidAct_?(act: NSView): void | null;
  /** Called with the control after the user has used it. */
  controlDidAct?(act: NSView): void | null;
} | ((act: NSView) => any);

interface TimedTrackerDelegate {
  /** Called after each start of an event, with its name, also while the event is running. */
  timedTracker_eventStarted_?(tracker: TimedTracker, started: string): void | null;
  /** Called after each start of an event, with its name, also while the event is running. */
  timedTracker_eventStarted?(tracker: TimedTracker, started: string): void | null;
  /** Called after an event has ended for good, with the event. */
  timedTracker_eventFinished_?(tracker: TimedTracker, finished: TimedEvent): void | null;
  /** Called after an event has ended for good, with the event. */
  timedTracker_eventFinished?(tracker: TimedTracker, finished: TimedEvent): void | null;
}

/** Creates a rectangle. */
declare function KVRectMake(make: number, argument2: number, argument3: number, argument4: number): KVRect;
/** Creates a rectangle from a structure. */
declare function KVRectFromCGRect(rect: NSRect): KVRect;
/** Returns the largest rectangle with the size's proportions that fits into the other, centered; the other's origin is not added. */
declare function CGRectAspectFittingSize(size: NSSize, argument2: NSRect): NSRect;
/** Reads a point from "{x, y}"; a part that cannot be read is 0. */
declare function NSPointFromString(string: string | null): NSPoint;
/** Returns the point as "{x, y}". */
declare function NSStringFromPoint(point: NSPoint): string;
/** Creates a point. */
declare function NSMakePoint(point: number, argument2: number): NSPoint;
/** Creates a size. */
declare function NSMakeSize(size: number, argument2: number): NSSize;
/** Creates a rectangle structure. */
declare function NSMakeRect(rect: number, argument2: number, argument3: number, argument4: number): NSRect;
declare const NSOffState: number;
declare const NSOnState: number;
declare const NSMixedState: number;
declare const NSControlStateValueOff: number;
declare const NSControlStateValueOn: number;
declare const NSControlStateValueMixed: number;
declare const NSMomentaryPushInButton: number;
declare const NSPushOnPushOffButton: number;
declare const NSToggleButton: number;
declare const NSSwitchButton: number;
declare const NSRadioButton: number;
declare const NSButtonTypeMomentaryPushIn: number;
declare const NSButtonTypePushOnPushOff: number;
declare const NSButtonTypeToggle: number;
declare const NSButtonTypeSwitch: number;
declare const NSButtonTypeRadio: number;
declare const NSRoundedBezelStyle: number;
declare const NSBezelStyleRounded: number;
declare const NSRadioModeMatrix: number;
declare const NSHighlightModeMatrix: number;
declare const NSListModeMatrix: number;
declare const NSTrackModeMatrix: number;
declare const NSLeftTextAlignment: number;
declare const NSRightTextAlignment: number;
declare const NSCenterTextAlignment: number;
declare const NSTextAlignmentLeft: number;
declare const NSTextAlignmentRight: number;
declare const NSTextAlignmentCenter: number;
declare const NSViewNotSizable: number;
declare const NSViewMinXMargin: number;
declare const NSViewWidthSizable: number;
declare const NSViewMaxXMargin: number;
declare const NSViewMinYMargin: number;
declare const NSViewHeightSizable: number;
declare const NSViewMaxYMargin: number;
declare const NSBorderlessWindowMask: number;
declare const NSTitledWindowMask: number;
declare const NSClosableWindowMask: number;
declare const NSMiniaturizableWindowMask: number;
declare const NSResizableWindowMask: number;
declare const NSWindowStyleMaskTitled: number;
declare const NSWindowStyleMaskClosable: number;
declare const NSWindowStyleMaskMiniaturizable: number;
declare const NSWindowStyleMaskResizable: number;
declare const NSBackingStoreBuffered: number;
declare const KelvarVersionNumber: number;
declare const KelvarVersionString: string;
declare const TrackerManagerEventSessionEnded: string;
declare const HRCoderException: string;
declare const HRCoderClassNameKey: string;
declare const HRCoderRootObjectKey: string;
declare const HRCoderObjectAliasKey: string;
declare const HRCoderBase64DataKey: string;
