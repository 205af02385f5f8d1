// The order of layers in what they are in.
(function (prelude) {
  'use strict';

  class LayerMovement {}
  const listOf = layers => Array.isArray(layers) ? [...layers] : [...layers.layers()];
  // Every layer goes to the place that `place` finds from its own and the last one.
  const move = (layers, place) => {
    for (const each of layers) {
      const group = each.parentGroup();
      if (group === null) continue;
      const index = group.layers().indexOfObject(each);
      const last = group.layers().length - 1;
      const to = Math.min(Math.max(place(index, last), 0), last);
      if (to === index) continue;
      each.removeFromParent();
      group.insertLayer_atIndex_(each, to);
    }
  };
  return prelude.defineClass({
    name: 'MSLayerMovement',
    implementation: LayerMovement,
    initializers: {},
    // Layers that move together keep their order.
    classOperations: {
      'moveToFront:'(layers) { move(listOf(layers), (index, last) => last); },
      'moveToBack:'(layers) { move(listOf(layers).reverse(), () => 0); },
      'moveForward:'(layers) { move(listOf(layers).reverse(), index => index + 1); },
      'moveBackward:'(layers) { move(listOf(layers), index => index - 1); },
    },
  });
})
