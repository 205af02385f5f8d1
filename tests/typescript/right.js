// Editors must find no mistakes here.
const rect = KVRect.new();
rect.width = 5;
const sum = rect.width() + KVRectMake(1, 2, 3, 4).CGRect().origin.x;
const shape = KVShape.alloc().initWithBounds_path_(rect, ['{0, 0}']);
shape.setScale(KVBezierPath.edgesLengthPoint1_point2(NSMakePoint(0, 0), {x: sum, y: 1}));

const checker = KVVersionChecker.checkerWithIdentifier_name('a', 'b');
checker.delegate = {checkerDidFinish(each) { log(each.success(), each.error()); }};
checker.delegate = nil;

const controller = KVViewController.new();
controller.imageQuality = -1;
controller.delegate = {
  controller_didSelectImageQuality_(each, index) { each.imageQuality = index; },
  controllerDidPressFlipLayer: each => each.reloadData(),
};
controller.view().hidden = false;

for (const layer of context.selection) {
  layer.frame().x = 5;
  console.log(layer.valueForKeyPath('style.fills')[0], layer.isKindOfClass_(SketchLayer));
}
const enumerator = KVMenu.menuWithItems([{title: 'a'}]).itemArray().objectEnumerator();
setTimeout(() => print(enumerator.nextObject(), rect instanceof KVRect), 5);
TrackerManager.sharedInstance().track_properties(TrackerManagerEventSessionEnded, nil);

const counter = CounterTracker.new();
counter.storage = [Event.eventWithName_properties('a', {b: 'c'.MD5String()}), ...counter.events()].shuffle();
[counter, MockedTracker.new()].each().track_properties('d'.base64String(), nil);
counter.timed().delegate = {timedTracker_eventFinished(_, event) { log(event.sessionLength() + 1); }};
