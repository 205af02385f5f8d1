(function (prelude) {
  'use strict';

  const {takeString, takeRange} = prelude;

  class Result {
    constructor(match, from, expression) { Object.assign(this, {match, from, expression}); }
    rangeAt(group) {
      const found = this.match.indices[group];
      return found ? prelude.range(found[0] + this.from, found[1] - found[0])
                   : prelude.range(globalThis.NSNotFound, 0);
    }
  }
  const groupIndex = index => prelude.takeIndex(index, 100, 'rangeAtIndex:');
  prelude.defineClass({
    name: 'NSTextCheckingResult',
    implementation: Result,
    initializers: {},
    operations: {
      'range'() { return this.rangeAt(0); },
      'rangeAtIndex:'(index) { return this.rangeAt(groupIndex(index)); },
      'rangeWithName:'(name) {
        const found = this.match.indices.groups?.[name];
        return found ? prelude.range(found[0] + this.from, found[1] - found[0])
                     : prelude.range(globalThis.NSNotFound, 0);
      },
      'numberOfRanges'() { return this.match.length; },
      'regularExpression'() { return this.expression; },
    },
  });

  class Expression {
    constructor(pattern, options) {
      const source = options & 4 ? escape(pattern) : options & 2
          ? withoutComments(pattern) : pattern;
      const flags = (options & 1 ? 'i' : '') + (options & 8 ? 's' : '') + (options & 16 ? 'm' : '');
      this.pattern = pattern;
      this.options = options;
      this.expression = compile(source, flags);
    }
    *matches(text, range, selector) {
      const [from, to] = range ? takeRange(range, text.length, selector) : [0, text.length];
      for (const match of text.slice(from, to).matchAll(this.expression)) {
        yield new Result(match, from, this);
      }
    }
  }
  const escape = text => text.replace(/[\\^$.*+?()[\]{}|]/g, '\\$&');
  const withoutComments = pattern => pattern.replace(/(\\.)|#.*$|\s+/gm, (_, kept) => kept ?? '');
  // Options that a pattern begins with, and possessive forms that mean the same without a match.
  function compile(pattern, flags) {
    const inline = /^\(\?([ims]+)\)/.exec(pattern);
    const source = inline ? pattern.slice(inline[0].length) : pattern;
    const all = [...new Set(flags + (inline?.[1] ?? ''))].join('');
    try {
      return new RegExp(source, `dgu${all}`);
    } catch {
      // Escapes of characters that need none are mistakes in Unicode patterns alone.
      return new RegExp(source, `dg${all}`);
    }
  }
  const make = (pattern, options, error) => {
    try {
      return new Expression(takeString(pattern, 'regularExpressionWithPattern:'),
          Number(options ?? 0));
    } catch (problem) {
      if (!(problem instanceof SyntaxError)) throw problem;
      prelude.store(error, prelude.newError('NSCocoaErrorDomain', 2048, {
        NSLocalizedDescription: `the pattern ${pattern} is not valid: ${problem.message}`,
        NSInvalidValue: pattern,
      }));
      return null;
    }
  };
  // "$1" is a group, "\$" a dollar.
  const fill = (template, {match}) => template.replace(/\\(.)|\$(\d)/g, (_, character, group) =>
    character ?? match[Number(group)] ?? '');

  return prelude.defineClass({
    name: 'NSRegularExpression',
    implementation: Expression,
    initializers: {'initWithPattern:options:error:': make},
    classOperations: {
      'regularExpressionWithPattern:options:error:': make,
      'escapedPatternForString:': text => escape(takeString(text, 'escapedPatternForString:')),
      'escapedTemplateForString:': text =>
          takeString(text, 'escapedTemplateForString:').replace(/[\\$]/g, '\\$&'),
    },
    operations: {
      'pattern'() { return this.pattern; },
      'options'() { return this.options; },
      'numberOfCaptureGroups'() {
        return new RegExp(`${this.expression.source}|`, this.expression.flags).exec('').length - 1;
      },
      'matchesInString:options:range:'(text, _, range) {
        const selector = 'matchesInString:options:range:';
        return [...this.matches(takeString(text, selector), range, selector)];
      },
      'firstMatchInString:options:range:'(text, _, range) {
        const selector = 'firstMatchInString:options:range:';
        return this.matches(takeString(text, selector), range, selector).next().value ?? null;
      },
      'numberOfMatchesInString:options:range:'(text, _, range) {
        return this.matchesInString_options_range_(text, 0, range).length;
      },
      'rangeOfFirstMatchInString:options:range:'(text, _, range) {
        return this.firstMatchInString_options_range_(text, 0, range)?.range() ??
            prelude.range(globalThis.NSNotFound, 0);
      },
      'stringByReplacingMatchesInString:options:range:withTemplate:'(text, _, range, template) {
        const selector = 'stringByReplacingMatchesInString:options:range:withTemplate:';
        const whole = takeString(text, selector), filled = takeString(template, selector);
        let replaced = '', end = 0;
        for (const each of this.matches(whole, range, selector)) {
          const {location, length} = each.rangeAt(0);
          replaced += whole.slice(end, location) + fill(filled, each);
          end = location + length;
        }
        return replaced + whole.slice(end);
      },
      'replaceMatchesInString:options:range:withTemplate:'(text, _, range, template) {
        const count = this.numberOfMatchesInString_options_range_(text, 0, range);
        text.setString_(this.stringByReplacingMatchesInString_options_range_withTemplate_(
            text, 0, range, template));
        return count;
      },
      'enumerateMatchesInString:options:range:usingBlock:'(text, _, range, block) {
        const stop = prelude.newPointer(false);
        for (const each of this.matchesInString_options_range_(text, 0, range)) {
          block(each, 0, stop);
          if (stop.value()) break;
        }
      },
    },
    equals: (a, b) => a.pattern === b.pattern && a.options === b.options,
    copy: value => value,
  });
})
