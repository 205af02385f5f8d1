#include <gtest/gtest.h>

#include "scripting/ScriptOutput.h"

namespace kelvar {
namespace {

TEST(GraphConverterTest, KeepsIdentityInArchives) {
  const std::pair<const char*, const char*> cases[] = {
      {"const d = {x: 1}; print(HRCoder.archivedJSONWithRootObject_({items: [d, d]}))",
       "{\"items\":[{\"x\":1},{\"$alias\":\"items.0\"}]}\n"},
      {"const d = {}; d.self = d; print([HRCoder archivedPlistWithRootObject:d])",
       "{\"self\":{\"$alias\":\"$root\"}}\n"},
      {"const l = [1]; l.push(l); print(HRCoder.archivedJSONWithRootObject_(l))",
       "[1,{\"$alias\":\"$root\"}]\n"},
      {"const b = new Uint8Array([1]); print(HRCoder.archivedJSONWithRootObject_([b, b]))",
       "[{\"$class\":\"NSData\",\"$data\":\"AQ==\"},{\"$alias\":\"0\"}]\n"},
      {"print(HRCoder.archivedPlistWithRootObject_([nil, undefined, 'a', 2.5, true]))",
       "[{\"$class\":\"NSNull\"},{\"$class\":\"NSNull\"},\"a\",2.5,true]\n"},
      {"const d = HRCoder.unarchiveObjectWithPlistOrJSON_("
       "{self: {$alias: '$root'}, items: [{x: 1}, {$alias: 'items.0'}]});\n"
       "print(d.self === d, d.items[0] === d.items[1], d.items.length)",
       "true true 2\n"},
      {"const c = HRCoder.new(), l = [1]; c.encodeObject_forKey_(l, 'a'); l.push(2);\n"
       "c.encodeObject_forKey_(l, 'b'); c.encodeConditionalObject_forKey_([], 'c');\n"
       "print(c.stack(), c.knownObjects().a === l)",
       "[{\"a\":[1],\"b\":{\"$alias\":\"a\"}}] true\n"},
      {"const v = {d: new Date(5000), b: new Uint8Array([7]), n: [nil], u: NSURL.URLWithString_("
       "'http://a/')};\n"
       "const w = HRCoder.unarchiveObjectWithData_(HRCoder.archivedDataWithRootObject_(v));\n"
       "print(w.d.getTime(), w.b[0], w.n[0], w.u.host())",
       "5000 7 null a\n"},
      {"const data = NSMutableData.new(), w = [[HRCoder alloc] "
       "initForWritingWithMutableData:data];\n"
       "w.outputFormat = 1; [w encodeInt:5 forKey:\"n\"]; print([w finishEncoding]);\n"
       "const r = [[HRCoder alloc] initForReadingWithData:data];\n"
       "print([r decodeIntForKey:\"n\"], [r containsValueForKey:\"m\"], r.outputFormat())",
       "true\n5 false 1\n"},
      {"try { [[HRCoder alloc] initForReadingWithData:new Uint8Array([1])] } catch (e) {\n"
       "  print(e.name === HRCoderException, e.message) }",
       "true initForReadingWithData: method was unable to parse the supplied data.\n"},
      {"print(HRCoder.archivedPlistWithRootObject_({a: [() => 1]}))",
       "Error: HRCoder archivedPlistWithRootObject: a[0]: a function cannot be passed to Kelvar"},
      {"let l = []; for (let i = 0; i < 600; i++) l = [l]; try {\n"
       "  HRCoder.archivedPlistWithRootObject_(l) } catch (e) { print(e.message.slice(-34)) }",
       "dictionaries are nested too deeply\n"},
  };
  ScriptOutput output;
  for (const auto& [script, said] : cases) {
    EXPECT_EQ(output.of(QString::fromUtf8(script)), said) << script;
  }
}

TEST(GraphConverterTest, CopesWithManyGraphs) {
  ScriptOutput output;
  EXPECT_EQ(output.of(QStringLiteral(
                "let left = 4, kept = [];\n"
                "(function turn() {\n"
                "  for (let i = 0; i < 500; i++) {\n"
                "    const d = {n: [i, new Array(200).fill(i)]}; d.self = d;\n"
                "    const tree = HRCoder.archivedJSONWithRootObject_(d);\n"
                "    const back = HRCoder.unarchiveObjectWithPlistOrJSON_(tree);\n"
                "    if (back.self !== back || back.n[1][7] !== i) throw 'differs';\n"
                "    if (i % 100 === 0) kept.push(back);\n"
                "  }\n"
                "  if (--left > 0) setTimeout(turn, 0);\n"
                "  else print(kept.length, kept.every(each => each.self === each));\n"
                "})()")),
            "20 true\n");
}

}  // namespace
}  // namespace kelvar
