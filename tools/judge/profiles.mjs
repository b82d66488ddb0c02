// SPDX-License-Identifier: MIT
// Reads the meshes that judge-solids writes, makes a Manifold of each, and counts those whose status is not NoError or
// whose volume is not the one that judge-solids computed.
import { pathToFileURL } from 'node:url';

const { default: start } = await import(pathToFileURL(`${process.argv[2]}/node_modules/manifold-3d/manifold.js`));
const library = await start();
library.setup();
const { Manifold, Mesh } = library;

let solids = 0;
let wrongStatus = 0;
let wrongVolume = 0;
let largestDifference = 0;

function judge(name, volume, positions, corners) {
  ++solids;
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
  if (status !== 'NoError' && status !== 0) {
    ++wrongStatus;
    console.log(`${name}: ${status}`);
    return;
  }
  const difference = Math.abs(measured - volume) / volume;
  largestDifference = Math.max(largestDifference, difference);
  if (!(measured > 0 && difference < 1e-3)) {
    ++wrongVolume;
    console.log(`${name}: volume ${measured}, expected ${volume}`);
  }
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
    const volume = pending.readDoubleLE(at + 16);
    let part = at + headerBytes;
    const name = pending.toString('utf8', part, part += nameBytes);
    // The copies begin at multiples of four bytes, as typed arrays must.
    const positions = new Float32Array(new Uint8Array(pending.subarray(part, part += positionBytes)).buffer);
    const corners = new Uint32Array(new Uint8Array(pending.subarray(part, end)).buffer);
    judge(name, volume, positions, corners);
    at = end;
  }
  pending = pending.subarray(at);
}
console.log(`${solids} solids judged by manifold-3d`);
console.log(`status other than NoError: ${wrongStatus}`);
console.log(`other volumes: ${wrongVolume}; largest difference ${largestDifference.toExponential(1)} of the volume`);
process.exitCode = solids > 0 && wrongStatus + wrongVolume === 0 ? 0 : 1;
