// Colors have one color space, whatever a script asks for.
(function (prelude) {
  'use strict';

  class ColorSpace {
    constructor(title) { this.title = title; }
  }
  const spaces = {
    sRGBColorSpace: 'sRGB IEC61966-2.1', genericRGBColorSpace: 'Generic RGB Profile',
    deviceRGBColorSpace: 'Device RGB', displayP3ColorSpace: 'Display P3',
  };
  return prelude.defineClass({
    name: 'NSColorSpace',
    implementation: ColorSpace,
    initializers: {},
    classOperations: Object.fromEntries(Object.entries(spaces).map(
        ([selector, title]) => [selector, () => new ColorSpace(title)])),
    operations: {
      'localizedName'() { return this.title; },
      'description'() { return this.title; },
    },
    equals: (a, b) => a.title === b.title,
    plain: value => value.title,
  });
})
