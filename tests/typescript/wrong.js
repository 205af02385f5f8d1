// Each line below is a mistake.
KVRect.new().widht();
KVRect.new().width = '7';
KVRectMake(1, 2);
KVBezierPath.new();
KVShape.alloc().initWithBounds_path_('rect', []);
KVImage.new();
KVViewController.new().delegate = {controllerDidPressFlipLayer: 5};
