// Packs the published reference documents with shapes in them: pack.mjs FOLDER. Prints their paths.
import AdmZip from 'adm-zip'
import { existsSync, readdirSync } from 'fs'
import { join } from 'path'

const versions = 'node_modules/@sketch-hq/sketch-reference-files/files'
for (const version of readdirSync(versions)) {
  const shapes = join(versions, version, 'shapes')
  // No schema was published for those before 119.
  if (Number(version) < 119 || !existsSync(shapes)) continue
  const zip = new AdmZip()
  zip.addLocalFolder(shapes)
  const path = join(process.argv[2], `reference-${version}.sketch`)
  zip.writeZip(path)
  console.log(path)
}
