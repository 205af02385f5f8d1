@import "mapping.js"
@import "layout.js"
@import "cells.js"
@import "messages.js"

const kWidth = 340;
const kMaxCellsHeight = 384;  // More cells than that are scrolled.

// Shows a chooser for each selected layer, and one row of settings for all of them. Each change is
// mapped and saved at once.
function openPanel(context) {
  const {document} = context;
  const layers = requireSelection(context);
  const window = makeWindow(document);
  const layOut = () => layOutPanel(window, parts);
  const banner = makeBanner(kWidth, layOut);
  const version = makeMessageLine(), status = makeMessageLine();
  const attempt = change => {
    try {
      change();
      showSaved(status, document.path(), layOut);
    } catch (error) {
      status.show(error.message, nil, nil);
    }
    for (const cell of cells) cell.show();
    settings.show();
    layOut();
  };
  const cells = makeCells(document, layers, {
    choose: (layer, artboard) => attempt(() => {
      map(document, layer, artboard, {});
      [document save];
    }),
    refresh: layer => attempt(() => remap(document, [layer], () => ({}))),
  });
  const settings = makeSettings(document, layers, changesFor => {
    attempt(() => {
      const mapped = layers.filter(layer => [document settingsOfLayer:layer] !== nil);
      if (mapped.length === 0) throw new Error("Choose an artboard first.");
      remap(document, mapped, changesFor);
    });
  });
  const parts = [banner, version, makeList(cells), settings, status];
  for (const part of parts) [[window contentView] addSubview:part.view];
  showSaved(status, document.path(), layOut);
  layOut();
  [window center];
  [window makeKeyAndOrderFront:nil];
  banner.showNext();
  askVendor(context, version, layOut);
}

function makeWindow(document) {
  const window = [[NSPanel alloc] initWithContentRect:NSMakeRect(0, 0, kWidth, 200)
                                            styleMask:NSTitledWindowMask | NSClosableWindowMask
                                              backing:NSBackingStoreBuffered
                                                defer:false];
  window.title = `Kelvar – ${document.path().split("/").pop()}`;
  return window;
}

// The top of the window stays where it is.
function layOutPanel(window, parts) {
  [window setContentSize:NSMakeSize(kWidth, heightOfColumn(parts, kWidth))];
  layOutColumn([window contentView], parts);
}

// The cells below each other, scrolled if there are many.
function makeList(cells) {
  const list = [[NSView alloc] initWithFrame:NSMakeRect(0, 0, kWidth, heightOfColumn(cells, kWidth))];
  for (const cell of cells) [list addSubview:cell.view];
  layOutColumn(list, cells);
  const all = list.frame().size.height;
  if (all <= kMaxCellsHeight) return fixedPart(list);
  const scroll = [[NSScrollView alloc] initWithFrame:NSMakeRect(0, 0, kWidth, kMaxCellsHeight)];
  scroll.hasVerticalScroller = true;
  scroll.documentView = list;
  list.frame = NSMakeRect(0, 0, [scroll contentSize].width, all);
  layOutColumn(list, cells);
  return fixedPart(scroll);
}

// The row of settings. Values that differ between the layers are shown as mixed.
function makeSettings(document, layers, change) {
  const controller = [KVViewController new];
  controller.delegate = {
    controllerDidPressRotateLayer() {
      change(settings => ({rotation: (settings.rotation + 1) % 4}));
    },
    controllerDidPressFlipLayer() {
      change(settings => ({flipped: !settings.flipped}));
    },
    controllerDidPressRefreshLayer() {
      change(() => ({}));
    },
    controller_didToggleIncludeInArtboards_(_, state) {
      change(() => ({included: state !== 0}));
    },
    controller_didSelectImageQuality_(_, index) {
      change(() => ({quality: index + 1}));
    },
  };
  const show = () => {
    const known = layers.map(layer => [document settingsOfLayer:layer]);
    const common = valueOf => {
      const values = new Set(known.filter(settings => settings !== nil).map(valueOf));
      return values.size > 1 ? -1 : [...values][0] ?? 0;
    };
    controller.imageQuality = common(settings => settings.quality - 1);
    controller.includeInArtboards = common(settings => settings.included ? 1 : 0);
    controller.previewImage = previewOf(document, layers, known);
    [controller reloadData];
  };
  show();
  return {controller, show, ...fixedPart(controller.view())};
}

// What is on the first layer that has an artboard.
function previewOf(document, layers, known) {
  const first = known.findIndex(settings => settings !== nil && settings.artboard !== nil);
  if (first < 0) return nil;
  try {
    const artboard = artboardNamed(document, known[first].artboard);
    return mappedImage(document, artboard, layers[first], {...known[first], quality: 1});
  } catch (error) {
    return nil;  // The artboard or the layer's corners are gone.
  }
}
