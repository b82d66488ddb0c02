// SPDX-License-Identifier: MIT
// profiles.mjs MODULES [RESULTS]      reads what judge-solids writes: makes a Manifold of each mesh, and counts those whose
//                                     status is not NoError or whose volume is not the one that judge-solids computed.
//                                     Appends a line about each face to the file RESULTS.
// profiles.mjs --summary RESULTS      adds the lines of RESULTS up
//
// A line has these parts, with tabs between them: file and index of the face, its full name, glyphs, solids, solids that
// were not made or not closed, with triangles that cross, compared with slices, with a volume more than 0.5 % from that
// of the slices, the largest difference in percent, seconds for making the solids, the name of the solid with that
// difference, exceptions by name, solids that manifold-3d judged, and those that it does not take for closed.
import { appendFileSync, readFileSync } from 'node:fs';
import { pathToFileURL } from 'node:url';

function summarize(file) {
  const lines = readFileSync(file, 'utf8').split('\n').filter(Boolean).map(line => line.split('\t'));
  const sum = part => lines.reduce((total, line) => total + Number(line[part]), 0);
  const worst = lines.reduce((a, b) => (Number(b[8]) > Number(a[8]) ? b : a), lines[0]);
  console.log(`${lines.length} faces, ${sum(2)} glyphs, ${sum(3)} solids`);
  console.log(`not made or not closed: ${sum(4)}; with triangles that cross: ${sum(5)}`);
  console.log(`judged by manifold-3d: ${sum(12)}; status other than NoError or another volume: ${sum(13)}`);
  console.log(`compared with slices: ${sum(6)}; more than 0.5 % away: ${sum(7)}; at most ${worst?.[8]} % (${worst?.[10]})`);
  for (const line of lines.filter(line => line[11] !== '')) {
    console.log(line[11].replaceAll('; ', '\n'));
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
let face = { solids: 0, wrong: 0, exceptions: '' };

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

function endFace(line) {
  if (results) {
    // The last part of the line names the exceptions that judge-solids found.
    const exceptions = line.endsWith('\t') ? face.exceptions.slice(2) : face.exceptions;
    appendFileSync(results, `${line}${exceptions}\t${face.solids}\t${face.wrong}\n`);
  }
  solids += face.solids;
  wrong += face.wrong;
  face = { solids: 0, wrong: 0, exceptions: '' };
}

const headerBytes = 24;
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
    if (pending.readUInt32LE(at + 12) === 1) {
      endFace(name);
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
