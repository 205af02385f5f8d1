(function (prelude) {
  'use strict';

  const invalid = (format, reason) => prelude.exception('NSInvalidArgumentException',
      `the predicate format "${format}" is not valid: ${reason}`);

  // Splits a format into words, marks and literals.
  const pattern = new RegExp([
    String.raw`\s+`,
    String.raw`(?<string>"(?:[^"\\]|\\.)*"|'(?:[^'\\]|\\.)*')`,
    String.raw`(?<number>(?:\d+\.?\d*|\.\d+)(?:[eE][-+]?\d+)?)`,
    String.raw`(?<argument>%(?:@|K|ld|lu|lld|f|d|i|u|s))`,
    String.raw`(?<word>[@\w#][\w.@]*)`,
    String.raw`(?<mark>==|<=|>=|=<|=>|!=|<>|&&|\|\||[=<>!(){},+*/-])`,
  ].join('|'), 'uy');

  function tokensOf(format) {
    const tokens = [];
    pattern.lastIndex = 0;
    for (let at = 0; at < format.length; at = pattern.lastIndex) {
      pattern.lastIndex = at;
      const found = pattern.exec(format);
      if (!found) throw invalid(format, `"${format.slice(at, at + 10)}" cannot be read`);
      const kind = Object.keys(found.groups).find(each => found.groups[each] !== undefined);
      if (kind) tokens.push({kind, text: found.groups[kind]});
    }
    return tokens;
  }

  const flagsOf = modifier => ({
    ignoresCase: /c/i.test(modifier ?? ''), ignoresMarks: /d/i.test(modifier ?? ''),
  });
  const fold = (value, {ignoresCase, ignoresMarks}) => {
    if (!prelude.isString(value)) return value;
    let text = String(value);
    if (ignoresCase) text = text.toLowerCase();
    if (ignoresMarks) text = text.normalize('NFD').replace(/\p{M}/gu, '');
    return text;
  };
  const like = text => new RegExp('^' + text.replace(/[\\^$.+()[\]{}|]/g, '\\$&')
      .replaceAll('*', '[^]*').replaceAll('?', '[^]') + '$', 'u');
  const texts = test => (a, b) => prelude.isString(a) && prelude.isString(b) &&
      test(String(a), String(b));
  const listOf = value => Array.isArray(value) ? value : value instanceof Set ? [...value] : null;
  const contains = (a, b, flags) => {
    const list = listOf(a);
    if (list) return list.some(each => prelude.isEqual(fold(each, flags), b));
    return prelude.isString(a) && prelude.isString(b) && String(a).includes(String(b));
  };
  const equal = (a, b) => prelude.isNull(a) || prelude.isNull(b)
      ? prelude.isNull(a) && prelude.isNull(b) : prelude.isEqual(a, b);
  const ordered = test => (a, b) =>
      !prelude.isNull(a) && !prelude.isNull(b) && test(prelude.compare(a, b));
  const comparisons = {
    '==': equal,
    '!=': (a, b) => !equal(a, b),
    '<': ordered(order => order < 0),
    '>': ordered(order => order > 0),
    '<=': ordered(order => order <= 0),
    '>=': ordered(order => order >= 0),
    CONTAINS: contains,
    IN: (a, b, flags) => contains(b, a, flags),
    BEGINSWITH: texts((a, b) => a.startsWith(b)),
    ENDSWITH: texts((a, b) => a.endsWith(b)),
    LIKE: texts((a, b) => like(b).test(a)),
    MATCHES: texts((a, b) => new RegExp(`^(?:${b})$`, 'u').test(a)),
    BETWEEN: (a, b) => comparisons['>='](a, b[0]) && comparisons['<='](a, b[1]),
  };
  const otherNames = {'=': '==', '<>': '!=', '=<': '<=', '=>': '>='};
  const constants = {
    TRUE: true, YES: true, FALSE: false, NO: false, NIL: null, NULL: null,
  };

  // Reads a format and gives a function that tests an object.
  class Parser {
    constructor(format, values) {
      this.format = format;
      this.values = values;
      this.tokens = tokensOf(format);
      this.at = 0;
      this.depth = 0;
    }
    get token() { return this.tokens[this.at] ?? {kind: 'end', text: 'the end'}; }
    isWord(...words) {
      return this.token.kind === 'word' && words.includes(this.token.text.toUpperCase());
    }
    take(...texts) {
      const {kind, text} = this.token;
      if (kind !== 'mark' && kind !== 'word' || !texts.includes(text.toUpperCase())) return false;
      ++this.at;
      return true;
    }
    fail(reason = `${this.token.text} was not expected`) { throw invalid(this.format, reason); }
    whole() {
      const test = this.or();
      if (this.token.kind !== 'end') this.fail();
      return test;
    }
    or() {
      const tests = [this.and()];
      while (this.take('OR', '||')) tests.push(this.and());
      return tests.length === 1 ? tests[0] : object => tests.some(test => test(object));
    }
    and() {
      const tests = [this.not()];
      while (this.take('AND', '&&')) tests.push(this.not());
      return tests.length === 1 ? tests[0] : object => tests.every(test => test(object));
    }
    not() {
      if (++this.depth > 200) this.fail('it is nested too deeply');
      const test = this.take('NOT', '!') ? this.negated() : this.primary();
      --this.depth;
      return test;
    }
    negated() {
      const test = this.not();
      return object => !test(object);
    }
    primary() {
      if (this.take('TRUEPREDICATE')) return () => true;
      if (this.take('FALSEPREDICATE')) return () => false;
      const start = this.at;
      if (this.take('(')) {
        const test = this.attempt(() => this.or());
        if (test && this.take(')') && !this.isComparison()) return test;
        this.at = start;
      }
      return this.comparison();
    }
    // Whether these parentheses are around a value rather than a test shows only afterwards.
    attempt(read) {
      const {depth} = this;
      try {
        return read();
      } catch (problem) {
        if (problem.name != 'NSInvalidArgumentException') throw problem;
        this.depth = depth;
        return null;
      }
    }
    isComparison() {
      const {kind, text} = this.token;
      return (kind === 'mark' || kind === 'word') &&
          (otherNames[text] ?? text.toUpperCase()) in comparisons;
    }
    comparison() {
      const quantifier = ['ANY', 'SOME', 'ALL', 'NONE'].find(each => this.take(each));
      const left = this.sum();
      const name = this.operator();
      const flags = this.modifier();
      const right = this.sum();
      const compare = comparisons[name];
      const test = (a, b) => Boolean(compare(fold(a, flags), fold(b, flags), flags));
      if (!quantifier) return object => test(left(object), right(object));
      return object => {
        const list = listOf(left(object)) ?? [], value = right(object);
        return quantifier === 'ALL' ? list.every(each => test(each, value))
            : list.some(each => test(each, value)) !== (quantifier === 'NONE');
      };
    }
    operator() {
      if (!this.isComparison()) this.fail();
      const {text} = this.tokens[this.at++];
      return otherNames[text] ?? text.toUpperCase();
    }
    modifier() { return flagsOf(this.tokens[this.at - 1].modifier); }
    sum() {
      let left = this.product();
      for (;;) {
        const isSum = this.take('+');
        if (!isSum && !this.take('-')) return left;
        const one = left, other = this.product();
        left = object => isSum ? one(object) + other(object) : one(object) - other(object);
      }
    }
    product() {
      let left = this.value();
      for (;;) {
        const isProduct = this.take('*');
        if (!isProduct && !this.take('/')) return left;
        const one = left, other = this.value();
        left = object => isProduct ? one(object) * other(object) : one(object) / other(object);
      }
    }
    value() {
      const {kind, text} = this.token;
      if (this.take('(')) return this.closed(this.sum(), ')');
      if (this.take('{')) return this.list();
      if (this.take('-')) return this.negative();
      ++this.at;
      if (kind === 'string') {
        const literal = text.slice(1, -1).replace(/\\(.)/g, '$1');
        return () => literal;
      }
      if (kind === 'number') return () => Number(text);
      if (kind === 'argument') return this.argument(text);
      if (kind === 'word') return this.path(text);
      --this.at;
      return this.fail();
    }
    negative() {
      const value = this.value();
      return object => -value(object);
    }
    closed(value, mark) { return this.take(mark) ? value : this.fail(); }
    list() {
      const values = [];
      while (!this.take('}')) {
        values.push(this.sum());
        if (!this.take(',') && this.token.text !== '}') this.fail();
      }
      return object => values.map(each => each(object));
    }
    argument(text) {
      if (this.values.length === 0) this.fail(`there is no value for ${text}`);
      const value = this.values.shift();
      return text === '%K' ? this.path(prelude.takeString(value, '%K')) : () => value;
    }
    path(text) {
      const name = text.toUpperCase();
      if (name in constants) return () => constants[name];
      if (name === 'SELF') return object => object;
      const keys = text.replace(/^SELF\./i, '').replace(/^#/, '');
      return object => prelude.valueForKeyPath(object, keys);
    }
  }

  class Predicate {
    constructor(test, text) {
      this.test = test;
      this.text = text;
    }
  }
  // [cd] after an operator belongs to it.
  const withModifiers = parser => {
    const source = parser.format;
    parser.tokens = [];
    let rest = source;
    for (;;) {
      const found = /^((?:[^"'[]|"(?:[^"\\]|\\.)*"|'(?:[^'\\]|\\.)*')*?)\[([cdlnw]+)\]/i.exec(rest);
      parser.tokens.push(...tokensOf(found ? found[1] : rest));
      if (!found) return parser;
      if (parser.tokens.length === 0) throw invalid(source, '[ was not expected');
      parser.tokens.at(-1).modifier = found[2];
      rest = rest.slice(found[0].length);
    }
  };
  const withFormat = (format, ...values) => {
    const text = prelude.takeString(format, 'predicateWithFormat:');
    const parser = withModifiers(Object.assign(new Parser('', [...values]), {format: text}));
    return new Predicate(parser.whole(), text);
  };
  const combined = (predicates, test) => new Predicate(test, predicates.map(
      each => `(${each.text})`).join(' '));

  prelude.defineClass({
    name: 'NSCompoundPredicate',
    isInstance: () => false,
    classOperations: {
      'andPredicateWithSubpredicates:': all =>
          combined(all, object => all.every(each => each.test(object))),
      'orPredicateWithSubpredicates:': all =>
          combined(all, object => all.some(each => each.test(object))),
      'notPredicateWithSubpredicate:': one => combined([one], object => !one.test(object)),
    },
  });
  return prelude.defineClass({
    name: 'NSPredicate',
    implementation: Predicate,
    initializers: {},
    classOperations: {
      'predicateWithFormat:': withFormat,
      'predicateWithFormat:argumentArray:': (format, values) => withFormat(format, ...values ?? []),
      'predicateWithBlock:'(block) {
        prelude.takeFunction(block, 'predicateWithBlock:');
        return new Predicate(object => Boolean(block(object, null)), 'BLOCKPREDICATE');
      },
      'predicateWithValue:': value => new Predicate(() => Boolean(value), value ? 'TRUEPREDICATE'
                                                                               : 'FALSEPREDICATE'),
    },
    operations: {
      'evaluateWithObject:'(object) { return this.test(object); },
      'predicateFormat'() { return this.text; },
      'description'() { return this.text; },
    },
    copy: value => value,
  });
})
