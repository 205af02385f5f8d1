@import "mapping.js"

// kelvar run Kelvar.sketchplugin --command map --document DOC --select LAYER -- ARTBOARD
function mapArtboard(context) {
  const name = [context.arguments firstObject];
  if (name === nil) throw new Error("name the artboard (-- ARTBOARD)");
  const artboard = artboardNamed(context.document, name);
  for (const layer of requireSelection(context)) {
    map(context.document, layer, artboard, {});
    log(`${artboard.name()} → ${layer.name()}`);
  }
  save(context);
}

function refreshAll(context) {
  if (context.document === nil) throw new Error("open a document first (--document)");
  const layers = [KVDocumentMapping refreshDocument:context.document];
  for (const layer of layers) log(layer.name());
  save(context);
}

function rotate(context) {
  remap(context, settings => ({rotation: (settings.rotation + 1) % 4}));
}

function flip(context) {
  remap(context, settings => ({flipped: !settings.flipped}));
}
