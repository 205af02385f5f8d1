// Text whose characters have attributes.
(function (prelude) {
  'use strict';

  const {takeString, takeDictionary, takeRange, takeIndex} = prelude;
  const none = Object.freeze({});
  const toDictionary = marks => Object.assign(prelude.newDictionary(), marks);

  // `marks` has the attributes of each character, which are never changed.
  class AttributedString {
    constructor(text = '', marks = none) {
      this.text = text;
      this.marks = Array.isArray(marks) ? marks : new Array(text.length).fill(marks);
    }
    part(from, to) { return [this.text.slice(from, to), this.marks.slice(from, to)]; }
    // The characters around one for which `isSame` holds as for that one.
    around(index, isSame) {
      let from = index, to = index + 1;
      while (from > 0 && isSame(this.marks[from - 1])) --from;
      while (to < this.marks.length && isSame(this.marks[to])) ++to;
      return prelude.range(from, to - from);
    }
  }
  class MutableAttributedString extends AttributedString {
    splice(from, to, text, marks) {
      this.text = this.text.slice(0, from) + text + this.text.slice(to);
      this.marks = [...this.marks.slice(0, from), ...marks, ...this.marks.slice(to)];
    }
    change(range, selector, convert) {
      const [from, to] = takeRange(range, this.text.length, selector);
      // Characters that share attributes go on sharing them.
      const converted = new Map();
      for (let i = from; i < to; ++i) {
        const marks = this.marks[i];
        if (!converted.has(marks)) converted.set(marks, convert(marks));
        this.marks[i] = converted.get(marks);
      }
    }
  }
  // What Kelvar's classes take of it, and give: runs of characters with the same attributes.
  const paragraphStyle = values => {
    prelude.classNamed('NSParagraphStyle');
    return prelude.newParagraphStyle(values);
  };
  prelude.newAttributedString = (text, runs) => {
    const marks = new Array(text.length).fill(none);
    for (const {location, length, attributes} of runs) {
      const {NSParagraphStyle: paragraph, ...others} = attributes;
      const shared = paragraph
          ? {...others, NSParagraphStyle: paragraphStyle(paragraph)} : others;
      for (let i = location; i < location + length; ++i) marks[i] = shared;
    }
    return new AttributedString(text, marks);
  };
  function runsOf({text, marks}) {
    const runs = [];
    marks.forEach((attributes, location) => {
      const last = runs.at(-1);
      if (last?.attributes === attributes) ++last.length;
      else runs.push({location, length: 1, attributes});
    });
    return {string: text, runs: runs.map(each => ({...each, attributes: {...each.attributes}}))};
  }
  const takeAttributed = (value, selector) => {
    if (value instanceof AttributedString) return value;
    throw prelude.exception('NSInvalidArgumentException',
        `${selector} takes an attributed string, not ${prelude.describeKind(value)}`);
  };
  const initializers = Type => ({
    'init': () => new Type(),
    'initWithString:': text => new Type(takeString(text, 'initWithString:')),
    'initWithString:attributes:': (text, attributes) => new Type(
        takeString(text, 'initWithString:attributes:'), prelude.isNull(attributes) ? none
            : {...takeDictionary(attributes, 'initWithString:attributes:')}),
    'initWithAttributedString:'(other) {
      const {text, marks} = takeAttributed(other, 'initWithAttributedString:');
      return new Type(text, [...marks]);
    },
  });
  const equals = (a, b) => a.text === b.text &&
      a.marks.every((each, i) => prelude.isEqual(toDictionary(each), toDictionary(b.marks[i])));

  const base = prelude.defineClass({
    name: 'NSAttributedString',
    implementation: AttributedString,
    initializers: initializers(AttributedString),
    operations: {
      'string'() { return this.text; },
      'treeAsDictionary'() {
        const runs = runsOf(this).runs.map(({location, length, attributes}) => toDictionary(
            {location, length, text: this.text.slice(location, location + length),
             ...attributes}));
        return toDictionary({value: toDictionary({text: this.text, attributes: runs})});
      },
      'enumerateAttributesInRange:options:usingBlock:'(range, _, block) {
        const selector = 'enumerateAttributesInRange:options:usingBlock:';
        const [from, to] = takeRange(range, this.text.length, selector);
        prelude.takeFunction(block, selector);
        const stop = prelude.newPointer(false);
        for (const run of runsOf(new AttributedString(...this.part(from, to))).runs) {
          if (stop.value()) return;
          block(toDictionary(run.attributes), prelude.range(from + run.location, run.length), stop);
        }
      },
      'length'() { return this.text.length; },
      'description'() { return this.text; },
      'mutableCopy'() { return new MutableAttributedString(this.text, [...this.marks]); },
      'attributesAtIndex:effectiveRange:'(index, range) {
        const at = takeIndex(index, this.text.length, 'attributesAtIndex:effectiveRange:');
        const marks = toDictionary(this.marks[at]);
        prelude.store(range,
            this.around(at, each => prelude.isEqual(toDictionary(each), marks)));
        return marks;
      },
      'attribute:atIndex:effectiveRange:'(name, index, range) {
        const at = takeIndex(index, this.text.length, 'attribute:atIndex:effectiveRange:');
        const key = takeString(name, 'attribute:atIndex:effectiveRange:');
        const value = this.marks[at][key] ?? null;
        prelude.store(range,
            this.around(at, each => prelude.isEqual(each[key] ?? null, value)));
        return value;
      },
      'attributedSubstringFromRange:'(range) {
        const selector = 'attributedSubstringFromRange:';
        return new AttributedString(...this.part(...takeRange(range, this.text.length, selector)));
      },
      'isEqualToAttributedString:'(other) {
        return equals(this, takeAttributed(other, 'isEqualToAttributedString:'));
      },
    },
    equals,
    copy: value => new AttributedString(value.text, [...value.marks]),
    plain: runsOf,
  });
  prelude.defineClass({
    name: 'NSMutableAttributedString',
    base,
    implementation: MutableAttributedString,
    initializers: initializers(MutableAttributedString),
    operations: {
      'addAttribute:value:range:'(name, value, range) {
        const key = takeString(name, 'addAttribute:value:range:');
        this.change(range, 'addAttribute:value:range:', marks => ({...marks, [key]: value}));
      },
      'addAttributes:range:'(attributes, range) {
        const added = takeDictionary(attributes, 'addAttributes:range:');
        this.change(range, 'addAttributes:range:', marks => ({...marks, ...added}));
      },
      'setAttributes:range:'(attributes, range) {
        const set = prelude.isNull(attributes) ? none
            : {...takeDictionary(attributes, 'setAttributes:range:')};
        this.change(range, 'setAttributes:range:', () => set);
      },
      'removeAttribute:range:'(name, range) {
        this.change(range, 'removeAttribute:range:', marks => {
          const {[name]: _, ...rest} = marks;
          return rest;
        });
      },
      'appendAttributedString:'(other) {
        const {text, marks} = takeAttributed(other, 'appendAttributedString:');
        this.splice(this.text.length, this.text.length, text, marks);
      },
      'insertAttributedString:atIndex:'(other, index) {
        const {text, marks} = takeAttributed(other, 'insertAttributedString:atIndex:');
        const at = takeIndex(index, this.text.length + 1, 'insertAttributedString:atIndex:');
        this.splice(at, at, text, marks);
      },
      'replaceCharactersInRange:withString:'(range, text) {
        const selector = 'replaceCharactersInRange:withString:';
        const [from, to] = takeRange(range, this.text.length, selector);
        const added = takeString(text, selector);
        const marks = this.marks[from] ?? this.marks.at(-1) ?? none;
        this.splice(from, to, added, new Array(added.length).fill(marks));
      },
      'deleteCharactersInRange:'(range) {
        this.splice(...takeRange(range, this.text.length, 'deleteCharactersInRange:'), '', []);
      },
      'setAttributedString:'(other) {
        const {text, marks} = takeAttributed(other, 'setAttributedString:');
        this.splice(0, this.text.length, text, marks);
      },
      'beginEditing'() {},
      'endEditing'() {},
    },
    copy: value => new AttributedString(value.text, [...value.marks]),
    plain: runsOf,
  });
  return base;
})
