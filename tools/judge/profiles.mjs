// SPDX-License-Identifier: MIT
// profiles.mjs MODULES [RESULTS]      reads what judge-solids writes: makes a Manifold of each mesh, and counts those whose
//                                     status is not NoError or whose volume is not the one that judge-solids computed.
//                                     Appends a line about each face to the file RESULTS, and the keys of outlines in
//                                     whose solids nothing was wrong to RESULTS.outlines.
// profiles.mjs --summary RESULTS      adds the lines of RESULTS up
//
// A line has these parts, with tabs between them: file and index of the face, its full name, glyphs, those of them with
// an outline that was judged before, glyphs that could not be read, solids made, empty ones among them, solids that were
// not made or not closed, with triangles that cross, compared with slices, with a volume more than 0.5 % from that of the
// slices, the largest difference in percent, seconds for making the solids, the name of the solid with that difference,
// exceptions by name, solids that manifold-3d judged, and those that it does not take for closed.
import { appendFileSync, readFileSync } from 'node:fs';
import { pathToFileURL } from 'node:url';

const parts = ['key', 'name', 'glyphs', 'repeated', 'unread', 'solids', 'empty', 'failed', 'crossed', 'sliced',
  'wrongVolumes', 'difference', 'seconds', 'worst', 'exceptions', 'manifolds', 'wrongManifolds'];
const solidsPerGlyph = 55;

function summarize(file) {
  const faces = readFileSync(file, 'utf8').split('\n').filter(Boolean).map(line => {
    const values = line.split('\t');
    return Object.fromEntries(parts.map((part, i) => [part, values[i]]));
  });
  const sum = part => faces.reduce((total, face) => total + Number(face[part]), 0);
  const repeated = sum('repeated');
  console.log(`${faces.length} faces, ${sum('glyphs')} glyphs, ${sum('solids') + repeated * solidsPerGlyph} solids; ${
    sum('unread')} glyphs could not be read`);
  console.log(`${repeated} of the glyphs have an outline that another glyph had before, bit for bit: their solids are counted,`);
  console.log(`but were judged only once; ${sum('solids')} solids were made, ${sum('empty')} of them empty`);
  console.log(`not made or not closed: ${sum('failed')}; with triangles that cross: ${sum('crossed')}`);
  console.log(`judged by manifold-3d: ${sum('manifolds')}; status other than NoError or another volume: ${sum('wrongManifolds')}`);
  const worst = faces.reduce((a, b) => (Number(b.difference) > Number(a.difference) ? b : a), { difference: 0 });
  console.log(`compared with slices: ${sum('sliced')}; more than 0.5 % away: ${sum('wrongVolumes')}; at most ${
    worst.difference} % (${worst.worst})`);
  for (const face of faces.filter(face => face.exceptions !== '')) {
    console.log(face.exceptions.replaceAll('; ', '\n'));
  }
}

if (process.argv[2] === '--summary') {
  summarize(process.argv[3]);
  process.exit(0);
}

const { default: start } = await import(pathToFileURL(`${process.argv[2]}/node_modules/manifold-3d/manifold.js`));
const results = process.argv[3];
const library = await start();
library.setup();
const { Manifold, Mesh } = library;

let solids = 0;
let wrong = 0;
let largestDifference = 0;
let face = { solids: 0, wrong: 0, exceptions: '', keys: '' };
/// Outlines that judge-solids takes for right, but not manifold-3d: how many of their solids are wrong.
const wrongOutlines = new Map();
let wrongBefore = 0; // in the face, before the present outline

function judge(name, volume, positions, corners) {
  ++face.solids;
  let status;
  let measured = NaN;
  try {
    const manifold = new Manifold(new Mesh({ numProp: 3, vertProperties: positions, triVerts: corners }));
    status = manifold.status();
    status = status.value ?? status;
    measured = manifold.volume();
    manifold.delete();
  } catch (error) {
    status = error.code ?? String(error);
  }
  const isClosed = status === 'NoError' || status === 0;
  const difference = Math.abs(measured - volume) / volume;
  if (isClosed && measured > 0 && difference < 1e-3) {
    largestDifference = Math.max(largestDifference, difference);
    return;
  }
  ++face.wrong;
  const complaint = `${name}: ${isClosed ? `manifold-3d finds the volume ${measured}, not ${volume}` : status}`;
  face.exceptions += `; ${complaint}`;
  console.log(complaint);
}

function endOutline(key) {
  if (face.wrong > wrongBefore) {
    wrongOutlines.set(key, face.wrong - wrongBefore);
  } else {
    face.keys += `${key}\n`;
  }
  wrongBefore = face.wrong;
}

function repeatOutline(key, name) {
  const count = wrongOutlines.get(key) ?? 0;
  if (count > 0) {
    face.wrong += count;
    wrongBefore = face.wrong;
    face.exceptions += `; ${name} ${count} solids wrong as those of the same outline before`;
  }
}

function endFace(line) {
  if (results) {
    appendFileSync(`${results}.outlines`, face.keys);
    // The last part of the line names the exceptions that judge-solids found.
    const exceptions = line.endsWith('\t') ? face.exceptions.slice(2) : face.exceptions;
    appendFileSync(results, `${line}${exceptions}\t${face.solids}\t${face.wrong}\n`);
  }
  solids += face.solids;
  wrong += face.wrong;
  face = { solids: 0, wrong: 0, exceptions: '', keys: '' };
  wrongBefore = 0;
}

const headerBytes = 24;
const [meshRecord, faceRecord, judgedRecord] = [0, 1, 2]; // RecordKind in MeshStream.h
const keyLength = 32;
let pending = Buffer.alloc(0);
for await (const chunk of process.stdin) {
  pending = pending.length === 0 ? chunk : Buffer.concat([pending, chunk]);
  let at = 0;
  while (pending.length - at >= headerBytes) {
    const nameBytes = pending.readUInt32LE(at);
    const positionBytes = 12 * pending.readUInt32LE(at + 4);
    const cornerBytes = 12 * pending.readUInt32LE(at + 8);
    const end = at + headerBytes + nameBytes + positionBytes + cornerBytes;
    if (pending.length < end) {
      break;
    }
    let part = at + headerBytes;
    const name = pending.toString('utf8', part, part += nameBytes);
    const kind = pending.readUInt32LE(at + 12);
    if (kind === faceRecord) {
      endFace(name);
    } else if (kind === judgedRecord) {
      endOutline(name);
    } else if (kind !== meshRecord) {
      repeatOutline(name.slice(0, keyLength), name.slice(keyLength));
    } else {
      // The copies begin at multiples of four bytes, as typed arrays must.
      const positions = new Float32Array(new Uint8Array(pending.subarray(part, part += positionBytes)).buffer);
      const corners = new Uint32Array(new Uint8Array(pending.subarray(part, end)).buffer);
      judge(name, pending.readDoubleLE(at + 16), positions, corners);
    }
    at = end;
  }
  pending = pending.subarray(at);
}
console.log(`${solids} solids judged by manifold-3d`);
console.log(`status other than NoError or another volume: ${wrong}; largest difference of the volume: ${largestDifference.toExponential(1)}`);
process.exitCode = wrong === 0 ? 0 : 1;
