// What the commands share: which artboard, which layers, and mapping one onto the other.

function requireSelection(context) {
  if (context.document === nil) throw new Error("open a document first (--document)");
  if ([context.selection count] === 0) throw new Error("select a layer first (--select)");
  return context.selection;
}

function artboardNamed(document, name) {
  const found = document.artboards().filter(each => each.name() === name || each.objectID() === name);
  if (found.length !== 1) throw new Error(`${found.length} artboards are called "${name}"`);
  return found[0];
}

// The artboard that the layer remembers.
function artboardOf(document, layer) {
  const settings = [KVDocumentMapping settingsOfLayer:layer];
  if (settings === nil || settings.artboard === nil) {
    throw new Error(`no artboard was mapped onto "${layer.name()}" yet`);
  }
  return artboardNamed(document, settings.artboard);
}

function map(document, layer, artboard, changes) {
  [KVDocumentMapping mapArtboard:artboard
                       ontoLayer:layer
                      inDocument:document
                        settings:changes];
}

// Maps again what the selected layers remember, with settings made from theirs.
function remap(context, changesFor) {
  for (const layer of requireSelection(context)) {
    const settings = [KVDocumentMapping settingsOfLayer:layer] ?? {};
    map(context.document, layer, artboardOf(context.document, layer), changesFor(settings));
  }
  save(context);
}

function save(context) {
  [KVDocumentMapping saveDocument:context.document toFile:context.document.path()];
}
