// Views in a column, in the full width of the view around them. Heights are in points.

// How high a column of `parts` is: objects with a `view` and its `height` at a width.
function heightOfColumn(parts, width) {
  return parts.reduce((sum, part) => sum + (part.view.hidden() ? 0 : part.height(width)), 0);
}

// Places the parts from top to bottom in `container`, which is as high as they are. Views count
// from the bottom left.
function layOutColumn(container, parts) {
  const {width, height} = container.bounds().size;
  let y = height;
  for (const part of parts) {
    if (part.view.hidden()) continue;
    const partHeight = part.height(width);
    y -= partHeight;
    part.view.frame = NSMakeRect(0, y, width, partHeight);
  }
}

// A view whose height stays, whatever its width.
function fixedPart(view) {
  const {height} = view.frame().size;
  return {view, height: () => height};
}

// A view whose text wraps.
function wrappingPart(view) {
  return {
    view,
    height(width) {
      [view setFrameSize:NSMakeSize(width, view.frame().size.height)];
      return [view fittingSize].height;
    },
  };
}
