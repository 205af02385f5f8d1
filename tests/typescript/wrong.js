// Each line is a mistake.
KVRect.new().widht();
KVRect.new().width = '7';
KVRectMake(1, 2);
SegmentIOTracker.new();
KVShape.alloc().initWithBounds_path_('rect', []);
KVVersionChecker.new();
KVViewController.new().delegate = {controllerDidPressFlipLayer: 5};
