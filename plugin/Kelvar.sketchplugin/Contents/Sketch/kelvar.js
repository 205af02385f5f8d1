@import "mapping.js"

// kelvar run Kelvar.sketchplugin --command map --document DOC --select LAYER -- ARTBOARD
function mapArtboard(context) {
  const name = [context.arguments firstObject];
  if (name === nil) throw new Error("name the artboard (-- ARTBOARD)");
  const layers = requireSelection(context);
  const artboard = artboardNamed(context.document, name);
  for (const layer of layers) {
    map(context.document, layer, artboard, {});
    log(`${artboard.name()} → ${layer.name()}`);
  }
  [context.document save];
}

// An artboard that shows another one comes after it.
function refreshAll(context) {
  if (context.document === nil) throw new Error("open a document first (--document)");
  const layers = context.document.mappedLayers();
  remap(context.document, layers, () => ({}));
  for (const layer of layers) log(layer.name());
}

function rotate(context) {
  remap(context.document, requireSelection(context),
        settings => ({rotation: (settings.rotation + 1) % 4}));
}

function flip(context) {
  remap(context.document, requireSelection(context), settings => ({flipped: !settings.flipped}));
}
