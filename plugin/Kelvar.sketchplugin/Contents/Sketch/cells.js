// A chooser of the artboard for each layer.

const kMaxCells = 24;      // Choosing one by one is impractical for more layers than this.
const kMaxThumbnails = 60; // Each artboard has to be drawn.
const kRefresh = "refresh";

// The artboard in small, or nil if it cannot be drawn.
function thumbnailOf(document, artboard) {
  const size = artboard.frame();
  const scale = Math.min(128 / size.width(), 96 / size.height());
  const width = size.width() * scale, height = size.height() * scale;
  const transform = [KVImageTransform new];
  transform.tl = NSMakePoint(0, 0);
  transform.tr = NSMakePoint(width, 0);
  transform.br = NSMakePoint(width, height);
  transform.bl = NSMakePoint(0, height);
  try {
    return [document imageOfArtboard:artboard forTransform:transform];
  } catch (error) {
    return nil;
  }
}

// By the artboard's identifier.
function thumbnailsOf(document) {
  const thumbnails = {};
  for (const artboard of document.artboards().slice(0, kMaxThumbnails)) {
    thumbnails[artboard.objectID()] = thumbnailOf(document, artboard);
  }
  return thumbnails;
}

function menuOf(document, thumbnails) {
  const items = document.artboards().map(artboard => ({
    title: artboard.name(),
    identifier: artboard.objectID(),
    image: thumbnails[artboard.objectID()] ?? nil,
  }));
  items.push({type: "separator"}, {title: "Refresh", identifier: kRefresh});
  return [KVMenu menuWithItems:items];
}

// The choosers of `layers`. `choose(layer, artboard)` is called with what the user chooses, and
// `refresh(layer)` to draw the same artboard again.
function makeCells(document, layers, {choose, refresh}) {
  const thumbnails = thumbnailsOf(document);
  const artboardOf = layer => [document settingsOfLayer:layer]?.artboard ?? nil;
  return layers.slice(0, kMaxCells).map(layer => {
    const cell = [[KVPopupCell alloc] init];
    const show = () => {
      cell.selectedIdentifier = artboardOf(layer);
      cell.image = thumbnails[cell.selectedIdentifier()] ?? nil;
      [cell reloadData];
    };
    cell.layerID = layer.objectID();
    cell.name = layer.name();
    cell.popupMenu = menuOf(document, thumbnails);
    cell.delegate = {
      popupCellSelectedDidChange() {
        const chosen = cell.selectedIdentifier();
        if (chosen === kRefresh) refresh(layer);
        else choose(layer, artboardNamed(document, chosen));
      },
    };
    show();
    return {cell, show, ...fixedPart(cell.view())};
  });
}
