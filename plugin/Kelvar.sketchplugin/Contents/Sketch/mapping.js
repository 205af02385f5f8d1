// What the commands share: which artboard, which layers, and laying one onto the other.

function requireSelection(context) {
  if (context.document === nil) throw new Error("open a document first (--document)");
  if ([context.selection count] === 0) throw new Error("select a layer first (--select)");
  return context.selection;
}

function artboardNamed(document, name) {
  const found = document.artboards().filter(each => each.name() === name || each.objectID() === name);
  if (found.length === 0) throw new Error(`no artboard is called "${name}"`);
  if (found.length > 1) {
    throw new Error(`${found.length} artboards are called "${name}": give the identifier of one`);
  }
  return found[0];
}

// The layer as a shape in the pixels of its picture. The frame's sides are whole pixels, so that the
// picture's edges are the frame's, whatever its fractions.
function shapeOf(layer, quality) {
  const frame = layer.frame();
  const width = Math.ceil(frame.width() * quality), height = Math.ceil(frame.height() * quality);
  const across = width / frame.width(), down = height / frame.height();
  const corners = [[KVLayerIterator new] extractPointsFromLayer:layer];
  if ([corners count] !== 4) {
    throw new Error(`"${layer.name()}" has ${corners.length} corners, and a design needs four`);
  }
  const path = corners.map(corner => {
    const point = NSPointFromString(corner);
    return NSStringFromPoint(NSMakePoint(point.x * across, point.y * down));
  });
  return [[KVShape alloc] initWithBounds:KVRectMake(0, 0, width, height) path:path];
}

function setCorners(transform, shape) {
  const points = [shape normalizedPoints].map(corner => NSPointFromString(corner));
  transform.tl = points[0];
  transform.tr = points[1];
  transform.br = points[2];
  transform.bl = points[3];
}

// The artboard in perspective, as large as the layer's frame.
function picture(document, artboard, layer, settings) {
  const shape = shapeOf(layer, settings.quality);
  const frame = [shape scaledCroppingRect], size = [shape scaledSize];
  const transform = [KVImageTransform new];
  transform.rotation = settings.rotation;
  transform.flipped = settings.flipped;
  transform.sampling = "best";
  // Room for the shape and for the frame, which need not be one another's.
  transform.extent = NSMakeSize(Math.max(size.width, frame.x() + frame.width()),
                                Math.max(size.height, frame.y() + frame.height()));
  setCorners(transform, shape);
  transform.input = [document imageOfArtboard:artboard forTransform:transform];
  setCorners(transform, shape);  // The input has put them on its own.
  const warped = [transform createOutput];
  const ground = KVRectMake(0, 0, warped.size().width, warped.size().height);
  const filled = [KVImage fillImage:warped insideBounds:ground scale:1 shouldTrimTransparent:false];
  return filled === nil ? nil : [KVImage cropImage:filled withBounds:frame];
}

// Changes are to what the layer remembers.
function map(document, layer, artboard, changes) {
  const defaults = {quality: 1, rotation: 0, flipped: false, included: true};
  const settings = {...defaults, ...[document settingsOfLayer:layer], ...changes};
  settings.artboard = artboard.objectID();
  [document fillLayer:layer
            withImage:picture(document, artboard, layer, settings)
             settings:settings];
}

// Maps again what the layers remember, with settings made from theirs.
function remap(document, layers, changesFor) {
  for (const layer of layers) {
    const settings = [document settingsOfLayer:layer];
    if (settings === nil || settings.artboard === nil) {
      throw new Error(`no artboard was mapped onto "${layer.name()}" yet`);
    }
    map(document, layer, artboardNamed(document, settings.artboard), changesFor(settings));
  }
  [document save];
}
