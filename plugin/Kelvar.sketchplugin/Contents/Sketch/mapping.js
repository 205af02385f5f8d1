// Shared by the commands: finding artboards and layers, and mapping one onto the other.

function requireSelection(context) {
  if (context.document === nil) throw new Error("open a document first (--document)");
  if ([context.selection count] === 0) throw new Error("select a layer first (--select)");
  return context.selection;
}

function artboardNamed(document, name) {
  const found = document.artboards().filter(each => each.name() === name || each.objectID() === name);
  if (found.length === 0) throw new Error(`no artboard is called "${name}"`);
  if (found.length > 1) {
    throw new Error(`${found.length} artboards are called "${name}"; use an identifier`);
  }
  return found[0];
}

// The layer as a shape in pixels. The frame is scaled to whole pixels, so that its edges are the
// image's.
function shapeOf(layer, quality) {
  const frame = layer.frame();
  const width = Math.ceil(frame.width() * quality), height = Math.ceil(frame.height() * quality);
  const across = width / frame.width(), down = height / frame.height();
  const corners = [[KVLayerIterator new] extractPointsFromLayer:layer];
  if ([corners count] !== 4) {
    throw new Error(`"${layer.name()}" has ${corners.length} corners; a design requires four`);
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
function mappedImage(document, artboard, layer, settings) {
  const shape = shapeOf(layer, settings.quality);
  const frame = [shape scaledCroppingRect], size = [shape scaledSize];
  const transform = [KVImageTransform new];
  transform.rotation = settings.rotation;
  transform.flipped = settings.flipped;
  transform.sampling = "best";
  // Covers both the shape and the frame; neither need contain the other.
  transform.extent = NSMakeSize(Math.max(size.width, frame.x() + frame.width()),
                                Math.max(size.height, frame.y() + frame.height()));
  setCorners(transform, shape);
  transform.input = [document imageOfArtboard:artboard forTransform:transform];
  setCorners(transform, shape);  // Setting the input has reset them.
  const warped = [transform createOutput];
  const bounds = KVRectMake(0, 0, warped.size().width, warped.size().height);
  const filled = [KVImage fillImage:warped insideBounds:bounds scale:1 shouldTrimTransparent:false];
  return filled === nil ? nil : [KVImage cropImage:filled withBounds:frame];
}

// `changes` override the settings that the layer remembers.
function map(document, layer, artboard, changes) {
  const defaults = {quality: 1, rotation: 0, flipped: false, included: true};
  const settings = {...defaults, ...[document settingsOfLayer:layer], ...changes};
  settings.artboard = artboard.objectID();
  [document fillLayer:layer
            withImage:mappedImage(document, artboard, layer, settings)
             settings:settings];
}

// Maps the remembered artboards again. `changesFor` returns changes to a layer's settings.
function remap(document, layers, changesFor) {
  for (const layer of layers) {
    const settings = [document settingsOfLayer:layer];
    if (settings === nil || settings.artboard === nil) {
      throw new Error(`no artboard has been mapped onto "${layer.name()}"`);
    }
    map(document, layer, artboardNamed(document, settings.artboard), changesFor(settings));
  }
  [document save];
}
