// SPDX-License-Identifier: MIT
// usage: node shape.mjs JUDGE-SHAPING [FOLDER]
// Shapes names of countries, languages, scripts and currencies in 14 scripts with hb-shape and with judge-shaping, and
// counts the texts of which a glyph, a cluster or a position differs.
import { execFileSync } from 'node:child_process';
import { mkdtempSync, readdirSync, rmSync, writeFileSync } from 'node:fs';
import { tmpdir } from 'node:os';
import { join } from 'node:path';

const scripts = [
  ['Latn', 'Latin', 'ltr', ['de', 'cs', 'vi', 'pl', 'fr', 'tr']],
  ['Grek', 'Greek', 'ltr', ['el']],
  ['Cyrl', 'Cyrillic', 'ltr', ['ru', 'uk', 'sr']],
  ['Arab', 'Arabic', 'rtl', ['ar', 'fa', 'ur']],
  ['Hebr', 'Hebrew', 'rtl', ['he']],
  ['Deva', 'Devanagari', 'ltr', ['hi', 'mr', 'ne']],
  ['Beng', 'Bengali', 'ltr', ['bn']],
  ['Taml', 'Tamil', 'ltr', ['ta']],
  ['Thai', 'Thai', 'ltr', ['th']],
  ['Khmr', 'Khmer', 'ltr', ['km']],
  ['Geor', 'Georgian', 'ltr', ['ka']],
  ['Armn', 'Armenian', 'ltr', ['hy']],
  ['Hani', 'Han', 'ltr', ['zh']],
  ['Hang', 'Hangul', 'ltr', ['ko']],
];
const [judge, folder] = process.argv.slice(2);
const scratch = mkdtempSync(join(tmpdir(), 'judge-shaping-'));

function letters(count, length, capital) {
  return Array.from({ length: count }, (_, n) => {
    let word = '';
    for (let i = 0, rest = n; i < length; ++i, rest = Math.floor(rest / 26))
      word = String.fromCharCode(97 + (rest % 26)) + word;
    return capital ? word.toUpperCase() : word;
  });
}

const codes = {
  region: letters(676, 2, true),
  language: [...letters(676, 2), ...letters(17576, 3)],
  currency: letters(17576, 3, true),
  script: Intl.supportedValuesOf ? ['Arab', 'Armn', 'Beng', 'Cyrl', 'Deva', 'Geor', 'Grek', 'Hang', 'Hani', 'Hans',
    'Hant', 'Hebr', 'Khmr', 'Latn', 'Taml', 'Thai', 'Bopo', 'Brai', 'Ethi', 'Gujr', 'Guru', 'Hira', 'Jpan', 'Kana',
    'Knda', 'Kore', 'Laoo', 'Mlym', 'Mong', 'Mymr', 'Orya', 'Sinh', 'Telu', 'Thaa', 'Tibt'] : [],
};

/// The names in a language that have only letters of the script, marks, and characters of no script but digits, which
/// run to the right in every script.
function textsIn(language, script) {
  const texts = new Set();
  const fits = new RegExp(`^[\\p{Script=${script}}\\p{Script=Common}\\p{Script=Inherited}]*$`, 'u');
  const has = new RegExp(`\\p{Script=${script}}`, 'u');
  for (const [type, list] of Object.entries(codes)) {
    const names = new Intl.DisplayNames([language], { type, fallback: 'none' });
    for (const code of list) {
      const name = names.of(code);
      if (name && fits.test(name) && has.test(name) && !/\p{N}/u.test(name)) texts.add(name);
    }
  }
  return [...texts];
}

/// The file and number of the face for a language, from fontconfig or from the folder.
function faceFor(language, probe) {
  const format = '%{file}\t%{index}\t%{family[0]}\n';
  if (!folder) {
    const tag = language === 'zh' ? 'zh-cn' : language;
    return execFileSync('fc-match', ['-f', format, `sans-serif:lang=${tag}:outline=true:variable=false`])
      .toString().trim().split('\t');
  }
  const code = probe.codePointAt(0).toString(16);
  for (const file of readdirSync(folder, { recursive: true }).filter((name) => /\.(ttf|otf|ttc)$/i.test(name)).sort()) {
    const path = join(folder, file);
    const found = execFileSync('fc-query', ['-f', '%{index}\t%{family[0]}\t%{lang}\n', path]).toString().split('\n');
    const fields = found[0].split('\t');
    if (fields[2]?.split('|').includes(language)) return [path, fields[0], fields[1]];
  }
  throw new Error(`${folder}: no font for ${language} (U+${code})`);
}

function shapeWithHarfBuzz(file, index, language, script, direction, path) {
  const output = execFileSync('hb-shape', [`--font-file=${file}`, `--face-index=${index}`, '--font-funcs=ot',
    `--direction=${direction}`, `--script=${script}`, `--language=${language}`, '--utf8-clusters', '--bot', '--eot',
    '--no-glyph-names', '--output-format=json', `--text-file=${path}`], { maxBuffer: 1 << 30 });
  return output.toString().trim().split('\n').map((line) => {
    let x = 0;
    return JSON.parse(line).map((glyph) => {
      const placed = [glyph.g, glyph.cl, x + glyph.dx, glyph.dy];
      x += glyph.ax;
      return placed;
    });
  });
}

function areEqual(left, right) {
  return left.length === right.length && left.every((glyph, n) =>
    glyph[0] === right[n][0] && glyph[1] === right[n][1] && Math.abs(glyph[2] - right[n][2]) < 1e-3 &&
    Math.abs(glyph[3] - right[n][3]) < 1e-3);
}

let compared = 0;
let different = 0;
let unset = 0;
for (const [script, name, direction, languages] of scripts) {
  for (const language of languages) {
    const texts = textsIn(language, name);
    const [file, index, family] = faceFor(language, texts[0]);
    const path = join(scratch, `${language}.txt`);
    writeFileSync(path, texts.join('\n') + '\n');
    const expected = shapeWithHarfBuzz(file, index, language, script, direction, path);
    const found = execFileSync(judge, ['shape', file, index, language, direction],
      { input: texts.join('\n') + '\n', maxBuffer: 1 << 30 }).toString().trim().split('\n').map((line) => JSON.parse(line));
    if (expected.length !== texts.length || found.length !== texts.length) throw new Error(`${language}: lines are missing`);
    const wrong = texts.filter((_, n) => !areEqual(expected[n], found[n]));
    const withMissing = expected.filter((glyphs) => glyphs.some((glyph) => glyph[0] === 0)).length;
    console.log(`${name} (${language}): ${wrong.length} of ${texts.length} differ, ${withMissing} with missing letters; ${family}`);
    for (const text of wrong.slice(0, 3)) {
      const n = texts.indexOf(text);
      console.log(`  ${text}\n    hb-shape ${JSON.stringify(expected[n])}\n    ours     ${JSON.stringify(found[n])}`);
    }
    compared += texts.length;
    different += wrong.length;
    unset += withMissing;
  }
}
rmSync(scratch, { recursive: true });
console.log(`shaping: ${different} of ${compared} texts differ; ${unset} have letters that the font lacks`);
// Fonts that lack the letters would make the comparison worthless.
process.exit(different === 0 && compared - unset >= 10000 ? 0 : 1);
