@import "mapping.js"

// The panel is open as long as this holds it.
var controller = [KVViewController new];

// One row for the selected layers; what is clicked is mapped at once and saved.
function openPanel(context) {
  const layers = requireSelection(context);
  const change = changesFor => {
    remap(context.document, layers, changesFor);
    show(context.document, layers);
  };
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
  show(context.document, layers);
  controller.view().hidden = false;
}

// A value that not all layers have is shown as mixed.
function show(document, layers) {
  const common = valueOf => {
    const values = new Set(layers.map(layer => {
      const settings = [document settingsOfLayer:layer];
      return settings === nil ? nil : valueOf(settings);
    }));
    return values.size === 1 ? [...values][0] ?? 0 : -1;
  };
  controller.imageQuality = common(settings => settings.quality - 1);
  controller.includeInArtboards = common(settings => settings.included ? 1 : 0);
  [controller reloadData];
}
