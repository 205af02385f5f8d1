// Reads documents with the host's own reader and holds them against the published schemas of their
// version: check.mjs DOCUMENT...
import sketchFile from '@sketch-hq/sketch-file'
import latest from '@sketch-hq/sketch-file-format'
import Ajv from 'ajv'
import first from 'format-119'
import second from 'format-120'
import third from 'format-121'

// Later schemas also list earlier versions, but no longer describe them.
const all = [first, second, third, latest].map((module) => module.default ?? module)
const schemasOf = (version) => {
  const isOf = ({ const: only, enum: several }) => only === version || several?.includes(version)
  return all.find((schemas) => isOf(schemas.meta.properties.version))
}

let failures = 0
for (const path of process.argv.slice(2)) {
  const { contents } = await sketchFile.fromFile(path)
  const schemas = schemasOf(contents.meta.version)
  const ajv = new Ajv({ strict: false, allErrors: true, unicodeRegExp: false })
  // The reader has put the pages where document.json refers to them.
  const validate = ajv.compile(schemas.fileFormat)
  const { workspace, ...known } = contents
  if (validate(known)) {
    console.log(`${path}: valid, version ${contents.meta.version}`)
    continue
  }
  failures += 1
  for (const error of validate.errors.slice(0, 10)) {
    console.error(`${path}: ${error.instancePath} ${error.message} ${JSON.stringify(error.params)}`)
  }
}
process.exit(failures === 0 ? 0 : 1)
