// Packs the published reference documents with shapes in them, as they are and with what hosts and
// other programs leave out or put there: pack.mjs FOLDER. Prints their paths.
import AdmZip from 'adm-zip'
import { existsSync, readdirSync } from 'fs'
import { join } from 'path'

const digest = { _data: 'aGk=' }
const imageOf = (version) =>
  version > 120
    ? { _class: 'MSJSONOriginalDataReference', _ref_class: 'MSImageData', _ref: 'x',
        data: digest, sha1: digest }
    : { _class: 'MSJSONFileReference', _ref_class: 'MSImageData', _ref: 'images/gone' }
const changes = {
  plain: () => {},
  // Since version 121 what is empty need not be there.
  bare: (layer, version) => {
    if (version > 120) delete layer.style.fills
    else layer.style.fills = []
    delete layer.userInfo
  },
  filled: (layer, version) => {
    const image = imageOf(version)
    layer.style.fills.forEach((fill) => Object.assign(fill, { fillType: 4, image }))
    layer.userInfo = { 'com.example.other': { kept: [1, 'two', null] } }
  },
}

const versions = 'node_modules/@sketch-hq/sketch-reference-files/files'
for (const version of readdirSync(versions)) {
  const shapes = join(versions, version, 'shapes')
  // No schema was published for those before 119.
  if (Number(version) < 119 || !existsSync(shapes)) continue
  for (const [kind, change] of Object.entries(changes)) {
    const zip = new AdmZip()
    zip.addLocalFolder(shapes)
    for (const entry of zip.getEntries()) {
      if (!/^pages\/.*\.json$/.test(entry.entryName)) continue
      const page = JSON.parse(entry.getData())
      page.layers.forEach((layer) => change(layer, Number(version)))
      zip.updateFile(entry, Buffer.from(JSON.stringify(page)))
    }
    const path = join(process.argv[2], `reference-${version}-${kind}.sketch`)
    zip.writeZip(path)
    console.log(path)
  }
}
