// The page of docs that lists what is written in JavaScript.
(function (prelude) {
  'use strict';

  const inCode = names => names.map(each => `\`${each}\``).join(', ');
  const row = (kind, operations) => {
    const selectors = Object.keys(operations ?? {});
    return selectors.length > 0 ? `| ${kind} | ${inCode(selectors)} |\n` : '';
  };
  function section({name, base, initializers, classOperations, properties, operations}) {
    const inherits = base ? `Also has what \`${prelude.nameOfClass(base)}\` has.\n\n` : '';
    const rows = row('After `alloc`', initializers) + row('Class', classOperations) +
        row('Properties', properties) + row('Operations', operations);
    const table = rows === '' ? '' : `| | Selectors |\n|---|---|\n${rows}`;
    return `\n### ${name}\n\n${inherits}${table}`;
  }

  prelude.reference = () => {
    for (const name of prelude.lazyNames()) prelude.classNamed(name);
    const classes = prelude.scriptClasses().sort((a, b) => a.name < b.name ? -1 : 1);
    return '# Foundation for scripts\n\nGenerated from the runtime\'s own scripts; do not edit.\n' +
        '[How to write a script](scripting.md).\n\n## Every value\n\n' +
        `${inCode(Object.keys(prelude.rootOperations))}\n\n## Classes\n` +
        classes.map(section).join('') +
        `\n## Functions\n\n${inCode(prelude.scriptFunctions())}\n` +
        `\n## Constants\n\n${inCode(prelude.scriptConstants())}\n`;
  };
})
